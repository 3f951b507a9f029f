// Whether the mode key skips a picture mode.
#include <libdmc/picture.h>

#include "resources/shapes/PerMode.h"

namespace torvo::bridge {

class ModeSkip final : public SkipPerMode<ModeSkip, PictureModes> {
 public:
    using SkipPerMode::SkipPerMode;

    static constexpr auto supported = DmCtrlSupportedModeSkip;
    static constexpr Step get{DmCtrlGetModeSkip, "Get mode skip."};
    static constexpr Step set{DmCtrlSetModeSkip, "Set mode skip."};
};

template struct Entry<ModeSkip>;

}  // namespace torvo::bridge
