// Hue and saturation of six colours: read together, set one by one.
#pragma once

#include "bridge/Records.h"
#include "bridge/Setting.h"

namespace torvo::bridge {

template <class Resource>
class SixColors : public MonitorBridgeTemplate {
 public:
    using MonitorBridgeTemplate::MonitorBridgeTemplate;

    /// How one colour is set.
    struct Setter {
        const char* color;
        decltype(DmCtrlSetRedHue2)* function;
        const char* action;
    };

    void Get(BridgeResult& result, const Monitor& monitor, const RequestRecord& request) override {
        const Value& query = request.requestQuery;
        if (query.has("supports"))
            result.value = monitor.supports(Resource::supported);
        else if (query.has("range"))
            result.value = monitor.range(Resource::range.function, Resource::range.action);
        else
            result.value = toValue(monitor.read(Resource::get.function, Resource::get.action));
    }

    void Put(BridgeResult&, const Monitor& monitor, const RequestRecord& request) override {
        const Value& data = request.data();
        checkRequest(data.isObject(), "data must be object.");
        for (const Setter& set : Resource::setters)
            if (const Value& step = data.get(set.color); step.isNumber())
                monitor.write(set.function, set.action, step.asUInt());
    }
};

}  // namespace torvo::bridge
