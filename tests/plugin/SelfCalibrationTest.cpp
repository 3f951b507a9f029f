// Self-calibration and quality control: what depends on the order of checks, on the generation of the monitor, on what
// the library answers, and on time.
#include <map>

#include "tests/plugin/Page.h"

namespace {

/// What the monitor is told of a PUT: the one argument of its one call of a function.
Json written(Page& page, const char* resource, const char* function, const Json& body) {
    const Answer answer = page.put(resource, body.dump());
    EXPECT_EQ(summary(answer), "200 null") << resource << body;
    const auto inputs = inputsOf(answer, function);
    return inputs.size() == 1 ? inputs[0][0] : Json();
}

/// The bodies and what becomes of each, in order: a refusal's message, or what a function is told.
void expectEach(Page& page, const char* resource, const char* function, const char* pairs) {
    const Json list = Json::parse(pairs);
    for (std::size_t i = 0; i < list.size(); i += 2)
        if (list[i + 1].is_string()) {
            const Answer answer = page.put(resource, list[i].dump());
            EXPECT_EQ(summary(answer), "400 BadRequestError " + list[i + 1].get<std::string>()) << list[i];
            EXPECT_TRUE(inputsOf(answer, function).empty()) << list[i];
        } else {
            EXPECT_EQ(written(page, resource, function, list[i]), list[i + 1]) << list[i];
        }
}

void pass(Page& page, int minutes) {
    page.simulate({{"simulate", "advance"}, {"milliseconds", minutes * 60000}});
}

constexpr std::uint32_t stall = 0x80000008;

// ---- The calibration target: texts, flags and a list ----------------------------------------------------------------

constexpr const char* resource = "SelfQCCalibrationTarget";

Json written(Page& page, const Json& body) {
    return written(page, resource, "DmCtrlSetSelfQCCalTarget", body);
}

TEST(CalibrationTarget, AnswersWhatWasPut) {
    Page page;
    Json lut;
    for (int i = 0; i < 256; ++i) lut.push_back(0.1 * i - 3);
    const Json target{{"accuracy", 4294967295},
                      {"Lmax", 170.25},
                      {"LminEnable", true},
                      {"Lmin", 0.1},
                      {"colorTemperature", 7500},
                      {"whitePoint", {{"x", 0.31}, {"y", 0.33}}},
                      {"displayFunction", 2},
                      {"exp", 24},
                      {"userFileName", "Ärzte \"1\".txt"},
                      {"LambEnable", false},
                      {"Lamb", 0.3},
                      {"ambient", 40.5},
                      {"ambientSensor", {{"name", "Rear"}, {"serial", "7"}}},
                      {"lut", lut}};
    for (const Json& body : {target, page.get(resource).value}) {
        EXPECT_EQ(summary(page.put(resource, body.dump())), "200 null");
        EXPECT_EQ(page.get(resource).value, body);
    }
}

TEST(CalibrationTarget, IsReadLenientlyAndZeroWhereTheDataSaysNothing) {
    Page page;
    const Json zero = written(page, Json::object());
    EXPECT_EQ(zero["lut"], Json(std::vector<double>(256)));
    EXPECT_EQ(zero["userFileName"], "");

    const struct {
        std::vector<const char*> members;
        const char* kinds;  // what is given and what is read, in turn
    } cases[] = {
        {{"/Lmax", "/Lmin", "/whitePoint/x", "/whitePoint/y", "/Lamb", "/ambient", "/lut/0", "/lut/255"},
         R"([170, 170, 0.5, 0.5, true, 1, false, 0, "2.5", 2.5, "2.5 cd", 0, "", 0, null, 0, [1], 0])"},
        {{"/LminEnable", "/LambEnable"}, R"([true, 1, 0.5, 1, 0, 0, "true", 1, "1", 0, [true], 0, null, 0])"},
        {{"/accuracy", "/colorTemperature", "/displayFunction", "/exp"},
         R"([22, 22, 21.5, 22, "22", 0, true, 0, [22], 0])"},
        {{"/userFileName", "/ambientSensor/name"}, R"(["a", "a", 7, "", true, "", null, ""])"},
        {{"/whitePoint"}, R"([0.3, {"x": 0, "y": 0}, [1, 1], {"x": 0, "y": 0}])"},
    };
    for (const auto& [members, kinds] : cases)
        for (const char* member : members) {
            const Json list = Json::parse(kinds);
            for (std::size_t i = 0; i < list.size(); i += 2) {
                Json body = zero, expected = zero;
                body[Json::json_pointer(member)] = list[i];
                expected[Json::json_pointer(member)] = list[i + 1];
                EXPECT_EQ(written(page, body), expected) << member << list[i];
            }
        }

    for (const std::size_t count : {1U, 255U, 300U}) {
        std::vector<double> entries(count, 1.5);
        const Json lut = written(page, {{"exp", 1}, {"lut", entries}})["lut"];
        entries.resize(256);
        EXPECT_EQ(lut, Json(entries)) << count;
    }
}

TEST(CalibrationTarget, TextsEndWithTheirFieldAndAreNeverCut) {
    Page page;
    const Json full{{"userFileName", std::string(256, 'f')},
                    {"ambientSensor", {{"name", std::string(64, 'n')}, {"serial", std::string(32, 's')}}}};
    page.returns("DmCtrlGetSelfQCCalTarget", 0, Json::array({full}));
    const Json target = page.get(resource).value;
    for (const char* member : {"userFileName", "ambientSensor"}) EXPECT_EQ(target[member], full[member]);

    // What is written leaves room for its NUL.
    for (const char* member : {"/userFileName", "/ambientSensor/name", "/ambientSensor/serial"}) {
        const Json::json_pointer at(member);
        Json body;
        body[at] = target[at];
        const Answer answer = page.put(resource, body.dump());
        EXPECT_EQ(summary(answer), "400 BadRequestError data has a text that is too long.");
        EXPECT_TRUE(inputsOf(answer, "DmCtrlSetSelfQCCalTarget").empty());
        body[at] = target[at].get<std::string>().substr(1);
        EXPECT_EQ(written(page, body)[at], body[at]);
    }
}

TEST(CalibrationTarget, OfNumbersThatJsonCannotHoldIsAFailure) {
    Page page;
    for (const char* outputs : {R"([{"Lmin":"NaN"}])", R"([{"lut":[0,"Infinity"]}])"}) {
        page.returns("DmCtrlGetSelfQCCalTarget", 0, Json::parse(outputs));
        EXPECT_EQ(summary(page.get(resource)), "500 UnknownError Unknown error occurred.") << outputs;
    }
}

// ---- Self-calibration -----------------------------------------------------------------------------------------------

TEST(SelfCalibrationClockTime, CountsMonthsFromZeroInLists) {
    Page page;
    expectEach(page, "SelfCalibrationClockTime", "DmCtrlSetSelfCalibrationClockTime", R"([
        [2024, 0, 15],                           {"year": 2024, "month": 1, "day": 15, "hour": 0, "minute": 0},
        {"year": 2024, "month": 1, "day": 15},   {"year": 2024, "month": 1, "day": 15, "hour": 0, "minute": 0},
        [2024, 11, 31, 23, 59, 58, 7],           {"year": 2024, "month": 12, "day": 31, "hour": 23, "minute": 59},
        {"year": 65535, "month": 12, "day": 31.4, "hour": "9", "minute": 5},
                                                 {"year": 65535, "month": 12, "day": 31, "hour": 0, "minute": 5},
        "2024-01-15",                            "data must be object or array.",
        null,                                    "data must be object or array.",
        ["2024", 0],                             "data must have 3 numbers at least.",
        [2024, 0, 15, 9, null],                  "data must have number array.",
        {"year": 2024, "month": 1},              "value@data is invalid.",
        {"year": "2024", "month": 1, "day": 15}, "value@data is invalid."])");
    const struct {
        const char* time;
        const char* text;
    } texts[] = {
        {R"({"year":2024,"month":1,"day":15,"hour":9,"minute":5})", R"("2024-01-15 09:05:00")"},
        {R"({"year":7,"month":12,"day":31,"hour":23,"minute":59})", R"("0007-12-31 23:59:00")"},
        {R"({"year":65535,"month":255,"day":0,"hour":0,"minute":0})", R"("65535-255-00 00:00:00")"},
    };
    for (const auto& [time, text] : texts) {
        page.returns("DmCtrlGetSelfCalibrationClockTime", 0, Json::array({Json::parse(time)}));
        EXPECT_EQ(page.get("SelfCalibrationClockTime", R"({"string":0})").value.dump(), text);
        EXPECT_EQ(page.get("SelfCalibrationClockTime").value, Json::parse(time));
    }
}

