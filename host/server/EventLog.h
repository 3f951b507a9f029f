// The last events of a kind, for streams that resume where they were interrupted.
#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

namespace host::server {

/// Events are numbered from 1. Any number of readers follow at their own pace; the log knows nothing of them. Any
/// thread may call it.
class EventLog {
 public:
    /// As it is sent; all readers share it.
    struct Event {
        std::string text;
        std::string_view name;
        std::string_view data;  ///< as sent: where it had several lines, the beginnings of fields are between them
    };
    using Events = std::vector<std::shared_ptr<const Event>>;

    /// So many events are kept, and so many bytes of them, whichever is less. `forget` is called with each that is not
    /// kept any more, in order.
    EventLog(std::size_t maximumCount, std::size_t maximumBytes, std::function<void(const Event&)> forget = {});

    /// Called after each event, on its thread. To be set before the first one.
    void onEvent(std::function<void()> notify) { notify_ = std::move(notify); }

    void add(std::string_view name, std::string_view data);

    /// The number of the first event that is kept.
    std::uint64_t first() const;

    /// Where a reader goes on that names the last event that it has seen: behind it; empty: behind all; "0": at the
    /// beginning. An event of a server that ran before: at the beginning, and it is told that it has lost some.
    std::uint64_t after(std::string_view lastEventId) const;

    /// Events from this number on, up to some length, and the number to go on with. An event `lost` stands for those
    /// that are not kept any more.
    std::pair<Events, std::uint64_t> read(std::uint64_t from) const;

    /// All that is kept. The function is called before any more is forgotten.
    Events events(const std::function<void()>& meanwhile) const;

 private:
    std::uint64_t end() const { return first_ + events_.size(); }

    const std::string run_;  ///< the part of identifiers that tells this server from others
    const std::size_t maximumCount_;
    const std::size_t maximumBytes_;
    const std::function<void(const Event&)> forget_;
    std::function<void()> notify_;
    mutable std::mutex mutex_;
    std::deque<std::shared_ptr<const Event>> events_;
    std::size_t bytes_ = 0;
    std::uint64_t first_ = 1;  ///< the number of the first that is kept
};

}  // namespace host::server
