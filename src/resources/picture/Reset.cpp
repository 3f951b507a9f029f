// Brings settings back to what the factory made them.
#include "resources/picture/AtIndex.h"

namespace torvo::bridge {

class Reset final : public AtIndex<Reset> {
 public:
    using AtIndex::AtIndex;
    static constexpr Step whole{DmCtrlReset, "Reset."};
    static constexpr Step atIndex{DmCtrlResetAtIndex, "Reset at index."};
};

template std::uint32_t serve<Reset>(const char*, const CallTexts&) noexcept;

}  // namespace torvo::bridge
