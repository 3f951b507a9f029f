// What the examples of the catalogue cannot show of a resource: what the monitor is told in which form, numbers that
// JavaScript cannot send, older generations of monitors, and libraries that answer oddly.
#include "simulator/core/World.h"
#include "tests/Example.h"
#include "tests/plugin/Page.h"

namespace {

/// What a function of libdmc answers instead of doing its work; `outputs` as JSON.
struct Return {
    const char* function;
    std::uint32_t result;
    const char* outputs = nullptr;
    int times = 0;  ///< 0: always
};

struct Case {
    const char* request;  ///< as an example of the catalogue
    std::string outcome;
    const char* function = nullptr;  ///< one that is to be called as often as there are lists of inputs here:
    std::string inputs = "[]";
    std::vector<Return> returns{};
};

void expectEach(const std::vector<Case>& cases, const char* product = "TQ271-P") {
    for (const auto& [request, outcome, function, inputs, returns] : cases) {
        Page page;
        page.product = product;
        for (const Return& one : returns) {
            Json instruction{{"simulate", "return"}, {"function", one.function}, {"result", one.result}};
            if (one.outputs) instruction["outputs"] = Json::parse(one.outputs);
            if (one.times > 0) instruction["times"] = one.times;
            page.simulate(instruction);
        }
        const tests::Example example = tests::parseExample(request, "");
        const Answer answer = page.ask(example.method, example.resource, example.query, example.body);
        const std::string where = request + (returns.empty() ? "" : std::string(" with ") + returns[0].function);
        EXPECT_EQ(summary(answer), outcome) << where;
        if (function) EXPECT_EQ(Json(inputsOf(answer, function)), Json::parse(inputs)) << where;
    }
}

std::string refused(const std::string& message) {
    return "400 BadRequestError " + message;
}

constexpr std::uint32_t stall = 0x80000008;

// ---- What the page gives --------------------------------------------------------------------------------------------

TEST(Data, IsConvertedToWhatTheLibraryTakes) {
    constexpr const char *step = "DmCtrlSetBrightnessForStep", *percentage = "DmCtrlSetBrightnessForPercentage",
                         *power = "DmCtrlSetPower", *timeout = "DmCtrlSetTimeoutKeyLock";
    const std::string noNumber = refused("data must be number.");
    expectEach({
        {R"(PUT Brightness {"data":60})", "200 null", step, "[[60]]"},
        {R"(PUT Brightness {"data":60,"other":1})", noNumber, step},
        {R"(PUT Brightness {"data":{"percentage":12.5}})", "200 null", percentage, "[[12.5]]"},
        {R"(PUT Brightness {"percentage":101})", "500 DmError Out of range. (Set brightness percentage.)", percentage,
         "[[101.0]]"},
        {"PUT Brightness sixty", noNumber, step},
        {"PUT Brightness 2.6", "200 null", step, "[[3]]"},
        {"PUT Brightness -1", "200 null", step, "[[0]]"},
        {"PUT Brightness 4294967297", "200 null", step, "[[1]]"},
        {"PUT Brightness 1e300", "200 null", step, "[[0]]"},
        {R"(PUT KeyLock {"timeout":65537})", "200 null", timeout, "[[1]]"},
        {R"(PUT KeyLock {"timeout":29.5})", "200 null", timeout, "[[30]]"},
        {"PUT InputPort [1,3.4]", "200 null", "DmCtrlSetInputPorts", "[[[1,3]]]"},
        {"PUT Power -1", "200 null", power, "[[1]]"},
        {"PUT Power 0.25", "200 null", power, "[[1]]"},
        {"PUT Power -0.0", "200 null", power, "[[0]]"},
        {"PUT Power 1e999", "200 null", power, "[[1]]"},
        {R"(PUT Power "true")", "200 null", power, "[[1]]"},
        {R"(PUT Power "1")", "200 null", power, "[[0]]"},
        {"PUT Power [1]", "200 null", power, "[[0]]"},
        {"PUT Power on", "200 null", power, "[[0]]"},
        {R"(PUT Power {"data":null})", refused("data is empty."), power},
        {R"(PUT SelfQCMutexOwner {"applicationID":7,"timeout":286})", "200 null", "DmCtrlLockSelfCalibration",
         "[[7,30]]"},
        {R"(PUT LUT3D {"enable":true})", "200 null", "DmCtrlEnable3DLUT", "[[1]]"},
        {R"(PUT LUT3D {"selection":2})", "200 null", "DmCtrlEnable3DLUT"},
        {"PUT SelfQCLEA 0.4", "200 null", "DmCtrlSetSelfQCLEAStateToStop", "[[]]"},
        {"PUT SelfQCLEA 4294967297", refused("Cannot set state to run."), "DmCtrlSetSelfQCLEAStateToStop"},
    });
}

TEST(Data, ThatNoMonitorCanTakeIsRefusedOrReadAsAbsent) {
    const std::string noNumber = refused("data must be number.");
    expectEach({
        {"PUT Brightness 1e999", noNumber, "DmCtrlSetBrightnessForStep"},
        {R"(PUT Brightness {"percentage":-1e999})", noNumber, "DmCtrlSetBrightnessForPercentage"},
        {"PUT Gamma 1e999", noNumber},
        {"PUT LuminanceWarning -1e999", refused("data is not number.")},
        {R"(PUT Candela {"candela":1e999})", noNumber},
        {R"(PUT ColorMatrix ?{"index":0} [1,2,3,4,5,6,7,8,1e999])", refused("data must have 9 numbers.")},
        {"PUT LUT3D [[1,2,1e999]]", refused("Each value must be 3 number array.")},
        {R"(PUT LUT1D {"red":[1],"green":[1],"blue":[1e999]})", refused("data must be object.")},
        {R"(PUT Save {"type":1e999})", refused("data must have 'type'.")},
        {R"(PUT Save {"type":1,"index":1e999})", refused("Invalid index.")},
        {R"(PUT HLGSystemGamma {"systemGamma":1e999})", "200 null", "DmCtrlSetHLGSystemGamma"},
        {R"(PUT Chromaticity {"x":1e999,"y":-1e999})", "200 null"},
    });
}

TEST(Selectors, AreNumbersOrTextsOfOneAndTheBodysCountsBeforeTheQuerys) {
    expectEach({
        {R"(PUT HybridGammaPXL ?{"mode":2} {"mode":"0x3","enabled":true})", "200 null", "DmCtrlSetTargetSelectionMode",
         "[[3]]"},
        {R"(PUT ModeName ?{"mode":4} {"name":"n"})", "200 null", "DmCtrlSetModeName", R"([[4,"n"]])"},
        {R"(PUT Save ?{"index":4} {"type":1})", "200 null", "DmCtrlSaveAtIndex", "[[1,4]]"},
        {R"(PUT Reset ?{"index":4} {"type":1,"index":"5"})", "200 null", "DmCtrlResetAtIndex", "[[1,5]]"},
        {R"(PUT HybridGammaPXL ?{"mode":1} {"enabled":null})", refused("data is empty."),
         "DmCtrlSetTargetSelectionMode"},
    });
}

// ---- Records --------------------------------------------------------------------------------------------------------

TEST(Records, AreChangedOrZeroWhereTheBodySaysNothing) {
    constexpr const char* booster =
        R"([{"status":3,"mode":2,"target":{"Lmax":500.5,"Lmin":0.5,"colorTemperature":6500,"displayFunction":1}}])";
    const std::vector<Return> before{{"DmCtrlGetInstantBacklightBooster", 0, booster}};
    constexpr const char *setBooster = "DmCtrlSetInstantBacklightBooster",
                         *setTime = "DmCtrlSetSelfCalibrationClockTime",
                         *setSchedule = "DmCtrlSetSelfCalibrationScheduleV2";
    expectEach({
        {R"(PUT InstantBacklightBooster {"mode":"1","status":9,"Lmin":1,"target":{"Lmax":600,"Lmin":2}})", "200 null",
         setBooster,
         R"([[{"status":3,"mode":2,"target":{"Lmax":600.0,"Lmin":2.0,"colorTemperature":6500,"displayFunction":1}}]])",
         before},
        {R"(PUT InstantBacklightBooster {"mode":1,"colorTemperature":7000})", "200 null", setBooster,
         R"([[{"status":3,"mode":1,"target":{"Lmax":500.5,"Lmin":0.5,"colorTemperature":7000,"displayFunction":1}}]])",
         before},
        {"DELETE InstantBacklightBooster", "200 null", setBooster,
         R"([[{"status":3,"mode":0,"target":{"Lmax":500.5,"Lmin":0.5,"colorTemperature":6500,"displayFunction":1}}]])",
         before},
        {R"(PUT ColorPatch {"color":{"red":255},"bounds":{"width":10,"x":1.6}})", "200 null", "DmCtrlShowColorPatch",
         R"([[{"color":{"red":255,"green":0,"blue":0},"background":{"red":0,"green":0,"blue":0},
               "bounds":{"coordinate":0,"x":2,"y":0,"width":10,"height":0}}]])"},
        {"PUT SelfCalibrationClockTime [2024,11,31,23,59,58,7]", "200 null", setTime,
         R"([[{"year":2024,"month":12,"day":31,"hour":23,"minute":59}]])"},
        {"PUT SelfCalibrationClockTime [2024,0,15]", "200 null", setTime,
         R"([[{"year":2024,"month":1,"day":15,"hour":0,"minute":0}]])"},
        {R"(PUT SelfCalibrationClockTime {"year":65535,"month":12,"day":31.4,"hour":"9","minute":5})", "200 null",
         setTime, R"([[{"year":65535,"month":12,"day":31,"hour":0,"minute":5}]])"},
        {R"(PUT SelfCalibrationSchedule {"timing":1,"type":2,"year":1,"yaer":2025,"week":"5"})", "200 null",
         setSchedule,
         R"([[{"timing":1,"type":2,"year":2025,"month":0,"day":0,"week":0,"dayOfWeek":0,"hour":0,"minute":0,
               "usageTime":0}]])"},
        {"GET SelfCalibrationSchedule",
         R"(200 {"timing":1,"type":2})",
         nullptr,
         "[]",
         {{"DmCtrlGetSelfCalibrationScheduleV2", 0,
           R"([{"timing":1,"type":2,"year":65535,"month":255,"day":255,"week":255,"dayOfWeek":4294967295,"hour":255,
                "minute":255,"usageTime":4294967295}])"}}},
    });

    const Json none{{"X", 0}, {"Y", 0}, {"Z", 0}, {"x", 0}, {"y", 0}, {"luminance", 0}};
    const Json white{{"X", 50}, {"Y", 100}, {"Z", 50}, {"x", 0.25}, {"y", 0.5}, {"luminance", 100}};
    const Json result{{"error", 0},  {"gamma", 0},    {"luminance", 0}, {"white", white},
                      {"red", none}, {"green", none}, {"blue", none},   {"black", none}};
    expectEach({{R"(PUT SelfCalibrationResult {"error":"none","white":{"X":50,"Y":100,"Z":50,"x":0.9,"luminance":7}})",
                 "200 null", "DmCtrlSetSelfCalibrationResultV4", Json{{result}}.dump()}});
}

