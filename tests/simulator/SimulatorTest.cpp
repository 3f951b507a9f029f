// The simulated monitors, their scripts and their journal, through the companions' own functions.
#include <QtWebKitBridgeHelper.h>
#include <gmock/gmock.h>
#include <libdmc.h>
#include <records/picture.h>

#include "simulator/core/Gate.h"
#include "simulator/core/Simulator.h"
#include "simulator/core/Values.h"

namespace {

using simulator::Json;
using simulator::Output;
using simulator::Recording;
using simulator::simulate;
using testing::ElementsAre;

constexpr std::uint32_t untouched = 999;

struct Address {
    const char* serial;
    const char* product;
};
constexpr Address a{"10000001", "TQ271-P"}, b{"10000002", "TB240"}, c{"10000001", "TB240"};

class Simulator : public testing::Test {
 protected:
    Simulator() { simulator::loadScenario(simulator::World::builtInScenario()); }

    static std::pair<std::uint32_t, std::uint32_t> brightness(const Address& monitor) {
        std::uint32_t step = untouched;
        const auto result = DmCtrlGetBrightnessForStep(monitor.serial, monitor.product, &step);
        return {static_cast<std::uint32_t>(result), step};
    }

    static std::vector<std::string> enumerate() {
        std::vector<std::string> list;
        char serial[DM_SERIAL_SIZE], product[DM_PRODUCT_SIZE];
        for (std::uint32_t i = 0; DmCtrlGetSerialProduct(i, serial, product, 0) >= 0; ++i)
            list.push_back(std::string(product) + "/" + serial);
        return list;
    }
};

Json returning(const Json& more) {
    Json instruction = {{"simulate", "return"}, {"function", "DmCtrlGetBrightnessForStep"}};
    instruction.update(more);
    return instruction;
}

TEST_F(Simulator, ScriptsAnswerInTheirOrderAndForTheirMonitor) {
    using Results = std::vector<std::pair<std::uint32_t, std::uint32_t>>;  // result, step; from A and B in turn
    const struct {
        const char* what;
        std::vector<Json> instructions;
        Results results;
    } cases[] = {
        {"no script", {}, {{0, 50}, {0, 50}}},
        {"a failure leaves outputs alone", {{{"result", 0x80000003u}}}, {{0x80000003, untouched}}},
        {"signed spelling", {{{"result", -0x7FFFFFFD}}}, {{0x80000003, untouched}}},
        {"a success does the normal work", {{{"result", 1}}}, {{1, 50}, {1, 50}}},
        {"outputs come with any result",
         {{{"result", 0x80000003u}, {"outputs", {7}}}},
         {{0x80000003, 7}, {0x80000003, 7}}},
        {"null leaves an output alone", {{{"result", 0}, {"outputs", {nullptr}}}}, {{0, untouched}}},
        {"outputs that do not suit", {{{"result", 0}, {"outputs", {"x"}}}}, {{0x80000000, untouched}}},
        {"too many outputs", {{{"result", 0}, {"outputs", {nullptr, 1}}}}, {{0x80000000, untouched}}},
        {"limited ones queue before a permanent one",
         {{{"result", 3}}, {{"result", 1}, {"times", 2}}, {{"result", 2}, {"times", 1}}},
         {{1, 50}, {1, 50}, {2, 50}, {3, 50}, {3, 50}}},
        {"the newer permanent one", {{{"result", 1}}, {{"result", 2}}}, {{2, 50}, {2, 50}}},
        {"one monitor only",
         {{{"result", 1}, {"product", "TB240"}, {"serial", "10000002"}}},
         {{0, 50}, {1, 50}, {0, 50}}},
        {"the more precise permanent one, whatever the order",
         {{{"result", 1}, {"product", "TB240"}}, {{"result", 2}}},
         {{2, 50}, {1, 50}}},
        {"a limited one waits for its monitor",
         {{{"result", 1}, {"times", 1}, {"product", "TB240"}}, {{"result", 2}, {"times", 1}}},
         {{2, 50}, {1, 50}, {0, 50}}},
    };
    for (const auto& test : cases) {
        SCOPED_TRACE(test.what);
        simulate({{"simulate", "reset"}});
        for (const auto& instruction : test.instructions) simulate(returning(instruction));
        Results results;
        while (results.size() < test.results.size()) results.push_back(brightness(results.size() % 2 ? b : a));
        EXPECT_EQ(results, test.results);
    }
}

TEST_F(Simulator, ThrowsByScriptAndJournalsIt) {
    Recording recording;
    simulate({{"simulate", "throw"}, {"function", "DmCtrlGetBrightnessForStep"}, {"times", 1}});
    EXPECT_THROW(brightness(a), std::runtime_error);
    EXPECT_EQ(brightness(a).second, 50u);
    EXPECT_EQ(recording.calls, Json::parse(R"([
        {"function": "DmCtrlGetBrightnessForStep", "arguments": ["10000001", "TQ271-P"], "result": null},
        {"function": "DmCtrlGetBrightnessForStep", "arguments": ["10000001", "TQ271-P"], "result": 0}])"));
}

TEST_F(Simulator, RefusesWrongInstructionsAndChangesNothing) {
    const Json wrong[] = {
        "reset",
        {{"simulate", 1}},
        {{"simulate", "explode"}},
        {{"simulate", "reset"}, {"product", "TB240"}},
        {{"simulate", "plug"}},
        {{"simulate", "unplug"}, {"product", "TB240"}, {"serial", "1"}},
        {{"simulate", "throw"}, {"function", "DmCtrlGetBrightnessForStep"}, {"result", 1}},
        returning({{"function", "DmCtrlNone"}, {"result", 1}}),
        returning({{"function", 1}, {"result", 1}}),
        returning(Json::object()),
        returning({{"result", "1"}}),
        returning({{"result", 1.0}}),
        returning({{"result", 0x100000000}}),
        returning({{"result", -2147483649}}),
        returning({{"result", 18446744073709551615u}}),
        returning({{"result", 1}, {"times", 0}}),
        returning({{"result", 1}, {"times", -1}}),
        returning({{"result", 1}, {"outputs", 7}}),
        returning({{"result", 1}, {"product", "TQ271"}}),
        returning({{"result", 1}, {"output", {7}}}),
    };
    for (const auto& instruction : wrong) EXPECT_THROW(simulate(instruction), std::invalid_argument) << instruction;
    EXPECT_EQ(brightness(a), (std::pair{0u, 50u}));
    EXPECT_EQ(enumerate().size(), 3u);
}

struct Patch {
    double luminance;
    std::uint32_t index;
    char name[4];
    std::int32_t triple[3];
};

}  // namespace

