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

/// The first line: the format and its version, and the scenario among whose monitors the recording begins.
Json recordingHead(const Json& scenario);

/// Replaces the serials of monitors by others, each always by the same one. It learns them from scenarios, from what
/// requests name and from answers, so each is replaced from the first line that shows it to be one.
class Redaction {
 public:
    Json apply(const Json& line);

    /// What the line shows to be serials is replaced in lines before it, too, when they are applied later.
    void learn(const Json& line);

 private:
    void replace(Json& json) const;
    void replaceInText(Json& text) const;
    std::string replaced(const std::string& text) const;

    std::map<std::string, std::string, std::greater<>> serials_;  ///< longer ones before what they begin with
};

/// Writes line by line, so that a crash loses nothing. Any thread may call it.
class RecordingWriter {
 public:
    /// Throws std::runtime_error when the file cannot be written. If that happens later, `errors` is told at once.
    RecordingWriter(const std::filesystem::path& file, bool redacts, std::ostream& errors);

    void write(const Json& line);

    /// Throws std::runtime_error unless all lines could be written.
    void finish() const;

 private:
    const std::filesystem::path file_;
    mutable std::mutex mutex_;
    std::ofstream stream_;
    std::ostream& errors_;
    Redaction redaction_;
    const bool redacts_;
};

}  // namespace host
