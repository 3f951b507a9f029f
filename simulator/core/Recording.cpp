#include <atomic>
#include <utility>

#include "simulator/core/Parameters.h"
#include "simulator/core/Recorder.h"
#include "simulator/core/Simulator.h"

namespace simulator {

namespace {

thread_local Recording* current = nullptr;

std::function<void(const Json& event)> eventObserver;
std::atomic<bool> simulated{false};

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
    if (!current && !eventObserver) return;
    const Json event = {{"name", Input(name).json()}, {"text", Input(json).json()}};
    if (current) current->events.push_back(event);
    if (current && current->onEvent) current->onEvent(event);
    if (eventObserver) eventObserver(event);
}

void recordLogLine(const char* name, std::uint32_t level, const char* line) {
    if (current) current->log.push_back({{"name", Input(name).json()}, {"level", level}, {"line", Input(line).json()}});
}

void setEventObserver(std::function<void(const Json& event)> observer) {
    eventObserver = std::move(observer);
}

bool announceSimulatedCompanions() {
    return simulated = true;
}

bool companionsAreSimulated() {
    return simulated;
}

}  // namespace simulator