TEST(SelfCalibrationSchedule, LeavesOutWhatDoesNotApplyAndWritesItAsZero) {
    Page page;
    const std::map<std::string, std::uint32_t> allOnes{{"year", 0xFFFF}, {"month", 0xFF},           {"day", 0xFF},
                                                       {"week", 0xFF},   {"dayOfWeek", 0xFFFFFFFF}, {"hour", 0xFF},
                                                       {"minute", 0xFF}, {"usageTime", 0xFFFFFFFF}};
    Json schedule{{"timing", 0xFFFFFFFF}, {"type", 0xFFFFFFFF}};
    for (const auto& [member, ones] : allOnes) schedule[member] = ones - 1;
    for (const auto& [member, ones] : allOnes) {
        Json one = schedule, expected = schedule;
        one[member] = ones;
        expected.erase(member);
        page.returns("DmCtrlGetSelfCalibrationScheduleV2", 0, Json::array({one}));
        EXPECT_EQ(page.get("SelfCalibrationSchedule").value, expected);
    }
    expectEach(page, "SelfCalibrationSchedule", "DmCtrlSetSelfCalibrationScheduleV2", R"([
        {"timing": 1, "type": 2, "year": 2025},
        {"timing": 1, "type": 2, "year": 0, "month": 0, "day": 0, "week": 0, "dayOfWeek": 0, "hour": 0, "minute": 0,
         "usageTime": 0},
        {"timing": 1, "type": 2, "year": 1, "yaer": 2025, "month": 6, "day": 30, "week": "5", "dayOfWeek": 4,
         "hour": 3, "minute": 2, "usageTime": 4294967295},
        {"timing": 1, "type": 2, "year": 2025, "month": 6, "day": 30, "week": 0, "dayOfWeek": 4, "hour": 3, "minute": 2,
         "usageTime": 4294967295},
        [1, 2],                     "data must be object.",
        {"timing": 1},              "data must have timing and type.",
        {"timing": "1", "type": 2}, "data must have timing and type."])");
}

