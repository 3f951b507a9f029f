// The look-up table of a monochrome model.
#include <libdmc/picture.h>

#include "resources/shapes/Setting.h"

namespace torvo::bridge {

class MonoModelLUTSelect final : public Setting<MonoModelLUTSelect, Number> {
 public:
    using Setting::Setting;
    static constexpr std::tuple queries{Support{NAMED(DmCtrlSupportedMonoModelLUTSelect)}};
    static constexpr Step get{NAMED(DmCtrlGetMonoModelLUTSelect), "Get mono model LUT select."};
    static constexpr Step set{NAMED(DmCtrlSetMonoModelLUTSelect), "Set mono model LUT select."};
    static constexpr Check checks[] = {{isNumber, "data must be number."}};
};

template struct Entry<MonoModelLUTSelect>;

}  // namespace torvo::bridge
