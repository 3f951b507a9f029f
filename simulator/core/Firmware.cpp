#include "simulator/core/Firmware.h"

#include <set>
#include <stdexcept>

namespace simulator {

Firmware Firmware::fromScenario(const Json& json) {
    static const std::set<std::string> names = {"version",     "device",        "blockMilliseconds", "callbackThread",
                                                "failAtBlock", "unplugAtBlock", "updatePolls"};
    for (const auto& [name, value] : json.items())
        if (!names.contains(name)) throw std::invalid_argument("firmware has no \"" + name + "\"");
    Firmware firmware;
    firmware.version = parseVersion(json.at("version").get<std::string>());
    firmware.device = json.at("device").get<std::string>();
    firmware.blockTime = decltype(firmware.blockTime)(json.at("blockMilliseconds").get<double>());
    firmware.callbackThread = json.at("callbackThread").get<bool>();
    firmware.failAtBlock = json.at("failAtBlock").get<std::uint32_t>();
    firmware.unplugAtBlock = json.at("unplugAtBlock").get<std::uint32_t>();
    firmware.updatePolls = json.at("updatePolls").get<std::uint32_t>();
    return firmware;
}

void Firmware::update() {
    state = State::updating;
    pollsLeft = updatePolls;
    if (pollsLeft == 0) poll();
}

Firmware::State Firmware::poll() {
    if (state == State::updating && pollsLeft-- == 0) {
        version = transferred;
        state = State::idle;
    }
    return state;
}

}  // namespace simulator
