// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "dictation/listing/listing_ahead.h"

#include "dictation/listing/folder_lister.h"
#include "dictation/listing/listing_pace.h"
#include "platform/threads/detached_thread.h"

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <utility>

namespace ov::modDictation {

// What walk and threads share; the last of them deletes it.
struct ListingAhead::State : std::enable_shared_from_this<State> {
    explicit State(Tree theTree) : tree(std::move(theTree)) {}

    FolderLister newLister() const { return {tree.depth, tree.remembered}; }
    void addThread();
    void work();
    bool workOn(std::unique_lock<std::mutex>& lock, FolderLister& lister,
                ListingPace::Meter& meter);
    AheadFolderPtr nextFolder() const;
    void accept(AheadFolder& folder, ListedStep step);
    void gave(std::size_t freed);
    ListedNamesPtr lend(AheadFolder& folder);
    bool waitFor(const AheadFolder& folder, std::unique_lock<std::mutex>& lock);

    std::size_t mostBytes() const;

    const Tree tree;
    const std::string driveFolder = platform::driveFolder();

    std::mutex mutex; // guards what follows
    std::condition_variable toDo;
    std::condition_variable done;
    Frontier frontier;
    AheadFolderPtr entered;
    ListedNamesPtr lent; // what the walk took last
    std::vector<std::shared_ptr<ListedNames>> spares;
    std::size_t bytes = 0; // known and not yet taken
    bool isFull = false;
    ListingPace pace;
    int threads = 0;
    int idle = 0;
    bool closed = false;
};

// Where none can be had the others do the work; without any, whoever waits does.
void ListingAhead::State::addThread() {
    if (platform::startDetached([self = shared_from_this()] { self->work(); }))
        ++threads;
}

void ListingAhead::State::work() {
    platform::setDriveFolder(driveFolder);
    FolderLister lister = newLister();
    ListingPace::Meter meter;
    std::unique_lock lock(mutex);
    while (!closed) {
        if (workOn(lock, lister, meter))
            continue;
        ++idle;
        toDo.wait(lock);
        --idle;
    }
    --threads;
}

// A part of a folder. False when there is nothing to do.
bool ListingAhead::State::workOn(std::unique_lock<std::mutex>& lock, FolderLister& lister,
                                 ListingPace::Meter& meter) {
    const AheadFolderPtr folder = nextFolder();
    if (!folder)
        return false;
    folder->isInWork = true;
    if (lister.needsSpare() && !spares.empty()) {
        lister.setSpare(std::move(spares.back()));
        spares.pop_back();
    }
    if (idle == 0 && threads < pace.threads() && nextFolder())
        addThread();
    lock.unlock();
    meter.start();
    ListedStep step = lister.next(*folder);
    const ListingPace::Cost cost = meter.cost();
    lock.lock();
    if (closed) // nobody is there to take it
        return true;
    pace.add(cost);
    accept(*folder, std::move(step));
    return true;
}

// What is far ahead falls out of the processor's caches again: it only helps those that wait.
std::size_t ListingAhead::State::mostBytes() const {
    constexpr std::size_t withoutWaiting = std::size_t{4} * 1024 * 1024;
    return pace.isWaiting() ? tree.bytes : std::min(tree.bytes, withoutWaiting);
}

// Of the folder that the walk is in there is always something ready, also where it is too large.
AheadFolderPtr ListingAhead::State::nextFolder() const {
    if (!isFull)
        return frontier.firstIdle();
    const bool isUrgent =
        entered && !entered->isListed && !entered->isInWork && entered->untaken.empty();
    return isUrgent ? entered : nullptr;
}

void ListingAhead::State::accept(AheadFolder& folder, ListedStep step) {
    folder.isInWork = false;
    for (ListedNamesPtr& names : step.names) {
        bytes += names->bytes();
        folder.untaken.push_back(std::move(names));
    }
    for (const AheadFolderPtr& subfolder : step.subfolders) {
        bytes += subfolder->footprint();
        frontier.addSubfolder(folder, subfolder);
        folder.subfolders.push_back(subfolder);
        if (idle > 0)
            toDo.notify_one();
    }
    const bool wasFull = std::exchange(isFull, bytes >= mostBytes());
    if (wasFull && !isFull) // more may be known since more is waited for
        toDo.notify_all();
    folder.isListed = step.isLast;
    if (step.isLast)
        frontier.remove(folder);
    if (entered.get() == &folder)
        done.notify_one();
}

// Not for each bit of room: to wake a thread costs more than to list a folder.
void ListingAhead::State::gave(std::size_t freed) {
    bytes -= freed;
    if (!isFull || bytes > mostBytes() / 2)
        return;
    isFull = bytes >= mostBytes(); // with room for nothing it stays so
    if (!isFull && idle > 0)
        toDo.notify_all();
}

// The names that the walk had before are used again, where nobody remembers them.
ListedNamesPtr ListingAhead::State::lend(AheadFolder& folder) {
    if (!tree.remembered && lent.use_count() == 1)
        spares.push_back(std::const_pointer_cast<ListedNames>(lent));
    lent = std::move(folder.untaken.front());
    folder.untaken.pop_front();
    return lent;
}

// Where nobody lists what the walk waits for, all threads are held up by something else.
bool ListingAhead::State::waitFor(const AheadFolder& folder, std::unique_lock<std::mutex>& lock) {
    constexpr std::chrono::milliseconds most{5};
    const auto isThere = [&] { return !folder.untaken.empty() || folder.isListed; };
    if (threads == 0 && !isThere()) {
        FolderLister lister = newLister();
        ListingPace::Meter meter;
        workOn(lock, lister, meter);
    }
    if (done.wait_for(lock, most, isThere))
        return true;
    if (!folder.isInWork && threads < ListingPace::mostThreads)
        addThread();
    return false;
}

ListingAhead::ListingAhead(Tree tree)
    : state_(std::make_shared<State>(std::move(tree))),
      root_(std::make_shared<AheadFolder>(state_->tree.root, 0, nullptr)) {
    const std::lock_guard lock(state_->mutex);
    state_->bytes = root_->footprint();
    state_->isFull = state_->bytes >= state_->mostBytes();
    state_->frontier.setRoot(root_);
    state_->addThread();
}

// A thread that hangs may keep the state for ever, but not what it holds.
ListingAhead::~ListingAhead() {
    Frontier frontier;
    const std::lock_guard lock(state_->mutex);
    state_->closed = true;
    std::swap(frontier, state_->frontier);
    state_->entered = nullptr;
    state_->lent = nullptr;
    state_->spares.clear();
    state_->toDo.notify_all();
}

void ListingAhead::enter(const AheadFolderPtr& folder) {
    const std::lock_guard lock(state_->mutex);
    state_->entered = folder;
    state_->gave(folder->footprint());
    if (state_->idle > 0 && !folder->isListed)
        state_->toDo.notify_one();
}

ListingAhead::Taken ListingAhead::take(AheadFolder& folder, ListedNamesPtr& names) {
    names.reset();
    std::unique_lock lock(state_->mutex);
    if (!state_->waitFor(folder, lock))
        return Taken::nothingYet;
    if (folder.untaken.empty())
        return Taken::end;
    names = state_->lend(folder);
    state_->gave(names->bytes());
    if (folder.untaken.empty() && !folder.isListed && state_->idle > 0)
        state_->toDo.notify_one();
    return Taken::names;
}

std::vector<AheadFolderPtr> ListingAhead::takeSubfolders(AheadFolder& folder) {
    const std::lock_guard lock(state_->mutex);
    return std::exchange(folder.subfolders, {});
}

} // namespace ov::modDictation
