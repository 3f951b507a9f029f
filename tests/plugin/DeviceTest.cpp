// Power, inputs, USB, keys, backlight and identity: what takes several steps, depends on the generation of the library,
// or is read from what the library tells in two calls.
#include "simulator/core/World.h"
#include "tests/plugin/Page.h"

namespace {

using testing::ElementsAre;
using testing::ElementsAreArray;

std::vector<std::string> functionsOf(const Answer& answer) {
    std::vector<std::string> names;
    for (const Json& call : answer.calls)
        if (!call["function"].get<std::string>().ends_with("Monitors") && call["function"] != "DmCtrlGetSerialProduct")
            names.push_back(call["function"]);
    return names;
}

/// A page whose first monitor is another one than that of the built-in scenario.
class OtherMonitorPage : public Page {
 public:
    explicit OtherMonitorPage(const Json& changes) {
        Json scenario = simulator::World::builtInScenario();
        scenario["monitors"][0].merge_patch(changes);
        product = scenario["monitors"][0]["product"];
        simulator::loadScenario(scenario);
    }
    ~OtherMonitorPage() { simulator::loadScenario(simulator::World::builtInScenario()); }
};

// ---- Power ----------------------------------------------------------------------------------------------------------

TEST(Power, TakesEveryValueButNull) {
    Page page;
    const std::pair<const char*, int> cases[] = {
        {"true", 1},      {"false", 0}, {"1", 1},
        {"-1", 1},        {"0", 0},     {"0.25", 1},
        {"-0.0", 0},      {"1e999", 1}, {"\"true\"", 1},
        {"\"TRUE\"", 0},  {"\"1\"", 0}, {"\"\"", 0},
        {"\"false\"", 0}, {"[1]", 0},   {R"({"on":true})", 0},
        {"{}", 0},        {"on", 0},    {R"({"data":true})", 1},
    };
    for (const auto& [body, power] : cases) {
        const Answer answer = page.put("Power", body);
        EXPECT_EQ(summary(answer), "200 null") << body;
        EXPECT_THAT(inputsOf(answer, "DmCtrlSetPower"), ElementsAre(Json{power})) << body;
        EXPECT_EQ(page.get("Power").value, power == 1) << body;
    }
    for (const char* body : {"", "null", R"({"data":null})"})
        EXPECT_EQ(summary(page.put("Power", body)), "400 BadRequestError data is empty.") << body;
}

TEST(Power, OfAMonitorThatSleepsIsAllThatAnswers) {
    OtherMonitorPage page(Json{{"settings", {{"power", {{"whenOff", "timesOut"}}}}}});
    EXPECT_EQ(page.get("Brightness").status, 200);
    EXPECT_EQ(summary(page.put("Power", "false")), "200 null");
    EXPECT_EQ(summary(page.get("Power")), "200 false");
    EXPECT_EQ(summary(page.get("Brightness")), "500 DmError Timed out. (Get brightness.)");
    EXPECT_EQ(summary(page.put("InputPort", "2")), "500 DmError Timed out. (Set input ports.)");
    EXPECT_EQ(summary(page.get("SignalInformation")), "500 DmError Timed out. (Enter critical section.)");
    EXPECT_EQ(summary(page.put("Power", "true")), "200 null");
    EXPECT_EQ(page.get("Brightness").status, 200);
}

// ---- Inputs ---------------------------------------------------------------------------------------------------------

TEST(InputPort, IsHandedOverAsAList) {
    Page page;
    const std::pair<const char*, Json> cases[] = {
        {"2", {2}}, {"1.6", {2}}, {"[3]", {3}}, {"[1, 3.4]", {1, 3}}, {R"({"data":[4,1]})", {4, 1}}};
    for (const auto& [body, ports] : cases) {
        const Answer answer = page.put("InputPort", body);
        EXPECT_THAT(inputsOf(answer, "DmCtrlSetInputPorts"), ElementsAre(Json::array({ports}))) << body;
        EXPECT_EQ(page.get("InputPort").value, ports) << body;
    }
}

TEST(SignalSelectSupportMode, IsOfTheNewerGenerationWhereTheMonitorHasIt) {
    Page page;
    page.returns("DmCtrlSupportedRCSignalSelectSupportMode", 0);
    EXPECT_EQ(page.get("SignalSelectSupportMode", R"({"supports":1})").value, true) << "V2 alone";
    const struct {
        std::uint32_t supportsV2;
        const char* suffix;
        Json value;
        std::vector<std::pair<const char*, int>> puts;
    } cases[] = {
        {1, "V2", 2, {{"3", 3}, {"true", 1}, {"false", 0}, {"0.4", 0}}},
        {0x80000007, "V2", 0, {{"2", 2}}},  // whatever is not 0
        {0, "", true, {{"3", 1}, {"true", 1}, {"0", 0}, {"0.4", 1}}},
    };
    for (const auto& [supportsV2, suffix, value, puts] : cases) {
        page.returns("DmCtrlSupportedRCSignalSelectSupportModeV2", supportsV2);
        EXPECT_EQ(page.get("SignalSelectSupportMode").value, value);
        for (const auto& [body, mode] : puts) {
            const Answer answer = page.put("SignalSelectSupportMode", body);
            const std::string set = std::string("DmCtrlSetRCSignalSelectSupportMode") + suffix;
            EXPECT_EQ(summary(answer), "200 null");
            EXPECT_THAT(inputsOf(answer, set), ElementsAre(Json{mode})) << supportsV2 << " " << body;
        }
    }
    EXPECT_EQ(page.get("SignalSelectSupportMode", R"({"supports":1})").value, false) << "neither";
    page.returns("DmCtrlSupportedRCSignalSelectSupportMode", 1);
    EXPECT_EQ(page.get("SignalSelectSupportMode", R"({"supports":1})").value, true) << "the older one alone";
}

// ---- Signals --------------------------------------------------------------------------------------------------------

TEST(SignalInformation, SelectsEachPortFirstOnProductsThatMeasureOnlyOne) {
    const std::vector<std::string> before{"DmCtrlSupportedCriticalSection", "DmCtrlEnterCriticalSection",
                                          "DmCtrlGetInputPortCount"};
    const struct {
        const char* product;
        std::uint32_t supported;  // what the library says of selecting
        bool asks, selects;
    } cases[] = {{"TQ271-P", 1, true, true},   {"TQ321-X-2", 1, true, true}, {"TQ321", 1, true, true},
                 {"TQ271-P", 0, true, false},  {"TQ272-P", 1, false, false}, {"TQ2711-P", 1, false, false},
                 {"XTQ271-P", 1, false, false}};
    for (const auto& [product, supported, asks, selects] : cases) {
        OtherMonitorPage page(Json{{"product", product}, {"settings", {{"inputPort", {{"value", {3, 2}}}}}}});
        page.returns("DmCtrlSupportedTargetSelection", supported);
        std::vector<std::string> functions = before;
        if (asks) functions.push_back("DmCtrlSupportedTargetSelection");
        functions.push_back("DmCtrlGetInputPorts");
        for (int port = 0; port < 2; ++port) {
            if (selects) functions.push_back("DmCtrlSetTargetSelectionInputPort");
            for (const char* part : {"Information", "Resolution", "InfoFrame"})
                functions.push_back(std::string("DmCtrlGetSignal") + part);
        }
        functions.push_back("DmCtrlExitCriticalSection");
        const Answer answer = page.get("SignalInformation");
        EXPECT_THAT(functionsOf(answer), ElementsAreArray(functions)) << product;
        EXPECT_EQ(answer.value[0]["inputPort"], 3);
        EXPECT_EQ(answer.value[1]["inputPort"], 2);
        EXPECT_EQ(answer.value[1]["resolution"]["horizontal"], 3840);
    }
}

TEST(SignalInformation, HasNoMorePortsThanItMayAskAbout) {
    Page page;
    page.returns("DmCtrlGetInputPortCount", 0, Json::array({5000}));
    for (const char* function : {"DmCtrlGetInputPorts", "DmCtrlGetSignalInformation", "DmCtrlGetSignalResolution",
                                 "DmCtrlGetSignalInfoFrame", "DmCtrlSetTargetSelectionInputPort"})
        page.returns(function, 0, Json::array());
    EXPECT_EQ(page.get("SignalInformation").value.size(), 1024U);
}

TEST(SignalInformation, LeavesTheCriticalSectionWhateverFails) {
    for (const char* function : {"DmCtrlGetInputPortCount", "DmCtrlGetInputPorts", "DmCtrlSetTargetSelectionInputPort",
                                 "DmCtrlGetSignalInformation", "DmCtrlGetSignalInfoFrame"}) {
        Page page;
        page.returns(function, 0x80000008);
        const Answer answer = page.get("SignalInformation");
        EXPECT_EQ(answer.error["message"], "Stall.") << function;
        const auto functions = functionsOf(answer);
        ASSERT_GE(functions.size(), 2U);
        EXPECT_EQ(functions.back(), "DmCtrlExitCriticalSection") << function;
        EXPECT_EQ(functions[functions.size() - 2], function);
    }
    Page page;
    page.returns("DmCtrlEnterCriticalSection", 0x8001000A);
    EXPECT_THAT(functionsOf(page.get("SignalInformation")),
                ElementsAre("DmCtrlSupportedCriticalSection", "DmCtrlEnterCriticalSection"));
}

// ---- KVM and keys ---------------------------------------------------------------------------------------------------

TEST(KVMSetting, TellsASwitchAndItsSettingsApart) {
    Page page;
    for (const bool supports : {false, true})
        for (const bool hasMultipleSettings : {false, true}) {
            page.returns("DmCtrlSupportedKVMSetting", supports);
            page.returns("DmCtrlSupportedKVMSettingV2", hasMultipleSettings);
            EXPECT_EQ(page.get("KVMSetting", R"({"supports":1})").value,
                      Json({{"supports", supports}, {"hasMultipleSettings", hasMultipleSettings}}));
        }
}

TEST(KeyLock, HasATimeoutOf16BitsThatEnds) {
    Page page;
    const std::pair<const char*, int> cases[] = {{"65535", 65535}, {"65536", 0}, {"65537", 1}, {"-1", 0}, {"29.5", 30}};
    for (const auto& [timeout, seconds] : cases) {
        const Answer answer = page.put("KeyLock", R"({"timeout":)" + std::string(timeout) + "}");
        EXPECT_THAT(inputsOf(answer, "DmCtrlSetTimeoutKeyLock"), ElementsAre(Json{seconds})) << timeout;
        EXPECT_EQ(inputsOf(answer, "DmCtrlSetKeyLockState").size(), 0U);
    }
    for (const char* body : {R"({"timeout":null})", R"({"timeout":"1"})", R"({"state":1})", "true", "null"})
        EXPECT_EQ(summary(page.put("KeyLock", body)), "400 BadRequestError data must be number.") << body;
    EXPECT_EQ(summary(page.put("VirtualKey", "1")), "500 DmError Disabled. (Set virtual key.)");
    page.simulate({{"simulate", "advance"}, {"milliseconds", 30000}});
    EXPECT_EQ(summary(page.get("KeyLock")), "200 0");
    EXPECT_EQ(summary(page.put("VirtualKey", "1")), "200 null");
}

TEST(VirtualKey, ListsAsManyKeysAsTheSecondCallWritesAndTheFirstAnnounces) {
    const std::tuple<int, Json, Json> cases[] = {
        {4, {7, 8}, {7, 8}}, {2, {7, 8, 9}, {7, 8}}, {0, {7, 8, 9}, Json::array()}, {2, 4294967295, {0, 0}}};
    for (const auto& [announced, second, keys] : cases) {
        Page page;
        for (const Json& output : {Json(announced), second})
            page.simulate({{"simulate", "return"},
                           {"function", "DmCtrlEnumVirtualKey"},
                           {"result", 0},
                           {"outputs", {output}},
                           {"times", 1}});
        EXPECT_EQ(page.get("VirtualKey", R"({"available":1})").value, keys) << announced << second;
    }
}

// ---- Backlight ------------------------------------------------------------------------------------------------------

TEST(InstantBacklightBooster, IsReadChangedAndWrittenBack) {
    const Json booster{
        {"status", 3},
        {"mode", 2},
        {"target", {{"Lmax", 500.5}, {"Lmin", 0.5}, {"colorTemperature", 6500}, {"displayFunction", 1}}}};
    const std::pair<const char*, const char*> cases[] = {
        // a body, and what it changes
        {R"({"mode":1})", R"({"mode":1})"},
        {R"({"mode":"1","status":9})", "{}"},
        {R"({"target":{"Lmax":600,"Lmin":"1"}})", R"({"target":{"Lmax":600.0}})"},
        {R"({"mode":0,"colorTemperature":7000,"Lmin":1})",
         R"({"mode":0,"target":{"colorTemperature":7000,"Lmin":1.0}})"},
        {R"({"Lmax":1,"displayFunction":2,"target":{"Lmax":9}})", R"({"target":{"Lmax":9.0,"displayFunction":2}})"},
        {R"({"target":null})", "{}"},
        {nullptr, R"({"mode":0})"},  // DELETE
    };
    for (const auto& [body, changes] : cases) {
        Page page;
        page.returns("DmCtrlGetInstantBacklightBooster", 0, Json::array({booster}));
        const Answer answer = page.ask(body ? "PUT" : "DELETE", "InstantBacklightBooster", "", body ? body : "");
        Json expected = booster;
        expected.merge_patch(Json::parse(changes));
        EXPECT_THAT(inputsOf(answer, "DmCtrlSetInstantBacklightBooster"), ElementsAre(Json::array({expected})))
            << changes;
        page.returns("DmCtrlGetInstantBacklightBooster", 0x80000000);
        EXPECT_EQ(
            page.ask(body ? "PUT" : "DELETE", "InstantBacklightBooster", "", body ? body : "").calls.back()["function"],
            "DmCtrlGetInstantBacklightBooster");
    }
}

TEST(InstantBacklightBooster, CountsTheTimeThatItIsOn) {
    Page page;
    const auto hours = [&] { return page.get("InstantBacklightBoosterUsageTime").value["hours"].get<int>(); };
    const auto passHours = [&](int count) {
        page.simulate({{"simulate", "advance"}, {"milliseconds", 3600000 * count}});
    };
    const int before = hours();
    passHours(1);
    EXPECT_EQ(hours(), before) << "off";
    page.put("InstantBacklightBooster", R"({"mode":1})");
    passHours(2);
    page.put("InstantBacklightBooster", R"({"mode":2})");
    EXPECT_EQ(hours(), before + 2) << "on";
    page.ask("DELETE", "InstantBacklightBooster");
    passHours(1);
    EXPECT_EQ(hours(), before + 2) << "off again";
}

// ---- Texts ----------------------------------------------------------------------------------------------------------

TEST(Texts, HaveNothingBeyondWhatTheSecondCallWrote) {
    const std::tuple<const char*, const char*, const char*, const char*> texts[] = {
        {"AssetTag", "", "DmCtrlGetAssetTag", "/tag"},
        {"UDI", "", "DmCtrlGetUDI", ""},
        {"OSDDisplayFirmwareVersion", R"({"string":1})", "DmCtrlGetOSDDisplayFirmwareVersionsString", ""}};
    const std::tuple<std::uint32_t, std::string, std::string> cases[] = {
        {8, "Room 12", "Room 12"},
        {4, "Room 12", "Room"},  // it has grown, and its buffer has no NUL
        {21, "R", "R"},
        {4294967295, "R", "R"},
        {0, "Room 12", ""},
        {4096, std::string(5000, 'r'), std::string(4096, 'r')}};
    for (const auto& [resource, query, function, member] : texts)
        for (const auto& [size, text, read] : cases) {
            Page page;
            page.returns((function + std::string("Size")).c_str(), 0, {size});
            page.returns(function, 0, {text});
            EXPECT_EQ(page.get(resource, query).value.at(Json::json_pointer(member)), read) << resource << " " << size;
        }
}

TEST(Counts, ShowSupportWhereNoFunctionDoes) {
    const std::pair<const char*, const char*> cases[] = {
        {"USBCAltModePort", "DmCtrlGetUSBCAltModePortCount"},
        {"OSDDisplayFirmwareVersion", "DmCtrlGetOSDDisplayFirmwareVersionsCount"}};
    for (const auto& [resource, function] : cases) {
        Page page;
        const std::tuple<std::uint32_t, int, bool> counts[] = {{0, 2, true}, {0, 0, false}, {0x80000006, 2, false}};
        for (const auto& [result, count, supports] : counts) {
            page.returns(function, result, {count});
            EXPECT_EQ(page.get(resource, R"({"supports":1})").value, supports) << resource << result;
        }
    }
}

}  // namespace
