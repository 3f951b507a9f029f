// Threads for requests of the plug-in, which may take minutes.
#pragma once

#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

namespace host::server {

class WorkPool {
 public:
    using Work = std::function<void()>;

    /// Threads start when they are needed, up to that many; beyond them, so much work waits.
    WorkPool(std::size_t maximumThreads, std::size_t maximumWaiting)
        : maximumThreads_(maximumThreads), maximumWaiting_(maximumWaiting) {}

    ~WorkPool() { finish(); }

    WorkPool(const WorkPool&) = delete;
    WorkPool& operator=(const WorkPool&) = delete;

    /// False when too much waits already. Work must not throw.
    bool add(Work work);

    /// Drops what waits; nothing is taken any more.
    void close();

    /// The same, and waits for what runs.
    void finish();

 private:
    void run();

    const std::size_t maximumThreads_;
    const std::size_t maximumWaiting_;
    std::mutex mutex_;
    std::condition_variable changed_;
    std::deque<Work> waiting_;
    std::vector<std::thread> threads_;
    std::size_t idle_ = 0;
    bool closed_ = false;
};

}  // namespace host::server
