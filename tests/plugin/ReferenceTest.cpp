// The page developers' reference cannot lie: every example in docs/resources/ is asked of the real plug-in.
//
// A section "## Resource" may have blocks fenced as ```pell. In a block, a line "METHOD [?QUERY] [BODY]" is a request
// and the line after it the answer: the status, and either the value as JSON or an error's "Name Message [(reason)]".
// In a value, "..." as the last element of a list stands for any number of further elements. All blocks of a section
// run in order on monitors fresh from the scenario.
#include <cctype>
#include <filesystem>
#include <fstream>
#include <map>
#include <set>

#include "exports/ResourceTable.h"
#include "tests/plugin/Firmware.h"

namespace {

struct Example {
    std::string request;
    std::string answer;
};

struct Section {
    std::string resource;
    std::vector<Example> examples;
};

std::vector<Section> readReference() {
    std::vector<Section> sections;
    for (const auto& file : std::filesystem::directory_iterator(PELL_REFERENCE)) {
        std::ifstream stream(file.path());
        bool inBlock = false;
        std::string request;
        for (std::string line; std::getline(stream, line);) {
            if (line.starts_with("## ")) {
                sections.push_back({line.substr(3), {}});
            } else if (line.starts_with("```")) {
                inBlock = line == "```pell";
            } else if (inBlock && !line.empty()) {
                if (request.empty()) {
                    request = line;
                } else {
                    sections.back().examples.push_back({request, line});
                    request.clear();
                }
            }
        }
    }
    return sections;
}

/// Cuts the text before the first space, and that space.
std::string takeWord(std::string& text) {
    const auto end = std::min(text.find(' '), text.size());
    std::string word = text.substr(0, end);
    text.erase(0, end + 1);
    return word;
}

using Variables = std::map<std::string, std::string>;

void replaceVariables(std::string& text, const Variables& variables) {
    for (const auto& [name, value] : variables)
        for (auto at = text.find(name); at != std::string::npos; at = text.find(name, at + value.size()))
            text.replace(at, name.size(), value);
}

bool matches(const Json& expected, const Json& actual, Variables& variables) {
    if (expected.is_string() && expected.get<std::string>().starts_with("$") && actual.is_string()) {
        variables[expected] = actual;
        return true;
    }
    if (expected.is_array() && actual.is_array() && !expected.empty() && expected.back() == "...") {
        if (actual.size() < expected.size() - 1) return false;
        for (std::size_t i = 0; i + 1 < expected.size(); ++i)
            if (!matches(expected[i], actual[i], variables)) return false;
        return true;
    }
    if (expected.is_object() && actual.is_object() && expected.size() == actual.size()) {
        for (const auto& [name, value] : expected.items())
            if (!actual.contains(name) || !matches(value, actual[name], variables)) return false;
        return true;
    }
    if (expected.is_array() && actual.is_array() && expected.size() == actual.size())
        return std::equal(expected.begin(), expected.end(), actual.begin(),
                          [&](const Json& left, const Json& right) { return matches(left, right, variables); });
    return expected == actual;
}

void check(Page& page, std::string resource, const Example& example, Variables& variables) {
    std::string rest = example.request;
    replaceVariables(rest, variables);
    const std::string method = takeWord(rest);
    if (!rest.empty() && std::isupper(static_cast<unsigned char>(rest[0]))) resource = takeWord(rest);
    host::Texts texts = host::Request{method, resource, page.product, page.serial, "", ""}.texts();
    if (rest.starts_with("/")) texts[1] = Json{{"id", takeWord(rest).substr(1)}}.dump();
    std::string query;
    if (rest.starts_with("?")) {
        // A query is a JSON object: it ends where its text parses.
        for (std::size_t end = rest.find('}'); query.empty() && end != std::string::npos; end = rest.find('}', end + 1))
            if (Json::accept(rest.substr(1, end))) {
                query = rest.substr(1, end);
                rest.erase(0, std::min(end + 2, rest.size()));
            }
        ASSERT_FALSE(query.empty()) << resource << ": " << example.request;
    }
    texts[2] = query;
    texts[3] = rest;
    const Answer answer = page.call(resource, texts);
    if (!answer.error.is_null()) {
        EXPECT_EQ(summary(answer), example.answer) << resource << ": " << example.request;
        return;
    }
    std::string expected = example.answer;
    EXPECT_EQ(std::to_string(answer.status), takeWord(expected)) << resource << ": " << example.request;
    const auto dots = expected.find(", ...]");
    for (auto at = dots; at != std::string::npos; at = expected.find(", ...]", at))
        expected.replace(at, 6, R"(, "..."])");
    const Json value = Json::parse(expected, nullptr, false);
    EXPECT_FALSE(value.is_discarded()) << resource << ": " << example.answer << "\nanswers: " << answer.text;
    EXPECT_TRUE(matches(value, answer.value, variables))
        << resource << ": " << example.request << "\nsays:    " << example.answer << "\nanswers: " << answer.text;
}

TEST(Reference, ExamplesAnswerAsTheySay) {
    std::size_t count = 0;
    for (const Section& section : readReference()) {
        Page page;
        const PackageFile package;
        Variables variables{
            {"$package", Json(package.path()).dump().substr(1, Json(package.path()).dump().size() - 2)}};
        for (const Example& example : section.examples) check(page, section.resource, example, variables);
        count += section.examples.size();
    }
    EXPECT_GT(count, 100U);
}

TEST(Reference, HasEveryResource) {
    std::set<std::string> documented;
    for (const Section& section : readReference())
        if (!section.examples.empty()) documented.insert(section.resource);
    for (const auto& row : torvo::exports::resourceTable)
        if (std::string(row.name) == row.entry)
            EXPECT_TRUE(documented.contains(row.name)) << row.name << " is not in docs/resources/";
}

}  // namespace
