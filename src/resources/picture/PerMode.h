// What each picture mode has one of: a name, or a mark that the mode key skips it.
//
// GET answers {mode, value} of the mode that the query names, else of all. PUT takes one such object or an array of
// them, and checks all before it writes the first.
#pragma once

#include <numeric>
#include <vector>

#include "bridge/Resource.h"

namespace torvo::bridge {

/// A Resource has
///   modeMember, valueMember       the names of the two members
///   modes(monitor)                the numbers of all modes
///   read(monitor, mode)           the value of one
///   accepts(value), write(monitor, mode, value)
///   needsMode, needsValue         how an element of an array is refused
///   dataNeedsMode, dataNeedsValue how a single object is refused
///   answers(result, monitor, query)  whether the query was one of its own ("supports" and the like), answered then
template <class Resource>
class PerMode : public MonitorBridgeTemplate {
 public:
    using MonitorBridgeTemplate::MonitorBridgeTemplate;

    void Get(BridgeResult& result, const Monitor& monitor, const RequestRecord& request) override {
        const Value& query = request.requestQuery;
        if (Resource::answers(result, monitor, query)) return;
        if (query.has(Resource::modeMember)) {
            result.value = entry(monitor, query.get(Resource::modeMember).asUInt());
            return;
        }
        result.value = Value::array();
        for (const std::uint32_t mode : Resource::modes(monitor)) result.value.append(entry(monitor, mode));
    }

    void Put(BridgeResult&, const Monitor& monitor, const RequestRecord& request) override {
        const Value& data = request.data();
        checkRequest(data.isObject() || data.isArray(), "data must object or array.");
        if (data.isObject()) {
            check(data, Resource::dataNeedsMode, Resource::dataNeedsValue);
            write(monitor, data);
            return;
        }
        for (const Value& element : data.elements()) check(element, Resource::needsMode, Resource::needsValue);
        for (const Value& element : data.elements()) write(monitor, element);
    }

 private:
    static Value entry(const Monitor& monitor, std::uint32_t mode) {
        return {{Resource::modeMember, mode}, {Resource::valueMember, Resource::read(monitor, mode)}};
    }

    static void check(const Value& object, const char* needsMode, const char* needsValue) {
        checkRequest(object.get(Resource::modeMember).isNumber(), needsMode);
        checkRequest(Resource::accepts(object.get(Resource::valueMember)), needsValue);
    }

    static void write(const Monitor& monitor, const Value& object) {
        Resource::write(monitor, object.get(Resource::modeMember).asUInt(), object.get(Resource::valueMember));
    }
};

/// The numbers of the fine-contrast modes, and of the modes.
inline std::vector<std::uint32_t> fineContrasts(const Monitor& monitor, const char* action) {
    return monitor.enumerate(DmCtrlEnumFineContrast, action);
}

inline std::vector<std::uint32_t> modes(const Monitor& monitor, const char* action) {
    constexpr std::uint32_t maximumModes = 1024;
    std::vector<std::uint32_t> numbers(std::min(monitor.read(DmCtrlGetModeCount, action), maximumModes));
    std::iota(numbers.begin(), numbers.end(), 0U);
    return numbers;
}

}  // namespace torvo::bridge