TEST(SelfCalibrationTarget, IsCheckedInOrderAndOnlyWhereItIsSupported) {
    Page page;
    const Json target = Json::parse(
        R"({"id":4,"luminance":100.5,"colorTemperature":6500,"gamma":22,"gamut":1,"clipping":0.5,"white":{"x":"0.3"}})");
    const Json told = written(page, "SelfCalibrationTarget", "DmCtrlSetSelfCalibrationTargetV3", target);
    EXPECT_EQ(told["id"], 4);
    EXPECT_EQ(told["enable"], 0);
    EXPECT_EQ(told["clipping"], 1);
    EXPECT_EQ(told["luminance"], 100.5);
    EXPECT_EQ(told["white"]["x"], 0.3);
    EXPECT_EQ(told["blue"]["y"], 0);

    Json body = Json::object();
    for (const char* member : {"id", "luminance", "colorTemperature", "gamma", "gamut"}) {
        for (const Json& unfit : {Json(), Json("7"), Json(true)}) {
            body[member] = unfit;
            EXPECT_EQ(summary(page.put("SelfCalibrationTarget", body.dump())),
                      "400 BadRequestError data must have " + std::string(member) + ".");
        }
        body[member] = target[member];
    }
    page.product = "TB240";
    EXPECT_EQ(summary(page.put("SelfCalibrationTarget", "[]")), "400 BadRequestError data must have object.");
    const Answer ignored = page.put("SelfCalibrationTarget", "{}");
    EXPECT_EQ(summary(ignored), "200 null");
    EXPECT_TRUE(inputsOf(ignored, "DmCtrlSetSelfCalibrationTargetV3").empty());
}

TEST(SelfCalibrationResult, HasItsChromaticitiesDerived) {
    Page page;
    const Json told = written(page, "SelfCalibrationResult", "DmCtrlSetSelfCalibrationResultV4",
                              Json::parse(R"({"error":"none","white":{"X":50,"Y":100,"Z":50,"x":0.9,"luminance":7},
                                              "black":{"X":"1","Y":true,"Z":2}})"));
    EXPECT_EQ(told["error"], 0);
    EXPECT_EQ(told["white"], Json::parse(R"({"X":50,"Y":100,"Z":50,"x":0.25,"y":0.5,"luminance":100})"));
    EXPECT_EQ(told["black"], Json::parse(R"({"X":1,"Y":1,"Z":2,"x":0.25,"y":0.25,"luminance":1})"));
    for (const char* color : {"red", "green", "blue"})
        EXPECT_EQ(told[color], Json::parse(R"({"X":0,"Y":0,"Z":0,"x":0,"y":0,"luminance":0})")) << color;
}

