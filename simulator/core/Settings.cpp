#include "simulator/core/Settings.h"

#include <algorithm>
#include <cmath>
#include <nlohmann/json.hpp>

namespace simulator {

namespace {

bool contains(const Json& list, const Json& item) {
    return std::find(list.begin(), list.end(), item) != list.end();
}

/// Of a list: each of its items.
bool offersAll(const Json& offered, const Json& value) {
    if (!value.is_array()) return contains(offered, value);
    return std::all_of(value.begin(), value.end(), [&](const Json& item) { return contains(offered, item); });
}

/// A list is as long as the one before, or has from one item to as many as the setting allows.
bool fits(const Json& setting, std::size_t size, std::size_t before) {
    const auto most = setting.find("most");
    return most == setting.end() ? size == before : size >= 1 && size <= *most;
}

/// Of a list or a record: each of its numbers. Compares as doubles, which hold every 32-bit number.
bool within(const Json& minimum, const Json& maximum, const Json& value) {
    if (!value.is_structured())
        return value.is_number() && value.get<double>() >= minimum.get<double>() &&
               value.get<double>() <= maximum.get<double>();
    const auto limit = [](const Json& limits, const std::string& name) -> const Json& {
        return limits.is_object() ? limits.at(name) : limits;
    };
    const auto items = value.items();
    return std::all_of(items.begin(), items.end(), [&](const auto& item) {
        return within(limit(minimum, item.key()), limit(maximum, item.key()), item.value());
    });
}

}  // namespace

Answer::Answer(Json list) : result{result::success}, outputs(std::make_shared<const Json>(std::move(list))) {}

Answer answer(std::initializer_list<Input> outputs) {
    auto list = Json::array();
    for (const auto& output : outputs) list.push_back(output.json());
    return Answer(std::move(list));
}

const Json* Key::find(const Json& value) const {
    if (!isNumber_ && !name_) return &value;
    if (value.is_array()) return isNumber_ && number_ < value.size() ? &value[number_] : nullptr;
    const auto found = value.find(isNumber_ ? std::to_string(number_) : name_);
    return found == value.end() ? nullptr : &*found;
}

Json* Key::find(Json& value) const {
    return const_cast<Json*>(find(std::as_const(value)));
}

Settings::Settings(const Json& settings) {
    for (const auto& [name, setting] : settings.items()) settings_[name] = std::make_shared<Json>(setting);
}

const Json& Settings::at(const char* setting) const {
    return *settings_.at(setting);
}

Json& Settings::at(const char* setting) {
    auto& shared = settings_.at(setting);
    if (shared.use_count() > 1) shared = std::make_shared<Json>(*shared);
    return *shared;
}

const Json* Settings::find(const char* setting) const {
    const auto found = settings_.find(setting);
    return found == settings_.end() ? nullptr : found->second.get();
}

std::string Settings::featureOf(const std::string& setting) const {
    const auto found = settings_.find(setting);
    return found == settings_.end() ? setting : found->second->value("feature", setting);
}

Answer Settings::read(const char* setting, Key key) const {
    const auto kept = key.find(at(setting).at("value"));
    return kept ? Answer(Json::array({*kept})) : Answer(result::invalidArgument);
}

Answer Settings::write(const char* setting, const Input& input, Key key) {
    auto& all = at(setting);
    const auto value = input.json();
    const auto kept = key.find(all["value"]);
    if (!kept || value.is_null()) return result::invalidArgument;
    if (all.contains("of") && !offersAll(all.at("of"), value)) return result::invalidArgument;
    if (all.contains("size") && value.get_ref<const std::string&>().size() >= all.at("size"))
        return result::invalidBufferSize;
    if (value.is_array() && !fits(all, value.size(), kept->size())) return result::invalidDataSize;
    if (all.contains("min") && !within(all.at("min"), all.at("max"), value)) return result::outOfRange;
    *kept = value;
    return result::success;
}

std::uint32_t Settings::number(const char* setting) const {
    return at(setting).at("value").get<std::uint32_t>();
}

Answer Settings::readPercentage(const char* setting) const {
    const auto& kept = at(setting);
    const auto minimum = kept.at("min").get<double>();
    const auto range = kept.at("max").get<double>() - minimum;
    return answer({100.0 * (kept.at("value").get<double>() - minimum) / range});
}

Answer Settings::writePercentage(const char* setting, double percentage) {
    if (!within(0, 100, percentage)) return result::outOfRange;
    auto& kept = at(setting);
    const auto minimum = kept.at("min").get<double>();
    const auto range = kept.at("max").get<double>() - minimum;
    kept["value"] = std::llround(minimum + percentage / 100.0 * range);
    return result::success;
}

Answer Settings::members(const char* setting, std::initializer_list<const char*> names) const {
    auto list = Json::array();
    for (const auto name : names) list.push_back(at(setting).at(name));
    return Answer(std::move(list));
}

Answer Settings::count(const char* setting, const char* member) const {
    return answer({at(setting).at(member).size()});
}

bool Settings::offers(const char* setting, const Input& value) const {
    return contains(at(setting).at("of"), value.json());
}

bool Settings::lists(const char* setting, Key key, const Input& value) const {
    const auto list = key.find(at(setting).at("value"));
    return list && contains(*list, value.json());
}

bool Settings::copyFrom(const Settings& other, const char* setting, Key key) {
    const auto source = key.find(other.at(setting).at("value"));
    const auto target = key.find(at(setting).at("value"));
    if (source && target) *target = *source;
    return source && target;
}

}  // namespace simulator
