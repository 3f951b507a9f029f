// Firmware: packages under identifiers, and the update of a monitor.
#include <cstdlib>
#include <functional>
#include <future>
#include <thread>

#include "tests/plugin/Firmware.h"

namespace {

TEST(Update, RunsFromOpeningToTheNewVersion) {
    for (const bool callbackThread : {false, true}) {
        FirmwarePage page;
        page.firmware({{"callbackThread", callbackThread}, {"blockMilliseconds", 0}});
        const PackageFile package;
        const std::string id = page.open(package.path());
        const Json newVersion{{"system", 2}, {"controller", 1}, {"frontEnd", 0}, {"osd", 3}, {"fpga", 7}};
        EXPECT_EQ(page.describe(id).value, (Json{{"monitorProduct", "TQ271-P"}, {"version", newVersion}}));
        EXPECT_EQ(page.get("FirmwareUpdate", R"({"checkDfwFile":")" + id + R"("})").value, 0);

        const Answer transferred = page.transfer(id);
        EXPECT_EQ(summary(transferred), "200 null");
        ASSERT_EQ(transferred.events.size(), 10U);
        for (std::size_t i = 0; i < 10; ++i) {
            EXPECT_EQ(transferred.events[i]["name"], "transferFirmwareData");
            EXPECT_EQ(Json::parse(transferred.events[i]["text"].get<std::string>()),
                      (Json{{"serial", "10000001"},
                            {"product", "TQ271-P"},
                            {"transferredBlock", i + 1},
                            {"blockCount", 10},
                            {"transferredBytes", (i + 1) * 1024},
                            {"totalBytes", 10240}}));
        }
        EXPECT_EQ(page.get("FirmwareUpdate").value, (Json{{"state", 2}}));
        EXPECT_NE(page.get("FirmwareUpdateVersion").value, newVersion);
        EXPECT_EQ(summary(page.ask("POST", "FirmwareUpdateTrigger")), "200 null");
        EXPECT_EQ(page.get("FirmwareUpdateVersion").value, newVersion);
        EXPECT_EQ(summary(page.close(id)), "200 null");
    }
}

TEST(Update, AsksTheFunctionThatTheQueryNames) {
    FirmwarePage page;
    const PackageFile package;
    const std::string id = page.open(package.path());
    const struct {
        std::string query;
        const char* function;
    } cases[] = {
        {R"({"checkDfwFile":"ID","supports":"v4","dfwFile":"ID"})", "FWDfwFileCheckMonitor"},
        {R"({"supports":"v4","dfwFile":"ID"})", "FWDfwFileSupportsMonitor"},
        {R"({"supports":"v4"})", "FWMonitorSupportsFirmwareUpdateV4"},
        {R"({"supports":"V4"})", "FWMonitorSupportsFirmwareUpdate"},
        {R"({"dfwFile":"ID"})", "FWMonitorGetTransferState"},
    };
    for (auto [query, function] : cases) {
        for (auto at = query.find("ID"); at != std::string::npos; at = query.find("ID")) query.replace(at, 2, id);
        const Answer answer = page.get("FirmwareUpdate", query);
        EXPECT_EQ(answer.status, 200) << query;
        ASSERT_GT(answer.calls.size(), 2U);
        // The lock is taken just before the question, and given back after it.
        EXPECT_EQ(answer.calls[answer.calls.size() - 2]["function"], function) << query;
        EXPECT_EQ(answer.calls[answer.calls.size() - 3]["function"], "DmCtrlLockMonitor") << query;
        EXPECT_EQ(answer.calls.back()["function"], "DmCtrlUnlockMonitor") << query;
    }
    page.returns("FWDfwFileCheckMonitor", 0xFFFFFFFF);
    EXPECT_EQ(page.get("FirmwareUpdate", R"({"checkDfwFile":")" + id + R"("})").value, 0xFFFFFFFF);
    for (const std::uint32_t support : {0U, 1U, 2U}) {
        page.returns("FWDfwFileSupportsMonitor", support);
        EXPECT_EQ(page.get("FirmwareUpdate", R"({"supports":1,"dfwFile":")" + id + R"("})").value, support != 0);
    }
    page.returns("FWMonitorGetTransferState", 0, Json::array());
    EXPECT_EQ(page.get("FirmwareUpdate").value, (Json{{"state", 0}}));
    page.returns("DmCtrlLockMonitor", 0x80000000);
    const Answer unlocked = page.get("FirmwareUpdate");
    EXPECT_EQ(unlocked.status, 200);
    EXPECT_EQ(unlocked.calls.back()["function"], "FWMonitorGetTransferState");
    page.close(id);
}

TEST(Packages, AreKnownByTheirIdentifierAlone) {
    FirmwarePage page;
    const PackageFile package;
    const std::string first = page.open(package.path());
    const std::string second = page.open(package.path(), "FileSystemDfwFile2");
    EXPECT_NE(first, second);
    EXPECT_EQ(page.describe(second).value["monitorProduct"], "TQ271-P");
    EXPECT_TRUE(page.describe(first, "", "FileSystemDfwFile2").value.is_object());

    std::string upper = first;
    for (char& letter : upper) letter = static_cast<char>(std::toupper(letter));
    EXPECT_EQ(summary(page.describe(upper)), "500 InternalError Dfw file is not found.");
    EXPECT_EQ(summary(page.close("")), "400 BadRequestError URI is invalid.");

    EXPECT_EQ(summary(page.close(first, "FileSystemDfwFile2")), "200 null");
    EXPECT_EQ(summary(page.transfer(first)), "500 InternalError Dfw file is not found.");
    EXPECT_EQ(page.describe(second).log,
              "statusCode:200\tmethod:GET\turi:/pell/FileSystem/DfwFile/" + second + "\tmsg:Success");
    page.close(second);
}

TEST(Packages, AreCheckedAgainstTheVersionThatTheQueryHas) {
    FirmwarePage page;
    const PackageFile package;
    const std::string id = page.open(package.path());
    const Answer answer = page.describe(
        id, R"({"supports":{"system":9},"system":1,"controller":"2","frontEnd":3.6,"osd":"x","fpga":-1})");
    EXPECT_TRUE(answer.value.is_boolean());
    const Json version{{"system", 1}, {"controller", 2}, {"frontEnd", 4}, {"osd", 0}, {"fpga", 0}};
    EXPECT_EQ(answer.calls.back()["arguments"].back(), version);
    page.close(id);
}

TEST(Packages, AreRefusedWhenTheyAreNoFileOrNoPackage) {
    FirmwarePage page;
    const char* const noFile = "400 BadRequestError Input path is not a file or not existed.";
    for (const char* resource : {"FileSystemDfwFile", "FileSystemDfwFile2"}) {
        PackageFile package;
        for (const std::string& path :
             {std::string(), package.path() + ".not", std::string(":temporary"), std::string(":temporary/"),
              package.path() + std::string("\0.dfw", 5), std::string("pell:temporary/") + package.name()})
            EXPECT_EQ(summary(page.openAnswer(path, resource)), noFile) << path;
        for (const char* body : {"", "null", "[]", R"({"path":7})", R"({"data":{"path":"x"}})"})
            EXPECT_EQ(summary(page.call(resource, {R"({"method":"POST"})", "", "", body})), noFile) << body;
        for (const auto defect : {simulator::PackageDefect::checksum, simulator::PackageDefect::truncated,
                                  simulator::PackageDefect::header}) {
            PackageFile broken;
            broken.damage(defect);
            EXPECT_EQ(summary(page.openAnswer(broken.path(), resource)), "500 InternalError Failed to load dfw file.");
        }
    }
#ifdef _WIN32
    for (const char* device : {"NUL", "\\\\.\\NUL", "CON"})
        EXPECT_EQ(summary(page.openAnswer(device)), noFile) << device;
#else
    EXPECT_EQ(summary(page.openAnswer("/dev/null")), noFile);
#endif
}

TEST(Packages, AreFoundThroughTokens) {
    FirmwarePage page;
    const PackageFile package;
    for (const std::string& path : {":temporary/" + package.name(), ":temporary" + package.name()}) {
        const std::string id = page.open(path);
        EXPECT_EQ(page.describe(id).status, 200) << path;
        page.close(id);
    }
    // The plug-in is a file beside the program, and the host's directories are beside it, too.
    const char* const library = "QtWebKitBridgeHelper";
    for (const char* token : {":executable", ":bundle", ":registry"}) {
#ifdef _WIN32
        const std::string path = std::string(token) + "/" + library + ".dll";
#else
        const std::string path = std::string(token) + "/" + library + ".so";
#endif
        EXPECT_EQ(summary(page.openAnswer(path)), "500 InternalError Failed to load dfw file.") << path;
    }
    const std::string folder = package.path().substr(0, package.path().size() - package.name().size());
    const struct {
        const char* token;
        const char* function;
    } ofTheHost[] = {{":registry", "Plg_GetRegistryPath"},
                     {":html", "Plg_GetRegistryHtmlPath"},
                     {":exports", "Plg_GetRegistryExportsPath"}};
    for (const auto& [token, function] : ofTheHost) {
        page.returns(function, 1, Json::array({folder}));
        EXPECT_EQ(page.close(page.open(token + ("/" + package.name()))).status, 200) << token;
        page.returns(function, 0);
        EXPECT_EQ(page.openAnswer(token + package.path()).status, 400) << token;
    }
}

TEST(Transfer, OfAMonitorThatGoesTellsNoStepAfterThat) {
    FirmwarePage page;
    page.firmware({{"unplugAtBlock", 4}, {"blockMilliseconds", 0}, {"callbackThread", true}});
    const PackageFile package;
    const std::string id = page.open(package.path());
    const Answer answer = page.transfer(id);
    EXPECT_EQ(summary(answer), "500 DmError Monitor connection error. (Transfer firmware data.)");
    EXPECT_EQ(answer.events.size(), 3U);
    EXPECT_EQ(page.describe(id).status, 200);
    page.close(id);
}

// A monitor that the request finds is one whose progress is reported.
TEST(Transfer, ReportsItsStepsWhenTheMonitorIsListedWithTheCodeThatCountsAsSuccess) {
    FirmwarePage page;
    page.firmware({{"blockMilliseconds", 0}});
    const PackageFile package;
    const std::string id = page.open(package.path());
    page.returns("DmCtrlGetSerialProduct", 0x80000006, Json::array({"10000001", "TQ271-P"}));
    const Answer answer = page.transfer(id);
    EXPECT_EQ(summary(answer), "200 null");
    EXPECT_EQ(answer.events.size(), 10U);
    page.close(id);
}

TEST(Transfer, LetsOtherRequestsGoOnAndKeepsAPackageThatIsClosedMeanwhile) {
    FirmwarePage page;
    page.firmware({{"blockMilliseconds", 3}, {"callbackThread", true}});
    const PackageFile forA;
    const PackageFile forB("TB240");
    const std::string idA = page.open(forA.path());
    const std::string idB = page.open(forB.path());
    const auto start = [&page](const char* product, const char* serial, const std::string& id) {
        return std::thread([&page, product, serial, id] {
            const auto texts =
                host::Request{"POST", "FirmwareUpdateTransfer", product, serial, "", Json{{"dfwFile", id}}.dump()}
                    .texts();
            const Answer answer = page.call("FirmwareUpdateTransfer", texts);
            EXPECT_EQ(summary(answer), "200 null");
            EXPECT_EQ(answer.events.size(), 10U);
        });
    };
    std::thread transferA = start("TQ271-P", "10000001", idA);
    std::thread transferB = start("TB240", "10000002", idB);
    while (simulator::lockedMonitors().size() < 2) std::this_thread::yield();
    EXPECT_EQ(summary(page.close(idA)), "200 null");
    EXPECT_EQ(summary(page.describe(idA)), "500 InternalError Dfw file is not found.");
    for (int i = 0; i < 20; ++i) {
        const std::string id = page.open(forA.path());
        EXPECT_EQ(page.describe(id).status, 200);
        EXPECT_EQ(summary(page.close(id)), "200 null");
    }
    transferA.join();
    transferB.join();
    EXPECT_EQ(summary(page.close(idB)), "200 null");
}

// While a monitor's lock is held elsewhere, questions about a package and that monitor wait; nothing about files does.
TEST(Packages, AreNeverKeptWaitingForAMonitor) {
    FirmwarePage page;
    const PackageFile package;
    const std::string id = page.open(package.path());
    static std::promise<void>* waiting;
    static std::shared_future<void> unlocked;
    const auto waitForLock = [](const char* function) {
        if (std::string_view(function) != "DmCtrlLockMonitor") return;
        waiting->set_value();
        unlocked.wait();
    };
    const std::string queries[] = {R"({"checkDfwFile":")" + id + R"("})",
                                   R"({"supports":true,"dfwFile":")" + id + R"("})"};
    for (const std::string& query : queries) {
        std::promise<void> asked;
        std::promise<void> unlock;
        waiting = &asked;
        unlocked = unlock.get_future().share();
        simulator::setGateObserver({.call = waitForLock});
        const auto question = std::async(std::launch::async, [&] { return page.get("FirmwareUpdate", query).status; });
        asked.get_future().wait();
        auto files = std::async(std::launch::async, [&] {
            const std::string other = page.open(package.path());
            return page.describe(id).status + page.describe(other).status + page.close(other).status;
        });
        const bool went = files.wait_for(std::chrono::seconds(10)) == std::future_status::ready;
        unlock.set_value();
        EXPECT_TRUE(went) << query;
        EXPECT_EQ(files.get(), 3 * 200);
    }
    simulator::setGateObserver({});
    page.close(id);
}

// As a library does that lets its thread's messages in while it waits.
TEST(Packages, AreReleasedOnceThoughTheirReleaseLetsRequestsIn) {
    FirmwarePage page;
    const PackageFile package;
    static std::function<void()> onRelease;
    static int releases;
    const std::string id = page.open(package.path());
    releases = 0;
    onRelease = [&] { EXPECT_EQ(summary(page.close(id)), "200 null"); };
    simulator::setGateObserver({.call = [](const char* function) {
        if (std::string_view(function) == "FWDfwFileRelease" && ++releases == 1) onRelease();
    }});
    EXPECT_EQ(summary(page.close(id)), "200 null");
    simulator::setGateObserver({});
    EXPECT_EQ(releases, 1);
}

TEST(Answers, AreHandedOverWithNothingLocked) {
    FirmwarePage page;
    page.firmware({{"blockMilliseconds", 0}});
    const PackageFile package;
    const std::string id = page.open(package.path());
    static std::function<void()> onAnswer;
    simulator::setGateObserver({.call = [](const char* function) {
        if (std::string_view(function) == "BridgeHelperSetResponse" && onAnswer) std::exchange(onAnswer, nullptr)();
    }});
    const std::function<Answer()> requests[] = {
        [&] { return page.describe(id); },
        [&] { return page.transfer(id); },
        [&] { return page.get("FirmwareUpdate", R"({"checkDfwFile":")" + id + R"("})"); },
        [&] { return page.get("SignalInformation"); },
    };
    for (const auto& request : requests) {
        std::future<int> other;
        onAnswer = [&] {
            EXPECT_EQ(page.describe(id).status, 200);
            EXPECT_EQ(simulator::lockedMonitors(), Json::array());
            EXPECT_EQ(simulator::monitorsInCriticalSection(), Json::array());
            other = std::async(std::launch::async, [&] { return page.describe(id).status; });
            EXPECT_EQ(other.wait_for(std::chrono::seconds(10)), std::future_status::ready);
        };
        EXPECT_EQ(request().status, 200);
        EXPECT_EQ(other.get(), 200);
    }
    simulator::setGateObserver({});
    page.close(id);
}

TEST(Transfer, LooksForItsMonitorAmongSoManyOnly) {
    FirmwarePage page;
    page.firmware({{"blockMilliseconds", 0}});
    const PackageFile package("TQ271-P", 1024);
    const std::string id = page.open(package.path());
    const auto addresses = [&](int times, const Json& outputs) {
        page.simulate({{"simulate", "return"},
                       {"function", "DmCtrlGetSerialProduct"},
                       {"result", 0},
                       {"outputs", outputs},
                       {"times", times}});
    };
    addresses(1, {"10000001", "TQ271-P"});
    addresses(5000, {"1", "X"});
    const Answer answer = page.transfer(id);
    EXPECT_EQ(summary(answer), "200 null");
    EXPECT_EQ(answer.events, Json::array());
    EXPECT_EQ(inputsOf(answer, "DmCtrlGetSerialProduct").size(), 1U + 1024U);
    page.simulate({{"simulate", "reset"}});
    page.close(id);
}

// ---- The end of the process, and of the plug-in ---------------------------------------------------------------------

// What the firmware library was asked to do with packages during its life.
class HandleLog {
 public:
    HandleLog() {
        std::filesystem::remove(file_);
        name(file_.string());
    }
    ~HandleLog() {
        name("");
        std::filesystem::remove(file_);
    }
    HandleLog(const HandleLog&) = delete;
    HandleLog& operator=(const HandleLog&) = delete;

