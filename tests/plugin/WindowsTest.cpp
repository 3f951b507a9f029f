// What only companions and hosts on Windows do to the plug-in.
#include <windows.h>

#include <thread>

#include "host/Plugin.h"
#include "tests/plugin/Firmware.h"

namespace {

constexpr const char* monitor = R"({"product":"TQ271-P","serial":"10000001"})";

struct Request {
    const char* resource;
    host::Texts texts;

    std::uint32_t call(const host::Plugin& plugin) const {
        return plugin.find(resource)(texts[0].c_str(), texts[1].c_str(), texts[2].c_str(), texts[3].c_str());
    }
};

// ---- Exceptions that are not of our compiler's ----------------------------------------------------------------------

const char* raising = nullptr;  // the simulated function that raises

TEST(ForeignException, OutOfTheHostsFunctionsLeavesTheNextRequestAlone) {
    const struct {
        const char* function;
        bool hasPromise, isAnswered;
    } cases[] = {
        {"BridgeHelperCreatePromiseID", false, false},
        {"BridgeHelperSetResponse", true, false},  // before the simulated one has recorded it
        {"scrivo_log", true, true},
    };
    const host::Plugin plugin(host::Plugin::defaultFile());
    const Request request{"Brightness", {"", monitor, "", ""}};
    simulator::setGateObserver({.call = [](const char* function) {
        if (raising && std::string_view(function) == raising)
            RaiseException(0xE06D7363 /* C++ of Microsoft's compiler */, EXCEPTION_NONCONTINUABLE, 0, nullptr);
    }});
    for (const auto& [function, hasPromise, isAnswered] : cases) {
        const simulator::Recording recording;
        raising = function;
        EXPECT_EQ(request.call(plugin) != 0, hasPromise) << function;
        raising = nullptr;
        EXPECT_EQ(recording.responses.size(), isAnswered) << function;
        request.call(plugin);
        EXPECT_EQ(recording.responses.size(), isAnswered + 1U) << function;
    }
    simulator::setGateObserver({});
}

// ---- Limits of the process ------------------------------------------------------------------------------------------

const Request refused{"Brightness", {R"({"method":"PUT"})", monitor, "", R"("bright")"}};

std::vector<DWORD> takeTlsIndices() {
    std::vector<DWORD> indices;
    for (DWORD index = TlsAlloc(); index != TLS_OUT_OF_INDEXES; index = TlsAlloc()) indices.push_back(index);
    return indices;
}

int statusOf(const Request& request, const host::Plugin& plugin) {
    const simulator::Recording recording;
    request.call(plugin);
    return recording.responses.at(0)["status"];
}

TEST(Plugin, NeedsNoTlsIndex) {
    statusOf(refused, host::Plugin(host::Plugin::defaultFile()));  // the simulator needs one
    const host::Plugin plugin(host::Plugin::defaultFile());
    const std::vector<DWORD> indices = takeTlsIndices();
    EXPECT_EQ(statusOf(refused, plugin), 400);
    int ofFreshThread = 0;
    std::thread([&] { ofFreshThread = statusOf(refused, plugin); }).join();
    EXPECT_EQ(ofFreshThread, 400);
    for (const DWORD index : indices) TlsFree(index);
}

}  // namespace
