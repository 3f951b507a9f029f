// Writing to recordings, for the simulated companions; Simulator.h has recordings for those who read them.
#pragma once

#include <cstdint>

namespace simulator {

class Recording;

/// The innermost recording of this thread; null when it has none.
Recording* currentRecording();

/// Makes another thread's recording that of this thread while it lives, for a thread that works in place of the other
/// one. Null: none.
class RecordingHandover {
 public:
    explicit RecordingHandover(Recording* recording);
    ~RecordingHandover();
    RecordingHandover(const RecordingHandover&) = delete;
    RecordingHandover& operator=(const RecordingHandover&) = delete;

 private:
    Recording* outer_;
};

/// What the host's own libraries were called with; nothing happens on a thread without a recording.
void recordResponse(std::uint32_t promise, std::uint32_t status, const char* json);
void recordLogLine(const char* name, std::uint32_t level, const char* line);

/// Records an event, also for the observers of events. Not to be called within the work of a call.
void recordEvent(const char* name, const char* json);

/// The simulated libdmc says that it has been loaded.
bool announceSimulatedCompanions();

}  // namespace simulator
