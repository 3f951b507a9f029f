// The examination for people.
#include <algorithm>
#include <nlohmann/json.hpp>

#include "host/Doctor.h"
#include "host/Report.h"

namespace host {

namespace {

constexpr std::size_t lineLength = 100;

std::string padded(std::string text, std::size_t width) {
    if (text.size() < width) text.append(width - text.size(), ' ');
    return text;
}

/// Words in lines that begin with the indentation, the first of which has a text before it already.
std::string wrapped(const std::string& words, std::size_t indentation, std::string line) {
    std::string lines;
    for (std::size_t start = 0; start < words.size();) {
        const auto end = std::min(words.find(' ', start), words.size());
        const auto word = words.substr(start, end - start);
        if (line.size() > indentation && line.size() + 1 + word.size() > lineLength) {
            lines += line + "\n";
            line.assign(indentation, ' ');
        }
        line += (line.size() > indentation ? " " : "") + word;
        start = end + 1;
    }
    return lines + line + "\n";
}

std::string joined(const Json& names) {
    std::string text;
    for (const auto& name : names) text += (text.empty() ? "" : ", ") + name.get<std::string>();
    return text;
}

std::string textOr(const Json& text, const std::string& otherwise) {
    return text.is_string() ? text.get<std::string>() : otherwise;
}

/// "197 of 212 by name", or nothing.
std::string share(const Json& library, const char* member, const std::string& what) {
    if (!library.contains(member)) return "";
    const auto& functions = library[member];
    const auto count = functions["count"].get<std::size_t>(), missing = functions["missing"].size();
    const auto total = std::to_string(count);
    return (missing == 0 ? total : std::to_string(count - missing) + " of " + total) + " " + what;
}

class Report {
 public:
    Report(const Style& style, const Json& examination) : style_(style), examination_(examination) {}

    std::string filesText() {
        addLine("libpell " + versionOf(examination_["plugin"]) + "  " +
                examination_["plugin"]["file"].get<std::string>());
        addTitle("Libraries");
        for (const auto& library : examination_["libraries"]) addLibrary(library);
        addUnavailable();
        addTitle("Problems");
        addProblems(Json::array());
        return std::move(text_);
    }

    std::string restText(const Json& known) {
        addTitle("Library that writes the log");
        addLibrary(examination_["libraries"].back());
        addTokens();
        addMonitors();
        addTitle("Problems found since");
        addProblems(known);
        addConclusion();
        return std::move(text_);
    }

 private:
    void addLine(const std::string& line) { text_ += line.substr(0, line.find_last_not_of(' ') + 1) + "\n"; }
    void addTitle(const std::string& title) { text_ += "\n" + paint(style_, bold, title) + "\n"; }

    static std::string versionOf(const Json& library) { return textOr(library["version"], "version unknown"); }

    void addLibrary(const Json& library) {
        const auto isFound = library["found"].is_string();
        auto functions = share(library, "imported", "imported");
        const auto byName = share(library, "byName", "by name");
        functions += (functions.empty() || byName.empty() ? "" : ", ") + byName;
        const auto isUnusable = std::ranges::any_of(
            library["searched"], [](const Json& searched) { return searched["state"] == "unusable"; });
        const auto missing = padded(isUnusable ? "unusable" : "missing", 15);
        addLine("  " + padded(library["file"], 25) +
                (isFound ? padded(versionOf(library), 15) : paint(style_, library["needed"] ? red : bold, missing)) +
                "  " + (isFound ? functions : ""));
        addLine("      " + paint(style_, dim, searchOf(library)));
    }

    /// Where it was found, or where it was looked for.
    static std::string searchOf(const Json& library) {
        if (library["found"].is_string())
            return "in " + library["place"].get<std::string>() + ": " + library["found"].get<std::string>();
        auto places = Json::array();
        for (const auto& searched : library["searched"]) {
            if (searched["state"] == "unusable") return "unusable: " + searched["file"].get<std::string>();
            if (places.empty() || places.back() != searched["place"]) places.push_back(searched["place"]);
        }
        return places.empty() ? "not looked for: its folder is unknown" : "not in " + joined(places);
    }

