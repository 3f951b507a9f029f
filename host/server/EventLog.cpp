#include "host/server/EventLog.h"

#include <algorithm>
#include <charconv>
#include <chrono>

namespace host::server {

namespace {

/// What a reader is given at once.
constexpr std::size_t chunkSize = 1u << 18;

/// In place of the number to go on from.
constexpr std::uint64_t ofAnotherRun = 0;

/// For an identifier and its field, and for the beginnings of the other fields.
constexpr std::size_t idSize = 64;
constexpr std::size_t fieldsSize = 16;

std::size_t sizeOf(const EventLog::Event& event) {
    return sizeof event + event.text.capacity();
}

/// All but the identifier. A line break ends a field, so data with breaks in it becomes several.
std::shared_ptr<EventLog::Event> format(std::string_view name, std::string_view data) {
    auto event = std::make_shared<EventLog::Event>();
    auto& text = event->text;
    text.reserve(fieldsSize + name.size() + data.size() + idSize);
    text += "event: ";
    const auto nameAt = text.size();
    std::copy_if(name.begin(), name.end(), std::back_inserter(text),
                 [](char letter) { return letter != '\n' && letter != '\r'; });
    const auto nameEnd = text.size();
    text += "\ndata: ";
    const auto dataAt = text.size();
    while (!data.empty()) {
        const auto end = std::min(data.find_first_of("\r\n"), data.size());
        text += data.substr(0, end);
        data.remove_prefix(end);
        if (data.empty()) break;
        text += "\ndata: ";
        data.remove_prefix(data.starts_with("\r\n") ? 2 : 1);
    }
    const auto dataEnd = text.size();
    text.reserve(text.size() + idSize);
    const std::string_view all(text);
    event->name = all.substr(nameAt, nameEnd - nameAt);
    event->data = all.substr(dataAt, dataEnd - dataAt);
    return event;
}

void addId(EventLog::Event& event, const std::string& run, std::uint64_t number) {
    event.text.append("\nid: ").append(run).append("-").append(std::to_string(number)).append("\n\n");
}

std::string newRun() {
    return std::to_string(
        std::chrono::duration_cast<std::chrono::microseconds>(std::chrono::system_clock::now().time_since_epoch())
            .count());
}

}  // namespace

EventLog::EventLog(std::size_t maximumCount, std::size_t maximumBytes, std::function<void(const Event&)> forget)
    : run_(newRun()), maximumCount_(maximumCount), maximumBytes_(maximumBytes), forget_(std::move(forget)) {}

void EventLog::add(std::string_view name, std::string_view data) {
    auto event = format(name, data);
    {
        const std::lock_guard lock(mutex_);
        addId(*event, run_, end());
        bytes_ += sizeOf(*event);
        events_.push_back(std::move(event));
        while (events_.size() > maximumCount_ || (bytes_ > maximumBytes_ && events_.size() > 1)) {
            bytes_ -= sizeOf(*events_.front());
            if (forget_) forget_(*events_.front());
            events_.pop_front();
            ++first_;
        }
    }
    if (notify_) notify_();
}

std::uint64_t EventLog::first() const {
    const std::lock_guard lock(mutex_);
    return first_;
}

std::uint64_t EventLog::after(std::string_view lastEventId) const {
    const std::lock_guard lock(mutex_);
    if (lastEventId.empty()) return end();
    if (lastEventId == "0") return 1;
    if (!lastEventId.starts_with(run_ + "-")) return ofAnotherRun;
    lastEventId.remove_prefix(run_.size() + 1);
    std::uint64_t number{};
    const auto textEnd = lastEventId.data() + lastEventId.size();
    const auto parsed = std::from_chars(lastEventId.data(), textEnd, number);
    return parsed.ec == std::errc() && parsed.ptr == textEnd && number < end() ? number + 1 : ofAnotherRun;
}

std::pair<EventLog::Events, std::uint64_t> EventLog::read(std::uint64_t from) const {
    const std::lock_guard lock(mutex_);
    Events events;
    std::size_t size = 0;
    if (from < first_) {
        from = first_;
        const auto lost = format("lost", "{}");
        addId(*lost, run_, from - 1);  // so that a reader resumes behind it
        events.push_back(lost);
    }
    for (; from < end() && size < chunkSize; ++from) {
        events.push_back(events_[static_cast<std::size_t>(from - first_)]);
        size += events.back()->text.size();
    }
    return {std::move(events), from};
}

EventLog::Events EventLog::events(const std::function<void()>& meanwhile) const {
    const std::lock_guard lock(mutex_);
    meanwhile();
    return {events_.begin(), events_.end()};
}

}  // namespace host::server
