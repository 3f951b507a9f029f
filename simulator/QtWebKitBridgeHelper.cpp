#include <QtWebKitBridgeHelper.h>

#include "simulator/core/Gate.h"
#include "simulator/core/Recorder.h"

using simulator::Answer;
using simulator::HostCall;
using simulator::World;

uint32_t BridgeHelperCreatePromiseID() {
    return HostCall(__func__).run([](World&) {
        static uint32_t last = 0;  // guarded by the gate
        return Answer(++last);
    });
}

void BridgeHelperSetResponse(uint32_t promise, uint32_t status, const char* json) {
    HostCall(__func__).run([&](World&) {
        simulator::recordResponse(promise, status, json);
        return Answer();
    });
}

// Whoever observes events may ask for more: they are told once the simulator's mutex is free again.
void BridgeHelperDispatchEvent(const char* name, const char* json) {
    const simulator::ObservedScope scope;
    auto arrived = false;
    HostCall(__func__).run([&](World&) {
        arrived = true;
        return Answer();
    });
    if (arrived) simulator::recordEvent(name, json);
}
