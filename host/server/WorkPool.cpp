#include "host/server/WorkPool.h"

#include <exception>

namespace host::server {

WorkPool::WorkPool(const Limits& limits) : limits_(limits) {
    start();
}

void WorkPool::finish() {
    close();
    for (auto& thread : threads_) thread.join();
    threads_.clear();
}

bool WorkPool::add(const std::string& name, Work work) {
    const std::lock_guard lock(mutex_);
    if (closed_) return false;
    const auto queue = queues_.try_emplace(name).first;
    if (queue->second.waiting.size() >= limits_.waiting) return false;
    queue->second.waiting.push_back(std::move(work));
    giveTurn(queue);
    return true;
}

std::size_t WorkPool::close() {
    std::vector<Work> dropped;  // outlives the lock: what it refers to may be long in going
    const std::lock_guard lock(mutex_);
    closed_ = true;
    ready_.clear();
    for (auto& [name, queue] : queues_) {
        for (auto& work : queue.waiting) dropped.push_back(std::move(work));
        queue.waiting.clear();
    }
    changed_.notify_all();
    return dropped.size();
}

/// If it has something to do and may, and has no turn yet.
void WorkPool::giveTurn(Queues::iterator position) {
    auto& queue = position->second;
    if (queue.isReady || queue.waiting.empty() || queue.running >= limits_.running) return;
    ready_.push_back(position);
    queue.isReady = true;
    if (ready_.size() > idle_ && threads_.size() < limits_.threads) {
        try {
            return start();
        } catch (const std::exception&) {
            // For want of memory. It waits for a thread that is there.
        }
    }
    changed_.notify_one();
}

void WorkPool::start() {
    threads_.emplace_back([this] { run(); });
}

void WorkPool::run() {
    std::unique_lock lock(mutex_);
    for (;;) {
        ++idle_;
        changed_.wait(lock, [&] { return closed_ || !ready_.empty(); });
        --idle_;
        if (ready_.empty()) return;
        const auto position = ready_.front();
        ready_.pop_front();
        auto& queue = position->second;
        {
            auto work = std::move(queue.waiting.front());
            queue.waiting.pop_front();
            ++queue.running;
            queue.isReady = false;
            giveTurn(position);
            lock.unlock();
            work();
        }
        lock.lock();
        --queue.running;
        giveTurn(position);
        if (queue.waiting.empty() && queue.running == 0) queues_.erase(position);
    }
}

}  // namespace host::server
