#include "host/Replay.h"

#include <algorithm>
#include <fstream>
#include <map>
#include <regex>
#include <set>
#include <stdexcept>

#include "host/Journal.h"
#include "host/Platform.h"

namespace host {

namespace {

constexpr int supportedVersion = 1;

struct Line {
    std::size_t number;
    Json json;

    std::uint64_t id() const { return json.at("id"); }
};

[[noreturn]] void fail(std::size_t line, const std::string& reason) {
    throw std::invalid_argument("line " + std::to_string(line) + ": " + reason);
}

struct Lines {
    Json head;
    std::vector<Line> others{};  ///< in the order in which their requests began
    std::size_t tornLine = 0;
};

Lines readRecording(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    if (!stream) throw std::runtime_error("cannot read " + toUtf8(file));
    Lines lines;
    std::size_t number = 0;
    for (std::string text; std::getline(stream, text);) {
        ++number;
        Json json;
        try {
            json = parseJson(text);
        } catch (const std::invalid_argument& error) {
            if (number == 1 || !stream.eof()) fail(number, error.what());
            lines.tornLine = number;
            break;
        }
        if (number == 1) {
            if (!json.is_object() || json.value("format", Json()) != "pell-recording") fail(1, "this is no recording");
            if (json.value("version", Json()) != supportedVersion)
                fail(1, "recordings of version " + writeJson(json.value("version", Json())) + " are not known");
            lines.head = std::move(json);
            continue;
        }
        const auto isWhole = json.is_object() && json.value("id", Json()).is_number_unsigned() &&
                             (json.contains("simulate") || (json.contains("resource") && json.contains("texts")));
        if (!isWhole) fail(number, "this is neither a request nor a simulation");
        lines.others.push_back({number, std::move(json)});
    }
    if (lines.head.is_null()) fail(1, "this is no recording");
    std::stable_sort(lines.others.begin(), lines.others.end(),
                     [](const Line& a, const Line& b) { return a.id() < b.id(); });
    return lines;
}

// ---- What is the same although it differs ---------------------------------------------------------------------------

/// Texts of the recording that are others now: identifiers of files, and paths.
class Names {
 public:
    void add(const std::string& recorded, const std::string& replayed) { names_[recorded] = replayed; }

    std::string apply(std::string text) const {
        for (const auto& [recorded, replayed] : names_)
            for (std::size_t at = 0; (at = text.find(recorded, at)) != std::string::npos; at += replayed.size())
                text.replace(at, recorded.size(), replayed);
        return text;
    }

    /// Of a text that may be JSON, where paths are escaped.
    std::string applyInside(const std::string& text) const {
        auto json = parseIfJson(text);
        if (!json.is_structured()) return apply(text);
        auto changed = json;
        applyToAll(changed);
        return changed == json ? text : writeJson(changed);
    }

    /// Both are identifiers, and neither stands for another one.
    bool mayBe(const std::string& recorded, const std::string& replayed) const {
        static const std::regex identifier("[0-9a-fA-F]{8}(-[0-9a-fA-F]{4}){3}-[0-9a-fA-F]{12}");
        return std::regex_match(recorded, identifier) && std::regex_match(replayed, identifier) &&
               !names_.contains(recorded) &&
               std::none_of(names_.begin(), names_.end(), [&](const auto& entry) { return entry.second == replayed; });
    }

 private:
    void applyToAll(Json& json) const {
        if (json.is_string())
            json = apply(json);
        else if (json.is_structured())
            for (auto& part : json) applyToAll(part);
    }

    std::map<std::string, std::string> names_;
};

/// A function of the firmware library has a handle as its first number.
class Handles {
 public:
    void translate(Json& calls, const Json& replayed) {
        for (std::size_t at = 0; at < calls.size() && at < replayed.size(); ++at) {
            const auto function = calls[at].value("function", std::string());
            if (!function.starts_with("FW") || replayed[at].at("function") != function) continue;
            const auto recordedHandle = handleOf(calls[at]);
            const auto replayedHandle = handleOf(replayed[at]);
            if (!recordedHandle || !replayedHandle) continue;
            const auto known = handles_.try_emplace(*recordedHandle, *replayedHandle).first;
            *handleOf(calls[at]) = known->second;
        }
    }

