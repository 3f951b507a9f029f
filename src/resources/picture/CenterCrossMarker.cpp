// A cross that marks the center of the screen.
#include <libdmc/picture.h>

#include "resources/shapes/Pattern.h"

namespace torvo::bridge {

class CenterCrossMarker final : public Pattern<CenterCrossMarker> {
 public:
    using Pattern::Pattern;

    static constexpr std::tuple queries{Support{NAMED(DmCtrlSupportedCenterCrossMarker)}};
    static constexpr Step hide{NAMED(DmCtrlHideCenterCrossMarker), "Hide center cross marker."};

    void Put(BridgeResult&, const Monitor& monitor, const RequestRecord&) override {
        monitor.write(NAMED(DmCtrlShowCenterCrossMarker), "Show center cross marker.");
    }
};

template struct Entry<CenterCrossMarker>;

}  // namespace torvo::bridge
