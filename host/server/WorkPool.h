// Threads for requests of the plug-in, which may take minutes.
#pragma once

#include <condition_variable>
#include <deque>
#include <functional>
#include <map>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace host::server {

/// Work waits in queues, of which each gets a thread in turn. One that is slow, such as all that asks one monitor,
/// takes no more than its share of the threads, so that others do not wait for it.
class WorkPool {
 public:
    using Work = std::function<void()>;

    struct Limits {
        std::size_t threads;  ///< of which one is there from the beginning, and others start when they are needed
        std::size_t running;  ///< of a queue at once
        std::size_t waiting;  ///< in a queue
    };

    explicit WorkPool(const Limits& limits);

    ~WorkPool() { finish(); }

    WorkPool(const WorkPool&) = delete;
    WorkPool& operator=(const WorkPool&) = delete;

    /// False when too much waits in the queue already. Work must not throw.
    bool add(const std::string& queue, Work work);

    /// Drops what waits, and tells how much; nothing is taken any more.
    std::size_t close();

    /// The same, and waits for what runs.
    void finish();

 private:
    struct Queue {
        std::deque<Work> waiting{};
        std::size_t running = 0;
        bool isReady = false;  ///< has its turn
    };
    using Queues = std::map<std::string, Queue>;

    void giveTurn(Queues::iterator queue);
    void start();
    void run();

    const Limits limits_;
    std::mutex mutex_;
    std::condition_variable changed_;
    Queues queues_;  ///< in which something waits or runs
    std::deque<Queues::iterator> ready_;
    std::vector<std::thread> threads_;
    std::size_t idle_ = 0;
    bool closed_ = false;
};

}  // namespace host::server
