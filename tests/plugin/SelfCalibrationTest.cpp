// Self-calibration: the calibration target, a record with texts, flags and a list.
#include "tests/plugin/Page.h"

namespace {

constexpr const char* resource = "SelfQCCalibrationTarget";

/// What the monitor is told of a PUT.
Json written(Page& page, const Json& body) {
    const Answer answer = page.put(resource, body.dump());
    EXPECT_EQ(summary(answer), "200 null") << body;
    const auto inputs = inputsOf(answer, "DmCtrlSetSelfQCCalTarget");
    return inputs.size() == 1 ? inputs[0][0] : Json();
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

TEST(CalibrationTarget, Fails) {
    Page page;
    for (const char* body : {"", "null", "[]", "7", R"({"data":"{}"})"})
        EXPECT_EQ(summary(page.put(resource, body)), "400 BadRequestError data is not object.") << body;
    for (const char* outputs : {R"([{"Lmin":"NaN"}])", R"([{"lut":[0,"Infinity"]}])"}) {
        page.returns("DmCtrlGetSelfQCCalTarget", 0, Json::parse(outputs));
        EXPECT_EQ(summary(page.get(resource)), "500 UnknownError Unknown error occurred.") << outputs;
    }
    page.returns("DmCtrlGetSelfQCCalTarget", 0x80000008);
    EXPECT_EQ(summary(page.get(resource)), "500 DmError Stall. (Get SelfQC calibration target.)");
    page.returns("DmCtrlSetSelfQCCalTarget", 0x80000008);
    EXPECT_EQ(summary(page.put(resource, "{}")), "500 DmError Stall. (Set SelfQC calibration target.)");
}

}  // namespace
