// Brightness, and the list of monitors.
#include "tests/plugin/Page.h"

namespace {

TEST(Brightness, ReadsWhatTheQueryNames) {
    Page page;
    const struct {
        const char* query;
        const char* value;
    } cases[] = {
        {"", "50"},
        {"{}", "50"},
        {R"({"range":false})", R"({"max":100,"min":0})"},
        {R"({"percentage":null,"range":null})", R"({"max":100,"min":0})"},
        {R"({"percentage":null})", "50"},
        {R"({"percentage":null,"range":null,"supports":null})", "true"},
        {R"(["range"])", "50"},
        {R"("range")", "50"},
    };
    for (const auto& [query, value] : cases)
        EXPECT_EQ(summary(page.get("Brightness", query)), "200 " + std::string(value)) << query;

    for (const std::uint32_t supported : {0U, 1U, 0x80000007U}) {
        page.returns("DmCtrlSupportedBrightness", supported);
        EXPECT_EQ(page.get("Brightness", R"({"supports":0})").value, supported != 0);
    }
}

TEST(Brightness, SetsWhatTheBodyHolds) {
    Page page;
    const char* const refused = "400 BadRequestError data must be number.";
    const struct {
        const char* body;
        const char* outcome;
        const char* step;        // what DmCtrlSetBrightnessForStep receives
        const char* percentage;  // what DmCtrlSetBrightnessForPercentage receives
    } cases[] = {
        {"60", "200 null", "60", nullptr},
        {R"({"data":60})", "200 null", "60", nullptr},
        {"2.6", "200 null", "3", nullptr},
        {"-1", "200 null", "0", nullptr},
        {"4294967297", "200 null", "1", nullptr},
        {"1e300", "200 null", "0", nullptr},
        {R"({"percentage":40})", "200 null", nullptr, "40.0"},
        {R"({"data":{"percentage":12.5}})", "200 null", nullptr, "12.5"},
        {R"({"percentage":40,"other":1})", "200 null", nullptr, "40.0"},
        {"101", "500 DmError Out of range. (Set brightness.)", "101", nullptr},
        {R"({"percentage":101})", "500 DmError Out of range. (Set brightness percentage.)", nullptr, "101.0"},
        {"true", refused, nullptr, nullptr},
        {"null", refused, nullptr, nullptr},
        {"", refused, nullptr, nullptr},
        {"sixty", refused, nullptr, nullptr},
        {R"("60")", refused, nullptr, nullptr},
        {R"({"percentage":"40"})", refused, nullptr, nullptr},
        {R"({"data":60,"other":1})", refused, nullptr, nullptr},
        {"[60]", refused, nullptr, nullptr},
    };
    for (const auto& [body, outcome, step, percentage] : cases) {
        const Answer answer = page.put("Brightness", body);
        EXPECT_EQ(summary(answer), outcome) << body;
        std::vector<Json> steps, percentages;
        if (step) steps.push_back(Json::array({Json::parse(step)}));
        if (percentage) percentages.push_back(Json::array({Json::parse(percentage)}));
        EXPECT_EQ(inputsOf(answer, "DmCtrlSetBrightnessForStep"), steps) << body;
        EXPECT_EQ(inputsOf(answer, "DmCtrlSetBrightnessForPercentage"), percentages) << body;
    }
}

// ---- Monitors ------------------------------------------------------------------------------------------------------

TEST(Monitors, ListsWhatTheLibraryHasFound) {
    Page page;
    EXPECT_EQ(page.get("Monitors").text,
              R"({"error":null,"value":[{"product":"TQ271-P","serial":"10000001"},)"
              R"({"product":"TB240","serial":"10000002"},{"product":"TB240","serial":"10000001"}]})");
    EXPECT_EQ(page.get("Monitors").log, "statusCode:200\tmethod:GET\turi:/pell/Monitors\tmsg:Success");

    page.simulate({{"simulate", "unplug"}, {"product", "TB240"}, {"serial", "10000002"}});
    EXPECT_EQ(page.get("Monitors").value.size(), 2U);

    page.returns("DmCtrlGetSerialProduct", 0x80000000);
    EXPECT_EQ(summary(page.get("Monitors")), "200 []");
}

TEST(Monitors, LooksAfreshWhenToldTo) {
    Page page;
    page.returns("DmCtrlFind", 0x80000000);
    const struct {
        const char* query;
        bool finds;
    } cases[] = {{R"({"update":true})", true},    {R"({"update":1})", true},
                 {R"({"update":-0.5})", true},    {R"({"update":"true"})", true},
                 {R"({"update":"TRUE"})", false}, {R"({"update":"1"})", false},
                 {R"({"update":0})", false},      {R"({"update":0.0})", false},
                 {R"({"update":false})", false},  {R"({"update":null})", false},
                 {R"({"update":[1]})", false},    {R"({"update":{}})", false},
                 {R"("update")", false},          {"", false}};
    for (const auto& [query, finds] : cases) {
        const Answer answer = page.get("Monitors", query);
        EXPECT_EQ(answer.status, 200);
        EXPECT_EQ(answer.calls[0]["function"] == "DmCtrlFind", finds) << query;
        if (finds) EXPECT_EQ(answer.calls[0]["arguments"], Json::array({0, 0}));
    }
}

TEST(Monitors, ReadsNoFurtherThanABufferAndNoLongerThanAList) {
    Page page;
    page.returns("DmCtrlGetSerialProduct", 0, Json::array({"0123456789", "0123456789ABCDEFGH"}));
    const Json list = page.get("Monitors").value;
    EXPECT_EQ(list.size(), 1024U);
    EXPECT_EQ(list[0], (Json{{"serial", "01234567"}, {"product", "0123456789ABCDEF"}}));

    page.returns("DmCtrlGetNumMonitors", 0, Json::array({5000}));
    const Answer lookUp = page.get("Brightness");
    EXPECT_EQ(summary(lookUp), "500 DmError Failed. (Monitor is not found.)");
    EXPECT_EQ(lookUp.calls.size(), 1U + 1024U);
}

TEST(Monitors, AreLetGoOf) {
    Page page;
    page.returns("DmCtrlRelease", 0x80000000);
    const Answer answer = page.ask("DELETE", "Monitors");
    EXPECT_EQ(summary(answer), "200 null");
    EXPECT_EQ(answer.calls[0]["function"], "DmCtrlRelease");
}

}  // namespace
