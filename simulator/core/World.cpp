#include "simulator/core/World.h"

#include <libdmc.h>

#include <stdexcept>

#include "simulator/core/Generated.h"

namespace simulator {

namespace {

std::string name(const Json& monitor, const char* member, std::size_t bufferSize) {
    const auto text = monitor.at(member).get<std::string>();
    if (text.empty() || text.size() >= bufferSize)
        throw std::invalid_argument(std::string(member) + " must have 1 to " + std::to_string(bufferSize - 1) +
                                    " bytes");
    return text;
}

Monitor readMonitor(const Json& json, Json settings) {
    Monitor monitor;
    monitor.product = name(json, "product", DM_PRODUCT_SIZE);
    monitor.serial = name(json, "serial", DM_SERIAL_SIZE);
    monitor.unsupported = json.value("unsupported", std::vector<std::string>());
    monitor.connected = monitor.found = json.value("connected", true);
    settings.merge_patch(json.value("settings", Json::object()));
    monitor.settings = std::move(settings);
    return monitor;
}

}  // namespace

bool Monitor::supports(std::string_view feature) const {
    return std::find(unsupported.begin(), unsupported.end(), feature) == unsupported.end();
}

const Json& World::builtInScenario() {
    static const Json scenario = Json::parse(generated::scenario);
    return scenario;
}

World::World(const Json& scenario) try {
    auto settings = builtInScenario().at("settings");
    settings.merge_patch(scenario.value("settings", Json::object()));
    for (const auto& monitor : scenario.at("monitors")) monitors_.push_back(readMonitor(monitor, settings));
} catch (const std::exception& error) {
    throw std::invalid_argument(std::string("not a scenario: ") + error.what());
}

std::vector<const Monitor*> World::enumerate() const {
    std::vector<const Monitor*> found;
    for (const auto& monitor : monitors_)
        if (monitor.found) found.push_back(&monitor);
    return found;
}

Monitor* World::lookUp(std::string_view product, std::string_view serial) {
    const auto found = std::find_if(monitors_.begin(), monitors_.end(), [&](const Monitor& monitor) {
        return monitor.product == product && monitor.serial == serial;
    });
    return found == monitors_.end() ? nullptr : &*found;
}

Monitor* World::findMonitor(std::string_view product, std::string_view serial) {
    const auto monitor = lookUp(product, serial);
    return monitor && monitor->found ? monitor : nullptr;
}

void World::find() {
    for (auto& monitor : monitors_) monitor.found = monitor.connected;
}

bool World::plug(std::string_view product, std::string_view serial) {
    const auto monitor = lookUp(product, serial);
    if (monitor) monitor->connected = true;
    return monitor;
}

bool World::unplug(std::string_view product, std::string_view serial) {
    const auto monitor = lookUp(product, serial);
    if (monitor) monitor->connected = monitor->found = monitor->inCriticalSection = false;
    return monitor;
}

bool World::knows(std::string_view product, std::string_view serial) const {
    return std::any_of(monitors_.begin(), monitors_.end(), [&](const Monitor& monitor) {
        return (product.empty() || monitor.product == product) && (serial.empty() || monitor.serial == serial);
    });
}

}  // namespace simulator