    std::vector<std::string> lines() const {
        std::ifstream stream(file_);
        std::vector<std::string> lines;
        for (std::string line; std::getline(stream, line);) lines.push_back(line);
        return lines;
    }

 private:
    static void name(const std::string& file) {
#ifdef _WIN32
        _putenv_s("PELL_SIMULATOR_HANDLES", file.c_str());
#else
        setenv("PELL_SIMULATOR_HANDLES", file.c_str(), 1);
#endif
    }

    std::filesystem::path file_ = std::filesystem::temp_directory_path() / "pell-handles.log";
};

TEST(OpenPackages, AreReleasedInTheOrderOfTheirIdentifiersWhenThePluginIsUnloaded) {
    const PackageFile package;
    const HandleLog log;
    std::vector<std::string> identifiers;
    {
        const host::Session session;
        for (int i = 0; i < 8; ++i) {
            const Json exchange = session.call("FileSystemDfwFile",
                                               {R"({"method":"POST"})", "", "", Json{{"path", package.path()}}.dump()});
            const std::string answer = exchange["responses"][0]["text"];
            identifiers.push_back(Json::parse(answer)["value"]["id"]);
        }
    }
    const std::vector<std::string> lines = log.lines();
    ASSERT_EQ(lines.size(), 1 + 8 + 8 + 1U);
    EXPECT_EQ(lines.front(), "load");
    EXPECT_EQ(lines.back(), "unload");
    std::map<std::string, std::string> releases;
    for (std::size_t i = 0; i < 8; ++i)
        releases[identifiers[i]] = "release" + lines[i + 1].substr(lines[i + 1].find(' '));
    auto line = lines.begin() + 9;
    for (const auto& [identifier, release] : releases) EXPECT_EQ(*line++, release);
    EXPECT_EQ(simulator::openHandles(), Json::object());
    EXPECT_EQ(simulator::takeHandleFaults(), Json::array());
}

// On Windows the process's other threads have been stopped wherever they were by then, and other libraries may be gone:
// nothing is called any more. Natively the plug-in cannot tell the process's end from its own unloading.
TEST(OpenPackages, AreLeftToTheSystemWhenTheProcessEnds) {
    const PackageFile package("TQ271-P", 10 * 1024, u8"pell-exit");
    const HandleLog log;
    const std::string program = (host::Plugin::defaultFile().parent_path() / "exit_host").string();
    const std::string command = program + " " + package.path();
    EXPECT_EQ(std::system(command.c_str()), 0);
#ifdef _WIN32
    const std::vector<std::string> atTheEnd;
#else
    const std::vector<std::string> atTheEnd{"release package", "release package"};
#endif
    std::vector<std::string> expected{"load", "open package", "open package"};
    expected.insert(expected.end(), atTheEnd.begin(), atTheEnd.end());
    expected.push_back("unload");

    std::vector<std::string> lines;
    for (const std::string& line : log.lines()) lines.push_back(line.substr(0, line.find_last_of(' ')));
    EXPECT_EQ(lines, expected);
}

TEST(Handles, ThatAreNullAreNeverPassedOn) {
    FirmwarePage page;
    const PackageFile package;
    const std::string id = page.open(package.path());
    for (const std::uint32_t noFailure : {0U, 0x80000006U}) {
        page.returns("DmCtrlGetHIDHandle", noFailure, Json::array({0U}));
        const Answer answers[] = {page.get("FirmwareUpdate"),
                                  page.get("FirmwareUpdate", R"({"checkDfwFile":")" + id + R"("})"),
                                  page.get("FirmwareUpdateVersion"),
                                  page.get("FirmwareUpdateDeviceVersion"),
                                  page.transfer(id),
                                  page.ask("POST", "FirmwareUpdateTrigger")};
        for (const Answer& answer : answers) {
            EXPECT_EQ(summary(answer), "500 InternalError Hid handle is not available.");
            for (const Json& call : answer.calls)
                EXPECT_FALSE(call["function"].get<std::string>().starts_with("FWMonitor")) << call;
        }
    }
    page.simulate({{"simulate", "reset"}});
    page.returns("FWDeviceProfileCreateFromMonitor", 0, Json::array({0U}));
    const Answer profile = page.get("FirmwareUpdateDeviceVersion");
    EXPECT_EQ(summary(profile), "500 InternalError Device profile is not available.");
    EXPECT_EQ(profile.calls.back()["function"], "DmCtrlUnlockMonitor");
    page.simulate({{"simulate", "reset"}});
    page.close(id);
}

}  // namespace
