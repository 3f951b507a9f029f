// Patterns that a PUT shows on the screen and a DELETE hides. A GET answers only whether they are supported.
#pragma once

#include "resources/shapes/Setting.h"

namespace torvo::bridge {

/// A Resource has `queries`, the step `hide`, and its own Put.
template <class Resource>
class Pattern : public Setting<Resource, Number> {
 public:
    using Setting<Resource, Number>::Setting;

    static constexpr auto queryRequired = "supports query is required.";

    void Delete(BridgeResult&, const Monitor& monitor, const RequestRecord&) override {
        monitor.write(Resource::hide.function, Resource::hide.action);
    }
};

}  // namespace torvo::bridge
