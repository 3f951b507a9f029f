#include "host/server/WorkPool.h"

namespace host::server {

void WorkPool::finish() {
    close();
    for (auto& thread : threads_) thread.join();
    threads_.clear();
}

bool WorkPool::add(Work work) {
    const std::lock_guard lock(mutex_);
    if (closed_ || waiting_.size() >= maximumWaiting_) return false;
    waiting_.push_back(std::move(work));
    if (waiting_.size() > idle_ && threads_.size() < maximumThreads_)
        threads_.emplace_back([this] { run(); });
    else
        changed_.notify_one();
    return true;
}

void WorkPool::close() {
    std::deque<Work> dropped;  // outlives the lock: what it refers to may be long in going
    const std::lock_guard lock(mutex_);
    closed_ = true;
    dropped.swap(waiting_);
    changed_.notify_all();
}

void WorkPool::run() {
    std::unique_lock lock(mutex_);
    for (;;) {
        ++idle_;
        changed_.wait(lock, [&] { return closed_ || !waiting_.empty(); });
        --idle_;
        if (waiting_.empty()) return;
        {
            auto work = std::move(waiting_.front());
            waiting_.pop_front();
            lock.unlock();
            work();
        }
        lock.lock();
    }
}

}  // namespace host::server
