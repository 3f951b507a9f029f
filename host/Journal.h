// What is asked of a session, and everything that comes of it, line by line: the lines of a recording.
#pragma once

#include <atomic>
#include <functional>
#include <map>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

#include "host/Session.h"

namespace host {

/// Any number of threads may ask at once. docs/recording.schema.json describes the lines.
class Journal {
 public:
    enum class Kind { opened, exchange, simulation };

    /// Takes a line, JSON without a line break, when a request begins, when it has ended, or when a simulation was
    /// carried out; on any thread.
    using Sink = std::function<void(Kind kind, const Json& line)>;

    explicit Journal(const Session& session) : session_(session) {}

    /// To be called while nothing is asked.
    void addSink(Sink sink) { sinks_.push_back(std::move(sink)); }

    /// The exchange, as of Session::call; `source` says who asks.
    Json call(std::string_view source, const std::string& resource, const Texts& texts);

    /// Carries out one instruction of the simulator; throws as simulator::simulate does. The line of a scenario that is
    /// chosen by its name has the scenario itself, too: the name may stand for another one elsewhere.
    void simulate(const Json& instruction);

    /// One line of a batch, as Session::execute.
    Json execute(std::string_view line);

    /// The requests that have not ended, such as "POST FirmwareUpdateTransfer of TQ271-P/10000001".
    std::vector<std::string> running() const;

 private:
    void send(Kind kind, const Json& line) const;

    const Session& session_;
    std::vector<Sink> sinks_;
    std::atomic<std::uint64_t> lastId_{0};
    std::mutex simulating_;
    mutable std::mutex mutex_;
    std::map<std::uint64_t, std::string> running_;
};

}  // namespace host
