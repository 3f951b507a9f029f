// A host that ends its process without unloading the plug-in, two packages being open: exit_host FILE
// On Windows one of them is just being transferred, by another thread.
#include <cstdlib>
#include <semaphore>
#include <string>
#include <thread>

#include "host/Session.h"
#include "simulator/core/World.h"

namespace {

using host::Json;

std::string open(const host::Session& session, const std::string& path) {
    const Json exchange =
        session.call("FileSystemDfwFile", {R"({"method":"POST"})", "", "", Json{{"path", path}}.dump()});
    return host::parseJson(exchange.at("responses").at(0).at("text").get<std::string>()).at("value").at("id");
}

// Until the first block has gone, with more to come.
[[maybe_unused]] void beginTransfer(const host::Session& session, const std::string& identifier) {
    Json scenario = simulator::World::builtInScenario();
    scenario["firmware"]["blockMilliseconds"] = 1000;
    simulator::loadScenario(scenario);
    static std::counting_semaphore<1024> block(0);
    std::thread([&session, body = Json{{"dfwFile", identifier}}.dump()] {
        session.call({.method = "POST",
                      .resource = "FirmwareUpdateTransfer",
                      .product = "TQ271-P",
                      .serial = "10000001",
                      .body = body},
                     [](const Json&) { block.release(); });
    }).detach();
    block.acquire();
}

}  // namespace

int main(int argc, char** argv) try {
    const host::Session& session = *new host::Session();
    const std::string path = argc > 1 ? argv[1] : "";
    open(session, path);
    const std::string identifier = open(session, path);
#ifdef _WIN32
    beginTransfer(session, identifier);
#endif
    std::exit(0);
} catch (...) {
    std::exit(1);
}
