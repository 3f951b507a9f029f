// The picture family: a case wherever the flow is special.
#include "tests/plugin/Page.h"

namespace {

std::string stalled(const std::string& action) {
    return "500 DmError Stall." + (action.empty() ? action : " (" + action + ")");
}

TEST(SeveralSetters, StopAtTheFirstThatFails) {
    Page page;
    page.returns("DmCtrlSetBlueHue2", 0x80000008);
    const Answer answer = page.put("SixColorsHue", R"({"yellow":6,"blue":3,"green":2,"red":1,"cyan":"4"})");
    EXPECT_EQ(summary(answer), stalled("Set 6 colors hue blue."));
    EXPECT_EQ(inputsOf(answer, "DmCtrlSetRedHue2"), (std::vector<Json>{Json::array({1})}));
    EXPECT_EQ(inputsOf(answer, "DmCtrlSetGreenHue2").size(), 1U);
    EXPECT_EQ(inputsOf(answer, "DmCtrlSetCyanHue2").size(), 0U);
    EXPECT_EQ(inputsOf(answer, "DmCtrlSetYellowHue2").size(), 0U);

    const Answer gain = page.put("Gain", R"({"blue":30,"red":"10"})");
    EXPECT_EQ(summary(gain), "200 null");
    EXPECT_EQ(inputsOf(gain, "DmCtrlSetGain"), (std::vector<Json>{Json::array({2, 30})}));

    page.returns("DmCtrlSetHLGSystemGammaEnable", 0x80000008);
    const Answer gamma = page.put("HLGSystemGamma", R"({"systemGamma":1.3,"enable":true})");
    EXPECT_EQ(summary(gamma), stalled("Set HLG system gamma enable."));
    EXPECT_EQ(inputsOf(gamma, "DmCtrlSetHLGSystemGamma").size(), 0U);
}

TEST(ColorTemperature, SpeaksTheGenerationOfTheMonitor) {
    Page page;
    const auto functionsFor = [&](const char* product, const char* serial) {
        page.product = product;
        page.serial = serial;
        const Answer answer = page.put("ColorTemperature", "1");
        return inputsOf(answer, "DmCtrlSetColorTemperature").size() * 10 +
               inputsOf(answer, "DmCtrlSetColorTemperatureIndex").size();
    };
    EXPECT_EQ(functionsFor("TQ271-P", "10000001"), 10U);
    EXPECT_EQ(functionsFor("TB240", "10000002"), 1U);
    EXPECT_EQ(page.get("ColorTemperature", R"({"supports":1})").value, true);
    page.returns("DmCtrlSupportedColorTemperatureIndex", 0);
    EXPECT_EQ(page.get("ColorTemperature", R"({"supports":1})").value, false);
}

TEST(HybridGammaPXL, HoldsTheCriticalSectionAndSelectsTheModeFirst) {
    Page page;
    const Answer answer = page.put("HybridGammaPXL", R"({"enabled":1,"mode":2})");
    EXPECT_EQ(summary(answer), "200 null");
    std::vector<std::string> functions;
    for (const Json& call : answer.calls) functions.push_back(call["function"]);
    const std::vector<std::string> last(functions.end() - 4, functions.end());
    EXPECT_THAT(last, testing::ElementsAre("DmCtrlEnterCriticalSection", "DmCtrlSetTargetSelectionMode",
                                           "DmCtrlSetHybridGammaPXL", "DmCtrlExitCriticalSection"));
    EXPECT_EQ(page.get("HybridGammaPXL", R"({"mode":2})").value, true);
    EXPECT_EQ(page.get("HybridGammaPXL", R"({"mode":3})").value, false);

    page.returns("DmCtrlSetTargetSelectionMode", 0x80000008);
    const Answer failed = page.put("HybridGammaPXL", R"({"enabled":1,"mode":2})");
    EXPECT_EQ(summary(failed), stalled("Set target selection mode."));
    EXPECT_EQ(failed.calls.back()["function"], "DmCtrlExitCriticalSection");
}

TEST(Lists, AreNeverLongerThanWhatTheLibraryReturned) {
    Page page;
    const auto sizes = [&](const Json& first, const Json& second) {
        for (const Json& outputs : {first, second})
            page.simulate({{"simulate", "return"},
                           {"function", "DmCtrlEnumGammaIndex"},
                           {"result", 0},
                           {"outputs", Json::array({outputs})},
                           {"times", 1}});
        return page.get("Gamma", R"({"available":true})").value;
    };
    EXPECT_EQ(sizes({1, 2, 3}, {1, 2}), Json({1, 2}));
    EXPECT_EQ(sizes({1, 2}, {1, 2, 3}), Json({1, 2}));
    EXPECT_EQ(sizes(4294967295, {7}), Json({7}));
    EXPECT_EQ(sizes({1, 2}, 4000000000), Json({0, 0}));
    EXPECT_EQ(sizes(0, {1}), Json::array());
    page.simulate({{"simulate", "reset"}});

    page.returns("DmCtrlGetModeCount", 0, Json::array({4294967295}));
    page.returns("DmCtrlGetModeSkip", 0, Json::array({1}));
    EXPECT_EQ(page.get("ModeSkip").value.size(), 1024U);

    const Json many(5000, 1);
    page.returns("DmCtrlEnumFineContrast", 0, Json::array({many}));
    page.returns("DmCtrlGetFineContrastSkip", 0, Json::array({1}));
    for (const char* resource : {"FineContrastFeature", "FineContrastSkip"})
        EXPECT_EQ(page.get(resource).value.size(), 1024U) << resource;

    page.returns("DmCtrlGetModeNameSize", 0, Json::array({4}));
    page.returns("DmCtrlGetModeName", 0, Json::array({"a name that needs more"}));
    EXPECT_EQ(page.get("ModeName", R"({"mode":0})").value["name"], "a na");

    page.returns("DmCtrlGetColorMatrix", 0, Json::array({{1, 0, 0, 0, "NaN", 0, 0, 0, 1}}));
    EXPECT_EQ(summary(page.get("ColorMatrix", R"({"index":0})")), "500 UnknownError Unknown error occurred.");
}

TEST(ColorPatch, IsBlackWhereTheBodySaysNothing) {
    Page page;
    const Answer answer = page.put("ColorPatch", R"({"color":{"red":255},"bounds":{"width":10,"x":1.6}})");
    EXPECT_EQ(inputsOf(answer, "DmCtrlShowColorPatch"),
              (std::vector<Json>{
                  Json::array({{{"color", {{"red", 255}, {"green", 0}, {"blue", 0}}},
                                {"background", {{"red", 0}, {"green", 0}, {"blue", 0}}},
                                {"bounds", {{"coordinate", 0}, {"x", 2}, {"y", 0}, {"width", 10}, {"height", 0}}}}})}));
}

TEST(SaveAndReset, TakeAnIndexWhenTheyAreGivenOne) {
    Page page;
    for (const std::string verb : {"Save", "Reset"}) {
        EXPECT_EQ(inputsOf(page.put(verb, R"({"type":1})"), "DmCtrl" + verb), (std::vector<Json>{Json::array({1})}));
        EXPECT_EQ(inputsOf(page.put(verb, R"({"type":1,"index":0})"), "DmCtrl" + verb + "AtIndex"),
                  (std::vector<Json>{Json::array({1, 0})}));
    }
}

}  // namespace