template <>
inline constexpr auto companions::members<Patch> = std::tuple(Member{"luminance", &Patch::luminance},
                                                              Member{"index", &Patch::index},
                                                              Member{"name", &Patch::name},
                                                              Member{"triple", &Patch::triple});

namespace {

TEST(Values, RecordsGoBothWays) {
    const Json json = {{"luminance", "NaN"}, {"index", 7}, {"name", "abc"}, {"triple", {1, -2, 3}}};
    Patch patch{};
    EXPECT_TRUE(simulator::fromJson(json, patch));
    EXPECT_TRUE(std::isnan(patch.luminance));
    EXPECT_EQ(simulator::toJson(patch), json);

    EXPECT_TRUE(simulator::fromJson({{"name", "abcdef"}}, patch));
    EXPECT_EQ(simulator::toJson(patch)["name"], "abcd") << "a text without NUL";
    EXPECT_EQ(patch.index, 7u) << "what is not given stays";
    for (const Json& wrong :
         {Json({{"indx", 1}}), Json({{"index", "1"}}), Json({{"triple", {1, 2, 3, 4}}}), Json({1, 2}), Json()})
        EXPECT_FALSE(simulator::fromJson(wrong, patch)) << wrong;
}

TEST(Values, TextsNeverPassTheirBuffer) {
    char buffer[] = "......";
    EXPECT_TRUE(Output::text(buffer, 4).write("ab"));
    EXPECT_EQ(std::string(buffer, 6), std::string("ab\0...", 6));
    EXPECT_TRUE(Output::text(buffer, 4).write("abcdef"));
    EXPECT_EQ(std::string(buffer, 6), "abcd..");
    EXPECT_FALSE(Output::text(buffer, 4).write(1));
    EXPECT_TRUE(Output::text(nullptr, 4).write("ab"));
}

TEST(Values, ListsAreHonestUnlessANumberLies) {
    const struct {
        Json output;
        bool hasItems;
        std::uint32_t capacity, count;
        std::vector<std::uint32_t> items;
    } cases[] = {
        {{1, 2, 3}, false, 0, 3, {0, 0, 0, 0}},    {{1, 2, 3}, true, 4, 3, {1, 2, 3, 0}},
        {{1, 2, 3}, true, 2, 3, {1, 2, 0, 0}},     {4000000000u, true, 4, 4000000000u, {0, 0, 0, 0}},
        {Json::array(), true, 4, 0, {0, 0, 0, 0}},
    };
    for (const auto& test : cases) {
        std::vector<std::uint32_t> items(4);
        auto count = test.capacity;
        EXPECT_TRUE(Output::list(test.hasItems ? items.data() : nullptr, &count).write(test.output)) << test.output;
        EXPECT_EQ(count, test.count) << test.output;
        EXPECT_EQ(items, test.items) << test.output;
    }
    EXPECT_TRUE(Output::list<std::uint32_t>(nullptr, nullptr).write({1}));
}

TEST_F(Simulator, KeepsSettingsPerMonitorWithinTheirRange) {
    EXPECT_EQ(DmCtrlSetBrightnessForStep(a.serial, a.product, 100), 0);
    EXPECT_EQ(static_cast<std::uint32_t>(DmCtrlSetBrightnessForStep(a.serial, a.product, 101)), 0x8000000A);
    EXPECT_EQ(brightness(a).second, 100u);
    EXPECT_EQ(brightness(c).second, 50u) << "the same serial, another product";

    simulator::loadScenario(
        {{"settings", {{"contrast", {{"min", 100}, {"max", 200}}}, {"brightness", {{"value", 60}}}}},
         {"monitors",
          {{{"product", "TQ271-P"}, {"serial", "10000001"}, {"settings", {{"contrast", {{"value", 150}}}}}},
           {{"product", "TB240"}, {"serial", "10000002"}, {"unsupported", {"brightness"}}}}}});
    double percentage = 0;
    EXPECT_EQ(DmCtrlGetContrastForPercentage(a.serial, a.product, &percentage), 0);
    EXPECT_EQ(percentage, 50.0);
    for (const auto outside : {100.1, -0.1, std::nan("")})
        EXPECT_LT(DmCtrlSetContrastForPercentage(a.serial, a.product, outside), 0) << outside;
    EXPECT_EQ(DmCtrlSetContrastForPercentage(a.serial, a.product, 24.6), 0);
    std::uint32_t step = 0;
    EXPECT_EQ(DmCtrlGetContrastForStep(a.serial, a.product, &step), 0);
    EXPECT_EQ(step, 125u);
    EXPECT_EQ(DmCtrlGetContrastForStep(a.serial, a.product, nullptr), 0);

    EXPECT_EQ(brightness(a).second, 60u);
    EXPECT_EQ(brightness(b), (std::pair{0x80000007u, untouched}));
    EXPECT_EQ(DmCtrlSupportedBrightness(b.serial, b.product), 0);
    EXPECT_EQ(DmCtrlSupportedContrast(b.serial, b.product), 1);

    simulate({{"simulate", "reset"}});
    EXPECT_EQ(DmCtrlGetContrastForStep(a.serial, a.product, &step), 0);
    EXPECT_EQ(step, 150u) << "back to the scenario that was loaded";
}

std::uint32_t code(DmResult result) {
    return static_cast<std::uint32_t>(result);
}

TEST_F(Simulator, JournalsListsAndRecords) {
    Recording recording;
    const std::uint32_t values[] = {1, 2};
    const DmColor color{1, 2, 3};
    DmCtrlSetLUTAData(a.serial, a.product, DM_COLOR_GREEN, values, 2);
    DmCtrlSet3DLUTDirect(a.serial, a.product, &color, 1);
    const DmColorPatch patch{color, {}, {0, 1, 2, 3, 4}};
    DmCtrlShowColorPatch(a.serial, a.product, &patch);
    std::vector<Json> inputs;
    for (const auto& call : recording.calls) inputs.push_back(call["arguments"].back());
    EXPECT_THAT(inputs,
                ElementsAre(Json({1, 2}), Json::array({{{"red", 1}, {"green", 2}, {"blue", 3}}}), Json::parse(R"({
        "color": {"red": 1, "green": 2, "blue": 3}, "background": {"red": 0, "green": 0, "blue": 0},
        "bounds": {"coordinate": 0, "x": 1, "y": 2, "width": 3, "height": 4}})")));
    EXPECT_EQ(recording.calls[0]["arguments"].size(), 4u) << "a list tells its count";
}

TEST_F(Simulator, SelectsModesAndResetsToWhatWasSaved) {
    const auto hybrid = [] {
        std::uint32_t enabled = untouched;
        EXPECT_EQ(DmCtrlGetHybridGammaPXL(a.serial, a.product, &enabled), 0);
        return enabled;
    };
    EXPECT_EQ(hybrid(), 0u) << "the current mode";
    EXPECT_EQ(code(DmCtrlSetTargetSelectionMode(a.serial, a.product, 8)), 0x80000001);
    EXPECT_EQ(DmCtrlSetTargetSelectionMode(a.serial, a.product, 3), 0);
    EXPECT_EQ(DmCtrlSetHybridGammaPXL(a.serial, a.product, 1), 0);
    EXPECT_EQ(hybrid(), 1u);
    EXPECT_EQ(DmCtrlSetMode(a.serial, a.product, 0), 0);
    EXPECT_EQ(hybrid(), 0u);
    EXPECT_EQ(DmCtrlSetMode(a.serial, a.product, 3), 0);
    EXPECT_EQ(hybrid(), 1u);

    DmCtrlSetBrightnessForStep(a.serial, a.product, 60);
    EXPECT_EQ(DmCtrlResetAtIndex(a.serial, a.product, 0, 3), 0);
    EXPECT_EQ(hybrid(), 0u);
    EXPECT_EQ(brightness(a).second, 60u) << "only what mode 3 has of its own";
    EXPECT_EQ(code(DmCtrlResetAtIndex(a.serial, a.product, 0, 8)), 0x80000001);
    EXPECT_EQ(DmCtrlSave(a.serial, a.product, 0), 0);
    DmCtrlSetBrightnessForStep(a.serial, a.product, 70);
    DmCtrlSetHybridGammaPXL(a.serial, a.product, 1);
    EXPECT_EQ(DmCtrlSaveAtIndex(a.serial, a.product, 0, 3), 0);
    EXPECT_EQ(DmCtrlReset(a.serial, a.product, 0), 0);
    EXPECT_EQ(brightness(a).second, 60u);
    EXPECT_EQ(hybrid(), 1u);
    simulate({{"simulate", "reset"}});
    EXPECT_EQ(brightness(a).second, 50u);
}

TEST_F(Simulator, GeneratesListsAndKnowsProducts) {
    simulator::loadScenario(
        {{"settings", {{"lut3DLevels", {{"value", {0, 9}}}}, {"lut3D", {{"value", {{"grid", {0, 9}}}}}}}},
         {"products", {{b.product, {{"unsupported", {"lut3D"}}, {"settings", {{"brightness", {{"value", 5}}}}}}}}},
         {"monitors",
          {{{"product", a.product}, {"serial", a.serial}},
           {{"product", b.product}, {"serial", b.serial}},
           {{"product", c.product}, {"serial", c.serial}, {"settings", {{"brightness", {{"value", 6}}}}}}}}});
    DmColor colors[9]{};
    std::uint32_t count = 9;
    EXPECT_EQ(DmCtrlGet3DLUTDirect(a.serial, a.product, colors, &count), 0);
    EXPECT_EQ(count, 8u);
    EXPECT_EQ(simulator::toJson(colors[1]), Json({{"red", 0}, {"green", 0}, {"blue", 9}}));
    EXPECT_EQ(simulator::toJson(colors[6]), Json({{"red", 9}, {"green", 9}, {"blue", 0}}));
    EXPECT_EQ(code(DmCtrlGet3DLUTGridCount(b.serial, b.product, &count)), 0x80000007);
    EXPECT_EQ(brightness(a).second, 50u);
    EXPECT_EQ(brightness(b).second, 5u);
    EXPECT_EQ(brightness(c).second, 6u) << "a monitor says more than its product";
}

TEST_F(Simulator, RefusesWhatIsNoScenario) {
    const auto with = [](const Json& monitor) { return Json{{"monitors", Json::array({monitor})}}; };
    for (const Json& wrong :
         {Json(1), Json::object(), Json{{"monitors", 1}}, with(1), with({{"product", "TB240"}}),
          with({{"product", "TB240"}, {"serial", "123456789"}}), with({{"product", ""}, {"serial", "1"}})})
        EXPECT_THROW(simulator::loadScenario(wrong), std::invalid_argument) << wrong;
    EXPECT_EQ(enumerate().size(), 3u);
}

TEST_F(Simulator, UnplugsAtOnceAndPlugsAtTheNextFind) {
    const Json monitorB = {{"product", b.product}, {"serial", b.serial}};
    const auto instruct = [&](const char* what) {
        Json instruction = {{"simulate", what}};
        instruction.update(monitorB);
        simulate(instruction);
    };
    instruct("unplug");
    EXPECT_THAT(enumerate(), ElementsAre("TQ271-P/10000001", "TB240/10000001"));
    EXPECT_EQ(brightness(b), (std::pair{0x80010001u, untouched}));
    EXPECT_EQ(DmCtrlSupportedBrightness(b.serial, b.product), 0);
    instruct("plug");
    EXPECT_EQ(enumerate().size(), 2u);
    EXPECT_EQ(DmCtrlFind(0, 0), 0);
    EXPECT_EQ(enumerate().size(), 3u);
    EXPECT_EQ(brightness(b).first, 0u);
    instruct("unplug");
    simulate({{"simulate", "reset"}});
    EXPECT_EQ(enumerate().size(), 3u);
}

}  // namespace
