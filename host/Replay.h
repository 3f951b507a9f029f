// Replays a recording: asks the same of this plug-in, and compares what comes of it.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "host/Session.h"

namespace host {

struct Difference {
    std::size_t line;      ///< of the file, counted from 1
    std::string request;   ///< such as "GET Brightness of TQ271-P/10000001"
    std::string where;     ///< such as "responses/0/text/value"
    Json recorded;         ///< null: it was not there
    Json replayed;         ///< null: it is not there
    std::size_t together;  ///< the line of the first other that was under way at the same time; 0: none surely was
};

struct ReplayOutcome {
    std::size_t requests = 0;
    std::vector<Difference> differences;
    std::size_t tornLine = 0;        ///< the last one, which was not written to its end; 0: there is none
    bool lacksItsBeginning = false;  ///< so monitors may have been set otherwise
};

struct ReplayOptions {
    bool keepsMonitors = false;       ///< those that there are, in place of those among which the recording begins
    std::vector<Json> simulations{};  ///< to be carried out first
};

/// Requests are asked one after the other in the order in which they began, among the monitors of the recording's
/// scenario. The monitors' time stands still but for what waits for it and for what passed between the requests, so
/// that a replay takes no longer than it must.
///
/// What differs by nature is not compared: when something was, how long it took and the numbers of promises. The
/// identifiers of opened files and the handles of libraries may be others, each always the same other one. A file that
/// is not where it was is looked for beside the recording, by its name.
///
/// A last line that was not written to its end, since the program that recorded did not come to it, is left out.
///
/// Throws std::invalid_argument, with the line's number, for what is no recording.
ReplayOutcome replay(const Session& session, const std::filesystem::path& file, const ReplayOptions& options = {});

}  // namespace host
