// What must hold of every request, whatever was done to it: tests and fuzzers judge by the same.
#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

namespace tests {

using Json = nlohmann::json;

struct Judgement {
    int status = 0;
    std::string text;  ///< of the answer, as it came
    Json error;
    Json value;
    std::string log;      ///< its line; empty when nothing was logged
    bool isLost = false;  ///< there is not one answer
    std::vector<std::string> problems;

    void require(bool condition, const std::string& problem) {
        if (!condition) problems.push_back(problem);
    }
};

/// What a log line ends with, of an answer with this error.
inline std::string endOfLogLine(const Json& error) {
    if (!error.is_object()) return "\tmsg:Success";
    const std::string end = "\terr:" + error.value("name", "") + "\tmsg:" + error.value("message", "");
    const auto code = error.find("code");
    if (code == error.end()) return end;
    std::array<char, 32> hexadecimal{};
    std::snprintf(hexadecimal.data(), hexadecimal.size(), "\tcode:0x%08x", code->get<std::uint32_t>());
    return end + hexadecimal.data();
}

/// Of the promise that an export returned, and of what a recording of its call has.
inline Judgement judge(std::uint32_t promise, const Json& responses, const Json& log) {
    Judgement judged;
    judged.isLost = responses.size() != 1;
    judged.require(!judged.isLost, "is answered " + std::to_string(responses.size()) + " times");
    judged.require(log.size() <= 1, "is logged " + std::to_string(log.size()) + " times");
    if (log.size() == 1) judged.log = log[0]["line"];
    if (judged.isLost) return judged;
    judged.require(responses[0]["promise"] == promise, "answers another promise");
    judged.status = responses[0]["status"];
    judged.text = responses[0]["text"].is_string() ? responses[0]["text"].get<std::string>() : "";

    const std::string told = "answers " + judged.text.substr(0, 200);
    Json answer = Json::parse(judged.text, nullptr, false);
    if (answer.is_discarded()) {
        // Texts of the page and of companions are passed on, whatever their encoding; around them it must be JSON.
        std::string ascii = judged.text;
        for (char& byte : ascii)
            if (byte & 0x80) byte = '?';
        answer = Json::parse(ascii, nullptr, false);
    }
    const bool isEnvelope =
        answer.is_object() && answer.size() == 2 && answer.contains("error") && answer.contains("value");
    judged.require(isEnvelope, told);
    if (!isEnvelope) return judged;
    judged.error = answer["error"], judged.value = answer["value"];
    const auto hasText = [&](const char* name) { return judged.error.value(name, Json()).is_string(); };
    constexpr std::array<int, 4> failures{400, 404, 405, 500};
    const bool isFailure = std::find(failures.begin(), failures.end(), judged.status) != failures.end() &&
                           judged.value.is_null() && judged.error.is_object() && hasText("name") && hasText("message");
    const bool isSuccess = judged.status == 200 && judged.error.is_null();
    judged.require(isSuccess || isFailure, told);
    if (judged.log.empty() || (!isSuccess && !isFailure)) return judged;

    const bool isOneLine =
        std::all_of(judged.log.begin(), judged.log.end(), [](char byte) { return byte == '\t' || (byte & 0xE0) != 0; });
    judged.require(isOneLine && log[0]["level"] == (isSuccess ? 2 : 5) &&
                       judged.log.starts_with("statusCode:" + std::to_string(judged.status) + "\tmethod:") &&
                       judged.log.ends_with(endOfLogLine(judged.error)),
                   told + " and logs " + judged.log.substr(0, 300));
    return judged;
}

}  // namespace tests
