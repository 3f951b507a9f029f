// Memory fails once, at the n-th allocation of a request, for every n. Native only: there a program's operator new is
// also the plug-in's.
#include <cstdlib>
#include <new>

#include "host/Plugin.h"
#include "tests/plugin/Page.h"

namespace {

thread_local long untilFailure = 0;  // counts down to the failing allocation; 0 fails none
thread_local int simulated = 0;      // how deep this thread is in simulated functions, which never fail

void* allocate(std::size_t size) {
    if (simulated == 0 && untilFailure > 0 && --untilFailure == 0) throw std::bad_alloc();
    if (void* memory = std::malloc(size)) return memory;
    throw std::bad_alloc();
}

}  // namespace

void* operator new(std::size_t size) {
    return allocate(size);
}
void operator delete(void* memory) noexcept {
    std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}

namespace {

struct Case {
    const char* resource;
    host::Texts texts;
    int status;  // when memory suffices
};

TEST(Memory, FailingAtAnyAllocationIsAnsweredOnceAndLoggedAsAnswered) {
    const char* const monitor = R"({"product":"TQ271-P","serial":"10000001"})";
    const std::string longText(100, 'x');
    const Case cases[] = {
        {"Brightness", {R"({"method":"GET"})", monitor, "", ""}, 200},
        {"Brightness", {"", monitor, R"({"range":null,"a long name that needs memory":[1,2.5,"x"]})", ""}, 200},
        {"Brightness", {R"({"method":"PUT"})", monitor, "", R"({"data":{"percentage":40}})"}, 200},
        {"Brightness", {R"({"method":"PUT"})", monitor, "", longText}, 400},
        {"Brightness", {R"({"method":"PUT"})", monitor, "", "101"}, 500},
        {"Brightness", {"", R"({"product":")" + longText + R"(","serial":"1"})", "", ""}, 500},
        {"Monitors", {"", "", R"({"update":true})", ""}, 200},
        {"Monitors", {R"({"method":"PUT"})", "", "", ""}, 405},
    };
    simulator::setGateObserver({[] { ++simulated; }, [] { --simulated; }});
    const host::Plugin plugin(host::Plugin::defaultFile());
    bool loggerStands = false;
    for (const auto& [resource, texts, status] : cases) {
        const host::Export entry = plugin.find(resource);
        bool failed = true;
        long tries = 0;
        for (long n = 1; failed; ++n) {
            const simulator::Recording recording;
            untilFailure = n;
            const std::uint32_t promise = entry(texts[0].c_str(), texts[1].c_str(), texts[2].c_str(), texts[3].c_str());
            failed = untilFailure == 0;
            untilFailure = 0;
            tries = n;

            ASSERT_EQ(recording.responses.size(), 1U) << resource << " at allocation " << n;
            const Json& response = recording.responses[0];
            ASSERT_EQ(response["promise"], promise);
            const Json answer = Json::parse(response["text"].get<std::string>());
            if (response["status"] != status || !failed) {
                ASSERT_EQ(response["status"], failed ? 500 : status);
                if (failed) ASSERT_EQ(answer["error"]["name"], "UnknownError");
            }

            // The logger itself is made by the first request, and may fail to be.
            ASSERT_EQ(recording.log.size(), loggerStands ? 1U : recording.log.size());
            if (recording.log.empty()) continue;
            loggerStands = true;
            const std::string line = recording.log[0]["line"];
            ASSERT_TRUE(line.starts_with("statusCode:" + response["status"].dump() + "\t")) << line;
            if (answer["error"].is_object())
                ASSERT_NE(line.find("\terr:" + answer["error"]["name"].get<std::string>() + "\t"), std::string::npos);
        }
        EXPECT_GT(tries, 3) << resource << " did not use the memory that this test takes away";
    }
    simulator::setGateObserver({});
}

}  // namespace
