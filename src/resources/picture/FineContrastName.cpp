// The names of the fine-contrast modes.
#include <libdmc/picture.h>

#include "resources/shapes/PerMode.h"

namespace torvo::bridge {

class FineContrastName final : public NamePerMode<FineContrastName, FineContrasts> {
 public:
    using NamePerMode::NamePerMode;

    static constexpr Step size{DmCtrlGetFineContrastNameSize, "Get fine contrast name."};
    static constexpr Step get{DmCtrlGetFineContrastName, "Get fine contrast name."};
    static constexpr Step set{DmCtrlSetFineContrastName, "Set fine contrast name."};
};

template struct Entry<FineContrastName>;

}  // namespace torvo::bridge
