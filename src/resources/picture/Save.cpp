// Saves settings in the monitor.
#include "resources/picture/AtIndex.h"

namespace torvo::bridge {

class Save final : public AtIndex<Save> {
 public:
    using AtIndex::AtIndex;
    static constexpr Step whole{DmCtrlSave, "Save."};
    static constexpr Step atIndex{DmCtrlSaveAtIndex, "Save at index."};
};

template std::uint32_t serve<Save>(const char*, const CallTexts&) noexcept;

}  // namespace torvo::bridge
