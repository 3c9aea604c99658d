// SPDX-FileCopyrightText: The OVSearch developers
// SPDX-License-Identifier: MIT

#include "dictation/search/parallel_work.h"

#include "platform/threads/this_thread.h"
#include "platform/user_interface.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <exception>
#include <mutex>
#include <system_error>
#include <thread>
#include <vector>

namespace ov::modDictation {

namespace {

// Far less than what a person notices.
constexpr std::chrono::milliseconds pumpInterval(4);

class ParallelWork {
public:
    ParallelWork(std::size_t pieces, const std::function<PieceWork()>& makeWork)
        : pieces_(pieces), makeWork_(makeWork) {}
    ~ParallelWork() {
        next_ = pieces_;
        for (std::thread& thread : threads_)
            thread.join();
    }
    ParallelWork(const ParallelWork&) = delete;
    ParallelWork& operator=(const ParallelWork&) = delete;

    void start(std::size_t threads) {
        running_ = threads;
        try {
            while (threads_.size() < threads)
                threads_.emplace_back([this] { runThread(); });
        } catch (const std::system_error&) { // those that there are do it
            leave(threads - threads_.size());
        }
    }

    void finish() {
        std::unique_lock<std::mutex> lock(mutex_);
        while (!over_.wait_for(lock, pumpInterval, [this] { return running_ == 0; })) {
            lock.unlock();
            platform::userInterface().processMessages();
            lock.lock();
        }
        lock.unlock();
        work([] { platform::processMessagesNowAndThen(); }); // what no thread could be had for
        if (failure_)
            std::rethrow_exception(failure_);
    }

private:
    template <typename Between>
    void work(Between between) {
        if (next_ >= pieces_)
            return;
        const PieceWork pieceWork = makeWork_();
        for (std::size_t piece = next_++; piece < pieces_; piece = next_++) {
            pieceWork(piece);
            between();
        }
    }

    void runThread() noexcept {
        platform::stepBack();
        try {
            work([] {});
        } catch (...) {
            const std::lock_guard<std::mutex> lock(mutex_);
            failure_ = std::current_exception();
            next_ = pieces_;
        }
        leave(1);
    }

    void leave(std::size_t threads) {
        const std::lock_guard<std::mutex> lock(mutex_);
        running_ -= threads;
        over_.notify_one();
    }

    const std::size_t pieces_;
    const std::function<PieceWork()>& makeWork_;
    std::atomic<std::size_t> next_{0};
    std::mutex mutex_; // guards what follows
    std::condition_variable over_;
    std::size_t running_ = 0;
    std::exception_ptr failure_;
    std::vector<std::thread> threads_;
};

} // namespace

void workInParallel(std::size_t pieces, unsigned threads,
                    const std::function<PieceWork()>& makeWork) {
    ParallelWork work(pieces, makeWork);
    // A single piece is over before a thread would be there.
    if (pieces > 1)
        work.start(std::min<std::size_t>(std::max(threads, 1U), pieces));
    work.finish();
}

void workAside(const std::function<void()>& work) {
    const std::function<PieceWork()> makeWork = [&work] {
        return [&work](std::size_t) { work(); };
    };
    ParallelWork aside(1, makeWork);
    aside.start(1);
    aside.finish();
}

} // namespace ov::modDictation
