// Brings settings back to what the factory made them.
#include <libdmc/picture.h>

#include "resources/shapes/AtIndex.h"

namespace torvo::bridge {

class Reset final : public AtIndex<Reset> {
 public:
    using AtIndex::AtIndex;
    static constexpr Step whole{DmCtrlReset, "Reset."};
    static constexpr Step atIndex{DmCtrlResetAtIndex, "Reset at index."};
};

template struct Entry<Reset>;

}  // namespace torvo::bridge
