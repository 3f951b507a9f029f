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

thread_local int untilRaised = 0;  // counts down to the simulated function that raises; 0: none does
thread_local DWORD raisedCode = 0;

/// Simulated functions raise while it lives.
class Raising {
 public:
    Raising() {
        simulator::setGateObserver({.enter = [] {
            if (untilRaised > 0 && --untilRaised == 0) RaiseException(raisedCode, EXCEPTION_NONCONTINUABLE, 0, nullptr);
        }});
    }
    ~Raising() { simulator::setGateObserver({}); }
    Raising(const Raising&) = delete;
    Raising& operator=(const Raising&) = delete;
};

TEST(ForeignException, OutOfAnyCallIsAnsweredAndLeavesNothingLocked) {
    FirmwarePage page;
    const PackageFile package;
    const std::string id = page.open(package.path());
    const std::string idText = Json{{"id", id}}.dump(), fileQuery = Json{{"checkDfwFile", id}}.dump();
    // But for a transfer: the simulator's own does not survive an exception in its midst.
    const Request requests[] = {
        {"Brightness", {"", monitor, "", ""}},
        {"Brightness", {R"({"method":"PUT"})", monitor, "", "40"}},
        {"Monitors", {"", "", R"({"update":true})", ""}},
        {"Monitors", {R"({"method":"DELETE"})", "", "", ""}},
        {"SignalInformation", {"", monitor, "", ""}},
        {"SelfCalibrationResult", {R"({"method":"PUT"})", monitor, "", R"({"error":0})"}},
        {"FirmwareUpdate", {"", monitor, fileQuery, ""}},
        {"FirmwareUpdateDeviceVersion", {"", monitor, "", ""}},
        {"FileSystemDfwFile2", {"", idText, "", ""}},
    };
    const host::Plugin plugin(host::Plugin::defaultFile());
    const Raising raising;
    for (const DWORD code : {0xE06D7363UL /* C++ of Microsoft's compiler */, 1722UL /* a failed remote call */}) {
        raisedCode = code;
        for (const Request& request : requests) {
            int unanswered = 0;
            bool hasRaised = true;
            for (int n = 1; hasRaised; ++n) {
                const Json handles = simulator::openHandles();
                const simulator::Recording recording;
                untilRaised = n;
                const std::uint32_t promise = request.call(plugin);
                hasRaised = untilRaised == 0;
                untilRaised = 0;

                // Without an answer are the two functions of the host itself that make and settle the promise.
                if (recording.responses.empty()) {
                    ++unanswered;
                    ASSERT_EQ(promise == 0, n == 1);
                    continue;
                }
                ASSERT_EQ(recording.responses.size(), 1U) << request.resource << " at call " << n;
                const int status = recording.responses[0]["status"];
                ASSERT_EQ(recording.responses[0]["promise"], promise);
                if (status != 200) {
                    ASSERT_EQ(Json::parse(recording.responses[0]["text"].get<std::string>())["error"]["name"],
                              "UnknownError");
                    ASSERT_EQ(simulator::lockedMonitors(), Json::array()) << request.resource << " at call " << n;
                    ASSERT_EQ(simulator::openHandles(), handles) << request.resource << " at call " << n;
                } else if (hasRaised) {
                    // It was a release that raised, or the log, or an event. What was not released is in the way.
                    page.simulate({{"simulate", "reset"}});
                }
                // On another thread, which a held lock would stop.
                std::uint32_t status2 = 0;
                std::thread([&] {
                    const simulator::Recording after;
                    request.call(plugin);
                    status2 = after.responses[0]["status"];
                }).join();
                ASSERT_EQ(status2, 200U) << request.resource << " after call " << n;
            }
            EXPECT_EQ(unanswered, 2) << request.resource;
        }
    }
    page.close(id);
    simulator::releaseHandles();
}

// ---- Limits of the process ------------------------------------------------------------------------------------------

const Request refused{"Brightness", {R"({"method":"PUT"})", monitor, "", R"("bright")"}};

std::vector<DWORD> takeTlsIndices() {
    std::vector<DWORD> indices;
    for (DWORD index = TlsAlloc(); index != TLS_OUT_OF_INDEXES; index = TlsAlloc()) indices.push_back(index);
    return indices;
}
std::size_t giveBack(const std::vector<DWORD>& indices) {
    for (const DWORD index : indices) TlsFree(index);
    return indices.size();
}

int statusOf(const Request& request, const host::Plugin& plugin) {
    const simulator::Recording recording;
    request.call(plugin);
    return recording.responses.at(0)["status"];
}

TEST(Plugin, LeavesNothingOfTheSystemsBehindWhenItIsUnloaded) {
    const auto load = [] {
        const host::Plugin plugin(host::Plugin::defaultFile());
        EXPECT_EQ(statusOf(refused, plugin), 400);
    };
    const auto handles = [] {
        DWORD count = 0;
        GetProcessHandleCount(GetCurrentProcess(), &count);
        return count;
    };
    load();
    const std::size_t indicesBefore = giveBack(takeTlsIndices());
    const DWORD handlesBefore = handles();
    for (int cycle = 0; cycle < 100; ++cycle) load();
    EXPECT_EQ(giveBack(takeTlsIndices()), indicesBefore);
    EXPECT_EQ(handles(), handlesBefore);
}

TEST(Plugin, NeedsNoTlsIndex) {
    statusOf(refused, host::Plugin(host::Plugin::defaultFile()));  // the simulator needs one
    const host::Plugin plugin(host::Plugin::defaultFile());
    const std::vector<DWORD> indices = takeTlsIndices();
    EXPECT_EQ(statusOf(refused, plugin), 400);
    int ofFreshThread = 0;
    std::thread([&] { ofFreshThread = statusOf(refused, plugin); }).join();
    EXPECT_EQ(ofFreshThread, 400);
    giveBack(indices);
}

}  // namespace
