// The names of the picture modes.
#include <libdmc/picture.h>

#include "resources/shapes/PerMode.h"

namespace torvo::bridge {

class ModeName final : public NamePerMode<ModeName, PictureModes> {
 public:
    using NamePerMode::NamePerMode;

    static constexpr Step size{DmCtrlGetModeNameSize, "Get mode name."};
    static constexpr Step get{DmCtrlGetModeName, "Get mode name."};
    static constexpr Step set{DmCtrlSetModeName, "Set mode name."};
};

template struct Entry<ModeName>;

}  // namespace torvo::bridge
