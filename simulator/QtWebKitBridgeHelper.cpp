#include <QtWebKitBridgeHelper.h>

#include "simulator/core/Gate.h"
#include "simulator/core/Simulator.h"

using simulator::Answer;
using simulator::hostCall;
using simulator::Recording;
using simulator::toJson;
using simulator::World;

uint32_t BridgeHelperCreatePromiseID() {
    return hostCall(__func__).result([](World&) {
        static uint32_t last = 0;  // guarded by the gate
        return Answer{++last};
    });
}

void BridgeHelperSetResponse(uint32_t promise, uint32_t status, const char* json) {
    hostCall(__func__).tell([&] {
        if (const auto recording = Recording::current())
            recording->responses.push_back({{"promise", promise}, {"status", status}, {"text", toJson(json)}});
    });
}

void BridgeHelperDispatchEvent(const char* name, const char* json) {
    const auto recording = Recording::current();
    bool arrived = false;
    hostCall(__func__).tell([&] {
        if (recording) recording->events.push_back({{"name", toJson(name)}, {"text", toJson(json)}});
        arrived = true;
    });
    if (arrived && recording && recording->onEvent) recording->onEvent(recording->events.back());
}
