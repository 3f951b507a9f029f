// Resources that are one value of the monitor, given by the functions and texts that they use:
//
//   class FineContrast final : public Setting<FineContrast, Number> {
//      public:
//       using Setting::Setting;
//
//       static constexpr std::tuple queries{Support{DmCtrlSupportedFineContrast},
//                                           List{"available", DmCtrlEnumFineContrast, "Get fine contrast."}};
//       static constexpr Step get{DmCtrlGetFineContrast, "Get fine contrast."};
//       static constexpr Step set{DmCtrlSetFineContrast, "Set fine contrast."};
//       static constexpr Check checks[] = {{isPresent, "data is empty."}, {isNumber, "data must be number."}};
//   };
//
// Each of the four may be left out: without `queries` a GET answers the plain value only, without `get` the queries
// only (and `queryRequired` is how other requests are refused), without `set` there is no PUT. Where a GET or PUT is
// special the resource overrides it.
#pragma once

#include <tuple>

#include "resources/shapes/Queries.h"

namespace torvo::bridge {

// ---- How a value goes in and out -----------------------------------------------------------------------------------

/// A number, signed or not, whole or not, as the functions have it.
struct Number {
    static Value toJson(auto number) noexcept { return number; }

    template <class Set>
    static void put(const Monitor& monitor, const Set& set, const Value& data) {
        monitor.write(set.function, set.action, toNumber<detail::Argument<decltype(set.function)>>(data));
    }
};

/// A number of the library that is a boolean to the page. A PUT reads it leniently; `checks` say what is accepted.
struct Boolean {
    static Value toJson(auto flag) noexcept { return flag != 0; }

    template <class Set>
    static void put(const Monitor& monitor, const Set& set, const Value& data) {
        monitor.write(set.function, set.action, detail::Argument<decltype(set.function)>{lenientFlag(data)});
    }
};

/// A record; members that a PUT leaves out keep their value, for which it is read before it is written.
struct Record {
    template <class T>
    static Value toJson(const T& record) {
        return toValue(record);
    }
};

/// A record that a PUT writes whole: members that it leaves out are zero.
struct WholeRecord : Record {
    template <class Set>
    static void put(const Monitor& monitor, const Set& set, const Value& data) {
        using T = std::remove_cv_t<std::remove_pointer_t<detail::Argument<decltype(set.function)>>>;
        const T record = toRecord<T>(data);
        monitor.write(set.function, set.action, &record);
    }
};

// ---- The setting ---------------------------------------------------------------------------------------------------

template <class Resource, class Kind>
class Setting : public MonitorBridgeTemplate {
 public:
    using MonitorBridgeTemplate::MonitorBridgeTemplate;

    void Get(BridgeResult& result, const Monitor& monitor, const RequestRecord& request) override {
        if constexpr (requires { Resource::queries; })
            if (answerQuery(result, monitor, request.requestQuery, Resource::queries)) return;
        if constexpr (requires { Resource::get; })
            result.value = Kind::toJson(monitor.read(Resource::get.function, Resource::get.action));
        else
            checkRequest(false, Resource::queryRequired);
    }

    void Put(BridgeResult& result, const Monitor& monitor, const RequestRecord& request) override {
        if constexpr (requires { Resource::set; }) {
            const Value& data = request.data();
            checkData(data, Resource::checks);
            if constexpr (std::is_same_v<Kind, Record>) {
                using T = decltype(monitor.read(Resource::get.function, Resource::get.action));
                checkRecord<T>(data);
                T record = monitor.read(Resource::get.function, Resource::get.action);
                replaceMembers(record, data);
                monitor.write(Resource::set.function, Resource::set.action, &record);
            } else {
                Kind::put(monitor, Resource::set, data);
            }
        } else {
            MonitorBridgeTemplate::Put(result, monitor, request);
        }
    }
};

}  // namespace torvo::bridge