 private:
    template <class Call>
    static auto handleOf(Call& call) -> decltype(&call["arguments"][0]) {
        auto& arguments = call["arguments"];
        const auto found =
            std::find_if(arguments.begin(), arguments.end(), [](const Json& one) { return one.is_number(); });
        return found == arguments.end() ? nullptr : &*found;
    }

    std::map<Json, Json> handles_;
};

// ---- What is compared -----------------------------------------------------------------------------------------------

/// A text as the JSON that it is, so that a difference shows where it is.
Json opened(const Json& text) {
    if (!text.is_string()) return text;
    auto json = parseIfJson(text.get_ref<const std::string&>());
    return json.is_structured() ? json : text;
}

/// Without what differs by nature.
Json comparable(const Json& exchange) {
    Json result = {{"responses", exchange.at("responses")},
                   {"events", exchange.at("events")},
                   {"log", exchange.at("log")},
                   {"calls", Json::array()}};
    for (auto& response : result["responses"]) {
        response["text"] = opened(response["text"]);
        response["isOfThisRequest"] = response["promise"] == exchange.at("returned");
        response.erase("promise");
    }
    for (auto& event : result["events"]) event["text"] = opened(event["text"]);
    for (auto call : exchange.at("calls")) {
        // Once in the life of a process, whoever comes first.
        if (call.at("function").get_ref<const std::string&>().starts_with("Plg_")) continue;
        call.erase("milliseconds");
        result["calls"].push_back(std::move(call));
    }
    return result;
}

class Comparison {
 public:
    Comparison(Names& names, std::size_t line, std::string request, std::vector<Difference>& differences)
        : names_(names), line_(line), request_(std::move(request)), differences_(differences) {}

    void compare(const std::string& where, const Json& recorded, const Json& replayed) {
        if (recorded.is_object() && replayed.is_object()) {
            std::set<std::string> members;
            for (const auto* json : {&recorded, &replayed})
                for (const auto& [name, value] : json->items()) members.insert(name);
            for (const auto& name : members) compare(inner(where, name), at(recorded, name), at(replayed, name));
        } else if (recorded.is_array() && replayed.is_array() && recorded.size() == replayed.size()) {
            for (std::size_t at = 0; at < recorded.size(); ++at)
                compare(inner(where, std::to_string(at)), recorded[at], replayed[at]);
        } else if (recorded.is_string() && replayed.is_string()) {
            const auto translated = names_.apply(recorded);
            if (translated == replayed) return;
            if (names_.mayBe(recorded, replayed)) return names_.add(recorded, replayed);
            report(where, recorded, replayed);
        } else if (recorded != replayed) {
            report(where, recorded, replayed);
        }
    }

 private:
    static std::string inner(const std::string& where, const std::string& name) {
        return where.empty() ? name : where + "/" + name;
    }
    static const Json& at(const Json& json, const std::string& name) {
        static const Json nothing;
        const auto found = json.find(name);
        return found == json.end() ? nothing : *found;
    }
    void report(const std::string& where, const Json& recorded, const Json& replayed) {
        differences_.push_back({line_, request_, where, recorded, replayed, 0});
    }

    Names& names_;
    const std::size_t line_;
    const std::string request_;
    std::vector<Difference>& differences_;
};

// ---- Replaying ------------------------------------------------------------------------------------------------------

/// The monitors' time, as it went while it was recorded.
class Time {
 public:
    Time() { simulator::simulate({{"simulate", "speed"}, {"factor", 0}}); }
    ~Time() { simulator::simulate({{"simulate", "speed"}, {"factor", 1}}); }
    Time(const Time&) = delete;
    Time& operator=(const Time&) = delete;

    void setSpeed(double factor) { factor_ = factor; }

    /// Lets pass what passed since the line before had ended.
    void pass(const Json& line) {
        const auto start = line.value("time", 0.0);
        const auto gap = start - last_;
        if (last_ > 0 && gap > 0) simulator::simulate({{"simulate", "advance"}, {"milliseconds", gap * factor_}});
        last_ = std::max(last_, start + line.value("milliseconds", 0.0));
    }