TEST(SelfCalibrationIndex, IsOfTheMonitorsGeneration) {
    Page page;
    EXPECT_EQ(page.get("SelfCalibrationIndex", R"({"count":1})").value, 8);
    EXPECT_EQ(written(page, "SelfCalibrationIndex", "DmCtrlSetSelfTargetIndex", 3), 3);
    page.returns("DmCtrlSupportedMode", 0);
    EXPECT_EQ(page.get("SelfCalibrationIndex", R"({"count":1})").value, 4);
    const Answer older = page.put("SelfCalibrationIndex", R"({"index":2,"fineContrast":11})");
    EXPECT_EQ(inputsOf(older, "DmCtrlSetSelfIndex"), std::vector<Json>{Json::parse("[2, 11]")});
    for (const std::string index : {"2147483648", "-2147483649", "4294967298", "1e12"}) {
        const Answer tooLarge = page.put("SelfCalibrationIndex", R"({"fineContrast":11,"index":)" + index + "}");
        EXPECT_EQ(inputsOf(tooLarge, "DmCtrlSetSelfIndex"), std::vector<Json>{Json::parse("[0, 11]")}) << index;
    }
    EXPECT_EQ(page.put("SelfCalibrationIndex", R"({"index":-1,"fineContrast":25})").status, 200);
    EXPECT_EQ(page.get("SelfCalibrationIndex").value, Json::parse(R"({"index":-1,"fineContrast":25})"));
    for (const char* body : {"3", "[]", R"({"index":1})", R"({"index":"1","fineContrast":0})"})
        EXPECT_EQ(summary(page.put("SelfCalibrationIndex", body)), "400 BadRequestError data must be object.") << body;
    EXPECT_EQ(summary(page.put("SelfCalibrationIndex", "null")), "400 BadRequestError data is empty.");
    page.returns("DmCtrlSetSelfIndex", stall);
    EXPECT_EQ(summary(page.put("SelfCalibrationIndex", R"({"index":1,"fineContrast":0})")),
              "500 DmError Stall. (Set self index.)");
}

TEST(Pairing, OfNoTargetsIsAFailure) {
    const struct {
        const char* function;
        std::uint32_t result;
        const char* outputs;
        const char* self;
        const char* quality;
    } cases[] = {
        {"DmCtrlGetSelfTargetPairing", stall, "[]", "500 DmError Failed. (Get self target pairing.)",
         "500 DmError Stall. (Get SelfQC pairing.)"},
        // Elsewhere this code is a success.
        {"DmCtrlGetSelfTargetPairing", 0x80000006, "[]", "500 DmError Failed. (Get self target pairing.)",
         "200 [0,0,0,0,0,0,0,0]"},
        {"DmCtrlGetSelfTargetPairing", 0, "[[5,6,7,8,9,10,11,12,13]]", "200 [5,6,7,8,9,10,11,12]",
         "200 [5,6,7,8,9,10,11,12]"},
        {"DmCtrlGetSelfTargetCount", 0, "[0]", "500 DmError Failed. (Get self target pairing.)",
         "200 [0,1,2,3,4,5,6,7]"},
        {"DmCtrlGetSelfTargetCount", 0, "[3]", "200 [0,1,2]", "200 [0,1,2,3,4,5,6,7]"},
        {"DmCtrlGetSelfTargetCount", stall, "[]", "500 DmError Stall. (Get self target pairing.)",
         "200 [0,1,2,3,4,5,6,7]"},
        {"DmCtrlGetModeCount", 0, "[0]", "200 [0,1,2,3,4,5,6,7]", "500 DmError Unsupported. (Unsupported mode.)"},
    };
    for (const auto& [function, result, outputs, self, quality] : cases) {
        Page page;
        page.returns(function, result, Json::parse(outputs));
        EXPECT_EQ(summary(page.get("SelfCalibrationPairing")), self) << function;
        EXPECT_EQ(summary(page.get("SelfQCPairing")), quality) << function;
    }
}

// ---- Quality control ------------------------------------------------------------------------------------------------

