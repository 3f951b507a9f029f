// The tests' page: it asks the real plug-in and receives what a page would.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "host/Session.h"
#include "tests/Judgement.h"

using Json = nlohmann::json;

struct Answer : tests::Judgement {
    Json calls;  ///< {"function", "arguments", "result"}
    Json events;
};

/// One for each test; when it goes, the simulated world is as it was.
class Page {
 public:
    /// The first request of a process looks for the logging library, too; tests see the ones after it.
    Page() { session_.call("Monitors", {"", "", "", ""}); }
    ~Page() { simulate({{"simulate", "reset"}}); }

    void simulate(const Json& instruction) { simulator::simulate(instruction); }

    /// The function answers this result from now on.
    void returns(const char* function, std::uint32_t result, Json outputs = nullptr) {
        Json instruction{{"simulate", "return"}, {"function", function}, {"result", result}};
        if (!outputs.is_null()) instruction["outputs"] = std::move(outputs);
        simulate(instruction);
    }

    /// Calls an export with these texts. Whatever it does, what must hold of every request is to hold of it.
    Answer call(const std::string& name, const host::Texts& texts) {
        const Json exchange = session_.call(name, texts);
        Answer answer{tests::judge(exchange["returned"], exchange["responses"], exchange["log"]), exchange["calls"],
                      exchange["events"]};
        for (const std::string& problem : answer.problems) ADD_FAILURE() << name << " " << problem;
        return answer;
    }

    Answer ask(const std::string& method, const std::string& resource, const std::string& query = "",
               const std::string& body = "") {
        return call(resource, host::Request{method, resource, product, serial, query, body}.texts());
    }
    Answer get(const std::string& resource, const std::string& query = "") { return ask("GET", resource, query); }
    Answer put(const std::string& resource, const std::string& body, const std::string& query = "") {
        return ask("PUT", resource, query, body);
    }

    std::string product = "TQ271-P";
    std::string serial = "10000001";

 private:
    host::Session session_;
};

/// "500 DmError Out of range. (Set brightness.)", or "200" and the value.
inline std::string summary(const Answer& answer) {
    std::string text = std::to_string(answer.status);
    if (!answer.error.is_object()) return text + " " + answer.value.dump();
    text += " " + answer.error.value("name", "?") + " " + answer.error.value("message", "?");
    return answer.error.contains("reason") ? text + " (" + answer.error.value("reason", "?") + ")" : text;
}

/// The calls of one function: the arguments after serial and product.
inline std::vector<Json> inputsOf(const Answer& answer, const std::string& function) {
    std::vector<Json> inputs;
    for (const Json& call : answer.calls)
        if (call["function"] == function) inputs.emplace_back(call["arguments"].begin() + 2, call["arguments"].end());
    return inputs;
}
