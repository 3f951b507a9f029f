// Resources that are one value of the monitor, told by the functions and texts that they use.
//
//   class QuickCheck final : public Setting<QuickCheck, Number> {
//      public:
//       using Setting::Setting;
//       static constexpr auto supported = NAMED(DmCtrlSupportedQuickCheck);
//       static constexpr Step get{NAMED(DmCtrlGetQuickCheck), "Get quick check."};
//       static constexpr Step set{NAMED(DmCtrlSetQuickCheck), "Set quick check."};
//       static constexpr auto refusal = "data must be number.";
//   };
//
// `range` (a Step: minimum and maximum) and `available` (a Step: the list of values) are served when they are declared;
// without `set` there is no PUT; without `supported` the query is not looked at for "supports".
#pragma once

#include "bridge/Resource.h"

namespace torvo::bridge {

/// A function of the monitor-control library beside the text of its action.
template <class Callable>
struct Step {
    Callable function;
    const char* action;
};
template <class Callable>
Step(Callable, const char*) -> Step<Callable>;

/// The kinds of a setting's value: which data a PUT accepts, and how the value goes in and out.
struct Number {
    static bool accepts(const Value& data) noexcept { return data.isNumber(); }
    static std::uint32_t read(const Value& data) noexcept { return data.asUInt(); }
    static Value write(std::uint32_t value) noexcept { return value; }
};

struct Boolean {
    static bool accepts(const Value& data) noexcept { return data.isBoolean(); }
    static std::uint32_t read(const Value& data) noexcept { return data.asBool(); }
    static Value write(std::uint32_t value) noexcept { return value != 0; }
};

/// A boolean that a PUT gives as anything but null: true, a number that is not zero and the text "true" switch it on.
struct Truth : Boolean {
    static bool accepts(const Value& data) noexcept { return !data.isNull(); }
};

template <class Resource, class Kind>
class Setting : public MonitorBridgeTemplate {
 public:
    using MonitorBridgeTemplate::MonitorBridgeTemplate;

    void Get(BridgeResult& result, const Monitor& monitor, const RequestRecord& request) override {
        [[maybe_unused]] const Value& query = request.requestQuery;
        if constexpr (requires { Resource::supported; })
            if (query.has("supports")) {
                result.value = monitor.supports(Resource::supported);
                return;
            }
        if constexpr (requires { Resource::range; })
            if (query.has("range")) {
                result.value = monitor.range(Resource::range.function, Resource::range.action);
                return;
            }
        if constexpr (requires { Resource::available; })
            if (query.has("available")) {
                result.value =
                    Value::array(monitor.enumerate(Resource::available.function, Resource::available.action));
                return;
            }
        result.value = Kind::write(monitor.read(Resource::get.function, Resource::get.action));
    }

    void Put(BridgeResult& result, const Monitor& monitor, const RequestRecord& request) override {
        if constexpr (requires { Resource::set; }) {
            const Value& data = request.data();
            checkRequest(Kind::accepts(data), Resource::refusal);
            monitor.write(Resource::set.function, Resource::set.action, Kind::read(data));
        } else {
            MonitorBridgeTemplate::Put(result, monitor, request);
        }
    }
};

}  // namespace torvo::bridge
