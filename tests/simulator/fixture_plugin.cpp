// A plug-in that misbehaves as no real one should, and one good entry point to compare with.
#include <QtWebKitBridgeHelper.h>
#include <libdmc.h>

#include <string>

extern "C" {

// Answers the step of the monitor A and dispatches its query as an event.
uint32_t Good(const char*, const char*, const char* query, const char* body) {
    const auto promise = BridgeHelperCreatePromiseID();
    uint32_t step = 0;
    const auto result = DmCtrlGetBrightnessForStep("10000001", "TQ271-P", &step);
    BridgeHelperDispatchEvent("query", query);
    const auto value = result < 0 ? "null" : std::to_string(step);
    BridgeHelperSetResponse(promise, result < 0 ? 500 : 200, (R"({"error":null,"value":)" + value + "}").c_str());
    return *body ? 0 : promise;
}

uint32_t Silent(const char*, const char*, const char*, const char*) {
    return BridgeHelperCreatePromiseID();
}

uint32_t Twice(const char*, const char*, const char*, const char*) {
    const auto promise = BridgeHelperCreatePromiseID();
    for (const auto text : {"{}", "\xff"}) BridgeHelperSetResponse(promise, 200, text);
    return promise;
}
}
