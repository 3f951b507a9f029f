// A request as the examples of the catalogue have it.
#pragma once

#include <algorithm>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>

namespace tests {

struct Example {
    std::string method, resource, id, query, body;
};

/// Of a line METHOD [RESOURCE] [/ID] [?QUERY] [BODY].
inline Example parseExample(std::string_view line, const std::string& resource) {
    const auto takeWord = [&line] {
        const auto end = std::min(line.find(' '), line.size());
        const std::string word(line.substr(0, end));
        line.remove_prefix(std::min(end + 1, line.size()));
        return word;
    };
    Example example{.method = takeWord(), .resource = resource, .id{}, .query{}, .body{}};
    if (!line.empty() && line.front() >= 'A' && line.front() <= 'Z') example.resource = takeWord();
    if (line.starts_with('/')) example.id = takeWord().substr(1);
    if (line.starts_with('?')) {
        // The query ends where its text is JSON: its strings may have spaces.
        example.query = takeWord().substr(1);
        while (!line.empty() && !nlohmann::json::accept(example.query)) example.query += ' ' + takeWord();
    }
    example.body = line;
    return example;
}

}  // namespace tests
