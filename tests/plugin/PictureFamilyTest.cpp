// The picture family: one table over the plain resources, and a case wherever the flow is special.
#include "tests/plugin/Page.h"

namespace {

/// A resource that is one value.
struct Plain {
    const char* resource;
    const char* getFunction;
    const char* getAction;
    const char* setFunction;  // null: nothing can be set
    const char* setAction;
    const char* refusal;
    const char* body;  // what can be set
    const char* bad;   // what is refused
};

constexpr const char* mustBeNumber = "data must be number.";
constexpr const char* isNoNumber = "data is not number.";
constexpr const char* mustBeBoolean = "data must be boolean.";
constexpr const char* isEmpty = "data is empty.";

const Plain plainResources[] = {
    {"Hue", "DmCtrlGet6ColorsHue", "Get hue.", "DmCtrlSet6ColorsHue", "Set hue.", mustBeNumber, "3", "true"},
    {"Saturation", "DmCtrlGet6ColorsSaturation", "Get saturation.", "DmCtrlSet6ColorsSaturation", "Set saturation.",
     mustBeNumber, "3", "null"},
    {"Candela", "DmCtrlGetCandela", "Get candela.", "DmCtrlSetCandela", "Set candela.", mustBeNumber, "150", "[]"},
    {"ColorTemperature", "DmCtrlGetColorTemperature", "Get color temperature.", "DmCtrlSetColorTemperature",
     "Set color temperature.", mustBeNumber, "5000", "{}"},
    {"Gamma", "DmCtrlGetGammaIndex", "Get gamma index.", "DmCtrlSetGammaIndex", "Set gamma index.", mustBeNumber, "1",
     "\"1\""},
    {"Gamut", "DmCtrlGetGamutIndex", "Get gamut index.", "DmCtrlSetGamutIndex", "Set gamut index.", mustBeNumber, "1",
     "true"},
    {"Flavor", "DmCtrlGetFlavor", "Get flavor.", "DmCtrlSetFlavor", "Set flavor.", mustBeNumber, "1", "true"},
    {"MonoModelLUTSelect", "DmCtrlGetMonoModelLUTSelect", "Get mono model LUT select.", "DmCtrlSetMonoModelLUTSelect",
     "Set mono model LUT select.", mustBeNumber, "1", "true"},
    {"PinPFineContrast", "DmCtrlGetPinPFineContrast", "Get PinP fine contrast.", "DmCtrlSetPinPFineContrast",
     "Set PinP fine contrast.", mustBeNumber, "25", "true"},
    {"DUETC", "DmCtrlGetDUETCStatus", "Get DUETC status.", "DmCtrlSetDUETCStatus", "Set DUETC status.", mustBeNumber,
     "1", "true"},
    {"GammaTC", "DmCtrlGetGammaTCStatus", "Get GammaTC status.", "DmCtrlSetGammaTCStatus", "Set GammaTC status.",
     mustBeNumber, "1", "true"},
    {"QuickCheck", "DmCtrlGetQuickCheck", "Get quick check.", "DmCtrlSetQuickCheck", "Set quick check.", mustBeNumber,
     "1", "true"},
    {"LuminanceWarning", "DmCtrlGetLuminanceWarning", "Get luminance warning.", "DmCtrlSetLuminanceWarning",
     "Set luminance warning.", isNoNumber, "1", "true"},
    {"RangeExtension", "DmCtrlGetRangeExtension", "Get range extension status.", "DmCtrlSetRangeExtension",
     "Set range extension status.", isNoNumber, "1", "true"},
    {"RangeExtensionSetting", "DmCtrlGetRangeExtensionSetting", "Get range extension setting.",
     "DmCtrlSetRangeExtensionSetting", "Set range extension setting.", isNoNumber, "1", "true"},
    {"Limited109Setting", "DmCtrlGetLimited109Setting", "Get limited 109% setting.", "DmCtrlSetLimited109Setting",
     "Set limited 109% setting.", isNoNumber, "1", "true"},
    {"GamutClipping", "DmCtrlGetClipping", "Get gamut clipping.", "DmCtrlSetClipping", "Set gamut clipping.",
     mustBeBoolean, "true", "1"},
    {"HLGSystemGammaClipping", "DmCtrlGetHLGSystemGammaClipping", "Get HLG system gamma clipping.",
     "DmCtrlSetHLGSystemGammaClipping", "Set HLG system gamma clipping.", mustBeBoolean, "true", "\"true\""},
    {"CompatibilityMode", "DmCtrlGetCompatibilityMode", "Get compatibility mode.", "DmCtrlSetCompatibilityMode",
     "Set compatibility mode.", mustBeBoolean, "true", "null"},
    {"MonochromeConversion", "DmCtrlGetMonochromeConversion", "Get MonochromeConversion.",
     "DmCtrlSetMonochromeConversion", "Set MonochromeConversion.", isEmpty, "true", "null"},
    {"UniformityState", "DmCtrlGetUniformityEnable", "Get uniformity enable.", "DmCtrlSetUniformityEnable",
     "Set uniformity enable.", isEmpty, "true", ""},
    {"HybridGammaPXL", "DmCtrlGetHybridGammaPXL", "Get HybridGammaPXL.", "DmCtrlSetHybridGammaPXL",
     "Set HybridGammaPXL.", isEmpty, "true", "null"},
    {"FineContrast", "DmCtrlGetFineContrast", "Get fine contrast.", "DmCtrlSetFineContrast", "Set fine contrast.",
     mustBeNumber, "25", "true"},
    {"FineContrast", "DmCtrlGetFineContrast", "Get fine contrast.", "DmCtrlSetFineContrast", "Set fine contrast.",
     isEmpty, "26", "null"},
    {"Mode", "DmCtrlGetMode", "Get mode.", "DmCtrlSetMode", "Set mode.", mustBeNumber, "1", "true"},
    {"Mode", "DmCtrlGetMode", "Get mode.", "DmCtrlSetMode", "Set mode.", isEmpty, "2", "null"},
    {"DimmerOut", "DmCtrlGetDimmerOut", "Get dimmer out.", nullptr, "", "", "", ""},
    {"PanelType", "DmCtrlGetPanelType", "Get the panel type.", nullptr, "", "", "", ""},
    {"PanelRevision", "DmCtrlGetPanelRevision", "", nullptr, "", "", "", ""},
    {"OutsidePhotoSensorAD", "DmCtrlGetOutsidePhotoSensorAD", "Get outside photo sensor AD.", nullptr, "", "", "", ""},
    {"GainDefinition", "DmCtrlGetGainDefinition", "Get gain definition.", nullptr, "", "", "", ""},
    {"FactoryPanelLuminance", "DmCtrlGetFactoryPanelLuminance", "Get factory panel luminance.", nullptr, "", "", "",
     ""},
    {"ProfileData", "DmCtrlProfGetData", "Get profile data.", nullptr, "", "", "", ""},
};

std::string stalled(const std::string& action) {
    return "500 DmError Stall." + (action.empty() ? action : " (" + action + ")");
}

TEST(PlainResources, AreReadSetRefusedAndFailAsTheTableSays) {
    for (const Plain& row : plainResources) {
        SCOPED_TRACE(row.resource);
        Page page;
        EXPECT_EQ(page.get(row.resource).status, 200);
        if (row.setFunction) {
            EXPECT_EQ(summary(page.put(row.resource, row.body)), "200 null");
            const Json value = page.get(row.resource).value;
            EXPECT_EQ(std::string(row.resource) == "Candela" ? value["candela"] : value, Json::parse(row.body));
            const Answer refused = page.put(row.resource, row.bad);
            EXPECT_EQ(summary(refused), "400 BadRequestError " + std::string(row.refusal));
            EXPECT_EQ(inputsOf(refused, row.setFunction).size(), 0U);
            page.returns(row.setFunction, 0x80000008);
            EXPECT_EQ(summary(page.put(row.resource, row.body)), stalled(row.setAction));
        }
        page.returns(row.getFunction, 0x80000008);
        EXPECT_EQ(summary(page.get(row.resource)), stalled(row.getAction));
    }
}

TEST(Truth, IsTrueANumberThatIsNotZeroAndTheTextTrue) {
    Page page;
    const struct {
        const char* body;
        bool on;
    } cases[] = {{"true", true},   {"1", true},   {"-0.5", true},      {"\"true\"", true}, {R"({"data":true})", true},
                 {"false", false}, {"0", false},  {"\"TRUE\"", false}, {"\"1\"", false},   {"[1]", false},
                 {"true ", true},  {"yes", false}};
    for (const auto& [body, on] : cases)
        for (const char* resource : {"UniformityState", "MonochromeConversion", "HybridGammaPXL"}) {
            EXPECT_EQ(summary(page.put(resource, body)), "200 null") << body;
            EXPECT_EQ(page.get(resource).value, on) << resource << body;
        }
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

TEST(Records, KeepTheMembersThatAPutLeavesOut) {
    Page page;
    for (const auto& [resource, change, pointer, value] :
         std::vector<std::tuple<const char*, const char*, const char*, Json>>{
             {"SixColorsLightness", R"({"cyan":7})", "/cyan", 7},
             {"SixColorsSaturation", R"({"cyan":8})", "/cyan", 8},
             {"Chromaticity", R"({"x":0.3})", "/x", 0.3},
             {"SystemChromaticity", R"({"red":{"x":0.625},"green":{},"blue":{},"white":{"y":"no number"}})", "/red/x",
              0.625},
             {"HLGSystemGamma", R"({"systemGamma":1.5})", "/systemGamma", 1.5},
         }) {
        Json expected = page.get(resource).value;
        EXPECT_EQ(summary(page.put(resource, change)), "200 null") << resource;
        expected[Json::json_pointer(pointer)] = value;
        EXPECT_EQ(page.get(resource).value, expected) << resource;
        EXPECT_EQ(summary(page.put(resource, expected.dump())), "200 null") << resource;
        EXPECT_EQ(page.get(resource).value, expected) << resource;
    }
}

TEST(SystemChromaticity, NamesTheMemberThatIsMissing) {
    Page page;
    const struct {
        const char* body;
        const char* message;
    } cases[] = {
        {"[]", "data must be object."},
        {"{}", "data.red must be object."},
        {R"({"red":{}})", "data.green must be object."},
        {R"({"red":{},"green":{}})", "data.blue must be object."},
        {R"({"red":{},"green":{},"blue":{},"white":[]})", "data.white must be object."},
    };
    for (const auto& [body, message] : cases)
        EXPECT_EQ(summary(page.put("SystemChromaticity", body)), "400 BadRequestError " + std::string(message)) << body;
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

TEST(NamesAndSkips, AreAllCheckedBeforeTheFirstIsWritten) {
    Page page;
    const struct {
        const char* resource;
        const char* body;
        const char* message;
    } cases[] = {
        {"ModeName", R"("name")", "data must object or array."},
        {"ModeName", R"({"name":"n"})", "each object must have mode."},
        {"ModeName", R"([{"mode":1,"name":"n"},{"mode":1}])", "each object must have name."},
        {"FineContrastName", R"([{"fineContrast":11,"name":"n"},3])", "each object must have fineContrast."},
        {"FineContrastName", R"({"fineContrast":11,"name":4})", "each object must have name."},
        {"ModeSkip", R"({"skip":true})", "data must have mode."},
        {"ModeSkip", R"({"mode":1})", "data must have skip."},
        {"ModeSkip", R"([{"mode":1,"skip":true},{"mode":1}])", "each object must have skip."},
        {"ModeSkip", R"([{"mode":1,"skip":true},{"skip":true}])", "each object must have mode."},
        {"FineContrastSkip", R"({"fineContrast":11,"skip":1})", "data must have skip."},
        {"FineContrastSkip", R"([{"skip":true}])", "each object must have fineContrast."},
    };
    for (const auto& [resource, body, message] : cases) {
        const Answer answer = page.put(resource, body);
        EXPECT_EQ(summary(answer), "400 BadRequestError " + std::string(message)) << resource << body;
        for (const Json& call : answer.calls)
            EXPECT_EQ(call["function"].get<std::string>().find("DmCtrlSet"), std::string::npos) << resource << body;
    }
    for (const char* resource : {"ModeName", "ModeSkip", "FineContrastName", "FineContrastSkip"}) {
        const Json all = page.get(resource).value;
        ASSERT_GT(all.size(), 1U) << resource;
        EXPECT_EQ(summary(page.put(resource, all.dump())), "200 null") << resource;
        EXPECT_EQ(summary(page.put(resource, all[0].dump())), "200 null") << resource;
        EXPECT_EQ(page.get(resource).value, all) << resource;
    }
}

TEST(Tables, AreCheckedBeforeTheyAreWritten) {
    Page page;
    const struct {
        const char* resource;
        const char* body;
        const char* query;
        const char* message;
    } cases[] = {
        {"ColorMatrix", "[1,2,3,4,5,6,7,8,9]", "", "Query requires index."},
        {"ColorMatrix", "{}", R"({"index":0})", "data must be array."},
        {"ColorMatrix", "[1,2,3,4,5,6,7,8]", R"({"index":0})", "data must have 9 numbers."},
        {"ColorMatrix", "[1,2,3,4,5,6,7,8,true]", R"({"index":0})", "data must have 9 numbers."},
        {"LUT3D", "null", "", "data is empty."},
        {"LUT3D", "7", "", "data must be array."},
        {"LUT3D", R"({"enable":1,"selection":"x"})", "", "data must be array."},
        {"LUT3D", "[]", "", "data must have object array."},
        {"LUT3D", "[[1,2,3],4]", "", "Each value must be array."},
        {"LUT3D", "[[1,2,3],[1,2]]", "", "Each value must be 3 number array."},
        {"LUT3D", R"([[1,2,3],[1,2,"3"]])", "", "Each value must be 3 number array."},
        {"LUT1D", "[]", "", "data must be object."},
        {"LUT1D", R"({"red":[1],"green":[1],"blue":[1,2]})", "", "data must be object."},
        {"LUT1D", R"({"red":[1],"green":[1],"blue":[true]})", "", "data must be object."},
        {"LUT1D", R"({"red":[1],"green":[1],"blue":[1],"depth":9})", "", "Invalid bit depth."},
        {"LUTA", "[1]", "", "data must be object."},
        {"LUTA", R"(["1"])", R"({"color":"red"})", "data must be object."},
    };
    for (const auto& [resource, body, query, message] : cases) {
        const Answer answer = page.put(resource, body, query);
        EXPECT_EQ(summary(answer), "400 BadRequestError " + std::string(message)) << resource << body;
        for (const Json& call : answer.calls)
            EXPECT_EQ(call["function"].get<std::string>().find("DmCtrlSet"), std::string::npos) << resource << body;
    }
    EXPECT_EQ(summary(page.get("LUT1D", R"({"depth":"12"})")), "400 BadRequestError Invalid bit depth.");
    EXPECT_EQ(summary(page.get("ColorMatrix")), "400 BadRequestError Query requires index.");
    for (const auto& [resource, query] :
         std::vector<std::pair<const char*, const char*>>{{"LUT1D", ""},
                                                          {"LUTA", ""},
                                                          {"LUTA", R"({"color":"green"})"},
                                                          {"LUT3D", ""},
                                                          {"ColorMatrix", R"({"index":0})"}}) {
        const Answer before = page.get(resource, query);
        EXPECT_EQ(summary(page.put(resource,
                                   before.text.substr(before.text.find("\"value\":") + 8,
                                                      before.text.size() - before.text.find("\"value\":") - 9),
                                   query)),
                  "200 null")
            << resource;
        EXPECT_EQ(page.get(resource, query).value, before.value) << resource;
    }
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

    page.returns("DmCtrlGetModeNameSize", 0, Json::array({4}));
    page.returns("DmCtrlGetModeName", 0, Json::array({"a name that needs more"}));
    EXPECT_EQ(page.get("ModeName", R"({"mode":0})").value["name"], "a na");

    page.returns("DmCtrlGetColorMatrix", 0, Json::array({{1, 0, 0, 0, "NaN", 0, 0, 0, 1}}));
    EXPECT_EQ(summary(page.get("ColorMatrix", R"({"index":0})")), "500 UnknownError Unknown error occurred.");
}

TEST(Patterns, AreShownAndHiddenAndToldOnlyWhetherTheyAreSupported) {
    Page page;
    for (const char* resource : {"ColorPatch", "CenterCrossMarker"}) {
        EXPECT_EQ(summary(page.get(resource)), "400 BadRequestError supports query is required.");
        EXPECT_EQ(summary(page.get(resource, R"({"supports":1})")), "200 true");
        EXPECT_EQ(summary(page.ask("DELETE", resource)), "200 null");
    }
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
        EXPECT_EQ(summary(page.put(verb, R"({"index":2})")), "400 BadRequestError data must have 'type'.");
        EXPECT_EQ(summary(page.ask("GET", verb)), "405 MethodError GET is not allowed.");
    }
}

}  // namespace
