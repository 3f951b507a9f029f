#include <utility>

#include "simulator/core/Parameters.h"
#include "simulator/core/Recorder.h"
#include "simulator/core/Simulator.h"

namespace simulator {

namespace {

thread_local Recording* current = nullptr;

}  // namespace

Recording::Recording() : outer_(std::exchange(current, this)) {}

Recording::~Recording() {
    current = outer_;
}

Recording* currentRecording() {
    return current;
}

RecordingHandover::RecordingHandover(Recording* recording) : outer_(std::exchange(current, recording)) {}

RecordingHandover::~RecordingHandover() {
    current = outer_;
}

void recordResponse(std::uint32_t promise, std::uint32_t status, const char* json) {
    if (current) current->responses.push_back({{"promise", promise}, {"status", status}, {"text", Input(json).json()}});
}

void recordEvent(const char* name, const char* json) {
    if (current) current->events.push_back({{"name", Input(name).json()}, {"text", Input(json).json()}});
}

void recordLogLine(const char* name, std::uint32_t level, const char* line) {
    if (current) current->log.push_back({{"name", Input(name).json()}, {"level", level}, {"line", Input(line).json()}});
}

void notifyEventObserver() {
    if (current && current->onEvent) current->onEvent(current->events.back());
}

}  // namespace simulator
