// Hue and saturation of six colours: read together, set one by one.
#pragma once

#include <libdmc/picture.h>
#include <records/picture.h>

#include "resources/shapes/Setting.h"

namespace torvo::bridge {

/// A Resource has `queries` and `get` as a setting, and `setters`.
template <class Resource>
class SixColors : public Setting<Resource, Record> {
 public:
    using Setting<Resource, Record>::Setting;

    /// How one colour is set.
    struct Setter {
        const char* color;
        decltype(DmCtrlSetRedHue2)* function;
        const char* action;
    };

    void Put(BridgeResult&, const Monitor& monitor, const RequestRecord& request) override {
        const Value& data = request.data();
        checkRequest(data.isObject(), "data must be object.");
        for (const Setter& set : Resource::setters)
            if (const Value& step = data.get(set.color); isNumber(step)) Number::put(monitor, set, step);
    }
};

}  // namespace torvo::bridge