TEST(CalibrationTarget, HasATableOf256EntriesAndTextsThatAreNeverCut) {
    Page page;
    for (const std::size_t count : {1U, 255U, 300U}) {
        std::vector<double> entries(count, 1.5);
        const Answer answer = page.put("SelfQCCalibrationTarget", Json{{"lut", entries}}.dump());
        entries.resize(256);
        EXPECT_EQ(inputsOf(answer, "DmCtrlSetSelfQCCalTarget").at(0)[0]["lut"], Json(entries)) << count;
    }
    const std::pair<const char*, std::size_t> texts[] = {
        {"/userFileName", 256}, {"/ambientSensor/name", 64}, {"/ambientSensor/serial", 32}};
    for (const auto& [member, size] : texts) {
        Json body;
        body[Json::json_pointer(member)] = std::string(size - 1, 't');
        EXPECT_EQ(summary(page.put("SelfQCCalibrationTarget", body.dump())), "200 null") << member;
        EXPECT_EQ(page.get("SelfQCCalibrationTarget").value[Json::json_pointer(member)].get<std::string>().size(),
                  size - 1);
        body[Json::json_pointer(member)] = std::string(size, 't');
        EXPECT_EQ(summary(page.put("SelfQCCalibrationTarget", body.dump())),
                  refused("data has a text that is too long."));
    }
}

