// Makes what the fuzzers start from: fuzz_seeds CATALOGUE DIRECTORY writes, of the catalogue's examples,
//   DIRECTORY/json/*            their bodies and answers, and texts at the edges of the dialect
//   DIRECTORY/exports/*         the requests, one resource's in an input
//   DIRECTORY/dictionary        every text in them
#include <filesystem>
#include <fstream>
#include <iostream>
#include <nlohmann/json.hpp>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace {

using nlohmann::json;
namespace fs = std::filesystem;

/// A request as the catalogue writes it: METHOD [RESOURCE] [/ID] [?QUERY] [BODY].
struct Request {
    std::string method, resource, identifier, query, body;
};

std::string takeWord(std::string_view& text) {
    const auto end = std::min(text.find(' '), text.size());
    const std::string word(text.substr(0, end));
    text.remove_prefix(std::min(end + 1, text.size()));
    return word;
}

/// A JSON text has no spaces outside its strings here.
std::string takeJson(std::string_view& text) {
    std::string taken;
    do {
        if (!taken.empty()) taken += ' ';
        taken += takeWord(text);
    } while (!text.empty() && !json::accept(taken));
    return taken;
}

Request parseRequest(std::string_view text, const std::string& resource) {
    Request request{.method = takeWord(text), .resource = resource};
    if (!text.empty() && text.front() >= 'A' && text.front() <= 'Z') request.resource = takeWord(text);
    if (text.starts_with('/')) request.identifier = takeWord(text).substr(1);
    if (text.starts_with('?')) {
        text.remove_prefix(1);
        request.query = takeJson(text);
    }
    request.body = text;
    return request;
}

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

// Departures of fuzz_exports: all lists in two steps are said to have 65536 items; the n-th call fails.
const std::string longLists("\0\x60\0\x38\0\0\0\0\0\0\0\0\n", 13);
std::string failureAt(char call) {
    return call + std::string("\x02\x05\0\0\0\0\0\0\0\0\0\n", 12);
}

void addResource(Seeds& seeds, const std::string& name, const json& resource) {
    const auto lineOf = [](const Request& request) {
        const auto parameters = request.identifier.empty() ? "0" : json{{"id", request.identifier}}.dump();
        return request.resource + "\n" + request.method + "\n" + parameters + "\n" + request.query + "\n" +
               request.body + "\n";
    };
    std::string all;
    for (const json& example : resource.at("examples")) {
        const auto request = parseRequest(example.at(0).get<std::string>(), name);
        const auto line = lineOf(request);
        const auto answer = example.at(1).get<std::string>();
        for (const auto& text : {request.query, request.body, answer.substr(std::min<std::size_t>(4, answer.size()))}) {
            const auto value = json::parse(text, nullptr, false);
            if (value.is_discarded()) continue;
            seeds.add("json", text);
            seeds.addWords(value);
        }
        seeds.add("exports", "\n" + line);
        all += line;
    }
    seeds.add("exports", "\n" + all);
    seeds.add("exports", longLists + all);
    for (char call = 0; call < '\n'; ++call) seeds.add("exports", failureAt(call) + all);
    if (resource.at("of") != "file") return;
    std::string life;
    for (const std::string request : {"POST {\"path\":\"$package\"}", "GET /$id", "DELETE /$id"})
        life += lineOf(parseRequest(request, name));
    seeds.add("exports", "\n" + life);
    for (char call = 0; call < '\n'; ++call) seeds.add("exports", failureAt(call) + life);
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
