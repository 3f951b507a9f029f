// The application that has the quality-control programme to itself: 0 is none.
#include <libdmc/selfcalibration.h>

#include "resources/shapes/Setting.h"

namespace torvo::bridge {

class SelfQCMutexOwner final : public Setting<SelfQCMutexOwner, Number> {
 public:
    using Setting::Setting;

    static constexpr std::tuple queries{Support{NAMED(DmCtrlSupportedSelfCalibrationMutex)}};
    static constexpr Step get{NAMED(DmCtrlGetSelfCalibrationMutexOwner), "Get SelfQC mutex owner."};

    void Put(BridgeResult&, const Monitor& monitor, const RequestRecord& request) override {
        const Value& data = request.data();
        checkRequest(isNumber(data.get("applicationID")), "applicationID must be number.");
        checkRequest(isNumber(data.get("timeout")), "timeout must be number.");
        monitor.write(NAMED(DmCtrlLockSelfCalibration), "Lock SelfQC.",
                      toNumber<std::uint32_t>(data.get("applicationID")), toNumber<std::uint8_t>(data.get("timeout")));
    }

    void Delete(BridgeResult&, const Monitor& monitor, const RequestRecord& request) override {
        const Value& data = request.data();
        checkRequest(isNumber(data.get("applicationID")), "applicationID must be number.");
        monitor.write(NAMED(DmCtrlUnlockSelfCalibration), "Unlock SelfQC.",
                      toNumber<std::uint32_t>(data.get("applicationID")));
    }
};

template struct Entry<SelfQCMutexOwner>;

}  // namespace torvo::bridge
