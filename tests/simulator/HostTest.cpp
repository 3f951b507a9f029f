// The development host's batch lines and its reading of answers, with a plug-in that can misbehave; its firmware
// updates, with the real one.
#include <gmock/gmock.h>

#include <sstream>

#include "host/Firmware.h"
#include "host/Platform.h"
#include "host/Report.h"
#include "simulator/core/World.h"

namespace {

using host::Json;
using testing::HasSubstr;

class Host : public testing::Test {
 protected:
    Host() { session.execute(R"({"simulate": "reset"})"); }

    static std::filesystem::path fixture() {
        auto file = host::Plugin::defaultFile();
        return file.replace_filename("fixture_plugin" + file.extension().string());
    }

    Json execute(const Json& line) const { return session.execute(line.dump()); }
    Json call(const char* name, const char* query = "") const {
        return execute({{"call", name}, {"texts", {"", "", query, ""}}});
    }

    const host::Session session{fixture()};
};

TEST_F(Host, ShowsMissingAndDoubleAnswers) {
    EXPECT_EQ(call("Silent").at("responses").size(), 0u);
    const auto twice = call("Twice");
    EXPECT_EQ(twice.at("responses").size(), 2u);
    EXPECT_THAT(host::writeJson(twice), HasSubstr("\ufffd")) << "text that is not UTF-8";
    for (const auto name : {"Silent", "Twice"}) {
        const auto outcome = host::readOutcome(call(name));
        EXPECT_FALSE(outcome.succeeded());
        EXPECT_EQ(outcome.error.at("name"), "HostError");
    }
    EXPECT_EQ(host::readOutcome(call("Good")).value, 50);
}

TEST_F(Host, SurvivesLinesThatItDoesNotUnderstand) {
    const std::string lines[] = {
        "",
        "rubbish",
        std::string("\0\xff\xfe\x1a", 4),
        "[]",
        "{}",
        "7",
        R"({"call": "Good"})",
        R"({"call": 1, "texts": ["", "", "", ""]})",
        R"({"call": "Good", "texts": ["", "", ""]})",
        R"({"call": "Good", "texts": ["", "", "", 1]})",
        R"({"call": "Good", "texts": ["", "", "", ""], "more": 1})",
        R"({"call": "NoSuchExport", "texts": ["", "", "", ""]})",
        R"({"simulate": "explode"})",
        R"({"call": "Good", "texts": ["\ud800", "", "", ""]})",
        std::string(3'000'000, '['),
        R"({"simulate": ")" + std::string(3'000'000, 'x'),
    };
    for (const auto& line : lines) {
        const auto answer = session.execute(line);
        EXPECT_EQ(answer.value("ok", true), false) << line.substr(0, 80);
        EXPECT_LT(answer.value("error", "").size(), 300u);
    }
    EXPECT_EQ(call("Good").at("responses").size(), 1u);
}

/// Firmware updates, with the real plug-in.
class FirmwareUpdate : public testing::Test {
 protected:
    FirmwareUpdate() { load(Json::object()); }
    ~FirmwareUpdate() override { std::filesystem::remove(package.file); }

    static void load(const Json& firmware) {
        auto scenario = simulator::World::builtInScenario();
        scenario["monitors"][0]["firmware"] = firmware;
        simulator::loadScenario(scenario);
    }
    Json update() const {
        host::createPackage(package);
        std::istringstream in;
        std::ostringstream out;
        return host::updateFirmware(session, package.file, "10000001", "TQ271-P", {.in = in, .out = out, .error = out},
                                    {});
    }

    const host::Session session;
    host::PackageOptions package{host::toUtf8(std::filesystem::temp_directory_path() / u8"pell \u4e94.dfw"), "TQ271-P",
                                 "2.1.0.3.7", 3000};
};

TEST_F(FirmwareUpdate, ChangesTheVersion) {
    load({{"callbackThread", true}, {"updatePolls", 2}});
    const auto result = update();
    EXPECT_EQ(result.at("before"), "2.0.1.5.3");
    EXPECT_EQ(result.at("after"), "2.1.0.3.7");
    EXPECT_EQ(simulator::openHandles(), Json::object());
    EXPECT_THROW(update(), std::runtime_error) << "it has this version already";
}

TEST_F(FirmwareUpdate, SaysWhatFailsAndClosesThePackage) {
    const auto failing = [](const char* function) {
        return Json{{"simulate", "return"}, {"function", function}, {"result", 0x80000013u}};
    };
    const auto doingNothing = [](const char* function) {
        return Json{{"simulate", "return"}, {"function", function}, {"result", 0}, {"outputs", Json::array()}};
    };
    const struct {
        const char* product;
        const char* broken;
        Json firmware, simulation;
        const char* message;
    } cases[] = {
        {"TQ271-P", "header", {}, {}, "cannot open the package: InternalError"},
        {"TQ271-P", "truncated", {}, {}, "cannot open the package: InternalError"},
        {"TQ271-P", "checksum", {}, {}, "cannot open the package: InternalError"},
        {"TB240", "", {}, {}, "the package does not fit the monitor: it is for another product (code 1)"},
        {"TQ271-P", "", {{"failAtBlock", 2}}, {}, "cannot transfer the firmware: DmError: Stall."},
        {"TQ271-P", "", {{"unplugAtBlock", 2}}, {}, "cannot transfer the firmware: DmError: Monitor connection error."},
        {"TQ271-P",
         "",
         {},
         failing("FWMonitorTriggerFirmwareUpdate"),
         "cannot trigger the update: DmError: Timed out."},
        {"TQ271-P", "", {}, failing("FWMonitorGetTransferState"), "cannot read the state of the update: DmError"},
        {"TQ271-P",
         "",
         {},
         doingNothing("FWMonitorTriggerFirmwareUpdate"),
         "the monitor has the version 2.0.1.5.3 after"},
    };
    for (const auto& test : cases) {
        load(test.firmware.is_null() ? Json::object() : test.firmware);
        if (!test.simulation.is_null()) simulator::simulate(test.simulation);
        package.product = test.product;
        package.broken = test.broken;
        try {
            update();
            ADD_FAILURE() << test.message;
        } catch (const std::runtime_error& error) {
            EXPECT_THAT(error.what(), HasSubstr(test.message));
        }
        EXPECT_EQ(simulator::openHandles(), Json::object()) << test.message;
    }
}

}  // namespace
