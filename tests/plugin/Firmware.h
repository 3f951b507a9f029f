// Firmware monitors for the tests.
#pragma once

#include "simulator/core/World.h"
#include "tests/PackageFile.h"
#include "tests/plugin/Page.h"

using tests::PackageFile;

/// A page that opens, describes and closes packages; at its end nothing may be left open, locked or misused.
class FirmwarePage : public Page {
 public:
    ~FirmwarePage() {
        EXPECT_EQ(simulator::openHandles(), Json::object());
        EXPECT_EQ(simulator::takeHandleFaults(), Json::array());
        EXPECT_EQ(simulator::lockedMonitors(), Json::array());
        simulator::loadScenario(simulator::World::builtInScenario());
    }

    /// The monitors' firmware behaves like this for the rest of the test.
    void firmware(const Json& conduct) {
        Json scenario = simulator::World::builtInScenario();
        scenario["firmware"].update(conduct);
        simulator::loadScenario(scenario);
    }

    Answer openAnswer(const std::string& path, const std::string& resource = "FileSystemDfwFile") {
        return call(resource, {R"({"method":"POST"})", "", "", Json{{"path", path}}.dump()});
    }
    std::string open(const std::string& path, const std::string& resource = "FileSystemDfwFile") {
        return openAnswer(path, resource).value.value("id", "");
    }
    Answer describe(const std::string& id, const std::string& query = "",
                    const std::string& resource = "FileSystemDfwFile") {
        return call(resource, {"", Json{{"id", id}}.dump(), query, ""});
    }
    Answer close(const std::string& id, const std::string& resource = "FileSystemDfwFile") {
        return call(resource, {R"({"method":"DELETE"})", Json{{"id", id}}.dump(), "", ""});
    }
    Answer transfer(const std::string& id) {
        return ask("POST", "FirmwareUpdateTransfer", "", Json{{"dfwFile", id}}.dump());
    }
};
