// Saving and resetting: of a type, and of one index of that type if the request names it.
#pragma once

#include "resources/shapes/Selectors.h"

namespace torvo::bridge {

/// A Resource has the steps `whole` and `atIndex`.
template <class Resource>
class AtIndex : public MonitorBridgeTemplate {
 public:
    using MonitorBridgeTemplate::MonitorBridgeTemplate;

    void Put(BridgeResult&, const Monitor& monitor, const RequestRecord& request) override {
        const Value& data = request.data();
        checkRequest(isNumber(data.get("type")), "data must have 'type'.");
        const auto type = toNumber<std::uint32_t>(data.get("type"));
        if (const auto index = indexSelector.in(data, request.requestQuery))
            monitor.write(Resource::atIndex.function, Resource::atIndex.action, type, *index);
        else
            monitor.write(Resource::whole.function, Resource::whole.action, type);
    }
};

}  // namespace torvo::bridge