 private:
    double factor_ = 1;
    double last_ = 0;
};

/// When what the lines record was under way.
class Spans {
 public:
    explicit Spans(const std::vector<Line>& lines) {
        for (const auto& [number, line] : lines) {
            const auto begin = line.value("time", 0.0);
            spans_.push_back({number, begin, begin + line.value("milliseconds", 0.0)});
        }
    }

    /// The first other line that ran together with this one; 0: none surely did.
    std::size_t together(std::size_t number) const {
        const auto isThis = [&](const Span& span) { return span.line == number; };
        const auto own = std::find_if(spans_.begin(), spans_.end(), isThis);
        const auto other = std::find_if(spans_.begin(), spans_.end(), [&](const Span& span) {
            return !isThis(span) && (beginsWithin(span, *own) || beginsWithin(*own, span));
        });
        return other == spans_.end() ? 0 : other->line;
    }

 private:
    struct Span {
        std::size_t line;
        double begin;
        double end;
    };

    /// Times are of whole milliseconds, rounded down; requests that quickly follow each other are not together.
    static bool beginsWithin(const Span& later, const Span& earlier) {
        return later.begin >= earlier.begin && later.begin + 1 <= earlier.end;
    }

    std::vector<Span> spans_;
};

std::string title(const Json& line) {
    auto text = line.value("method", "") + " " + line.at("resource").get<std::string>();
    if (line.contains("serial")) text += " of " + line.value("product", "") + "/" + line.value("serial", "");
    return text;
}

/// A package that is to be opened may lie elsewhere now.
void findFile(const Json& line, const std::filesystem::path& folder, Names& names) {
    const auto body = opened(line.at("texts").at(3));
    if (!body.is_object() || !body.contains("path") || !body.at("path").is_string()) return;
    const auto recorded = body.at("path").get<std::string>();
    if (std::filesystem::exists(fromUtf8(recorded))) return;
    const auto here = folder / fromUtf8(recorded.substr(recorded.find_last_of("/\\") + 1));
    if (std::filesystem::exists(here)) names.add(recorded, toUtf8(here));
}

void simulate(const Json& line, Time& time) {
    auto instruction = line;
    instruction.erase("id");
    instruction.erase("time");
    if (instruction.at("simulate") == "speed") return time.setSpeed(instruction.at("factor"));
    if (const auto scenario = instruction.find("scenario"); scenario != instruction.end())
        return simulator::loadScenario(*scenario);
    simulator::simulate(instruction);
}

}  // namespace

ReplayOutcome replay(const Session& session, const std::filesystem::path& file, const ReplayOptions& options) {
    const auto [head, lines, tornLine] = readRecording(file);
    const auto scenario = head.find("scenario");
    if (scenario != head.end() && !options.keepsMonitors) simulator::loadScenario(*scenario);
    const auto folder = std::filesystem::absolute(file).parent_path();
    ReplayOutcome outcome;
    outcome.tornLine = tornLine;
    outcome.lacksItsBeginning = head.value("incomplete", false);
    Names names;
    Handles handles;
    Time time;
    for (const auto& simulation : options.simulations) simulate(simulation, time);
    for (const auto& [number, line] : lines) try {
            time.pass(line);
            if (line.contains("simulate")) {
                simulate(line, time);
                continue;
            }
            ++outcome.requests;
            findFile(line, folder, names);
            auto texts = line.at("texts").get<Texts>();
            for (auto& text : texts) text = names.applyInside(text);
            auto recorded = comparable(line);
            const auto replayed = comparable(session.call(line.at("resource"), texts));
            handles.translate(recorded["calls"], replayed["calls"]);
            Comparison comparison(names, number, title(line), outcome.differences);
            // Answers first: they bring the identifiers that log and calls then have.
            for (const auto part : {"responses", "events", "log", "calls"})
                comparison.compare(part, recorded[part], replayed[part]);
        } catch (const std::exception& error) {
            fail(number, error.what());
        }
    const Spans spans(lines);
    for (auto& difference : outcome.differences) difference.together = spans.together(difference.line);
    return outcome;
}

}  // namespace host