TEST(SelfQCEnable, HasAFlagForEachModeOfTheMonitorsGeneration) {
    Page page;
    page.returns("DmCtrlGetEnableSelfCalibrationMode", 0, Json::parse("[[1,0,2,0,0,0,0,0,1]]"));
    EXPECT_EQ(summary(page.get("SelfQCEnable")), "200 [true,false,true,false,false,false,false,false]");
    page.returns("DmCtrlSupportedMode", 0);
    EXPECT_EQ(summary(page.get("SelfQCEnable")), "200 [true,false,true,false,false,false]");
    page.returns("DmCtrlHasFineContrast", 0);
    EXPECT_EQ(summary(page.get("SelfQCEnable")), "500 DmError Unsupported. (Unsupported mode.)");
    const Answer answer = page.put("SelfQCEnable", R"([true, 0.5, "true", -1, 0, "yes", null, []])");
    EXPECT_EQ(inputsOf(answer, "DmCtrlSetEnableSelfCalibrationMode")[0], Json::parse("[[1,1,1,1,0,0,0,0]]"));

    page.simulate({{"simulate", "reset"}});
    Page older;
    older.product = "TB240";
    older.returns("DmCtrlGetEnableSelfCalibrationMode", 0, Json::parse("[[0,1]]"));
    EXPECT_EQ(summary(older.get("SelfQCEnable")), "200 [false,true]") << "it has the fine contrasts 11 and 25";
}

TEST(SelfQCSchedule, HasTheMembersOfItsType) {
    const char* const bodies[] = {
        R"({"timing":1,"type":16,"usageHour":4294967295})",
        R"({"timing":4294967295,"type":17,"year":65535,"month":12,"day":31,"hour":23,"minute":59})",
        R"({"timing":1,"type":31,"usageHour":500})",
        R"({"timing":1,"type":32,"hour":255,"minute":254})",
        R"({"timing":1,"type":33,"dayOfWeek":4294967294,"hour":2,"minute":3})",
        R"({"timing":1,"type":34,"day":1,"hour":2,"minute":3})",
        R"({"timing":1,"type":35,"quarter":4294967293,"day":2,"hour":3,"minute":4})",
        R"({"timing":1,"type":36,"halfYear":4294967292,"day":2,"hour":3,"minute":4})",
        R"({"timing":1,"type":37,"month":1,"day":2,"hour":3,"minute":4})",
        R"({"timing":1,"type":0})",
        R"({"timing":0,"type":38})",
    };
    Page page;
    for (const auto& [name, function] : {std::pair{"SelfQCCalibrationSchedule", "DmCtrlSetSelfQCCalSchedule"},
                                         {"SelfQCGrayScaleCheckSchedule", "DmCtrlSetSelfQCGSCSchedule"}})
        for (const char* body : bodies) {
            const Json schedule = Json::parse(body);
            EXPECT_EQ(written(page, name, function, schedule), schedule);
            EXPECT_EQ(page.get(name).value, schedule);
        }
}

