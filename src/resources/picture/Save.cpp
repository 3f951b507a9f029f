// Saves settings in the monitor.
#include <libdmc/picture.h>

#include "resources/shapes/AtIndex.h"

namespace torvo::bridge {

class Save final : public AtIndex<Save> {
 public:
    using AtIndex::AtIndex;
    static constexpr Step whole{DmCtrlSave, "Save."};
    static constexpr Step atIndex{DmCtrlSaveAtIndex, "Save at index."};
};

template struct Entry<Save>;

}  // namespace torvo::bridge
