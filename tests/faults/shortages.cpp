#include "tests/faults/Sweep.h"

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
        outcome.require(outcome.isLogged || mode_.cold, "is not logged");

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
        outcome.require(next.isLogged, "the next request is not logged");
    }

    Guest& guest_;
    const Flow& flow_;
    const Mode mode_;
    std::map<std::string, std::string> variables_{{"$package", packageFile()}};
};

}  // namespace

std::vector<Series> shortages(Guest& guest, bool complete) {
    std::vector<Series> all;
    std::vector<Need> needs{Need::memory};
#ifdef _WIN32
    needs.push_back(Need::handle);
#endif
    for (const Need need : needs)
        for (const bool lasting : {false, true})
            for (const bool cold : {false, true})
                for (const bool fresh : {false, true})
                    for (const Flow& flow : flows) {
                        if (cold && !flow.before.empty()) continue;  // that would make it warm
                        const Mode mode{need, lasting, cold, fresh};
                        // To load the plug-in for each point takes long.
                        const long step = complete || !cold ? 1 : 5;
                        const auto run = [&guest, &flow, mode, step, isOver = false](std::size_t point) mutable {
                            std::optional<std::pair<std::string, Outcome>> named;
                            const long n = 1 + step * static_cast<long>(point);
                            if (!isOver)
                                named.emplace("number " + std::to_string(n), Shortage(guest, flow, mode).run(n));
                            isOver = isOver || !named->second.refused;
                            return named;
                        };
                        all.push_back({std::string(flow.name) + ", " + mode.name(), run});
                    }
    return all;
}

}  // namespace faults
