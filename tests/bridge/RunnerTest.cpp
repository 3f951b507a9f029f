// What the page and the log receive when a resource behaves in every possible way.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <libdmc/monitors.h>

#include <limits>

#include "bridge/Errors.h"
#include "bridge/MonitorCriticalSection.h"
#include "bridge/MonitorList.h"
#include "bridge/Resource.h"
#include "bridge/Response.h"
#include "runtime/Logger.h"
#include "simulator/core/Simulator.h"

namespace {

using simulator::Json;
using namespace torvo;

constexpr const char* unknownError =
    R"({"error":{"message":"Unknown error occurred.","name":"UnknownError"},"value":null})";
constexpr const char* unknownErrorLog =
    "statusCode:500\tmethod:GET\turi:/pell/\terr:UnknownError\tmsg:Unknown error occurred.";

/// A resource whose GET is the given function.
class Scripted final : public Bridge {
 public:
    explicit Scripted(BridgeResult (*get)()) : get_(get) {}
    BridgeResult Get(const RequestRecord&) override { return get_(); }

 private:
    BridgeResult (*get_)();
};

struct Outcome {
    const char* name;
    BridgeResult (*get)();
    int status;
    const char* text;
    const char* log;
};

class EveryOutcome : public testing::TestWithParam<Outcome> {};

TEST_P(EveryOutcome, IsAnsweredOnceAndLoggedAsAnswered) {
    Scripted resource(GetParam().get);
    const simulator::Recording recording;
    const std::uint32_t promise = runRequest(resource, {"", "", "", ""});

    EXPECT_EQ(recording.responses,
              Json::array({{{"promise", promise}, {"status", GetParam().status}, {"text", GetParam().text}}}));
    ASSERT_EQ(recording.log.size(), 1U);
    EXPECT_EQ(recording.log[0], (Json{{"name", "Pell"},
                                      {"level", GetParam().status >= 200 && GetParam().status < 300 ? 2 : 5},
                                      {"line", GetParam().log}}));
}

BridgeResult withStatus(std::int32_t status) {
    BridgeResult result;
    result.statusCode = status;
    return result;
}

BridgeResult withCode(pocketjson::Value code) {
    BridgeResult result{500, "DmError", "Failed.", {}, {}, {}};
    result.error["code"] = std::move(code);
    return result;
}

INSTANTIATE_TEST_SUITE_P(
    Runner, EveryOutcome,
    testing::Values(Outcome{"Status299", [] { return withStatus(299); }, 299, R"({"error":null,"value":null})",
                            "statusCode:299\tmethod:GET\turi:/pell/\tmsg:Success"},
                    Outcome{"Status300", [] { return withStatus(300); }, 300, R"({"error":null,"value":null})",
                            "statusCode:300\tmethod:GET\turi:/pell/\terr:\tmsg:"},
                    Outcome{"Status199", [] { return withStatus(199); }, 199, R"({"error":null,"value":null})",
                            "statusCode:199\tmethod:GET\turi:/pell/\terr:\tmsg:"},
                    Outcome{"NamelessError",
                            [] {
                                BridgeResult result;
                                result.error["detail"] = 1;
                                return result;
                            },
                            200, R"({"error":{"detail":1,"message":"","name":""},"value":null})",
                            "statusCode:200\tmethod:GET\turi:/pell/\tmsg:Success"},
                    Outcome{"MessageWithoutAName", [] { return BridgeResult{500, "", "Failed.", {}, {}, {}}; }, 500,
                            R"({"error":{"message":"Failed.","name":""},"value":null})",
                            "statusCode:500\tmethod:GET\turi:/pell/\terr:\tmsg:Failed."},
                    Outcome{"ErrorWithValue",
                            [] {
                                BridgeResult result{400, "BadRequestError", "No.", {}, {}, {}};
                                result.value = 7;
                                return result;
                            },
                            400, R"({"error":{"message":"No.","name":"BadRequestError"},"value":7})",
                            "statusCode:400\tmethod:GET\turi:/pell/\terr:BadRequestError\tmsg:No."},
                    Outcome{"SmallCode", [] { return withCode(5); }, 500,
                            R"({"error":{"code":5,"message":"Failed.","name":"DmError"},"value":null})",
                            "statusCode:500\tmethod:GET\turi:/pell/\terr:DmError\tmsg:Failed.\tcode:0x00000005"},
                    Outcome{"CodeThatIsNoNumber", [] { return withCode("5"); }, 500,
                            R"({"error":{"code":"5","message":"Failed.","name":"DmError"},"value":null})",
                            "statusCode:500\tmethod:GET\turi:/pell/\terr:DmError\tmsg:Failed."},
                    Outcome{"InternalError",
                            []() -> BridgeResult {
                                checkInternal(false, "Broken.");
                                return {};
                            },
                            500, R"({"error":{"message":"Broken.","name":"InternalError"},"value":null})",
                            "statusCode:500\tmethod:GET\turi:/pell/\terr:InternalError\tmsg:Broken."},
                    Outcome{"ThrownInteger", []() -> BridgeResult { throw 42; }, 500, unknownError, unknownErrorLog},
                    Outcome{"UnwritableNumberInTheError",
                            [] { return withCode(std::numeric_limits<double>::infinity()); }, 500, unknownError,
                            unknownErrorLog},
                    Outcome{"UnwritableNumber",
                            [] {
                                BridgeResult result;
                                result.value = pocketjson::Value::array({1, std::numeric_limits<double>::quiet_NaN()});
                                return result;
                            },
                            500, unknownError, unknownErrorLog}),
    [](const auto& suite) { return suite.param.name; });

TEST(Runner, AnswersEvenWhenTheHostThrows) {
    Scripted resource([] { return BridgeResult{}; });
    simulator::simulate({{"simulate", "throw"}, {"function", "BridgeHelperCreatePromiseID"}, {"times", 1}});
    const simulator::Recording recording;
    EXPECT_EQ(runRequest(resource, {nullptr, nullptr, nullptr, nullptr}), 0U);
    EXPECT_TRUE(recording.responses.empty());

    simulator::simulate({{"simulate", "throw"}, {"function", "scrivo_log"}, {"times", 1}});
    EXPECT_NE(runRequest(resource, {nullptr, nullptr, nullptr, nullptr}), 0U);
    EXPECT_EQ(recording.responses.size(), 1U);

    simulator::simulate({{"simulate", "throw"}, {"function", "BridgeHelperSetResponse"}, {"times", 1}});
    EXPECT_NE(runRequest(resource, {nullptr, nullptr, nullptr, nullptr}), 0U);
    EXPECT_EQ(recording.responses.size(), 1U);  // it was thrown before it was recorded
}

TEST(Runner, RefusesMethodsThatAResourceDoesNotHave) {
    for (const std::string method : {"GET", "POST", "PUT", "DELETE"}) {
        BridgeTemplate plain;
        MonitorBridgeTemplate ofMonitor("Nothing");
        const simulator::Recording recording;
        const std::string options = Json{{"method", method}}.dump();
        runRequest(plain, {options.c_str(), "", "", ""});
        runRequest(ofMonitor, {options.c_str(), R"({"product":"TQ271-P","serial":"10000001"})", "", ""});
        const auto messageOf = [&](std::size_t index) {
            return Json::parse(recording.responses.at(index).at("text").get<std::string>()).at("error").at("message");
        };
        EXPECT_EQ(messageOf(0), method + " method is not allowed.");
        EXPECT_EQ(messageOf(1), method + " is not allowed.");
        EXPECT_EQ(recording.log.size(), 1U);  // a resource without a URI logs nothing
    }
}

TEST(Runner, TellsWhatResultsMean) {
    const struct {
        std::uint32_t result;
        const char* message;
    } cases[] = {{0, "OK."},
                 {4, "OK but data is not corrected."},
                 {5, "Undefined error."},
                 {0x80000000, "Failed."},
                 {0x8000001F, "Rejected by critical section."},
                 {0x80000020, "Undefined error."},
                 {0x80010000, "Undefined error."},
                 {0x80010001, "Monitor connection error."},
                 {0x8001000A, "Monitor critical section is owned."},
                 {0x8001000B, "Undefined error."}};
    for (const auto& [result, message] : cases)
        EXPECT_STREQ(resultMessage(static_cast<DmResult>(result)), message) << result;
}

/// A resource that says more about its URI before each request.
class Located final : public Bridge {
 public:
    explicit Located(std::string rest) : rest_(std::move(rest)) {}
    void preRequest(const RequestRecord&) override { uri += rest_; }
    BridgeResult Get(const RequestRecord&) override { throw BridgeResultError(400, "Name", "Message"); }

