// What a user of pellhost sees, with the real plug-in.
#include <gmock/gmock.h>

#include <sstream>

#include "host/CommandLine.h"
#include "host/Query.h"
#include "simulator/core/Simulator.h"
#include "simulator/core/World.h"

namespace {

using testing::AllOf;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Matcher;
using testing::Not;
using testing::StartsWith;

struct Output {
    int exitCode;
    std::string out;
    std::string error;
};

Output run(const std::vector<std::string>& arguments, const std::string& input = "") {
    simulator::loadScenario(simulator::World::builtInScenario());
    std::istringstream in(input);
    std::ostringstream out, error;
    const auto exitCode = host::runCommandLine(arguments, {.in = in, .out = out, .error = error});
    return {exitCode, out.str(), error.str()};
}

const std::string simulateTypo =
    R"({"simulate": "return", "function": "DmCtrlGetBrightnesForStep", "product": "TB240", "result": 0})";

TEST(CommandLine, AnswersAndExitsAsTheRequestDoes) {
    const struct {
        std::vector<std::string> arguments;
        int exitCode;
        Matcher<std::string> out, error;
    } cases[] = {
        {{"list"}, 0, "TQ271-P/10000001\nTB240/10000002\nTB240/10000001\n", IsEmpty()},
        {{"get", "Brightness"}, 0, "200  50\n", IsEmpty()},
        {{"get", "Brightness", "--query", "range"}, 0, "200  {\"max\":100,\"min\":0}\n", IsEmpty()},
        {{"put", "Brightness", "60", "--monitor", "TB240/10000002"}, 0, "200  OK\n", IsEmpty()},
        {{"delete", "SelfQCMutexOwner", R"({"applicationID":7})"}, 0, "200  OK\n", IsEmpty()},
        {{"put", "Brightness", "bright"}, 1, StartsWith("400  BadRequestError: "), IsEmpty()},
        {{"get", "Brightness", "--monitor", "TB240/1"}, 1, HasSubstr("code 0x80000000"), IsEmpty()},
        {{"get", "LUT1D", "--query", "color=red"},
         0,
         AllOf(StartsWith("200\n[0, 1, 2,"), Not(HasSubstr(",\n"))),
         IsEmpty()},
        {{"get", "Brightness", "--query", R"({"range" : 1})"}, 0, HasSubstr("\"max\":100"), IsEmpty()},
        {{"-v", "get", "Brightness"}, 0, HasSubstr("  log     "), IsEmpty()},
        {{"--json", "get", "Brightness"}, 0, HasSubstr("\n  \"value\": 50"), IsEmpty()},

        {{}, 2, IsEmpty(), HasSubstr("--help")},
        {{"get"}, 2, IsEmpty(), HasSubstr("resource is required")},
        {{"get", "Brightness", "--query", "{range}"}, 2, IsEmpty(), HasSubstr("the query is no JSON object: ")},
        {{"get", "Brightness", "--monitor", "TB240"}, 2, IsEmpty(), HasSubstr("PRODUCT/SERIAL")},
        {{"get", "brihtness"}, 2, IsEmpty(), HasSubstr("\"brihtness\", did you mean \"Brightness\"?\n")},
        {{"get", "Telephone"}, 2, IsEmpty(), HasSubstr("no export \"Telephone\"\n")},
        {{"get", "Huey!"}, 2, IsEmpty(), HasSubstr("no export \"Huey!\"\n")},  // two letters are more than a third
        {{"get", "Brightness", "--simulate", simulateTypo},
         2,
         IsEmpty(),
         HasSubstr(", did you mean \"DmCtrlGetBrightnessForStep\"?\n")},
        {{"get", "Brightness", "--scenario", "no such file"}, 2, IsEmpty(), HasSubstr("cannot read no such file")},
        {{"--json", "--plugin", "none", "list"}, 1, HasSubstr("\"name\": \"HostError\""), HasSubstr("no such file")},

        // A slash begins a path or a text on every system, never an option.
        {{"get", "/Brightness"}, 2, IsEmpty(), HasSubstr("no export \"/Brightness\", did you mean \"Brightness\"?")},
        {{"put", "Brightness", "/v"}, 1, StartsWith("400  BadRequestError: "), IsEmpty()},
        {{"--plugin", "none", "firmware", "create", "/no such folder/x.dfw", "--product", "", "--version", "1.2.3.4.5"},
         1,
         IsEmpty(),
         HasSubstr("cannot write /no such folder/x.dfw")},
    };
    for (const auto& [arguments, exitCode, out, error] : cases) {
        SCOPED_TRACE(testing::PrintToString(arguments));
        const auto output = run(arguments);
        EXPECT_EQ(output.exitCode, exitCode);
        EXPECT_THAT(output.out, out);
        EXPECT_THAT(output.error, error);
    }
}

TEST(CommandLine, ShellGoesOnAfterWhatIsWrong) {
    const auto output = run({"shell"}, R"(# a comment

put Brightness '{"data": 60}'
get Brightness /v
get Brightnes
simulate '{"simulate": "unplug", "product": "TQ271-P", "serial": "10000001"}'
get Brightness
quit
list
)");
    EXPECT_EQ(output.exitCode, 0);
    EXPECT_EQ(output.out, R"(# a comment

> put Brightness '{"data": 60}'
200  OK

> get Brightness /v

> get Brightnes

> simulate '{"simulate": "unplug", "product": "TQ271-P", "serial": "10000001"}'

> get Brightness
200  50

> quit
)");
    EXPECT_THAT(output.error, AllOf(HasSubstr("/v"), HasSubstr("did you mean \"Brightness\"?")));
}

TEST(CommandLine, ShellTakesTheOptionsOfACommandOnItsLineAlone) {
    const auto output =
        run({"shell", "--simulate", R"({"simulate": "advance", "milliseconds": 1})"},
            "get Brightness --trace --simulate "
            R"('{"simulate":"return","function":"DmCtrlGetBrightnessForStep","outputs":[7],"result":0}')"
            "\n-v get Brightness --json\nget Brightness\n");
    EXPECT_THAT(output.out, AllOf(HasSubstr("  call    DmCtrlGetBrightnessForStep("), HasSubstr("\"value\": 7"),
                                  EndsWith("> get Brightness\n200  7\n\n")));
    EXPECT_EQ(output.error, "");
}

TEST(CommandLine, QueryIsAnObjectOrFollowsTheConventionOfAUrl) {
    const struct {
        std::string query, text;
    } cases[] = {
        {"", ""},
        {"range", R"({"range":true})"},
        {"color=red&depth=10", R"({"color":"red","depth":10})"},
        {"a=[1,\"x,y\"]&b={\"c\":null}&d=\"10\"&e=&f=a=b",
         R"({"a":[1,"x,y"],"b":{"c":null},"d":"10","e":"","f":"a=b"})"},
        {"%61%26=%C3%A4%3d+&&b=%5B1%5D", R"({"a&":"ä=+","b":[1]})"},
        {"a=50%&b=%4&c=%zz%", R"({"a":"50%","b":"%4","c":"%zz%"})"},
        {"a=%ff", "{\"a\":\"\xef\xbf\xbd\"}"},
        {"a=1e999&a=1e+2", R"({"a":100.0})"},
        {"a=1e999", R"({"a":"1e999"})"},
        {R"({"a" : "50%25&b=1"})", R"({"a" : "50%25&b=1"})"},
        {"{%22a%22:[1%2c2]}", R"({"a":[1,2]})"},
    };
    for (const auto& [query, text] : cases) EXPECT_EQ(host::queryText(query), text) << query;
    for (const auto wrong : {"{", "{range}", R"({"a":1} 2)", R"({"a":1},"b")"})
        EXPECT_THROW(host::queryText(wrong), std::invalid_argument) << wrong;

    // JSON that is nested too deeply for this program stays a text; brackets within a text nest nothing.
    const auto nested = [](std::size_t depth, const std::string& inner) {
        return std::string(depth, '[') + inner + std::string(depth, ']');
    };
    const auto allowed = nested(199, R"("\\\"[[[[[[[[")");
    EXPECT_EQ(host::queryText("a=" + allowed), "{\"a\":" + allowed + "}");
    EXPECT_EQ(host::queryText("a=" + nested(201, "")), "{\"a\":\"" + nested(201, "") + "\"}");
}

}  // namespace
