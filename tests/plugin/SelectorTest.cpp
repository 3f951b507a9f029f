// Selectors and data that cannot be used: refused before anything is written, never replaced by a default.
#include "tests/plugin/Page.h"

namespace {

struct Case {
    const char* resource;
    const char* query;
    const char* body;     // null: a GET
    const char* outcome;  // "200": success, whatever the value
};

Answer ask(Page& page, const Case& row) {
    return row.body ? page.put(row.resource, row.body, row.query) : page.get(row.resource, row.query);
}

bool hasWritten(const Answer& answer) {
    for (const Json& call : answer.calls)
        for (const char* verb : {"DmCtrlSet", "DmCtrlSave", "DmCtrlReset", "DmCtrlEnable", "DmCtrlEnter"})
            if (call["function"].get<std::string>().starts_with(verb)) return true;
    return false;
}

TEST(Selectors, OfABodyThatCannotBeUsedAreRefused) {
    Page page;
    const Case cases[] = {
        {"Chromaticity", "", R"({"color":"Red","x":0.3})", "Invalid color."},
        {"Chromaticity", R"({"color":"red"})", R"({"color":null,"x":0.3})", "Invalid color."},
        {"LUT1D", R"({"depth":8})", R"({"depth":9,"red":[1],"green":[1],"blue":[1]})", "Invalid bit depth."},
        {"HybridGammaPXL", "", R"({"mode":[],"enabled":true})", "Invalid mode."},
        {"HybridGammaPXL", R"({"mode":1e999})", "true", "Invalid mode."},
        {"ModeName", "", R"([{"mode":0,"name":"a"},{"mode":"b","name":"b"}])", "Invalid mode."},
        {"FineContrastSkip", "", R"({"fineContrast":{},"skip":true})", "Invalid fine contrast."},
        {"Save", "", R"({"type":1,"index":"x"})", "Invalid index."},
        {"Reset", R"({"index":1})", R"({"type":1,"index":null})", "Invalid index."},
    };
    for (const Case& row : cases) {
        const Answer answer = ask(page, row);
        EXPECT_EQ(summary(answer), "400 BadRequestError " + std::string(row.outcome))
            << row.resource << row.query << (row.body ? row.body : "");
        EXPECT_FALSE(hasWritten(answer)) << row.resource;
    }
}

TEST(Selectors, AreNumbersOrTextsOfOneAndTheBodysCountsBeforeTheQuerys) {
    Page page;
    EXPECT_EQ(page.get("ModeName", R"({"mode":"3"})").value["mode"], 3);
    EXPECT_EQ(page.get("ModeName", R"({"mode":1.6})").value["mode"], 2);
    const struct {
        const char* resource;
        const char* query;
        const char* body;
        const char* function;
        Json inputs;
    } cases[] = {
        {"HybridGammaPXL", R"({"mode":2})", "true", "DmCtrlSetTargetSelectionMode", {2}},
        {"HybridGammaPXL", R"({"mode":2})", R"({"mode":"0x3","enabled":true})", "DmCtrlSetTargetSelectionMode", {3}},
        {"ModeName", R"({"mode":4})", R"({"name":"n"})", "DmCtrlSetModeName", {4, "n"}},
        {"Save", R"({"index":4})", R"({"type":1})", "DmCtrlSaveAtIndex", {1, 4}},
        {"Reset", R"({"index":4})", R"({"type":1,"index":"5"})", "DmCtrlResetAtIndex", {1, 5}},
    };
    for (const auto& [resource, query, body, function, inputs] : cases) {
        const Answer answer = page.put(resource, body, query);
        EXPECT_EQ(summary(answer), "200 null") << resource << query << body;
        EXPECT_EQ(inputsOf(answer, function), std::vector<Json>{inputs}) << resource << query << body;
    }
}

TEST(Data, ThatNoMonitorCanTakeIsRefusedOrReadAsAbsent) {
    Page page;
    const Case refused[] = {
        {"Brightness", "", "1e999", "data must be number."},
        {"Brightness", "", R"({"percentage":-1e999})", "data must be number."},
        {"Gamma", "", "1e999", "data must be number."},
        {"LuminanceWarning", "", "-1e999", "data is not number."},
        {"Candela", "", R"({"candela":1e999})", "data must be number."},
        {"ColorMatrix", R"({"index":0})", "[1,2,3,4,5,6,7,8,1e999]", "data must have 9 numbers."},
        {"LUT3D", "", "[[1,2,1e999]]", "Each value must be 3 number array."},
        {"LUT3D", "", R"({"enable":1,"selection":1})", "data must be array."},
        {"LUT3D", "", R"({"enable":true,"selection":"1"})", "data must be array."},
        {"LUT1D", "", R"({"red":[1],"green":[1],"blue":[1e999]})", "data must be object."},
        {"Save", "", R"({"type":1e999})", "data must have 'type'."},
        {"ModeName", "", R"({"mode":1,"name":"a\u0000b"})", "each object must have name."},
        {"HybridGammaPXL", "", "{}", "data is empty."},
        {"HybridGammaPXL", "", R"({"enable":true})", "data is empty."},
        {"HybridGammaPXL", R"({"mode":1})", R"({"enabled":null})", "data is empty."},
        {"SelfQCCalibrationTarget", "", R"({"userFileName":"a\u0000b"})", "data has a text with a NUL inside."},
    };
    for (const Case& row : refused) {
        const Answer answer = ask(page, row);
        EXPECT_EQ(summary(answer), "400 BadRequestError " + std::string(row.outcome)) << row.resource << row.body;
        EXPECT_FALSE(hasWritten(answer)) << row.resource << row.body;
    }
    const Json before = page.get("Chromaticity").value;
    EXPECT_EQ(summary(page.put("Chromaticity", R"({"x":1e999,"y":-1e999})")), "200 null");
    EXPECT_EQ(page.get("Chromaticity").value, before);
    EXPECT_EQ(inputsOf(page.put("HLGSystemGamma", R"({"systemGamma":1e999})"), "DmCtrlSetHLGSystemGamma").size(), 0U);
    const Answer target = page.put("SelfQCCalibrationTarget", R"({"Lmax":1e999,"accuracy":1e999})");
    EXPECT_EQ(inputsOf(target, "DmCtrlSetSelfQCCalTarget").at(0)[0]["Lmax"], 0.0);
}

}  // namespace
