// What the lab page asks of the server beside the resources.
#pragma once

#include <filesystem>
#include <string>

#include "host/Journal.h"
#include "host/server/EventLog.h"
#include "host/server/Http.h"

namespace host::server {

class Lab {
 public:
    /// Keeps what the journal takes from now on.
    Lab(Journal& journal, std::string plugin);

    /// The lab's own files: the folder `lab` beside this program.
    const std::filesystem::path& folder() const { return folder_; }

    /// The events `opened`, `exchange` and `simulation`.
    EventLog& exchanges() { return exchanges_; }

    /// The simulated monitors, the scenarios that there are, and which one it is.
    HttpResponse state() const;

    /// Carries out an instruction of the simulator.
    HttpResponse simulate(const std::string& instruction);

    /// Carries out a line of a batch, {"call", "texts"}, and answers it.
    HttpResponse call(const std::string& line);

    /// What is kept, as a recording; with other serials in place of the monitors' own, if it is to be redacted.
    HttpResponse recording(bool redacts) const;

 private:
    void forget(const EventLog::Event& event);

    Journal& journal_;
    const std::string plugin_;
    const std::filesystem::path folder_;  ///< found at the start: the program's file may be replaced while it runs
    Json head_;                           ///< of a recording that begins with what is kept
    EventLog exchanges_;
};

}  // namespace host::server