// ---- Generations of monitors ----------------------------------------------------------------------------------------

TEST(Generations, AreServedByTheirOwnFunctions) {
    const std::vector<Return> olderSelect{{"DmCtrlSupportedRCSignalSelectSupportModeV2", 0}};
    const std::vector<Return> noModes{{"DmCtrlSupportedMode", 0}};
    const std::vector<Return> noKelvin{{"DmCtrlSupportedColorTemperature", 0}};
    constexpr const char *select = "DmCtrlSetRCSignalSelectSupportMode",
                         *selectV2 = "DmCtrlSetRCSignalSelectSupportModeV2", *index = "DmCtrlSetSelfIndex";
    const std::string noObject = refused("data must be object.");
    constexpr const char *clock = R"(GET SelfCalibrationClockTime ?{"supports":1})",
                         *pairing = R"(GET SelfCalibrationPairing ?{"supports":1})";
    expectEach({
        {"GET SignalSelectSupportMode", "200 2"},
        {"GET SignalSelectSupportMode", "200 true", nullptr, "[]", olderSelect},
        {"PUT SignalSelectSupportMode 3", "200 null", selectV2, "[[3]]"},
        {"PUT SignalSelectSupportMode true", "200 null", selectV2, "[[1]]"},
        {"PUT SignalSelectSupportMode 3", "200 null", select, "[[1]]", olderSelect},
        {"PUT SignalSelectSupportMode 0", "200 null", select, "[[0]]", olderSelect},
        {R"(GET SignalSelectSupportMode ?{"supports":1})",
         "200 true",
         nullptr,
         "[]",
         {{"DmCtrlSupportedRCSignalSelectSupportMode", 0}}},
        {R"(GET SignalSelectSupportMode ?{"supports":1})", "200 true", nullptr, "[]", olderSelect},
        {R"(GET SignalSelectSupportMode ?{"supports":1})",
         "200 false",
         nullptr,
         "[]",
         {olderSelect[0], {"DmCtrlSupportedRCSignalSelectSupportMode", 0}}},
        {R"(GET KVMSetting ?{"supports":1})",
         R"(200 {"hasMultipleSettings":true,"supports":false})",
         nullptr,
         "[]",
         {{"DmCtrlSupportedKVMSetting", 0}}},
        {"PUT ColorTemperature 5000", "200 null", "DmCtrlSetColorTemperature", "[[5000]]"},
        {"PUT ColorTemperature 1", "200 null", "DmCtrlSetColorTemperatureIndex", "[[1]]", noKelvin},
        {R"(GET ColorTemperature ?{"supports":1})", "200 true", nullptr, "[]", noKelvin},
        {R"(GET ColorTemperature ?{"supports":1})",
         "200 false",
         nullptr,
         "[]",
         {noKelvin[0], {"DmCtrlSupportedColorTemperatureIndex", 0}}},
        {R"(GET SelfCalibrationIndex ?{"count":1})", "200 8"},
        {R"(GET SelfCalibrationIndex ?{"count":1})", "200 4", nullptr, "[]", noModes},
        {"PUT SelfCalibrationIndex 3", "200 null", "DmCtrlSetSelfTargetIndex", "[[3]]"},
        {R"(PUT SelfCalibrationIndex {"index":-1,"fineContrast":11})", "200 null", index, "[[-1,11]]", noModes},
        {R"(PUT SelfCalibrationIndex {"index":2147483648,"fineContrast":11})", "200 null", index, "[[0,11]]", noModes},
        {R"(PUT SelfCalibrationIndex {"index":4294967298,"fineContrast":11})", "200 null", index, "[[0,11]]", noModes},
        {R"(PUT SelfCalibrationIndex {"index":1e12,"fineContrast":11})", "200 null", index, "[[0,11]]", noModes},
        {"PUT SelfCalibrationIndex 3", noObject, index, "[]", noModes},
        {R"(PUT SelfCalibrationIndex {"index":"1","fineContrast":0})", noObject, index, "[]", noModes},
        {R"(PUT SelfCalibrationIndex {"index":1})", noObject, index, "[]", noModes},
        {clock, "200 true", nullptr, "[]", {{"DmCtrlSupportedSelfCalibration", 0}}},
        {clock, "200 true", nullptr, "[]", {{"DmCtrlSupportedSelfQCCal", 0}}},
        {clock, "200 false", nullptr, "[]", {{"DmCtrlSupportedSelfCalibration", 0}, {"DmCtrlSupportedSelfQCCal", 0}}},
        {pairing, "200 false", nullptr, "[]", noModes},
        {pairing, "200 false", nullptr, "[]", {{"DmCtrlSupportedSelfCalibrationScheduleV2", 0}}},
        {"GET SelfQCEnable",
         "200 [true,false,true,false,false,false,false,false]",
         nullptr,
         "[]",
         {{"DmCtrlGetEnableSelfCalibrationMode", 0, "[[1,0,2,0,0,0,0,0,1]]"}}},
        {"GET SelfQCEnable",
         "200 [true,false,true,false,false,false]",
         "DmCtrlHasFineContrast",
         "[[11],[12],[13],[25],[26],[27]]",
         {{"DmCtrlGetEnableSelfCalibrationMode", 0, "[[1,0,2,0,0,0,0,0,1]]"}, noModes[0]}},
        {"GET SelfQCEnable",
         "500 DmError Unsupported. (Unsupported mode.)",
         nullptr,
         "[]",
         {noModes[0], {"DmCtrlHasFineContrast", 0}}},
    });
    expectEach({{"GET SelfQCEnable",
                 "200 [false,true]",
                 nullptr,
                 "[]",  // it has the fine contrasts 11 and 25
                 {{"DmCtrlGetEnableSelfCalibrationMode", 0, "[[0,1]]"}}},
                {"PUT SelfCalibrationTarget {}", "200 null", "DmCtrlSetSelfCalibrationTargetV3"}},
               "TB240");
}

