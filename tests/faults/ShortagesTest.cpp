// Something that the plug-in needs fails: memory, and under Windows handles and thread storage.
#include <gtest/gtest.h>

#include "tests/faults/Sweep.h"

#ifdef _WIN32
#include <windows.h>
#endif

namespace faults {

namespace {

/// A request of each kind of flow.
struct Flow {
    const char* name;
    const char* resource;
    std::vector<const char*> before;  ///< requests that lead to it
    std::string request;
    int status = 200;             ///< when nothing fails
    const char* after = nullptr;  ///< a request that shows whether it was done,
    const char* shows = nullptr;  ///< by this answer if so
    std::string product = faults::product;
};

const std::string longText(600, 'x');  // longer than a log line that needs no memory
constexpr const char* open = R"(POST FileSystemDfwFile {"path":"$package"})";

const Flow flows[] = {
    {"read", "Brightness", {}, "GET"},
    {"refusal", "Brightness", {}, "PUT \"" + longText + "\"", 400},
    {"failure", "Brightness", {}, "PUT 101", 500},
    {"unknown monitor", "Brightness", {}, "GET", 500, nullptr, nullptr, longText},
    {"wrong method", "Monitors", {}, "PUT", 405},
    {"list", "Monitors", {}, R"(GET ?{"update":true})"},
    {"texts", "ModeName", {}, "GET"},
    {"numbers", "LUT1D", {}, R"(GET ?{"depth":10})"},
    {"table", "LUT3D", {}, "GET"},
    {"record", "SelfQCCalibrationTarget", {}, "GET"},
    {"write", "Brightness", {}, R"(PUT {"data":40})", 200, "GET", "40"},
    {"record written", "AutoLumisaveSettings", {}, R"(PUT {"minPoint":{"brightness":20}})"},
    {"texts written", "ModeName", {}, R"(PUT [{"mode":0,"name":"Plain"},{"mode":2,"name":"Web"}])"},
    {"critical section", "HybridGammaPXL", {}, "GET"},
    {"open", "FileSystemDfwFile", {}, open},
    {"describe", "FileSystemDfwFile", {open}, "GET /$id"},
    {"close", "FileSystemDfwFile", {open}, "DELETE /$id"},
    {"check", "FirmwareUpdate", {open}, R"(GET ?{"checkDfwFile":"$id"})"},
    {"device", "FirmwareUpdateDeviceVersion", {open}, R"(GET ?{"dfwFile":"$id"})"},
    {"transfer",
     "FirmwareUpdateTransfer",
     {open},
     R"(POST {"dfwFile":"$id"})",
     200,
     "GET FirmwareUpdate",
     R"({"state":2})"},
    {"trigger", "FirmwareUpdateTrigger", {open, R"(POST FirmwareUpdateTransfer {"dfwFile":"$id"})"}, "POST"},
};

struct Mode {
    Need need;
    bool lasting, cold, fresh;

    std::string name() const {
        constexpr const char* needs[] = {"memory", "handle"};
        return std::string(needs[static_cast<int>(need)]) + (lasting ? " from then on" : " once") +
               (cold ? ", cold" : "") + (fresh ? ", fresh thread" : "");
    }
};

class Shortage {
 public:
    Shortage(Guest& guest, const Flow& flow, const Mode& mode) : guest_(guest), flow_(flow), mode_(mode) {}

    /// The n-th of what is needed fails, if so many are.
    Outcome run(long n) {
        if (mode_.cold)
            guest_.reload();
        else
            guest_.ask("Monitors", "GET");
        const std::size_t handlesBefore = openHandles();
        for (const char* line : flow_.before) prepare(line);

        Disturbance disturbance;
        disturbance.need = mode_.need, disturbance.refused = n, disturbance.lasting = mode_.lasting;
        disturbance.onFreshThread = mode_.fresh;
        Request request = parseRequest(flow_.resource, substitute(flow_.request, variables_));
        if (flow_.product != product) request.texts[1] = Json{{"product", flow_.product}, {"serial", serial}}.dump();
        Outcome outcome = guest_.ask(request, disturbance);
        judge(outcome, request, handlesBefore);
        finish(outcome, handlesBefore);
        return outcome;
    }

 private:
    void prepare(const char* line) {
        const Outcome outcome = guest_.ask(flow_.resource, substitute(line, variables_));
        if (outcome.value.is_object()) variables_["$id"] = outcome.value.value("id", "");
    }

