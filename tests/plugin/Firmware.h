// Firmware packages and monitors for the tests.
#pragma once

#include <filesystem>
#include <fstream>

#include "simulator/core/FirmwarePackage.h"
#include "simulator/core/World.h"
#include "tests/plugin/Page.h"

/// A package file that goes with its object. Its name is not ASCII, and no 8-bit code page of Windows has it whole.
class PackageFile {
 public:
    explicit PackageFile(const std::string& product = "TQ271-P", std::size_t size = 10 * 1024,
                         const std::string& name = "") {
        simulator::FirmwarePackage package;
        package.product = product;
        package.version = simulator::parseVersion("2.1.0.3.7");
        package.payload.assign(size, 'f');
        write(simulator::writePackage(package));
        if (!name.empty()) rename(name);
    }
    ~PackageFile() {
        std::error_code ignored;
        std::filesystem::remove(file_, ignored);
    }
    PackageFile(const PackageFile&) = delete;
    PackageFile& operator=(const PackageFile&) = delete;

    void write(const std::string& bytes) { std::ofstream(file_, std::ios::binary) << bytes; }

    void damage(simulator::PackageDefect defect) {
        std::ifstream stream(file_, std::ios::binary);
        const std::string bytes(std::istreambuf_iterator<char>(stream), {});
        stream.close();
        write(simulator::damage(bytes, defect));
    }

    std::string path() const {
        const auto text = file_.u8string();
        return {text.begin(), text.end()};
    }
    std::string name() const {
        const auto text = file_.filename().u8string();
        return {text.begin(), text.end()};
    }

 private:
    void rename(const std::string& name) {
        const auto renamed = std::filesystem::temp_directory_path() / std::u8string(name.begin(), name.end());
        std::filesystem::rename(file_, renamed);
        file_ = renamed;
    }

    static std::filesystem::path newFile() {
        static int number = 0;
        return std::filesystem::temp_directory_path() /
               (u8"pell-päckage-日ж" + std::filesystem::path(std::to_string(++number)).u8string() + u8".dfw");
    }

    std::filesystem::path file_ = newFile();
};

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
