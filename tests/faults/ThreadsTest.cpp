// Requests on many threads at once.
#include <atomic>
#include <thread>

#include "tests/plugin/Firmware.h"

namespace {

TEST(Faults, DoNotComeFromManyThreads) {
    FirmwarePage page;
    page.firmware({{"blockMilliseconds", 0}});
    std::vector<std::unique_ptr<PackageFile>> packages;
    std::atomic<int> transfers = 0;
    std::vector<std::thread> threads;
    for (int number = 0; number < 8; ++number) {
        packages.push_back(std::make_unique<PackageFile>(number % 2 ? "TB240" : "TQ271-P", 2048));
        threads.emplace_back([&page, &transfers, number, path = packages.back()->path()] {
            const std::string product = number % 2 ? "TB240" : "TQ271-P", serial = "10000001";
            const auto ask = [&](const char* method, const char* resource, const std::string& body = "",
                                 const std::string& query = "") {
                return page.call(resource, host::Request{method, resource, product, serial, query, body}.texts());
            };
            for (int i = 0; i < 40; ++i) {
                const std::string id = page.open(path);
                EXPECT_NE(id, "");
                const std::string file = Json{{"dfwFile", id}}.dump();
                EXPECT_EQ(ask("PUT", "Brightness", std::to_string(i)).status, 200);
                EXPECT_EQ(ask("GET", "Brightness").status, 200);
                EXPECT_EQ(ask("PUT", "Contrast", std::to_string(i)).status, 200);
                EXPECT_EQ(ask("GET", "Gain").status, 200);
                EXPECT_GE(ask("GET", "Monitors", "", R"({"update":true})").value.size(), 3U);
                EXPECT_EQ(ask("GET", "FirmwareUpdate", "", Json{{"checkDfwFile", id}}.dump()).status, 200);
                EXPECT_EQ(page.describe(id).status, 200);
                transfers += ask("POST", "FirmwareUpdateTransfer", file).status == 200;
                EXPECT_EQ(ask("GET", "FirmwareUpdateVersion").status, 200);
                EXPECT_EQ(page.close(id).status, 200);
                EXPECT_EQ(page.describe(id).status, 500);
            }
        });
    }
    for (std::thread& thread : threads) thread.join();
    EXPECT_GT(transfers, 0);  // others meet one that is going on
}

// The first requests of a plug-in: what it makes when it is first needed is needed by all of them. The search for the
// logging library takes a while here, so that they meet in it.
TEST(Faults, DoNotComeFromManyThreadsAtTheStart) {
    simulator::setGateObserver({.call = [](const char* function) {
        if (std::string_view(function) == "Plg_GetRegistryExportsPath")
            std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }});
    for (int round = 0; round < 3; ++round) {
        const host::Session session;
        std::atomic<int> waiting = 16;
        std::vector<std::thread> threads;
        for (int number = 0; number < 16; ++number)
            threads.emplace_back([&] {
                --waiting;
                while (waiting > 0) std::this_thread::yield();
                const Json exchange = session.call(host::Request{"GET", "Brightness", "TQ271-P", "10000001"});
                EXPECT_EQ(exchange["responses"].size(), 1U);
                EXPECT_EQ(exchange["log"].size(), 1U);
            });
        for (std::thread& thread : threads) thread.join();
    }
    simulator::setGateObserver({});
}

}  // namespace