TEST(SignalInformation, SelectsEachPortFirstOnProductsThatMeasureOnlyOne) {
    const struct {
        const char* product;
        std::uint32_t supported;  // what the library says of selecting
        bool asks, selects;
    } cases[] = {{"TQ271-P", 1, true, true},   {"TQ321-X-2", 1, true, true}, {"TQ321", 1, true, true},
                 {"TQ271-P", 0, true, false},  {"TQ272-P", 1, false, false}, {"TQ2711-P", 1, false, false},
                 {"XTQ271-P", 1, false, false}};
    for (const auto& [product, supported, asks, selects] : cases) {
        Json scenario = simulator::World::builtInScenario();
        scenario["monitors"][0].merge_patch({{"product", product}, {"settings", {{"inputPort", {{"value", {3, 2}}}}}}});
        simulator::loadScenario(scenario);
        Page page;
        page.product = product;
        page.returns("DmCtrlSupportedTargetSelection", supported);
        const Answer answer = page.get("SignalInformation");
        std::string functions;  // the letters that distinguish them
        for (const Json& call : answer.calls) {
            const std::string function = call["function"];
            if (function == "DmCtrlSupportedTargetSelection") functions += "?";
            if (function == "DmCtrlSetTargetSelectionInputPort") functions += "S";
            if (function.starts_with("DmCtrlGetSignal")) functions += "g";
        }
        EXPECT_EQ(functions, std::string(asks ? "?" : "") + (selects ? "SgggSggg" : "gggggg")) << product;
        EXPECT_EQ(answer.value[0]["inputPort"], 3);
        EXPECT_EQ(answer.value[1]["inputPort"], 2);
        EXPECT_EQ(answer.value[1]["resolution"]["horizontal"], 3840);
    }
    simulator::loadScenario(simulator::World::builtInScenario());
}

