// Numeric settings that are a step of the monitor's own range, or a percentage of it.
#pragma once

#include "resources/shapes/Setting.h"

namespace torvo::bridge {

/// A Resource has `queries` and `get` as a setting, and the two ways to set it, `setPercentage` and `setStep`.
template <class Resource>
class StepOrPercentage : public Setting<Resource, Number> {
 public:
    using Setting<Resource, Number>::Setting;

    void Put(BridgeResult&, const Monitor& monitor, const RequestRecord& request) override {
        const Value& data = request.data();
        const Value& percentage = data.get("percentage");
        checkRequest(isNumber(data) || isNumber(percentage), "data must be number.");
        if (isNumber(percentage))
            Number::put(monitor, Resource::setPercentage, percentage);
        else
            Number::put(monitor, Resource::setStep, data);
    }
};

}  // namespace torvo::bridge
