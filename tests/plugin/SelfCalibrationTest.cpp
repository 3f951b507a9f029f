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

    const Json::json_pointer Lmax("/Lmax"), x("/whitePoint/x"), last("/lut/255"), flag("/LambEnable"), exp("/exp");
    const struct {
        Json::json_pointer member;
        Json given;
        Json read;
    } cases[] = {
        {Lmax, 170, 170},
        {Lmax, true, 1},
        {Lmax, false, 0},
        {Lmax, "2.5", 2.5},
        {Lmax, "2.5 cd", 0},
        {Lmax, "abc", 0},
        {Lmax, {170}, 0},
        {Lmax, nullptr, 0},
        {x, "0.3", 0.3},
        {last, "0.25", 0.25},
        {last, true, 1},
        {last, "", 0},
        {flag, true, 1},
        {flag, 0.5, 1},
        {flag, "true", 1},
        {flag, "1", 0},
        {flag, {true}, 0},
        {exp, 22, 22},
        {exp, 21.5, 22},
        {exp, "22", 0},
        {exp, true, 0},
        {Json::json_pointer("/userFileName"), 7, ""},
        {Json::json_pointer("/whitePoint"), 0.3, {{"x", 0}, {"y", 0}}},
    };
    for (const auto& [member, given, read] : cases) {
        Json body = zero, expected = zero;
        body[member] = given;
        expected[member] = read;
        EXPECT_EQ(written(page, body), expected) << member << given;
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
    Json target = page.get(resource).value;
    for (const char* member : {"userFileName", "ambientSensor"}) EXPECT_EQ(target[member], full[member]);
    EXPECT_EQ(written(page, target)["ambientSensor"], full["ambientSensor"]);

    for (const char* member : {"/userFileName", "/ambientSensor/name", "/ambientSensor/serial"}) {
        Json longer = target;
        const Json::json_pointer at(member);
        longer[at] = longer[at].get<std::string>() + "+";
        const Answer answer = page.put(resource, longer.dump());
        EXPECT_EQ(summary(answer), "400 BadRequestError data has a text that is too long.");
        EXPECT_TRUE(inputsOf(answer, "DmCtrlSetSelfQCCalTarget").empty());
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