// ---- What the library answers ---------------------------------------------------------------------------------------

TEST(Answers, HaveNothingBeyondWhatTheSecondOfTwoCallsWroteAndTheFirstAnnounced) {
    const auto list = [](const char* request, const char* function, const char* first, const char* second,
                         const char* value) {
        return Case{
            request, std::string("200 ") + value, nullptr, "[]", {{function, 0, first, 1}, {function, 0, second, 1}}};
    };
    constexpr const char *gamma = R"(GET Gamma ?{"available":1})", *gammas = "DmCtrlEnumGammaIndex";
    expectEach({
        list(gamma, gammas, "[[1,2,3]]", "[[1,2]]", "[1,2]"),
        list(gamma, gammas, "[[1,2]]", "[[1,2,3]]", "[1,2]"),
        list(gamma, gammas, "[4294967295]", "[[7]]", "[7]"),
        list(gamma, gammas, "[[1,2]]", "[4000000000]", "[0,0]"),
        list(gamma, gammas, "[0]", "[[1]]", "[]"),
    });
}

TEST(Answers, HaveTextsNoLongerThanTheirSizeAndWhatTheLibraryWrote) {
    const std::tuple<const char*, const char*, const char*> texts[] = {
        {"UDI", "", "DmCtrlGetUDI"},
        {"OSDDisplayFirmwareVersion", R"({"string":1})", "DmCtrlGetOSDDisplayFirmwareVersionsString"}};
    const std::tuple<std::uint32_t, std::string, std::string> cases[] = {
        {4, "Room 12", "Room"},  // it has grown, and its buffer has no NUL
        {21, "R", "R"},
        {4294967295, "R", "R"},
        {0, "Room 12", ""},
        {4096, std::string(5000, 'r'), std::string(4096, 'r')}};
    for (const auto& [resource, query, function] : texts)
        for (const auto& [size, text, read] : cases) {
            Page page;
            page.returns((function + std::string("Size")).c_str(), 0, {size});
            page.returns(function, 0, {text});
            EXPECT_EQ(page.get(resource, query).value, read) << resource << " " << size;
        }
}

