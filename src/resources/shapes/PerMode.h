// What each picture mode has one of: a name, or a mark that the mode key skips it.
//
// GET answers {mode, value} of the mode that the query names, else of all. PUT takes one such object or an array of
// them, and checks all before it writes the first.
#pragma once

#include <libdmc/picture.h>

#include <numeric>
#include <vector>

#include "resources/shapes/Queries.h"
#include "resources/shapes/Selectors.h"

namespace torvo::bridge {

// ---- The two kinds of modes ----------------------------------------------------------------------------------------

/// Picture modes, numbered from 0.
struct PictureModes {
    static constexpr auto member = "mode";
    static constexpr const Selector& selector = modeSelector;
    static constexpr auto eachNeedsMode = "each object must have mode.";
    static constexpr auto dataNeedsMode = "data must have mode.";

    static std::vector<std::uint32_t> numbers(const Monitor& monitor, const char* action) {
        std::vector<std::uint32_t> numbers(std::min(monitor.read(DmCtrlGetModeCount, action), Monitor::mostCalls));
        std::iota(numbers.begin(), numbers.end(), 0U);
        return numbers;
    }
};

/// Fine-contrast modes, by the numbers that the monitor lists.
struct FineContrasts {
    static constexpr auto member = "fineContrast";
    static constexpr const Selector& selector = fineContrastSelector;
    static constexpr auto eachNeedsMode = "each object must have fineContrast.";
    static constexpr auto dataNeedsMode = "data must have fineContrast.";

    static std::vector<std::uint32_t> numbers(const Monitor& monitor, const char* action) {
        auto numbers = monitor.enumerate(DmCtrlEnumFineContrast, action);
        numbers.resize(std::min<std::size_t>(numbers.size(), Monitor::mostCalls));
        return numbers;
    }
};

// ---- What they have in common --------------------------------------------------------------------------------------

/// A Resource has
///   queries()                      looked for before all else
///   get                            the step that reads one value
///   valueMember, accepts(value)    the value in {mode, value}
///   dataNeedsMode, dataNeedsValue  how a single object is refused
///   eachNeedsValue                 how an element of an array is refused
///   reader(monitor)                a function from a mode to its value, for one request
///   write(monitor, mode, value)
template <class Resource, class Modes>
class PerMode : public MonitorBridgeTemplate {
 public:
    using MonitorBridgeTemplate::MonitorBridgeTemplate;

    void Get(BridgeResult& result, const Monitor& monitor, const RequestRecord& request) override {
        const Value& query = request.requestQuery;
        if (answerQuery(result, monitor, query, Resource::queries())) return;
        const auto selected = Modes::selector.in(query);
        const auto modes = selected ? std::vector(1, *selected) : Modes::numbers(monitor, Resource::get.action);
        Value entries = Value::array();
        if (!modes.empty()) {
            const auto read = Resource::reader(monitor);
            for (const std::uint32_t mode : modes)
                entries.append({{Modes::member, mode}, {Resource::valueMember, read(mode)}});
        }
        result.value = selected ? entries.at(0) : std::move(entries);
    }

    void Put(BridgeResult&, const Monitor& monitor, const RequestRecord& request) override {
        const Value& data = request.data();
        checkRequest(data.isObject() || data.isArray(), "data must object or array.");
        std::vector<Entry> entries;
        if (data.isObject())
            entries.push_back(entryOf(data, Modes::selector.in(data, request.requestQuery), Resource::dataNeedsMode,
                                      Resource::dataNeedsValue));
        else
            for (const Value& element : data.elements())
                entries.push_back(
                    entryOf(element, Modes::selector.in(element), Modes::eachNeedsMode, Resource::eachNeedsValue));
        for (const auto& [mode, value] : entries) Resource::write(monitor, mode, *value);
    }

 private:
    struct Entry {
        std::uint32_t mode;
        const Value* value;  // in the request
    };

    static Entry entryOf(const Value& object, std::optional<std::uint32_t> mode, const char* needsMode,
                         const char* needsValue) {
        checkRequest(mode.has_value(), needsMode);
        const Value& value = object.get(Resource::valueMember);
        checkRequest(Resource::accepts(value), needsValue);
        return {*mode, &value};
    }
};

// ---- Names and marks -----------------------------------------------------------------------------------------------

/// The names of modes. A Resource has the steps `size` (of a name in bytes, its NUL included), `get` and `set`.
template <class Resource, class Modes>
class NamePerMode : public PerMode<Resource, Modes> {
 public:
    using PerMode<Resource, Modes>::PerMode;

    static constexpr auto queries() {
        return std::tuple{SupportByReading{Resource::size.function},
                          Read{"nameSize", Resource::size.function, Resource::size.action}};
    }
    static constexpr auto valueMember = "name";
    static constexpr auto dataNeedsMode = Modes::eachNeedsMode;
    static constexpr auto eachNeedsValue = "each object must have name.";
    static constexpr auto dataNeedsValue = eachNeedsValue;

    static auto reader(const Monitor& monitor) {
        const std::uint32_t size = monitor.read(Resource::size.function, Resource::size.action);
        return [&monitor, size](std::uint32_t mode) -> Value {
            return monitor.readText(size, Resource::get.function, Resource::get.action, mode);
        };
    }
    static bool accepts(const Value& name) noexcept { return isText(name); }
    static void write(const Monitor& monitor, std::uint32_t mode, const Value& name) {
        monitor.write(Resource::set.function, Resource::set.action, mode, name.text().c_str());
    }
};

/// Whether the mode key skips a mode. A Resource has `supported` and the steps `get` and `set`.
template <class Resource, class Modes>
class SkipPerMode : public PerMode<Resource, Modes> {
 public:
    using PerMode<Resource, Modes>::PerMode;

    static constexpr auto queries() { return std::tuple{Support{Resource::supported}}; }
    static constexpr auto valueMember = "skip";
    static constexpr auto dataNeedsMode = Modes::dataNeedsMode;
    static constexpr auto eachNeedsValue = "each object must have skip.";
    static constexpr auto dataNeedsValue = "data must have skip.";

    static auto reader(const Monitor& monitor) {
        return [&monitor](std::uint32_t mode) -> Value {
            return monitor.read(Resource::get.function, Resource::get.action, mode) != 0;
        };
    }
    static bool accepts(const Value& skip) noexcept { return skip.isBoolean(); }
    static void write(const Monitor& monitor, std::uint32_t mode, const Value& skip) {
        monitor.write(Resource::set.function, Resource::set.action, mode, std::uint32_t{skip.asBool()});
    }
};

}  // namespace torvo::bridge
