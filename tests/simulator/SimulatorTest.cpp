// The simulated monitors, their scripts and their journal, through the companions' own functions.
#include <QtWebKitBridgeHelper.h>
#include <gmock/gmock.h>
#include <libdmc.h>
#include <records/picture.h>
#include <records/selfcalibration.h>

#include "simulator/core/Gate.h"
#include "simulator/core/Simulator.h"
#include "simulator/core/Values.h"

namespace {

using simulator::Json;
using simulator::Output;
using simulator::parseJson;
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

/// An instruction about DmCtrlGetBrightnessForStep with these further members.
Json returning(const std::string& members) {
    return parseJson(R"({"simulate": "return", "function": "DmCtrlGetBrightnessForStep", )" + members + "}");
}

TEST_F(Simulator, ScriptsAnswerInTheirOrderAndForTheirMonitor) {
    using Results = std::vector<std::pair<std::uint32_t, std::uint32_t>>;  // result, step; from A and B in turn
    const struct {
        const char* what;
        std::vector<const char*> instructions;
        Results results;
    } cases[] = {
        {"no script", {}, {{0, 50}, {0, 50}}},
        {"a failure leaves outputs alone", {R"("result": 2147483651)"}, {{0x80000003, untouched}}},
        {"signed spelling", {R"("result": -2147483645)"}, {{0x80000003, untouched}}},
        {"a success does the normal work", {R"("result": 1)"}, {{1, 50}, {1, 50}}},
        {"outputs come with any result",
         {R"("result": 2147483651, "outputs": [7])"},
         {{0x80000003, 7}, {0x80000003, 7}}},
        {"null leaves an output alone", {R"("result": 0, "outputs": [null])"}, {{0, untouched}}},
        {"outputs that do not suit", {R"("result": 0, "outputs": ["x"])"}, {{0x80000000, untouched}}},
        {"an output that is too wide", {R"("result": 0, "outputs": [4294967296])"}, {{0x80000000, untouched}}},
        {"too many outputs", {R"("result": 0, "outputs": [null, 1])"}, {{0x80000000, untouched}}},
        {"limited ones queue before a permanent one",
         {R"("result": 3)", R"("result": 1, "times": 2)", R"("result": 2, "times": 1)"},
         {{1, 50}, {1, 50}, {2, 50}, {3, 50}, {3, 50}}},
        {"the newer permanent one", {R"("result": 1)", R"("result": 2)"}, {{2, 50}, {2, 50}}},
        {"one monitor only", {R"("result": 1, "product": "TB240", "serial": "10000002")"}, {{0, 50}, {1, 50}, {0, 50}}},
        {"the more precise permanent one, whatever the order",
         {R"("result": 1, "product": "TB240")", R"("result": 2)"},
         {{2, 50}, {1, 50}}},
        {"a limited one waits for its monitor",
         {R"("result": 1, "times": 1, "product": "TB240")", R"("result": 2, "times": 1)"},
         {{2, 50}, {1, 50}, {0, 50}}},
    };
    for (const auto& test : cases) {
        SCOPED_TRACE(test.what);
        simulate(parseJson(R"({"simulate": "reset"})"));
        for (const auto members : test.instructions) simulate(returning(members));
        Results results;
        while (results.size() < test.results.size()) results.push_back(brightness(results.size() % 2 ? b : a));
        EXPECT_EQ(results, test.results);
    }
}

TEST_F(Simulator, ThrowsByScriptAndJournalsIt) {
    Recording recording;
    simulate(parseJson(R"({"simulate": "throw", "function": "DmCtrlGetBrightnessForStep", "times": 1})"));
    EXPECT_THROW(brightness(a), std::runtime_error);
    EXPECT_EQ(brightness(a).second, 50u);
    EXPECT_EQ(recording.calls, parseJson(R"([
        {"function": "DmCtrlGetBrightnessForStep", "arguments": ["10000001", "TQ271-P"], "result": null},
        {"function": "DmCtrlGetBrightnessForStep", "arguments": ["10000001", "TQ271-P"], "result": 0}])"));
}

TEST_F(Simulator, RefusesWrongInstructionsAndChangesNothing) {
    const Json wrong[] = {
        parseJson(R"("reset")"),
        parseJson(R"({"simulate": 1})"),
        parseJson(R"({"simulate": "explode"})"),
        parseJson(R"({"simulate": "reset", "product": "TB240"})"),
        parseJson(R"({"simulate": "plug"})"),
        parseJson(R"({"simulate": "unplug", "product": "TB240", "serial": "1"})"),
        parseJson(R"({"simulate": "throw", "function": "DmCtrlGetBrightnessForStep", "result": 1})"),
        returning(R"("function": "DmCtrlNone", "result": 1)"),
        returning(R"("function": 1, "result": 1)"),
        returning(R"("times": 1)"),
        returning(R"("result": "1")"),
        returning(R"("result": 1.0)"),
        returning(R"("result": 4294967296)"),
        returning(R"("result": -2147483649)"),
        returning(R"("result": 18446744073709551615)"),
        returning(R"("result": 1, "times": 0)"),
        returning(R"("result": 1, "times": -1)"),
        returning(R"("result": 1, "outputs": 7)"),
        returning(R"("result": 1, "product": "TQ271")"),
        returning(R"("result": 1, "output": [7])"),
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
    const auto json = parseJson(R"({"luminance": "NaN", "index": 7, "name": "abc", "triple": [1, -2, 3]})");
    Patch patch{};
    EXPECT_TRUE(simulator::fromJson(json, patch));
    EXPECT_TRUE(std::isnan(patch.luminance));
    EXPECT_EQ(simulator::toJson(patch), json);

    EXPECT_TRUE(simulator::fromJson(parseJson(R"({"name": "abcdef"})"), patch));
    EXPECT_EQ(simulator::toJson(patch)["name"], "abcd") << "a text without NUL";
    EXPECT_EQ(patch.index, 7u) << "what is not given stays";
    for (const auto wrong : {R"({"indx": 1})", R"({"index": "1"})", R"({"triple": [1, 2, 3, 4]})", "[1, 2]", "null"})
        EXPECT_FALSE(simulator::fromJson(parseJson(wrong), patch)) << wrong;
}

template <class T>
testing::AssertionResult writes(std::int64_t number, T expected) {
    T value{};
    const auto written = Output(&value).write(number) && value == expected;
    return (written ? testing::AssertionSuccess() : testing::AssertionFailure()) << number << " wrote " << +value;
}

TEST(Values, IntegersKeepTheirWidth) {
    EXPECT_TRUE(writes<std::uint8_t>(255, 255));
    EXPECT_TRUE(writes<std::uint8_t>(-1, 255)) << "signed and unsigned spellings mean the same";
    EXPECT_FALSE(writes<std::uint8_t>(256, 0));
    EXPECT_TRUE(writes<std::uint16_t>(0xFFFF, 0xFFFF));
    EXPECT_FALSE(writes<std::uint16_t>(-0x8001, 0x7FFF));
    EXPECT_TRUE(writes<std::int32_t>(-2, -2));
    EXPECT_TRUE(writes<std::int32_t>(0xFFFFFFFE, -2));
    EXPECT_EQ(simulator::Input(std::int32_t{-2}).json(), -2);
    EXPECT_EQ(simulator::Input(std::uint8_t{200}).json(), 200);
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
        const char* output;
        bool hasItems;
        std::uint32_t capacity, count;
        std::vector<std::uint32_t> items;
    } cases[] = {
        {"[1, 2, 3]", false, 0, 3, {0, 0, 0, 0}}, {"[1, 2, 3]", true, 4, 3, {1, 2, 3, 0}},
        {"[1, 2, 3]", true, 2, 3, {1, 2, 0, 0}},  {"4000000000", true, 4, 4000000000u, {0, 0, 0, 0}},
        {"[]", true, 4, 0, {0, 0, 0, 0}},
    };
    for (const auto& test : cases) {
        std::vector<std::uint32_t> items(4);
        auto count = test.capacity;
        const auto json = parseJson(test.output);
        EXPECT_TRUE(Output::list(test.hasItems ? items.data() : nullptr, &count).write(json)) << test.output;
        EXPECT_EQ(count, test.count) << test.output;
        EXPECT_EQ(items, test.items) << test.output;
    }
    EXPECT_TRUE(Output::list<std::uint32_t>(nullptr, nullptr).write(parseJson("[1]")));

    std::uint16_t two[] = {7, 7, 7};
    EXPECT_TRUE(Output::list(two, 2).write(parseJson("[1, 2, 3]")));
    EXPECT_THAT(two, ElementsAre(1, 2, 7)) << "the caller knows how many there are";
    EXPECT_FALSE(Output::list(two, 2).write(5)) << "and is not given a count";
}

TEST(Values, AreDistortedWhereTheLieSuitsThem) {
    std::uint8_t number = 5;
    Output(&number).distort("NaN");
    EXPECT_EQ(number, 5) << "an integer cannot be that";
    Output(&number).distort(-1);
    EXPECT_EQ(number, 255);
    DmSelfCalibrationTarget target{};
    target.id = 3;
    Output(&target).distort("NaN");
    EXPECT_EQ(target.id, 3U);
    EXPECT_TRUE(std::isnan(target.luminance));
    char buffer[] = "......";
    Output::text(buffer, 4).distort("abcdef");
    EXPECT_EQ(std::string(buffer, 6), "abcd..") << "no NUL";
    std::uint32_t items[] = {1, 2}, count = 2;
    Output::list(items, &count).distort(9);
    EXPECT_THAT(items, ElementsAre(9, 9));
    EXPECT_EQ(count, 9U);
}

TEST_F(Simulator, KeepsSettingsPerMonitorWithinTheirRange) {
    EXPECT_EQ(DmCtrlSetBrightnessForStep(a.serial, a.product, 100), 0);
    EXPECT_EQ(static_cast<std::uint32_t>(DmCtrlSetBrightnessForStep(a.serial, a.product, 101)), 0x8000000A);
    EXPECT_EQ(brightness(a).second, 100u);
    EXPECT_EQ(brightness(c).second, 50u) << "the same serial, another product";

    simulator::loadScenario(parseJson(R"({
        "settings": {"contrast": {"min": 100, "max": 200}, "brightness": {"value": 60}},
        "monitors": [
            {"product": "TQ271-P", "serial": "10000001", "settings": {"contrast": {"value": 150}}},
            {"product": "TB240", "serial": "10000002", "unsupported": ["brightness"]}]})"));
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

    simulate(parseJson(R"({"simulate": "reset"})"));
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
    auto inputs = Json::array();
    for (const auto& call : recording.calls) inputs.push_back(call["arguments"].back());
    EXPECT_EQ(inputs, parseJson(R"([
        [1, 2],
        [{"red": 1, "green": 2, "blue": 3}],
        {"color": {"red": 1, "green": 2, "blue": 3}, "background": {"red": 0, "green": 0, "blue": 0},
         "bounds": {"coordinate": 0, "x": 1, "y": 2, "width": 3, "height": 4}}])"));
    EXPECT_EQ(recording.calls[0]["arguments"].size(), 4u) << "a list tells its count";
}

TEST_F(Simulator, ListsKeepTheirLengthUnlessTheScenarioLetsThemVary) {
    const auto set = [](std::vector<std::uint32_t> values) {
        return code(DmCtrlSetLUTAData(a.serial, a.product, DM_COLOR_GREEN, values.data(),
                                      static_cast<std::uint32_t>(values.size())));
    };
    const auto load = [](const std::string& lut) {
        simulator::loadScenario(parseJson(R"({"monitors": [{"product": "TQ271-P", "serial": "10000001",
                                                            "settings": {"lutA": )" +
                                          lut + "}}]}"));
    };
    load(R"({"value": {"green": [1, 2]}})");
    EXPECT_EQ(set({3, 4}), 0u);
    EXPECT_EQ(set({3}), 0x8000001B);
    load(R"({"value": {"green": [1, 2]}, "most": 3, "of": [1, 2, 4]})");
    EXPECT_EQ(set({4}), 0u);
    EXPECT_EQ(set({1, 2, 4}), 0u);
    EXPECT_EQ(set({1, 2, 4, 4}), 0x8000001B);
    EXPECT_EQ(set({}), 0x8000001B);
    EXPECT_EQ(set({1, 3}), 0x80000001) << "an item that there is not";
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
    simulate(parseJson(R"({"simulate": "reset"})"));
    EXPECT_EQ(brightness(a).second, 50u);
}

TEST_F(Simulator, GeneratesListsAndKnowsProducts) {
    simulator::loadScenario(parseJson(R"({
        "settings": {"lut3DLevels": {"value": [0, 9]}, "lut3D": {"value": {"grid": [0, 9]}}},
        "products": {"TB240": {"unsupported": ["lut3D"], "settings": {"brightness": {"value": 5}}}},
        "monitors": [
            {"product": "TQ271-P", "serial": "10000001"},
            {"product": "TB240", "serial": "10000002"},
            {"product": "TB240", "serial": "10000001", "settings": {"brightness": {"value": 6}}}]})"));
    DmColor colors[9]{};
    std::uint32_t count = 9;
    EXPECT_EQ(DmCtrlGet3DLUTDirect(a.serial, a.product, colors, &count), 0);
    EXPECT_EQ(count, 8u);
    EXPECT_EQ(simulator::toJson(colors[1]), parseJson(R"({"red": 0, "green": 0, "blue": 9})"));
    EXPECT_EQ(simulator::toJson(colors[6]), parseJson(R"({"red": 9, "green": 9, "blue": 0})"));
    EXPECT_EQ(code(DmCtrlGet3DLUTGridCount(b.serial, b.product, &count)), 0x80000007);
    EXPECT_EQ(brightness(a).second, 50u);
    EXPECT_EQ(brightness(b).second, 5u);
    EXPECT_EQ(brightness(c).second, 6u) << "a monitor says more than its product";
}

TEST_F(Simulator, RefusesWhatIsNoScenario) {
    for (const auto wrong :
         {"1", "{}", R"({"monitors": 1})", R"({"monitors": [1]})", R"({"monitors": [{"product": "TB240"}]})",
          R"({"monitors": [{"product": "TB240", "serial": "123456789"}]})",
          R"({"monitors": [{"product": "", "serial": "1"}]})"})
        EXPECT_THROW(simulator::loadScenario(parseJson(wrong)), std::invalid_argument) << wrong;
    EXPECT_EQ(enumerate().size(), 3u);
}

TEST_F(Simulator, UnplugsAtOnceAndPlugsAtTheNextFind) {
    const auto instruct = [](const std::string& what) {
        simulate(parseJson(R"({"product": "TB240", "serial": "10000002", "simulate": ")" + what + "\"}"));
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
    simulate(parseJson(R"({"simulate": "reset"})"));
    EXPECT_EQ(enumerate().size(), 3u);
}

}  // namespace
