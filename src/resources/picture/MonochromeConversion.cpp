// Whether the picture is shown in shades of grey.
#include <libdmc/picture.h>

#include "resources/shapes/Setting.h"

namespace torvo::bridge {

class MonochromeConversion final : public Setting<MonochromeConversion, Boolean> {
 public:
    using Setting::Setting;
    static constexpr std::tuple queries{Support{NAMED(DmCtrlSupportedMonochromeConversion)}};
    static constexpr Step get{NAMED(DmCtrlGetMonochromeConversion), "Get MonochromeConversion."};
    static constexpr Step set{NAMED(DmCtrlSetMonochromeConversion), "Set MonochromeConversion."};
    static constexpr Check checks[] = {{isPresent, "data is empty."}};
};

template struct Entry<MonochromeConversion>;

}  // namespace torvo::bridge
