#include "simulator/core/World.h"

#include <libdmc.h>

#include <algorithm>
#include <atomic>
#include <cmath>
#include <nlohmann/json.hpp>
#include <set>
#include <stdexcept>

#include "simulator/core/Generated.h"

namespace simulator {

namespace {

std::string name(const Json& monitor, const char* member, std::size_t shortest, std::size_t bufferSize) {
    const auto text = monitor.at(member).get<std::string>();
    if (text.size() < shortest || text.size() >= bufferSize)
        throw std::invalid_argument(std::string(member) + " must have " + std::to_string(shortest) + " to " +
                                    std::to_string(bufferSize - 1) + " bytes");
    return text;
}

Json ramp(std::size_t size, double maximum) {
    auto list = Json::array();
    for (std::size_t i = 0; i < size; ++i)
        list.push_back(std::llround(maximum * static_cast<double>(i) / static_cast<double>(size - 1)));
    return list;
}

Json grid(const Json& levels) {
    auto list = Json::array();
    for (const auto& red : levels)
        for (const auto& green : levels)
            for (const auto& blue : levels) list.push_back({{"red", red}, {"green", green}, {"blue", blue}});
    return list;
}

/// Replaces the objects that stand for lists.
void generateLists(Json& json) {
    if (json.contains("ramp"))
        json = ramp(json.at("ramp").get<std::size_t>(), json.at("max").get<double>());
    else if (json.contains("grid"))
        json = grid(json.at("grid"));
    else if (json.is_structured())
        for (auto& part : json) generateLists(part);
}

std::uintptr_t newHidHandle() {
    static std::atomic<std::uintptr_t> last = 0x1000;
    return ++last;
}

/// The parts of a scenario that a product and a monitor may say differently.
constexpr const char* commonParts[] = {"settings", "firmware"};

void replaceParts(Json& parts, const Json& source) {
    for (const auto part : commonParts) parts[part].merge_patch(source.value(part, Json::object()));
}

Firmware::UpdateEnd readUpdateEnd(const std::string& text) {
    static const std::map<std::string, Firmware::UpdateEnd> ends = {{"newVersion", Firmware::UpdateEnd::newVersion},
                                                                    {"oldVersion", Firmware::UpdateEnd::oldVersion},
                                                                    {"gone", Firmware::UpdateEnd::gone}};
    const auto found = ends.find(text);
    if (found == ends.end()) throw std::invalid_argument("an update cannot end with \"" + text + "\"");
    return found->second;
}

Firmware readFirmware(const Json& json) {
    static const std::set<std::string> names = {"version",     "device",        "blockMilliseconds", "callbackThread",
                                                "failAtBlock", "unplugAtBlock", "updatePolls",       "updateEnds"};
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
    firmware.updateEnd = readUpdateEnd(json.at("updateEnds").get<std::string>());
    return firmware;
}

Monitor readMonitor(const Json& json, const Json& products, Json parts) {
    const auto product = name(json, "product", 1, DM_PRODUCT_SIZE);
    std::vector<std::string> unsupported;
    for (const auto& source : {products.value(product, Json::object()), json}) {
        for (const auto& feature : source.value("unsupported", Json::array()))
            unsupported.push_back(feature.get<std::string>());
        replaceParts(parts, source);
    }
    generateLists(parts.at("settings"));
    const Settings settings(parts.at("settings"));
    const auto connected = json.value("connected", true);
    return {.serial = name(json, "serial", 0, DM_SERIAL_SIZE),
            .product = product,
            .unsupported = std::move(unsupported),
            .settings = settings,
            .saved = settings,
            .connected = connected,
            .found = connected,
            .hidHandle = newHidHandle(),
            .firmware = readFirmware(parts.at("firmware")),
            .callTime = Milliseconds(json.value("callMilliseconds", 0.0)),
            .ignoresWrites = json.value("ignoresWrites", false),
            .unplugAtCall = json.value("unplugAtCall", 0u),
            .reachedByInputs = json.value("reachedByInputs", std::vector<std::uint32_t>())};
}

}  // namespace

bool Monitor::isAsleep() const {
    const auto power = settings.find("power");
    return power && power->at("value") == 0 && power->value("whenOff", "answers") == "timesOut";
}

bool Monitor::hasLeft() const {
    if (firmware.state == Firmware::State::gone) return true;
    const auto inputs = settings.find("inputPort");
    if (reachedByInputs.empty() || !inputs) return false;
    const auto shown = inputs->at("value").get<std::vector<std::uint32_t>>();
    return std::find_first_of(shown.begin(), shown.end(), reachedByInputs.begin(), reachedByInputs.end()) ==
           shown.end();
}

bool Monitor::supports(const std::string& feature) const {
    const auto lacks = [&](const std::string& name) {
        return std::find(unsupported.begin(), unsupported.end(), name) != unsupported.end();
    };
    return !lacks(feature) && !lacks(settings.featureOf(feature));
}

const Json& World::builtInScenario() {
    static const Json scenario = parseJson(generated::scenario);
    return scenario;
}

World::World(const Json& scenario) try {
    auto parts = Json::object();
    for (const auto& source : {builtInScenario(), scenario}) replaceParts(parts, source);
    const auto products = scenario.value("products", builtInScenario().at("products"));
    for (const auto& monitor : scenario.at("monitors")) monitors_.push_back(readMonitor(monitor, products, parts));
} catch (const std::exception& error) {
    throw std::invalid_argument(std::string("not a scenario: ") + error.what());
}

std::vector<const Monitor*> World::enumerate() const {
    std::vector<const Monitor*> found;
    for (const auto& monitor : monitors_)
        if (monitor.found) found.push_back(&monitor);
    return found;
}

Monitor* World::lookUp(std::string_view serial, std::string_view product) {
    const auto found = std::find_if(monitors_.begin(), monitors_.end(), [&](const Monitor& monitor) {
        return monitor.serial == serial && monitor.product == product;
    });
    return found == monitors_.end() ? nullptr : &*found;
}

Monitor* World::findMonitor(std::string_view serial, std::string_view product) {
    const auto found = std::find_if(monitors_.begin(), monitors_.end(), [&](const Monitor& monitor) {
        return monitor.found && monitor.serial == serial && monitor.product == product;
    });
    return found == monitors_.end() ? nullptr : &*found;
}

Monitor* World::findMonitor(const void* hidHandle) {
    const auto found = std::find_if(monitors_.begin(), monitors_.end(), [&](const Monitor& monitor) {
        return monitor.found && monitor.hidHandle == reinterpret_cast<std::uintptr_t>(hidHandle);
    });
    return found == monitors_.end() ? nullptr : &*found;
}

void World::find() {
    for (auto& monitor : monitors_) monitor.found = monitor.connected;
}

bool World::plug(std::string_view serial, std::string_view product) {
    bool isKnown = false;
    for (auto& monitor : monitors_) {
        if (monitor.serial != serial || monitor.product != product) continue;
        isKnown = monitor.connected = true;
        if (monitor.hasLeft()) monitor.settings.at("inputPort").at("value") = {monitor.reachedByInputs.front()};
    }
    return isKnown;
}

bool World::unplug(std::string_view serial, std::string_view product) {
    auto monitor = findMonitor(serial, product);
    if (!monitor) monitor = lookUp(serial, product);
    if (monitor) disconnect(*monitor);
    return monitor;
}

void World::disconnect(Monitor& monitor) {
    monitor.connected = monitor.found = monitor.inCriticalSection = monitor.locked = false;
    monitor.hidHandle = newHidHandle();
    monitor.firmware.interrupt();
}

void World::delay(std::string_view serial, std::string_view product, Milliseconds time) {
    for (auto& monitor : monitors_)
        if ((serial.empty() || monitor.serial == serial) && (product.empty() || monitor.product == product))
            monitor.callTime = time;
}

bool World::knows(std::string_view serial, std::string_view product) const {
    return std::any_of(monitors_.begin(), monitors_.end(), [&](const Monitor& monitor) {
        return (serial.empty() || monitor.serial == serial) && (product.empty() || monitor.product == product);
    });
}

}  // namespace simulator
