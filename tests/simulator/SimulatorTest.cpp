// The simulated monitors and their scripts, through the companions' own functions.
#include <gmock/gmock.h>
#include <libdmc.h>
#include <records/selfcalibration.h>

#include "simulator/core/Gate.h"
#include "simulator/core/Simulator.h"
#include "simulator/core/Values.h"

namespace {

using simulator::Json;
using simulator::Output;
using simulator::parseJson;
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

TEST_F(Simulator, RefusesWrongInstructionsAndChangesNothing) {
    const Json wrong[] = {
        parseJson(R"("reset")"),
        parseJson(R"({"simulate": "explode"})"),
        parseJson(R"({"simulate": "reset", "product": "TB240"})"),
        parseJson(R"({"simulate": "plug"})"),
        parseJson(R"({"simulate": "unplug", "product": "TB240", "serial": "1"})"),
        parseJson(R"({"simulate": "throw", "function": "DmCtrlGetBrightnessForStep", "result": 1})"),
        returning(R"("function": "DmCtrlNone", "result": 1)"),
        returning(R"("times": 1)"),
        returning(R"("result": 1.0)"),
        returning(R"("result": 4294967296)"),
        returning(R"("result": -2147483649)"),
        returning(R"("result": 1, "times": 0)"),
        returning(R"("result": 1, "outputs": 7)"),
        returning(R"("result": 1, "product": "TQ271")"),
        returning(R"("result": 1, "output": [7])"),
    };
    for (const auto& instruction : wrong) EXPECT_THROW(simulate(instruction), std::invalid_argument) << instruction;
    EXPECT_EQ(brightness(a), (std::pair{0u, 50u}));
    EXPECT_EQ(enumerate().size(), 3u);
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
        "products": {"TB240": {"unsupported": ["contrast"], "settings": {"brightness": {"value": 5}}}},
        "monitors": [
            {"product": "TQ271-P", "serial": "10000001", "settings": {"contrast": {"value": 150}}},
            {"product": "TB240", "serial": "10000002"},
            {"product": "TB240", "serial": "10000001", "settings": {"brightness": {"value": 6}}}]})"));
    EXPECT_EQ(brightness(a).second, 60u);
    EXPECT_EQ(brightness(b).second, 5u);
    EXPECT_EQ(brightness(c).second, 6u) << "a monitor says more than its product";
    EXPECT_EQ(DmCtrlSupportedContrast(b.serial, b.product), 0);
    std::uint32_t step = 0;
    EXPECT_EQ(static_cast<std::uint32_t>(DmCtrlGetContrastForStep(b.serial, b.product, &step)), 0x80000007);

    for (const auto outside : {100.1, -0.1, std::nan("")})
        EXPECT_LT(DmCtrlSetContrastForPercentage(a.serial, a.product, outside), 0) << outside;
    EXPECT_EQ(DmCtrlSetContrastForPercentage(a.serial, a.product, 24.6), 0);
    EXPECT_EQ(DmCtrlGetContrastForStep(a.serial, a.product, &step), 0);
    EXPECT_EQ(step, 125u);
    simulate(parseJson(R"({"simulate": "reset"})"));
    EXPECT_EQ(DmCtrlGetContrastForStep(a.serial, a.product, &step), 0);
    EXPECT_EQ(step, 150u) << "back to the scenario that was loaded";
}

TEST_F(Simulator, ResetsToWhatWasSavedOfAModeOrOfAll) {
    const auto hybrid = [] {
        std::uint32_t enabled = untouched;
        EXPECT_EQ(DmCtrlGetHybridGammaPXL(a.serial, a.product, &enabled), 0);
        return enabled;
    };
    EXPECT_EQ(DmCtrlSetMode(a.serial, a.product, 3), 0);
    EXPECT_EQ(DmCtrlSetHybridGammaPXL(a.serial, a.product, 1), 0);
    DmCtrlSetBrightnessForStep(a.serial, a.product, 60);
    EXPECT_EQ(DmCtrlResetAtIndex(a.serial, a.product, 0, 3), 0);
    EXPECT_EQ(hybrid(), 0u);
    EXPECT_EQ(brightness(a).second, 60u) << "only what mode 3 has of its own";
    EXPECT_EQ(DmCtrlSave(a.serial, a.product, 0), 0);
    DmCtrlSetBrightnessForStep(a.serial, a.product, 70);
    DmCtrlSetHybridGammaPXL(a.serial, a.product, 1);
    EXPECT_EQ(DmCtrlSaveAtIndex(a.serial, a.product, 0, 3), 0);
    EXPECT_EQ(DmCtrlReset(a.serial, a.product, 0), 0);
    EXPECT_EQ(brightness(a).second, 60u);
    EXPECT_EQ(hybrid(), 1u);
}

TEST_F(Simulator, RefusesWhatIsNoScenario) {
    const auto withFirmware = [](const char* firmware) {
        return R"({"monitors": [{"product": "TB240", "serial": "1", "firmware": )" + std::string(firmware) + "}]}";
    };
    for (const std::string& wrong :
         {std::string("1"), std::string("{}"), std::string(R"({"monitors": 1})"), std::string(R"({"monitors": [1]})"),
          std::string(R"({"monitors": [{"product": "TB240"}]})"),
          std::string(R"({"monitors": [{"product": "TB240", "serial": "123456789"}]})"),
          std::string(R"({"monitors": [{"product": "", "serial": "1"}]})"), withFirmware(R"({"version": "2"})"),
          withFirmware(R"({"failAt": 1})"), withFirmware(R"({"callbackThread": 1})")})
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
