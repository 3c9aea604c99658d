// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT
#include "control/results/quick_filter.h"

#include "platform/threads/detached_thread.h"

#include <mutex>
#include <stop_token>
#include <utility>

namespace ov {

// What a search shares with the filter that wants it.
struct QuickFilter::Search {
    Search(QuickFilter& filter, modDictation::RowFilter theWords)
        : texts(filter.texts_), words(std::move(theWords)), receiver(&filter) {
        if (filter.kept_ && words.isWithin(filter.answered_))
            among = filter.kept_;
    }

    const std::shared_ptr<modDictation::RowTexts> texts;
    const modDictation::RowFilter words;
    Kept among;
    std::stop_source stop;
    std::mutex mutex;
    QuickFilter* receiver; // guarded; nullptr when nobody waits any more
};

QuickFilter::QuickFilter(QObject* parent, std::function<modDictation::RowTexts::Source()> source)
    : QObject(parent), source_(std::move(source)) {}

QuickFilter::~QuickFilter() {
    giveUp();
}

void QuickFilter::prepare() {
    if (!texts_)
        start({});
}

void QuickFilter::find(const std::string& text) {
    modDictation::RowFilter filter(text);
    if (!filter.empty()) {
        start(std::move(filter));
        return;
    }
    giveUp();
    kept_ = nullptr;
    Q_EMIT found(nullptr);
}

void QuickFilter::start(modDictation::RowFilter filter) {
    giveUp();
    if (!texts_)
        texts_ = std::make_shared<modDictation::RowTexts>(source_());
    search_ = std::make_shared<Search>(*this, std::move(filter));
    if (!platform::startDetached([search = search_] { run(search); }))
        run(search_);
}

void QuickFilter::giveUp() {
    if (const auto search = std::exchange(search_, nullptr)) {
        search->stop.request_stop();
        const std::lock_guard<std::mutex> lock(search->mutex);
        search->receiver = nullptr;
    }
}

void QuickFilter::forget() {
    giveUp();
    kept_ = nullptr;
    // So much memory takes longer to give back than a window should stand still.
    if (texts_)
        platform::startDetached([old = std::move(texts_)]() mutable { old.reset(); });
    texts_ = nullptr;
}

// On the search's thread.
void QuickFilter::run(const std::shared_ptr<Search>& search) {
    const Kept kept = modDictation::keptHits(*search->texts, search->words, search->among.get(),
                                             search->stop.get_token());
    const std::lock_guard<std::mutex> lock(search->mutex);
    if (QuickFilter* receiver = search->receiver; kept && receiver != nullptr)
        QMetaObject::invokeMethod(
            receiver, [receiver, search, kept] { receiver->take(search, kept); },
            Qt::QueuedConnection);
}

void QuickFilter::take(const std::shared_ptr<Search>& search, const Kept& kept) {
    if (search != search_)
        return;
    search_ = nullptr;
    if (search->words.empty()) // the texts are there
        return;
    answered_ = search->words;
    kept_ = kept;
    Q_EMIT found(kept);
}

} // namespace ov