TEST(Answers, ToCountsThatAreNoneAreFailuresOrEmpty) {
    constexpr const char *targets = "DmCtrlGetSelfTargetCount", *pairing = "DmCtrlGetSelfTargetPairing",
                         *ports = "DmCtrlGetUSBCAltModePortCount";
    const std::string failed = "500 DmError Failed. (Get self target pairing.)";
    expectEach({
        {R"(GET USBCAltModePort ?{"supports":1})", "200 true", nullptr, "[]", {{ports, 0, "[2]"}}},
        {R"(GET USBCAltModePort ?{"supports":1})", "200 false", nullptr, "[]", {{ports, 0, "[0]"}}},
        {R"(GET USBCAltModePort ?{"supports":1})", "200 false", nullptr, "[]", {{ports, 0x80000006, "[2]"}}},
        {"GET SignalInformation", "200 []", nullptr, "[]", {{"DmCtrlGetInputPortCount", 0, "[0]"}}},
        {"GET LUT3D", "200 []", nullptr, "[]", {{"DmCtrlGet3DLUTDirect", 0, "[0]"}}},
        {"GET SelfCalibrationPairing", "200 [0,1,2]", nullptr, "[]", {{targets, 0, "[3]"}}},
        {"GET SelfCalibrationPairing", failed, nullptr, "[]", {{targets, 0, "[0]"}}},
        {"GET SelfCalibrationPairing", failed, nullptr, "[]", {{pairing, stall, "[]"}}},
        {"GET SelfCalibrationPairing", failed, nullptr, "[]", {{pairing, 0x80000006, "[]"}}},  // elsewhere a success
        {"GET SelfQCPairing", "200 [0,0,0,0,0,0,0,0]", nullptr, "[]", {{pairing, 0x80000006, "[]"}}},
        {"GET SelfQCPairing", "200 [5,6,7,8,9,10,11,12]", nullptr, "[]", {{pairing, 0, "[[5,6,7,8,9,10,11,12,13]]"}}},
        {"GET SelfQCPairing",
         "500 DmError Unsupported. (Unsupported mode.)",
         nullptr,
         "[]",
         {{"DmCtrlGetModeCount", 0, "[0]"}}},
        {"GET ColorMatrix ?{\"index\":0}",
         "500 UnknownError Unknown error occurred.",
         nullptr,
         "[]",
         {{"DmCtrlGetColorMatrix", 0, R"([[1,0,0,0,"NaN",0,0,0,1]])"}}},
    });
}

