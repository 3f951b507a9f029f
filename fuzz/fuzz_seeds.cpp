// Makes what the fuzzers start from: fuzz_seeds CATALOGUE DIRECTORY writes, of the catalogue's examples,
//   DIRECTORY/json/*            their bodies and answers, and texts at the edges of the dialect
//   DIRECTORY/exports/*         the requests, undisturbed and with each of their first calls disturbed
//   DIRECTORY/dictionary        every text in them
#include <filesystem>
#include <fstream>
#include <iostream>
#include <nlohmann/json.hpp>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "tests/Example.h"

namespace {

using nlohmann::json;
namespace fs = std::filesystem;

class Seeds {
 public:
    explicit Seeds(fs::path directory) : directory_(std::move(directory)) {
        for (const auto kind : {"json", "exports"}) fs::create_directories(directory_ / kind);
    }

    void add(const std::string& kind, const std::string& text) {
        if (text.size() > 4096 || !known_.insert(kind + text).second) return;
        std::ofstream(directory_ / kind / std::to_string(known_.size()), std::ios::binary) << text;
    }

    void addWords(const json& value) {
        if (value.is_string()) words_.insert(value.dump(-1, ' ', true));
        if (value.is_object())
            for (const auto& [name, member] : value.items()) words_.insert(json(name).dump(-1, ' ', true));
        if (value.is_structured())
            for (const json& item : value) addWords(item);
    }

    void writeDictionary() const {
        std::ofstream file(directory_ / "dictionary");
        for (const auto& word : words_)
            if (word.size() < 100 && word.find('\\') == std::string::npos)
                file << "\"\\\"" << word.substr(1, word.size() - 2) << "\\\"\"\n";
    }

 private:
    fs::path directory_;
    std::set<std::string> known_;
    std::set<std::string> words_;
};

// What companions do, as fuzz_exports reads it.
const std::string longLists("\0\x60\0\x38\0\0\0\0\0\0\0\0", 12);  // all lists in two steps have 65536 items
std::string answerAt(std::size_t call, char result) {
    return std::string({static_cast<char>(call), '\x02', result}) + std::string(9, '\0');
}
std::string failureAt(std::size_t call) {
    return answerAt(call, 5);
}
std::string zeroAt(std::size_t call) {  // no handle, no text, "no"
    return answerAt(call, 0);
}

/// As many requests as fuzz_exports takes of an input.
using Group = std::vector<std::string>;
constexpr std::size_t mostRequests = 8;

void addGroup(Seeds& seeds, const Group& group) {
    const auto add = [&](auto departureOf) {
        std::string text;
        for (std::size_t i = 0; i < group.size(); ++i) text += departureOf(i) + "\n" + group[i];
        seeds.add("exports", text);
    };
    add([](std::size_t) { return std::string(); });
    add([](std::size_t) { return longLists; });
    for (std::size_t call = 0; call < 8; ++call)
        add([&](std::size_t i) { return (call + i) % 2 ? failureAt(call) : zeroAt(call); });
}

std::string textOf(const tests::Example& request) {
    const auto parameters = request.id.empty() ? "0" : json{{"id", request.id}}.dump();
    return request.resource + "\n" + request.method + "\n" + parameters + "\n" + request.query + "\n" + request.body +
           "\n";
}

/// Opens a package and asks for it, undisturbed until then.
void addFileRequest(Seeds& seeds, const std::string& name, const std::string& request) {
    const auto open = textOf(tests::parseExample("POST {\"path\":\"$package\"}", name));
    for (std::size_t call = 0; call < 8; ++call)
        for (const auto& departure : {failureAt(call), zeroAt(call)})
            seeds.add("exports", "\n" + open + departure + "\n" + textOf(tests::parseExample(request, name)));
}

void addResource(Seeds& seeds, const std::string& name, const json& resource) {
    Group group;
    for (const json& example : resource.at("examples")) {
        const auto request = tests::parseExample(example.at(0).get<std::string>(), name);
        const auto answer = example.at(1).get<std::string>();
        for (const auto& text : {request.query, request.body, answer.substr(std::min<std::size_t>(4, answer.size()))}) {
            const auto value = json::parse(text, nullptr, false);
            if (value.is_discarded()) continue;
            seeds.add("json", text);
            seeds.addWords(value);
        }
        group.push_back(textOf(request));
        seeds.add("exports", "\n" + group.back());
        if (group.size() == mostRequests) addGroup(seeds, std::exchange(group, {}));
        if (request.id == "$id") addFileRequest(seeds, name, example.at(0));
    }
    if (!group.empty()) addGroup(seeds, group);
}

}  // namespace

int main(int count, char** arguments) {
    if (count != 3) {
        std::cerr << "fuzz_seeds CATALOGUE DIRECTORY\n";
        return 2;
    }
    Seeds seeds(arguments[2]);
    const auto catalogue = json::parse(std::ifstream(arguments[1]));
    for (const auto& [name, resource] : catalogue.at("resources").items()) addResource(seeds, name, resource);
    for (const std::string_view text :
         {R"("\ud83d\ude00\u0000\b\/\\")", "[1,", "{\"a\":1,", "[", "{", "\xEF\xBB\xBF[]", "\xEF\xBB{}",
          "-9223372036854775808", "9223372036854775808", "1e999", "-0.0", "5e-324", "1.7976931348623157e308",
          "0.1000000000000000055511151231257827", "[[[[[[{}]]]]]]", "{\"a\":1,\"a\":[true,false,null]}"})
        seeds.add("json", std::string(text));
    seeds.add("json", std::string("1\0x", 3));
    seeds.writeDictionary();
}
