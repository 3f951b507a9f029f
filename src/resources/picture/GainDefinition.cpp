// The gains that make a colour temperature.
#include <libdmc/picture.h>
#include <records/picture.h>

#include "resources/shapes/Setting.h"

namespace torvo::bridge {

class GainDefinition final : public Setting<GainDefinition, Record> {
 public:
    using Setting::Setting;

    static constexpr std::tuple queries{Support{NAMED(DmCtrlSupportedGainDefinition)}};
    static constexpr Step get{NAMED(DmCtrlGetGainDefinition), "Get gain definition."};
};

template struct Entry<GainDefinition>;

}  // namespace torvo::bridge