TEST(Answers, HaveNoMoreItemsThanThereIsSpaceOrTime) {
    const struct {
        std::vector<Return> returns;
        const char* resource;
        const char* list;
        std::size_t size;
    } cases[] = {
        {{{"DmCtrlGetModeCount", 0, "[4294967295]"}, {"DmCtrlGetModeSkip", 0, "[1]"}}, "ModeSkip", "", 1024},
        {{{"DmCtrlEnumFineContrast", 0, "[5000]"}, {"DmCtrlGetFineContrastSkip", 0, "[1]"}},
         "FineContrastSkip",
         "",
         1024},
        {{{"DmCtrlEnumFineContrast", 0, "[5000]"}}, "FineContrastFeature", "", 1024},
        {{{"DmCtrlGetInputPortCount", 0, "[5000]"},
          {"DmCtrlGetInputPorts", 0, "[]"},
          {"DmCtrlGetSignalInformation", 0, "[]"},
          {"DmCtrlGetSignalResolution", 0, "[]"},
          {"DmCtrlGetSignalInfoFrame", 0, "[]"},
          {"DmCtrlSetTargetSelectionInputPort", 0, "[]"}},
         "SignalInformation",
         "",
         1024},
        {{{"DmCtrlGetSelfQCErrorCodeSize", 0, "[4294967295]"}}, "SelfQCCalibrationResult", "/latest/errorCode", 16},
        {{{"DmCtrlGetSelfQCErrorCodeSize", 0, "[0]"}}, "SelfQCGrayScaleCheckResult", "/latest/errorCode", 0},
        {{{"DmCtrlGetSelfQCGSCResult", 0, R"([[{"stepCount":4294967295}]])"}},
         "SelfQCGrayScaleCheckResult",
         "/latest/errorRate",
         64},
        {{{"DmCtrlGetSelfQCGSCResult", 0, R"([[{"stepCount":2,"JNDIdeal":[1,2,3]}]])"}},
         "SelfQCGrayScaleCheckResult",
         "/latest/JNDIdeal",
         2},
        {{{"DmCtrlGetSelfQCCalResult", 0, "[[{},{},{}]]"}}, "SelfQCCalibrationResult", "", 2},
        {{{"DmCtrlGetSelfQCCalResult", 0, "[[]]"}}, "SelfQCCalibrationResult", "", 0},
        {{{"DmCtrlGetSelfQCCalLastTarget", 0, "[4294967295]"}}, "SelfQCCalibrationLastTarget", "", 2},
        {{{"DmCtrlGetSupportedSelfQCGSCLastTargetCount", 0, "[1]"}}, "SelfQCGrayScaleCheckLastTarget", "", 1},
        {{{"DmCtrlGetSupportedSelfQCGSCLastTargetCount", 0, "[4294967295]"}}, "SelfQCGrayScaleCheckLastTarget", "", 2},
    };
    for (const auto& [returns, name, list, size] : cases) {
        Page page;
        for (const Return& one : returns) page.returns(one.function, one.result, Json::parse(one.outputs));
        const Json value = page.get(name).value;
        const Json::json_pointer at(list);
        ASSERT_TRUE(value.contains(at)) << returns[0].function << value;
        EXPECT_EQ(value[at].size(), size) << returns[0].function << returns[0].outputs;
    }
}

