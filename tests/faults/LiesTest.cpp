// A function of a companion does not do what it should.
#include <gtest/gtest.h>

#include <fstream>
#include <set>

#include "tests/faults/Sweep.h"

namespace faults {

namespace {

/// What a function does instead of what it should.
struct Lie {
    const char* name;
    Json script{};  ///< an instruction to the simulator, its function aside
    enum { scripted, vanishes, unplugs, raises } kind = scripted;
    unsigned long code = 0;
};

const Lie allLies[] = {
    {"fails", {{"simulate", "return"}, {"result", 0x80000001}}},
    {"fails with an unknown code", {{"simulate", "return"}, {"result", 0xFFFF1234}}},
    {"has a notice", {{"simulate", "return"}, {"result", 7}}},
    {"fails without failing", {{"simulate", "return"}, {"result", 0x80000006}}},
    {"answers 0", {{"simulate", "return"}, {"result", 0}}},
    {"writes nothing", {{"simulate", "return"}, {"result", 0}, {"outputs", Json::array()}}},
    {"throws", {{"simulate", "throw"}}},
    {"answers NaN", {{"simulate", "lie"}, {"as", "NaN"}}},
    {"answers infinity", {{"simulate", "lie"}, {"as", "Infinity"}}},
    {"answers -1 and its counts are 4294967295", {{"simulate", "lie"}, {"as", -1}}},
    {"answers 0 and its counts are 0", {{"simulate", "lie"}, {"as", 0}}},
    {"answers 7 and its counts are 7", {{"simulate", "lie"}, {"as", 7}}},
    {"answers texts without NUL", {{"simulate", "lie"}, {"as", std::string(5000, 'x')}}},
    {"answers texts that are no UTF-8", {{"simulate", "lie"}, {"as", "\xC3\xFF\xED\xA0\x80"}}},
    {"has vanished", {}, Lie::vanishes},
    {"meets an unplugged monitor", {}, Lie::unplugs},
#ifdef _WIN32
    {"raises another compiler's exception", {}, Lie::raises, 0xE06D7363},
    {"raises an exception", {}, Lie::raises, 0xE0000001},
#endif
};

/// When a function lies: at one of its calls, or from that one on.
struct Point {
    std::size_t request;
    std::string function;
    int occurrence;
    bool lasting;
    const Lie* lie;
};

/// A value of a schema that names a member of a query.
Json exampleOf(const Json& schema) {
    if (schema.contains("const")) return schema["const"];
    if (schema.contains("enum")) return schema["enum"][0];
    const Json type = schema.value("type", Json("number"));
    return type == "string" ? Json("x") : type == "boolean" ? Json(true) : Json(0);
}

/// A request as the catalogue has it.
struct Line {
    const char* product;  ///< of its monitor
    std::string request;
    std::string answer{};  ///< of an example
    int status = 0;        ///< undisturbed
};

/// A resource with requests of all kinds that it knows: the examples of the catalogue, a GET of each row, and a PUT of
/// what each GET answers; and the same of a monitor that has the older one of two generations of functions.
class Subject {
 public:
    Subject(Guest& guest, const std::string& name, const Json& resource)
        : guest_(guest), name_(name), resource_(resource) {}

    void run(Sweep& sweep) {
        prepare();
        for (const Point& point : points_) {
            const Line& line = requests_[point.request];
            sweep.begin(name_ + ": " + (line.product == product ? "" : std::string(line.product) + ": ") +
                        line.request + ": " + point.function + " " + point.lie->name + ", call " +
                        std::to_string(point.occurrence) + (point.lasting ? " and later ones" : ""));
            Outcome outcome = perform(point);
            const bool isQuiet = point.lie->name == std::string_view("throws") && givesBack(point.function);
            outcome.require(!isQuiet || outcome.status == line.status, "answers " + outcome.text);
            sweep.end(outcome);
        }
    }

 private:
    void prepare() {
        prepare(product);
        if (resource_.value("of", "") == "monitor") prepare(olderProduct);
    }

    void prepare(const char* ofProduct) {
        std::vector<std::string> putBacks;
        for (const Json& example : resource_["examples"]) add({ofProduct, example[0], example[1]}, &putBacks);
        for (const Json& row : resource_["methods"].value("GET", Json::array())) {
            if (!row.value("query", Json()).is_object()) continue;
            Json query = Json::object();
            for (const auto& [member, kind] : row["query"].items())
                query[member] = kind.contains("schema") ? exampleOf(kind["schema"]) : Json(true);
            add({ofProduct, "GET ?" + query.dump()}, &putBacks);
        }
        for (const std::string& line : putBacks) add({ofProduct, line}, nullptr);
    }

    /// What such a function throws is no failure of the request.
    static bool givesBack(const std::string& function) {
        return function.ends_with("Release")
                   ? function.starts_with("FW")
                   : function == "DmCtrlUnlockMonitor" || function == "DmCtrlExitCriticalSection";
    }

    /// Asks the request undisturbed for what can go wrong in it, and for what a PUT can put back.
    void add(const Line& line, std::vector<std::string>* putBacks) {
        requests_.push_back(line);
        const auto handlesBefore = openHandles();
        const Outcome outcome = perform(requests_.size() - 1, {});
        requests_.back().status = outcome.status;
        if (outcome.calls.empty() && openHandles() == handlesBefore && outcome.status != 200) return;
        const Request request = parseRequest(name_, line.request, line.product);
        if (putBacks && request.method == "GET" && outcome.status == 200 && resource_["methods"].contains("PUT"))
            putBacks->push_back("PUT " + (request.texts[2].empty() ? "" : "?" + request.texts[2] + " ") +
                                outcome.value.dump());
        std::map<std::string, int> functions;
        for (const Json& call : outcome.calls) ++functions[call["function"]];
        for (const auto& [function, calls] : functions)
            for (const Lie& lie : allLies) addPoints(request.method, function, calls, lie);
    }