TEST(SelfQCNextSchedule, IsByUsageOrAtADate) {
    Page page;
    const std::pair<const char*, int> jobs[] = {
        {"SelfQCCalibrationNextSchedule", 0}, {"SelfQCGrayScaleCheckNextSchedule", 1}, {"SelfQCLEANextSchedule", 2}};
    const Json date = page.get("SelfCalibrationClockTime").value;
    for (const std::uint32_t type : {0U, 1U, 2U, 4294967295U}) {
        const Json usage{{"hour", 100}, {"minute", 59}};
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

TEST(SelfQCLEA, CanOnlyBeStopped) {
    Page page;
    for (const char* body : {"0", "2", "99", "-1", "0.4", "1.5", "4294967295"}) {
        const Answer answer = page.put("SelfQCLEA", body);
        EXPECT_EQ(summary(answer), "200 null") << body;
        EXPECT_EQ(inputsOf(answer, "DmCtrlSetSelfQCLEAStateToStop"), std::vector<Json>{Json::array()}) << body;
    }
    for (const char* body : {"1", "0.5", "1.4", "4294967297"})
        EXPECT_EQ(summary(page.put("SelfQCLEA", body)), "400 BadRequestError Cannot set state to run.") << body;
}

TEST(SelfQCResults, AreNoLongerThanTheirSpace) {
    const struct {
        const char* function;
        const char* outputs;
        const char* resource;
        const char* list;
        std::size_t size;
    } cases[] = {
        {"DmCtrlGetSelfQCErrorCodeSize", "[4294967295]", "SelfQCCalibrationResult", "/latest/errorCode", 16},
        {"DmCtrlGetSelfQCErrorCodeSize", "[0]", "SelfQCGrayScaleCheckResult", "/latest/errorCode", 0},
        {"DmCtrlGetSelfQCGSCResult", R"([[{"stepCount":4294967295}]])", "SelfQCGrayScaleCheckResult",
         "/latest/errorRate", 64},
        {"DmCtrlGetSelfQCGSCResult", R"([[{"stepCount":2,"JNDIdeal":[1,2,3]}]])", "SelfQCGrayScaleCheckResult",
         "/latest/JNDIdeal", 2},
        {"DmCtrlGetSelfQCCalResult", "[[{},{},{}]]", "SelfQCCalibrationResult", "", 2},
        {"DmCtrlGetSelfQCCalResult", "[[]]", "SelfQCCalibrationResult", "", 0},
        {"DmCtrlGetSelfQCCalLastTarget", "[4294967295]", "SelfQCCalibrationLastTarget", "", 2},
        {"DmCtrlGetSupportedSelfQCGSCLastTargetCount", "[1]", "SelfQCGrayScaleCheckLastTarget", "", 1},
        {"DmCtrlGetSupportedSelfQCGSCLastTargetCount", "[4294967295]", "SelfQCGrayScaleCheckLastTarget", "", 2},
    };
    for (const auto& [function, outputs, name, list, size] : cases) {
        Page page;
        page.returns(function, 0, Json::parse(outputs));
        const Json value = page.get(name).value;
        const Json::json_pointer at(list);
        ASSERT_TRUE(value.contains(at)) << function << value;
        EXPECT_EQ(value[at].size(), size) << function << outputs;
    }
}

TEST(SelfQCJobs, RunAndLeaveTheirResults) {
    Page page;
    page.put("SelfCalibrationClockTime", "[2025, 5, 30, 12, 0]");
    page.put("SelfCalibrationTarget", R"({"id":1,"luminance":90,"colorTemperature":6500,"gamma":22,"gamut":1})");
    page.put("SelfQCCalibrationTarget", R"({"Lmax":250,"userFileName":"new.txt"})");
    const Json former = page.get("SelfQCCalibrationResult").value["latest"];
    for (const char* state : {"SelfCalibration", "SelfQCCalibration", "SelfQCGrayScaleCheck"}) {
        page.put(state, "1");
        EXPECT_EQ(page.get(state).value, 1) << state;
    }
    EXPECT_EQ(page.get("SelfQCCalibrationResult").value["latest"], former) << "it still runs";
    pass(page, 10);
    const Json result = page.get("SelfQCCalibrationResult").value;
    EXPECT_EQ(result["latest"]["date"], page.get("SelfCalibrationClockTime").value);
    EXPECT_EQ(result["latest"]["Lmax"], 250);
    EXPECT_EQ(result["beforeLast"], former);
    EXPECT_EQ(page.get("SelfQCCalibrationLastTarget").value["latest"]["userFileName"], "new.txt");
    EXPECT_EQ(page.get("SelfQCGrayScaleCheckLastTarget").value["latest"]["userFileName"], "new.txt");
    EXPECT_EQ(page.get("SelfQCGrayScaleCheckResult").value["latest"]["date"]["year"], 2025);
    EXPECT_EQ(page.get("SelfCalibrationResult").value["luminance"], 90);
    for (const char* state : {"SelfCorrection", "SelfQCCalibration", "SelfQCGrayScaleCheck"})
        EXPECT_EQ(page.get(state).value, 0) << state;
}

TEST(SelfQCMutexOwner, KeepsOthersOut) {
    Page page;
    const auto lock = [&](int application) {
        return page.put("SelfQCMutexOwner", Json{{"applicationID", application}, {"timeout", 256 + 30}}.dump());
    };
    const Answer locked = lock(7);
    EXPECT_EQ(inputsOf(locked, "DmCtrlLockSelfCalibration"), std::vector<Json>{Json::parse("[7, 30]")});
    EXPECT_EQ(lock(7).status, 200);
    EXPECT_EQ(lock(8).error["code"], 0x8001000A);
    EXPECT_EQ(page.ask("DELETE", "SelfQCMutexOwner", "", R"({"data":{"applicationID":8}})").error["code"], 0x8001000A);
    EXPECT_EQ(page.get("SelfQCMutexOwner").value, 7);
    pass(page, 31);
    EXPECT_EQ(page.get("SelfQCMutexOwner").value, 0) << "the lock has expired";
    EXPECT_EQ(lock(8).status, 200);
    for (const char* body : {R"({"applicationID":true,"timeout":1})", "7", R"({"timeout":"1"})"})
        EXPECT_EQ(summary(page.put("SelfQCMutexOwner", body)), "400 BadRequestError applicationID must be number.");
}

}  // namespace