    void judge(Outcome& outcome, const Request& request, std::size_t handlesBefore) {
        const std::string told = "answers " + outcome.text.substr(0, 200);
        const bool isUnknown =
            outcome.status == 500 && outcome.error.is_object() && outcome.error.value("name", "") == "UnknownError";
        const bool isUsual = outcome.status == flow_.status;
        // A library that cannot be loaded has none of its functions.
        const bool isWithoutLibrary = mode_.cold && outcome.status == 404;
        // Neither can a file be opened without a handle.
        const bool isWithoutFile = mode_.need == Need::handle && outcome.status == 400;
        const bool isExpected = isUnknown || isWithoutLibrary || isWithoutFile;
        outcome.require(outcome.isLost || isUsual || (outcome.refused && isExpected), told);
        outcome.require(!outcome.log.empty() || mode_.cold, "is not logged");

        const bool isDone = outcome.status == 200;
        const bool opens = request.method == "POST" && request.resource == "FileSystemDfwFile";
        if (opens && isDone) variables_["$id"] = outcome.value.value("id", "");
        const bool closes = request.method == "DELETE";
        const std::size_t expected = opens ? isDone : closes ? !isDone : !flow_.before.empty();
        outcome.require(openHandles() == handlesBefore + expected,
                        told + " and leaves " + simulator::openHandles().dump() + " open");
        outcome.require(simulator::lockedMonitors().empty(), "leaves monitors locked");
        if (!flow_.after) return;
        const Outcome after = guest_.ask(flow_.resource, flow_.after);
        outcome.require((after.value.dump() == flow_.shows) == isDone,
                        told + ", but what shows it answers " + after.text);
    }

    /// With everything there again, all is as it was, and the next request is answered and logged.
    void finish(Outcome& outcome, std::size_t handlesBefore) {
        if (const auto id = variables_.find("$id"); id != variables_.end())
            guest_.ask("FileSystemDfwFile", "DELETE /" + id->second);
        variables_ = {{"$package", packageFile()}};
        outcome.require(openHandles() == handlesBefore, "leaves a handle open for good");
        simulator::simulate({{"simulate", "reset"}});
        const Outcome next = guest_.ask("Brightness", "GET");
        outcome.require(next.value == 50 && next.problems.empty(), "the next request answers " + next.text);
        outcome.require(!next.log.empty(), "the next request is not logged");
    }

    Guest& guest_;
    const Flow& flow_;
    const Mode mode_;
    std::map<std::string, std::string> variables_{{"$package", packageFile()}};
};

void run(Sweep& sweep, Guest& guest, const Flow& flow, const Mode& mode) {
    if (mode.cold && !flow.before.empty()) return;  // that would make it warm
    // To load the plug-in for each point takes long.
    const long step = isComplete() || !mode.cold ? 1 : 5;
    for (long n = 1;; n += step) {
        sweep.begin(std::string(flow.name) + ", " + mode.name() + ": number " + std::to_string(n));
        const Outcome outcome = Shortage(guest, flow, mode).run(n);
        sweep.end(outcome);
        if (!outcome.refused) return;
    }
}

TEST(Faults, OfMemoryAndOtherSuppliesAreAnswered) {
    Guest guest;
    Sweep sweep("shortages");
    std::vector<Need> needs{Need::memory};
#ifdef _WIN32
    needs.push_back(Need::handle);
#endif
    for (const Need need : needs)
        for (const bool lasting : {false, true})
            for (const bool cold : {false, true})
                for (const bool fresh : {false, true})
                    for (const Flow& flow : flows) run(sweep, guest, flow, {need, lasting, cold, fresh});
}

std::size_t openSystemHandles() {
#ifdef _WIN32
    DWORD count = 0;
    GetProcessHandleCount(GetCurrentProcess(), &count);
    return count;
#else
    return 0;
#endif
}

// Windows has 1,088 indices of thread storage, and a plug-in that keeps one each time ends there.
TEST(Faults, LoadingAndUnloadingLeavesNothingBehind) {
    std::size_t handlesBefore = 0;
    for (int cycle = 0; cycle < (isComplete() ? 3000 : 1200); ++cycle) {
        if (cycle == 1) handlesBefore = openSystemHandles();
        const host::Session session;
        const Json exchange = session.call(host::Request{"GET", "Brightness", "TQ271-P", "10000001"});
        ASSERT_EQ(exchange["responses"].size(), 1U) << cycle;
        ASSERT_EQ(exchange["responses"][0]["status"], 200) << cycle;
        ASSERT_EQ(exchange["log"].size(), 1U) << cycle;
    }
    EXPECT_EQ(openSystemHandles(), handlesBefore);
}

}  // namespace

}  // namespace faults
