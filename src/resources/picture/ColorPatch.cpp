// A patch of one colour on the screen. Members that the data leaves out are 0.
#include <libdmc/picture.h>
#include <records/picture.h>

#include "resources/shapes/Pattern.h"

namespace torvo::bridge {

class ColorPatch final : public Pattern<ColorPatch> {
 public:
    using Pattern::Pattern;

    static constexpr std::tuple queries{Support{NAMED(DmCtrlSupportedColorPatch)}};
    static constexpr Step hide{NAMED(DmCtrlHideColorPatch), "Hide color patch."};

    void Put(BridgeResult&, const Monitor& monitor, const RequestRecord& request) override {
        const auto patch = toRecord<DmColorPatch>(request.data());
        monitor.write(NAMED(DmCtrlShowColorPatch), "Show color patch.", &patch);
    }
};

template struct Entry<ColorPatch>;

}  // namespace torvo::bridge
