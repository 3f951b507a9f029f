// The last events of a kind, for streams that resume where they were interrupted.
#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <mutex>
#include <string>
#include <string_view>

namespace host::server {

/// Events are numbered from 1. Any number of readers follow at their own pace; the log knows nothing of them. Any
/// thread may call it.
class EventLog {
 public:
    struct Event {
        std::string name;
        std::string data;
    };

    /// So many events are kept, and so many bytes of them, whichever is less.
    EventLog(std::size_t maximumCount, std::size_t maximumBytes)
        : maximumCount_(maximumCount), maximumBytes_(maximumBytes) {}

    /// Called after each event, on its thread. To be set before the first one.
    void onEvent(std::function<void()> notify) { notify_ = std::move(notify); }

    void add(std::string name, std::string data);

    /// The number that the next event will have.
    std::uint64_t next() const;

    /// The first event for a reader that has seen this one: the one after it. It need not be kept any more.
    std::uint64_t after(std::string_view lastEventId) const;

    /// Server-sent events from this number on, up to some length, and the number to go on with. An event `lost` stands
    /// for those that are not kept any more, and for the numbers of a server that ran before.
    std::pair<std::string, std::uint64_t> read(std::uint64_t from) const;

    /// All that is kept.
    std::deque<Event> events() const;

 private:
    const std::size_t maximumCount_;
    const std::size_t maximumBytes_;
    std::function<void()> notify_;
    mutable std::mutex mutex_;
    std::deque<Event> events_;
    std::size_t bytes_ = 0;
    std::uint64_t first_ = 1;  ///< the number of the first that is kept
};

}  // namespace host::server
