// Whether the mode key skips a fine-contrast mode.
#include <libdmc/picture.h>

#include "resources/shapes/PerMode.h"

namespace torvo::bridge {

class FineContrastSkip final : public SkipPerMode<FineContrastSkip, FineContrasts> {
 public:
    using SkipPerMode::SkipPerMode;

    static constexpr auto supported = DmCtrlSupportedFineContrastSkip;
    static constexpr Step get{DmCtrlGetFineContrastSkip, "Get fine contrast skip."};
    static constexpr Step set{DmCtrlSetFineContrastSkip, "Set fine contrast skip."};
};

template struct Entry<FineContrastSkip>;

}  // namespace torvo::bridge
