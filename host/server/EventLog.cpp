#include "host/server/EventLog.h"

#include <algorithm>
#include <charconv>
#include <limits>

namespace host::server {

namespace {

/// What a reader is given at once.
constexpr std::size_t chunkSize = 1u << 18;

std::size_t sizeOf(const EventLog::Event& event) {
    return sizeof event + event.name.size() + event.data.size();
}

/// A line break ends a field, so data with breaks in it becomes several.
void append(std::string& text, std::uint64_t id, const EventLog::Event& event) {
    text += "id: " + std::to_string(id) + "\nevent: ";
    std::copy_if(event.name.begin(), event.name.end(), std::back_inserter(text),
                 [](char letter) { return letter != '\n' && letter != '\r'; });
    text += "\ndata: ";
    for (std::size_t at = 0; at < event.data.size(); ++at) {
        const auto letter = event.data[at];
        if (letter == '\r' && at + 1 < event.data.size() && event.data[at + 1] == '\n') continue;
        if (letter == '\n' || letter == '\r')
            text += "\ndata: ";
        else
            text += letter;
    }
    text += "\n\n";
}

}  // namespace

void EventLog::add(std::string name, std::string data) {
    {
        const std::lock_guard lock(mutex_);
        bytes_ += sizeOf(events_.emplace_back(Event{std::move(name), std::move(data)}));
        while (events_.size() > maximumCount_ || (bytes_ > maximumBytes_ && events_.size() > 1)) {
            bytes_ -= sizeOf(events_.front());
            events_.pop_front();
            ++first_;
        }
    }
    if (notify_) notify_();
}

std::uint64_t EventLog::next() const {
    const std::lock_guard lock(mutex_);
    return first_ + events_.size();
}

std::uint64_t EventLog::after(std::string_view lastEventId) const {
    std::uint64_t id{};
    const auto end = lastEventId.data() + lastEventId.size();
    const auto parsed = std::from_chars(lastEventId.data(), end, id);
    const bool isNumber =
        parsed.ec == std::errc() && parsed.ptr == end && id < std::numeric_limits<std::uint64_t>::max();
    return isNumber ? id + 1 : next();
}

std::pair<std::string, std::uint64_t> EventLog::read(std::uint64_t from) const {
    const std::lock_guard lock(mutex_);
    const auto end = first_ + events_.size();
    std::string text;
    if (from > end || from < first_) {
        from = from > end ? end : first_;
        // Its number is that of the event before the next, so that a reader resumes behind it.
        append(text, from - 1, {"lost", "{}"});
    }
    for (; from < end && text.size() < chunkSize; ++from)
        append(text, from, events_[static_cast<std::size_t>(from - first_)]);
    return {std::move(text), from};
}

std::deque<EventLog::Event> EventLog::events() const {
    const std::lock_guard lock(mutex_);
    return events_;
}

}  // namespace host::server
