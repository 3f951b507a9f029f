// What a monitor keeps, by name, in the form that World.h describes.
#pragma once

#include <map>
#include <memory>
#include <string>

#include "simulator/core/Answer.h"

namespace simulator {

/// The part of a setting's value that is meant: all of it, the item of that number, or the member of that name.
class Key {
 public:
    Key() = default;
    Key(std::uint32_t number) : isNumber_(true), number_(number) {}
    Key(const char* name) : name_(name) {}

    /// Null when there is no such part.
    const Json* find(const Json& value) const;
    Json* find(Json& value) const;

 private:
    bool isNumber_ = false;
    std::uint32_t number_ = 0;
    const char* name_ = nullptr;
};

/// Copies share each setting until one of them changes it, so that copying is cheap.
class Settings {
 public:
    explicit Settings(const Json& settings);

    /// The named setting; throws std::out_of_range when the scenario has none.
    const Json& at(const char* setting) const;
    Json& at(const char* setting);

    /// Null when the scenario has none of that name.
    const Json* find(const char* setting) const;

    /// The feature that a setting belongs to; the name itself when that is none of a setting's.
    std::string featureOf(const std::string& setting) const;

    Answer read(const char* setting, Key key = {}) const;

    /// Replaces the value by one that suits the setting, and is as long as the list that it replaces unless the setting
    /// says how long it may be.
    Answer write(const char* setting, const Input& value, Key key = {});

    /// A value that is a whole number.
    std::uint32_t number(const char* setting) const;

    /// As 0 to 100 per cent of the range, rounded to the setting's steps.
    Answer readPercentage(const char* setting) const;
    Answer writePercentage(const char* setting, double percentage);

    /// What else a setting has ("min", "of" ...); and how many items such a list has.
    Answer members(const char* setting, std::initializer_list<const char*> names) const;
    Answer count(const char* setting, const char* member) const;

    /// Whether the value is one of those that there are; whether a value that is a list has it among its items.
    bool offers(const char* setting, const Input& value) const;
    bool lists(const char* setting, Key key, const Input& value) const;

    /// Makes a part as it is in other settings; false when one of the two has no such part.
    bool copyFrom(const Settings& other, const char* setting, Key key);

 private:
    std::map<std::string, std::shared_ptr<Json>> settings_;
};

}  // namespace simulator
