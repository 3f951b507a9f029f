// What profiles are made from: chromaticities and luminance of the panel.
#include <libdmc/picture.h>
#include <records/picture.h>

#include "resources/shapes/Setting.h"

namespace torvo::bridge {

class ProfileData final : public Setting<ProfileData, Record> {
 public:
    using Setting::Setting;

    static constexpr Step get{DmCtrlProfGetData, "Get profile data."};
};

template struct Entry<ProfileData>;

}  // namespace torvo::bridge
