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

TEST(Selectors, ThatCannotBeUsedAreRefused) {
    Page page;
    const Case cases[] = {
        {"Chromaticity", R"({"color":"purple"})", nullptr, "Invalid color."},
        {"Chromaticity", R"({"color":null})", nullptr, "Invalid color."},
        {"Chromaticity", R"({"color":0})", nullptr, "Invalid color."},
        {"Chromaticity", "", R"({"color":"Red","x":0.3})", "Invalid color."},
        {"Chromaticity", R"({"color":"?"})", R"({"x":0.3})", "Invalid color."},
        {"Gain", R"({"color":"white"})", nullptr, "Invalid color."},
        {"LUT1D", R"({"color":"white"})", nullptr, "Invalid color."},
        {"LUT1D", R"({"depth":9})", nullptr, "Invalid bit depth."},
        {"LUT1D", R"({"depth":null})", nullptr, "Invalid bit depth."},
        {"LUT1D", R"({"depth":9})", R"({"red":[1],"green":[1],"blue":[1]})", "Invalid bit depth."},
        {"LUT1D", R"({"color":"white"})", "[1]", "Invalid color."},
        {"LUTA", R"({"color":"black"})", nullptr, "Invalid color."},
        {"LUTA", R"({"color":"black"})", "[1]", "Invalid color."},
        {"ColorMatrix", R"({"index":"x"})", nullptr, "Invalid index."},
        {"ColorMatrix", R"({"index":-1})", nullptr, "Invalid index."},
        {"ColorMatrix", R"({"index":true})", "[1,2,3,4,5,6,7,8,9]", "Invalid index."},
        {"ColorMatrix", "", nullptr, "Query requires index."},
        {"HybridGammaPXL", R"({"mode":"x"})", nullptr, "Invalid mode."},
        {"HybridGammaPXL", "", R"({"mode":[],"enabled":true})", "Invalid mode."},
        {"HybridGammaPXL", R"({"mode":1e999})", "true", "Invalid mode."},
        {"ModeName", R"({"mode":"x"})", nullptr, "Invalid mode."},
        {"ModeSkip", R"({"mode":4294967296})", nullptr, "Invalid mode."},
        {"ModeName", "", R"([{"mode":0,"name":"a"},{"mode":"b","name":"b"}])", "Invalid mode."},
        {"FineContrastName", R"({"fineContrast":null})", nullptr, "Invalid fine contrast."},
        {"FineContrastSkip", "", R"({"fineContrast":{},"skip":true})", "Invalid fine contrast."},
        {"FineContrastFeature", R"({"fineContrast":"x"})", nullptr, "Invalid fine contrast."},
        {"Save", "", R"({"type":1,"index":"x"})", "Invalid index."},
        {"Reset", "", R"({"type":1,"index":null})", "Invalid index."},
        {"Reset", R"({"index":false})", R"({"type":1})", "Invalid index."},
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

TEST(Selectors, LetWhatAGetAnsweredBePutBackWithTheSameQuery) {
    const struct {
        const char* resource;
        const char* query;
        const char* other;  // the default, which stays as it is
    } cases[] = {
        {"Chromaticity", R"({"color":"red"})", ""},
        {"LUT1D", R"({"color":"green"})", R"({"color":"red"})"},
        {"LUT1D", R"({"depth":10})", R"({"depth":8})"},
        {"LUT1D", R"({"color":"blue","depth":"10"})", ""},
        {"LUTA", R"({"color":"blue"})", R"({"color":"red"})"},
        {"ModeName", R"({"mode":3})", R"({"mode":0})"},
        {"HybridGammaPXL", R"({"mode":3})", R"({"mode":0})"},
    };
    for (const auto& [resource, query, other] : cases) {
        Page page;
        const Json before = page.get(resource, query).value;
        const Json rest = page.get(resource, other).value;
        EXPECT_EQ(summary(page.put(resource, before.dump(), query)), "200 null") << resource << query;
        EXPECT_EQ(page.get(resource, query).value, before) << resource << query;
        EXPECT_EQ(page.get(resource, other).value, rest) << resource << query;
    }
}

TEST(Queries, ForSupportAreAnsweredWhateverElseIsWrong) {
    Page page;
    for (const char* query : {R"({"supports":1,"depth":9})", R"({"supports":1,"depth":null,"color":7})",
                              R"({"supports":1,"maxRawValue":1,"depth":"x"})"})
        EXPECT_EQ(summary(page.get("LUT1D", query)), "200 true") << query;
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

TEST(Names, AskForTheirSizeOnce) {
    Page page;
    for (const auto& [resource, function] : {std::pair("ModeName", "DmCtrlGetModeNameSize"),
                                             std::pair("FineContrastName", "DmCtrlGetFineContrastNameSize")}) {
        const Answer answer = page.get(resource);
        EXPECT_GT(answer.value.size(), 1U);
        EXPECT_EQ(inputsOf(answer, function).size(), 1U) << resource;
    }
}

}  // namespace
