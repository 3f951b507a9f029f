#include <QtWebKitBridgeHelper.h>

#include <cstring>

#include "World.h"

uint32_t BridgeHelperCreatePromiseID() {
    return ++bench::world().promises;
}

// A host has to learn at least the length of the answer.
void BridgeHelperSetResponse(uint32_t, uint32_t status, const char* json) {
    bench::World& world = bench::world();
    ++world.answers;
    world.answerBytes += std::strlen(json);
    if (world.observer) world.observer->answered(status, json);
}

void BridgeHelperDispatchEvent(const char*, const char*) {}
