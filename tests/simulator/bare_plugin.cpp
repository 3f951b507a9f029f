// A plug-in that uses no simulated monitors, as one does that has found real companion libraries; its events come from
// a thread of a library's own.
#include <QtWebKitBridgeHelper.h>

#include <thread>

#ifdef _WIN32
#define EXPORT __declspec(dllexport)
#else
#define EXPORT __attribute__((visibility("default")))
#endif

extern "C" EXPORT uint32_t Brightness(const char*, const char*, const char*, const char*) {
    const auto promise = BridgeHelperCreatePromiseID();
    std::thread([] { BridgeHelperDispatchEvent("fromElsewhere", "{\"a\":1}"); }).join();
    BridgeHelperSetResponse(promise, 200, R"({"error":null,"value":7})");
    return promise;
}
