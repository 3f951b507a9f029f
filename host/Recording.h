// Recordings: what was asked of a plug-in among its monitors, and all that came of it, in a file that can be replayed.
//
// JSON Lines: a head, then a line for each request that has ended and each simulation (see Journal.h).
// docs/recording.schema.json is the form; docs/pellhost.md says more.
#pragma once

#include <filesystem>
#include <fstream>
#include <iosfwd>
#include <map>
#include <mutex>

#include "host/Session.h"

namespace host {

/// The first line: the format and its version, and the scenario as it is now.
Json recordingHead();

/// Replaces the serials of monitors by others, each always by the same one. It learns them from scenarios, from what
/// requests name and from answers, so each is replaced from the first line that shows it to be one.
class Redaction {
 public:
    Json apply(const Json& line);

 private:
    void learn(const Json& json);
    void replace(Json& json) const;
    void replaceInText(Json& text) const;
    std::string replaced(const std::string& text) const;

    std::map<std::string, std::string, std::greater<>> serials_;  ///< longer ones before what they begin with
};

/// Writes line by line, so that a crash loses nothing. Any thread may call it.
class RecordingWriter {
 public:
    /// Throws std::runtime_error when the file cannot be written.
    RecordingWriter(const std::filesystem::path& file, bool redacts);

    void write(const Json& line);

 private:
    std::mutex mutex_;
    std::ofstream stream_;
    Redaction redaction_;
    const bool redacts_;
};

}  // namespace host
