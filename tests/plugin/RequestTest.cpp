// From the four texts to the answer: methods, addresses, the envelope, what a companion may do to it.
#include "tests/plugin/Page.h"

namespace {

TEST(Request, ChoosesTheMethodThatTheOptionsName) {
    Page page;
    const host::Texts monitor{"", R"({"product":"TQ271-P","serial":"10000001"})", "", "60"};
    const struct {
        const char* options;
        const char* method;
    } cases[] = {
        {R"({"method":"GET"})", "GET"},   {R"({"method":"pUt"})", "PUT"},       {R"({"method":"delete"})", "DELETE"},
        {R"({"method":"POST"})", "POST"}, {R"({"method":"patch"})", "GET"},     {R"({"method":""})", "GET"},
        {R"({"method":"pu{"})", "GET"},   {R"({"method":"pu"})", "GET"},        {R"({"method":["PUT"]})", "GET"},
        {R"({"METHOD":"PUT"})", "GET"},   {R"(["method","PUT"])", "GET"},       {"", "GET"},
        {R"({"method":"PUT"} x)", "GET"}, {R"({"method":"PUT\u0000"})", "GET"},
    };
    for (const auto& [options, method] : cases) {
        host::Texts texts = monitor;
        texts[0] = options;
        const Answer answer = page.call("Brightness", texts);
        EXPECT_NE(answer.log.find("\tmethod:" + std::string(method) + "\t"), std::string::npos)
            << options << answer.log;
        const bool served = std::string(method) == "GET" || std::string(method) == "PUT";
        EXPECT_EQ(summary(answer),
                  served ? "200 " + answer.value.dump() : "405 MethodError " + std::string(method) + " is not allowed.")
            << options;
        EXPECT_EQ(inputsOf(answer, "DmCtrlSetBrightnessForStep").size(), method == std::string("PUT") ? 1U : 0U);
    }
}

TEST(Request, FindsTheMonitorByBothTexts) {
    Page page;
    const struct {
        const char* params;
        const char* outcome;
        const char* uri;
    } cases[] = {
        {R"({"product":"TQ271-P","serial":"10000001"})", "200 50", "TQ271-P/10000001"},
        {R"({"product":"TB240","serial":"10000001"})", "200 50", "TB240/10000001"},
        {R"({"product":"TQ271-P","serial":"10000002"})", "500 DmError Failed. (Monitor is not found.)",
         "TQ271-P/10000002"},
        {R"({"product":"tq271-p","serial":"10000001"})", "500 DmError Failed. (Monitor is not found.)",
         "tq271-p/10000001"},
        {R"({"product":"TQ271-P","serial":"10000001\u0000"})", "500 DmError Failed. (Monitor is not found.)",
         "TQ271-P/10000001%00"},
        {R"({"product":"A\tB\r\nC\u007F","serial":"50%2é"})", "500 DmError Failed. (Monitor is not found.)",
         "A%09B%0d%0aC%7f/50%2é"},
        {R"({"product":"TQ271-P","serial":10000001})", "400 BadRequestError URI is invalid.", "TQ271-P/"},
        {R"({"product":"","serial":"10000001"})", "400 BadRequestError URI is invalid.", "/10000001"},
        {R"(["TQ271-P","10000001"])", "400 BadRequestError URI is invalid.", "/"},
        {"not JSON", "400 BadRequestError URI is invalid.", "/"},
        {"", "400 BadRequestError URI is invalid.", "/"},
    };
    for (const auto& [params, outcome, uri] : cases) {
        const Answer answer = page.call("Brightness", {"", params, "", ""});
        EXPECT_EQ(summary(answer), outcome) << params;
        EXPECT_NE(answer.log.find("\turi:/pell/Monitors/" + std::string(uri) + "/Brightness\t"), std::string::npos)
            << answer.log;
    }
}

TEST(Request, TellsAFailureOfTheLookupFromAMonitorThatIsNotThere) {
    Page page;
    page.returns("DmCtrlGetNumMonitors", 0x80000013);
    EXPECT_EQ(summary(page.get("Brightness")), "500 DmError Timed out.");
    page.returns("DmCtrlGetNumMonitors", 0, Json::array({0xFFFFFFFF}));
    page.returns("DmCtrlGetSerialProduct", 0, Json::array({"12345678", "0123456789ABCDEF"}));
    EXPECT_EQ(summary(page.get("Brightness")), "500 DmError Failed. (Monitor is not found.)");
    page.serial = "12345678";
    page.product = "0123456789ABCDEF";
    EXPECT_EQ(summary(page.get("Brightness")), "500 DmError Monitor connection error. (Get brightness.)");
}

TEST(Request, WritesTheEnvelopeByteForByte) {
    Page page;
    EXPECT_EQ(page.get("Brightness").text, R"({"error":null,"value":50})");
    EXPECT_EQ(page.get("Brightness").log,
              "statusCode:200\tmethod:GET\turi:/pell/Monitors/TQ271-P/10000001/Brightness\tmsg:Success");
    page.returns("DmCtrlGetBrightnessForStep", 0x8000000A);
    EXPECT_EQ(
        page.get("Brightness").text,
        R"({"error":{"code":2147483658,"message":"Out of range.","name":"DmError","reason":"Get brightness."},"value":null})");
    EXPECT_EQ(page.get("Brightness").log,
              "statusCode:500\tmethod:GET\turi:/pell/Monitors/TQ271-P/10000001/Brightness\terr:DmError\tmsg:Out of "
              "range.\tcode:0x8000000a");
}

TEST(Request, SurvivesWhatACompanionDoes) {
    Page page;
    for (const char* number : {"NaN", "Infinity", "-Infinity"}) {
        page.returns("DmCtrlGetBrightnessForPercentage", 0, Json::array({number}));
        const Answer answer = page.get("Brightness", R"({"percentage":null})");
        EXPECT_EQ(answer.text, R"({"error":{"message":"Unknown error occurred.","name":"UnknownError"},"value":null})");
        EXPECT_EQ(answer.log,
                  "statusCode:500\tmethod:GET\turi:/pell/Monitors/TQ271-P/10000001/Brightness\terr:UnknownError\t"
                  "msg:Unknown error occurred.");
    }
    page.simulate({{"simulate", "throw"}, {"function", "DmCtrlGetBrightnessForStep"}, {"times", 1}});
    EXPECT_EQ(summary(page.get("Brightness")), "500 UnknownError Unknown error occurred.");
    EXPECT_EQ(summary(page.get("Brightness")), "200 50");
    page.simulate({{"simulate", "unplug"}, {"product", "TQ271-P"}, {"serial", "10000001"}});
    EXPECT_EQ(summary(page.get("Brightness")), "500 DmError Failed. (Monitor is not found.)");
}

TEST(Request, NestedAsDeepAsItLikesIsAnswered) {
    Page page;
    const std::size_t depth = 1'000'000;
    const std::string open(depth, '[');
    std::string objects;
    for (std::size_t i = 0; i < depth; ++i) objects += R"({"a":)";
    for (const std::string& text : {open, open + std::string(depth, ']'), objects + "1" + std::string(depth, '}')}) {
        for (std::size_t position = 0; position < 4; ++position) {
            host::Texts texts{R"({"method":"PUT"})", R"({"product":"TQ271-P","serial":"10000001"})", "{}", "5"};
            texts[position] = text;
            const Answer answer = page.call("Brightness", texts);
            EXPECT_THAT(answer.status, testing::AnyOf(200, 400)) << position;
        }
    }
}

}  // namespace