    void addUnavailable() {
        const auto& unavailable = examination_["unavailable"];
        addTitle("Resources with requests that answer 404");
        if (unavailable.is_null()) return addLine("  unknown, since libpell or libdmc is missing");
        if (unavailable.empty()) addLine("  none");
        for (const auto& [prefix, library] :
             {std::pair("DmCtrl", "libdmc"), {"FW", "libfwupdate"}, {"Plg_", "libPlugin"}}) {
            auto names = Json::array();
            for (const auto& entry : unavailable)
                if (std::ranges::any_of(entry["functions"], [start = prefix](const Json& function) {
                        return function.get<std::string>().starts_with(start);
                    }))
                    names.push_back(entry["resource"]);
            if (!names.empty()) text_ += wrapped(joined(names), 16, padded(std::string("  ") + library, 16));
        }
    }

    void addTokens() {
        addTitle("Folders for paths");
        for (const auto& entry : examination_["tokens"])
            addLine("  " + padded(entry["token"], 25) + textOr(entry["folder"], "unknown"));
    }

    void addMonitors() {
        const auto& monitors = examination_["monitors"];
        addTitle(!monitors.is_null() && monitors["simulated"] ? "Monitors (simulated)" : "Monitors");
        if (monitors.is_null()) return addLine("  not asked: libpell cannot be loaded");
        if (monitors["list"].empty()) addLine("  none");
        const Json* previous = nullptr;
        for (const auto& monitor : monitors["list"]) {
            const auto isLike = [&](const char* member) { return previous && (*previous)[member] == monitor[member]; };
            const auto like =
                isLike("supported") && isLike("unsupported") && isLike("unavailable") && isLike("failing");
            text_ += wrapped(like ? "the same" : supportOf(monitor), 27, padded("  " + nameOf(monitor), 27));
            previous = &monitor;
        }
    }

    static std::string nameOf(const Json& monitor) {
        return monitor["product"].get<std::string>() + "/" + monitor["serial"].get<std::string>();
    }

    static std::string supportOf(const Json& monitor) {
        const auto count = [&](const char* member) { return monitor[member].size(); };
        auto words = "supports " + std::to_string(count("supported"));
        if (count("unsupported") > 0)
            words += ", but not these " + std::to_string(count("unsupported")) + ": " + joined(monitor["unsupported"]);
        if (count("unavailable") > 0) words += "; " + std::to_string(count("unavailable")) + " answer 404";
        if (count("failing") > 0) words += "; " + std::to_string(count("failing")) + " do not tell";
        return words;
    }

    void addProblems(const Json& known) {
        bool isFirst = true;
        for (const auto& problem : examination_["problems"]) {
            if (std::ranges::find(known, problem) != known.end()) continue;
            isFirst = false;
            const auto isError = problem["severity"] == "error";
            const auto lines = wrapped(problem["text"], 11, padded(isError ? "  error" : "  warning", 11));
            text_ += isError ? paint(style_, red, lines.substr(0, 7)) + lines.substr(7) : lines;
            text_ += wrapped(problem["remedy"], 11, std::string(11, ' ') + "->");
        }
        if (isFirst) addLine("  none");
    }

    void addConclusion() {
        const auto isGood = examination_["ok"].get<bool>();
        const auto end = !isGood                            ? "libpell cannot work here."
                         : examination_["problems"].empty() ? "All is well."
                                                            : "libpell works here.";
        text_ += "\n" + paint(style_, isGood ? green : red, end) + "\n";
    }

    const Style& style_;
    const Json& examination_;
    std::string text_;
};

}  // namespace

std::string formatFiles(const Style& style, const Json& examination) {
    return Report(style, examination).filesText();
}

std::string formatRest(const Style& style, const Json& examination, const Json& told) {
    return Report(style, examination).restText(told.at("problems"));
}

}  // namespace host