 private:
    std::string rest_;
};

TEST(Runner, LogsAnyUriAsOneLine) {
    const std::string before = "statusCode:400\tmethod:GET\turi:/pell/", after = "\terr:Name\tmsg:Message";
    std::vector<std::pair<std::string, std::string>> cases{{std::string("\n a\x1f~\x7f\0z", 8), "%0a a%1f~%7f%00z"}};
    const std::size_t room = 512 - before.size() - after.size();  // a longer line takes memory
    for (const std::size_t size : {room - 1, room, room + 1, std::size_t{10000}})
        cases.emplace_back(std::string(size, 'u'), std::string(size, 'u'));
    for (const auto& [uri, logged] : cases) {
        Located resource(uri);
        const simulator::Recording recording;
        runRequest(resource, {"", "", "", ""});
        EXPECT_EQ(recording.log[0]["line"], before + logged + after);
    }
}

TEST(Response, IsWrittenOnceAndNotAtAllWithoutAValue) {
    BridgeResult result;
    writeResponse(result);
    EXPECT_EQ(result.text, "");  // takes no memory
    result.text = "written";
    writeResponse(result);
    EXPECT_EQ(result.text, "written");
}

TEST(Promises, AreSettledWhateverHappens) {
    const simulator::Recording recording;
    const std::uint32_t promise = Promise().id();
    EXPECT_EQ(recording.responses, Json::array({{{"promise", promise}, {"status", 500}, {"text", unknownError}}}));
}

TEST(Monitors, AreNotMadeUpWhereTheLibraryWritesNothing) {
    const Json nothing = Json::array();
    const simulator::Recording recording;
    simulator::simulate(
        {{"simulate", "return"}, {"function", "DmCtrlGetSerialProduct"}, {"result", 0}, {"outputs", nothing}});
    MonitorAddress address{"before", "before"};
    EXPECT_EQ(readMonitorAddress(0, address), 0);
    EXPECT_STREQ(address.serial, "");
    EXPECT_STREQ(address.product, "");
    EXPECT_EQ(recording.calls[0]["arguments"].back(), 0);  // flags

    simulator::simulate(
        {{"simulate", "return"}, {"function", "DmCtrlGetNumMonitors"}, {"result", 0}, {"outputs", nothing}});
    EXPECT_THROW(requireConnected("", ""), BridgeResultError);
    EXPECT_EQ(recording.calls.size(), 2U);
    simulator::simulate({{"simulate", "reset"}});
}

int triesToFindALogger = 0;

TEST(Runner, LooksForTheLoggerNowAndThenWhileThereIsNone) {
    simulator::simulate({{"simulate", "return"}, {"function", "scrivo_get_logger"}, {"result", 0}});
    simulator::setGateObserver({.call = [](const char* function) {
        triesToFindALogger += std::string_view(function) == "scrivo_get_logger";
    }});
    const simulator::Recording recording;
    LoggerBase logger("Late");
    std::vector<int> tries;
    for (int line = 1; line <= 4096; ++line) {
        const int before = triesToFindALogger;
        logger.log(2, "nobody hears");
        if (triesToFindALogger > before) tries.push_back(line);
    }
    simulator::setGateObserver({});
    EXPECT_EQ(tries, (std::vector{1, 2, 3, 5, 9, 17, 33, 65, 129, 257, 513, 1025, 2049, 3073}));

    simulator::simulate({{"simulate", "reset"}});
    logger.log(2, "heard");
    logger.log(5, "and the next one");
    EXPECT_EQ(recording.log, Json::parse(R"([{"name":"Late","level":2,"line":"heard"},
                                             {"name":"Late","level":5,"line":"and the next one"}])"));
}

// ---- The critical section ------------------------------------------------------------------------------------------

std::vector<std::string> functionsCalled(const simulator::Recording& recording) {
    std::vector<std::string> names;
    for (const Json& call : recording.calls) names.push_back(call["function"]);
    return names;
}

class CriticalSection : public testing::Test {
 protected:
    CriticalSection() {
        std::uint32_t count = 0;
        EXPECT_GE(DmCtrlGetNumMonitors(&count), 0);  // an import: functions looked up by name come from its library
    }
    ~CriticalSection() override { simulator::simulate({{"simulate", "reset"}}); }

    const Monitor modern{"10000001", "TQ271-P"};
    const Monitor simple{"10000002", "TB240"};
};

TEST_F(CriticalSection, IsHeldForTheScopeAndOnlyWhereThereIsOne) {
    const simulator::Recording recording;
    try {
        const MonitorCriticalSection ofNone(simple);
        const MonitorCriticalSection section(modern);
        throw 1;
    } catch (int) {
    }
    EXPECT_THAT(functionsCalled(recording),
                testing::ElementsAre("DmCtrlSupportedCriticalSection", "DmCtrlSupportedCriticalSection",
                                     "DmCtrlEnterCriticalSection", "DmCtrlExitCriticalSection"));
}

TEST_F(CriticalSection, IsNotLeftWhenItCouldNotBeEntered) {
    const MonitorCriticalSection outer(modern);
    const simulator::Recording recording;
    EXPECT_THROW(MonitorCriticalSection{modern}, BridgeResultError);
    EXPECT_THAT(functionsCalled(recording),
                testing::ElementsAre("DmCtrlSupportedCriticalSection", "DmCtrlEnterCriticalSection"));
}

}  // namespace
