// Saving and resetting: of a type, and of one index of that type if the data names it.
#pragma once

#include "bridge/Setting.h"

namespace torvo::bridge {

template <class Resource>
class AtIndex : public MonitorBridgeTemplate {
 public:
    using MonitorBridgeTemplate::MonitorBridgeTemplate;

    void Put(BridgeResult&, const Monitor& monitor, const RequestRecord& request) override {
        const Value& data = request.data();
        const Value& type = data.get("type");
        const Value& index = data.get("index");
        checkRequest(type.isNumber(), "data must have 'type'.");
        if (index.isNumber())
            monitor.write(Resource::atIndex.function, Resource::atIndex.action, type.asUInt(), index.asUInt());
        else
            monitor.write(Resource::whole.function, Resource::whole.action, type.asUInt());
    }
};

}  // namespace torvo::bridge