    void addPoints(const std::string& method, const std::string& function, int calls, const Lie& lie) {
        std::vector<Point> found;
        const bool isAboutAll = lie.kind == Lie::vanishes || lie.kind == Lie::unplugs;
        const std::size_t request = requests_.size() - 1;
        if (!isAboutAll) found.push_back({request, function, 1, true, &lie});
        if (!isAboutAll && calls > 1) found.push_back({request, function, calls, false, &lie});
        found.push_back({request, function, 1, false, &lie});
        if (lie.kind == Lie::unplugs && calls > 1) found.push_back({request, function, calls, false, &lie});
        if (isComplete()) {
            points_.insert(points_.end(), found.begin(), found.end());
            return;
        }
        // Otherwise the first of them, and another one each time, for each function of each method; those that look
        // monitors up are the same in all resources.
        const bool isLookUp = function == "DmCtrlGetNumMonitors" || function == "DmCtrlGetSerialProduct";
        if (isLookUp && name_ != "Brightness" && name_ != "Monitors") return;
        if (!seen_.insert(method + function + lie.name).second) return;
        points_.push_back(found[0]);
        if (const std::size_t other = seen_.size() % found.size()) points_.push_back(found[other]);
    }

    Outcome perform(const Point& point) {
        Disturbance disturbance;
        disturbance.function = point.function, disturbance.occurrence = point.occurrence;
        const Lie& lie = *point.lie;
        if (lie.kind == Lie::vanishes) {
            disturbance.vanished = point.function;
            return perform(point.request, disturbance);
        }
        const char* const unplugged = requests_[point.request].product;
        Json script = lie.kind == Lie::unplugs
                          ? Json{{"simulate", "unplug"}, {"product", unplugged}, {"serial", serial}}
                          : lie.script;
        if (lie.kind == Lie::scripted) {
            script["function"] = point.function;
            if (!point.lasting) script["times"] = 1;
        }
        disturbance.isForeign = lie.kind == Lie::raises;
        disturbance.action = [&] {
            if (lie.kind == Lie::raises) return raise(lie.code);
            simulator::simulate(script);
        };
        return perform(point.request, disturbance);
    }

    /// A request on fresh monitors, after those before it that open files, if it is about one.
    Outcome perform(std::size_t index, const Disturbance& disturbance) {
        simulator::simulate({{"simulate", "reset"}});
        const auto handlesBefore = openHandles();
        variables_ = {{"$package", packageFile()}};
        const auto isOfSameMonitor = [&](const Line& line) { return line.product == requests_[index].product; };
        const auto isAboutFile = [&](const Line& line) { return line.request.find('$') != std::string::npos; };
        const auto begin = std::find_if(requests_.begin(), requests_.end(), isOfSameMonitor);
        const auto end = requests_.begin() + static_cast<std::ptrdiff_t>(index);
        if (std::any_of(begin, end, isAboutFile))
            for (auto line = begin; line != end; ++line) ask(*line, {});
        Outcome outcome = ask(*end, disturbance);
        outcome.require(!outcome.log.empty(), "is not logged");

        simulator::simulate({{"simulate", "reset"}});
        for (const auto& [variable, id] : variables_)
            for (const char* files : {"FileSystemDfwFile", "FileSystemDfwFile2"})
                if (variable != "$package") guest_.ask(files, "DELETE /" + id);
        // Without the function nothing is made that it would have to release, and what is open stays so.
        const bool isReleaseDisturbed = disturbance.function.ends_with("Release") && disturbance.vanished.empty();
        const std::size_t left = openHandles() - handlesBefore;
        outcome.require(left == 0 || isReleaseDisturbed, "leaves " + std::to_string(left) + " handles open");
        const Outcome next = guest_.ask("Brightness", "GET");
        outcome.require(next.value == 50 && next.problems.empty(), "the next request answers " + next.text);
        return outcome;
    }

    /// Remembers the identifier to which an example gives a name.
    Outcome ask(const Line& line, const Disturbance& disturbance) {
        Outcome outcome =
            guest_.ask(parseRequest(name_, substitute(line.request, variables_), line.product), disturbance);
        const auto begin = line.answer.find('$');
        if (begin != std::string::npos && outcome.value.is_object() && outcome.value.contains("id"))
            variables_[line.answer.substr(begin, line.answer.find('"', begin) - begin)] = outcome.value["id"];
        return outcome;
    }

    Guest& guest_;
    const std::string name_;
    const Json& resource_;
    std::vector<Line> requests_;
    std::vector<Point> points_;
    std::set<std::string> seen_;
    std::map<std::string, std::string> variables_;
};

TEST(Faults, OfCompanionsAreAnswered) {
    std::ifstream stream(host::Plugin::defaultFile().parent_path() / "catalogue.json");
    const Json catalogue = Json::parse(stream);
    Guest guest;
    Sweep sweep("lies");
    for (const auto& [name, resource] : catalogue["resources"].items()) Subject(guest, name, resource).run(sweep);
}

}  // namespace

}  // namespace faults