TEST(SelfQCNextSchedule, IsByUsageOrAtADate) {
    Page page;
    const std::pair<const char*, int> jobs[] = {
        {"SelfQCCalibrationNextSchedule", 0}, {"SelfQCGrayScaleCheckNextSchedule", 1}, {"SelfQCLEANextSchedule", 2}};
    const Json date = page.get("SelfCalibrationClockTime").value, usage{{"hour", 100}, {"minute", 59}};
    for (const std::uint32_t type : {0U, 1U, 2U}) {
        page.returns("DmCtrlGetSelfQCNextSchedule", 0,
                     Json::array({{{"type", type}, {"usageTime", usage}, {"date", date}}}));
        Json expected = type == 1 ? Json{{"usageTime", usage}} : date;
        expected["type"] = type;
        for (const auto& [name, job] : jobs) {
            const Answer answer = page.get(name);
            EXPECT_EQ(answer.value, expected) << name;
            EXPECT_EQ(inputsOf(answer, "DmCtrlGetSelfQCNextSchedule"), std::vector{Json::array({job})});
        }
    }
}

TEST(Monitors, AreListedAsFarAsTheLibraryTellsThem) {
    Page page;
    page.returns("DmCtrlFind", 0x80000000);
    for (const auto& [query, finds] : {std::pair{R"({"update":"true"})", true}, {R"({"update":"TRUE"})", false}}) {
        const Answer answer = page.get("Monitors", query);
        EXPECT_EQ(answer.value.size(), 3U);
        EXPECT_EQ(answer.calls[0]["function"] == "DmCtrlFind", finds) << query;
        if (finds) EXPECT_EQ(answer.calls[0]["arguments"], Json::array({0, 0}));
    }
    page.returns("DmCtrlGetSerialProduct", 0, Json::array({"0123456789", "0123456789ABCDEFGH"}));
    const Json list = page.get("Monitors").value;
    EXPECT_EQ(list.size(), 1024U);
    EXPECT_EQ(list[0], (Json{{"serial", "01234567"}, {"product", "0123456789ABCDEF"}}));
    page.returns("DmCtrlGetNumMonitors", 0, Json::array({5000}));
    const Answer lookUp = page.get("Brightness");
    EXPECT_EQ(summary(lookUp), "500 DmError Failed. (Monitor is not found.)");
    EXPECT_EQ(lookUp.calls.size(), 1U + 1024U);
    page.returns("DmCtrlGetSerialProduct", 0x80000000);
    const Answer none = page.get("Monitors");
    EXPECT_EQ(summary(none), "200 []");
    EXPECT_EQ(none.log, "statusCode:200\tmethod:GET\turi:/pell/Monitors\tmsg:Success");
    page.returns("DmCtrlRelease", 0x80000000);
    const Answer released = page.ask("DELETE", "Monitors");
    EXPECT_EQ(summary(released), "200 null");
    EXPECT_EQ(released.calls[0]["function"], "DmCtrlRelease");
    EXPECT_EQ(released.log, "statusCode:200\tmethod:DELETE\turi:/pell/Monitors\tmsg:Success");
}

}  // namespace
