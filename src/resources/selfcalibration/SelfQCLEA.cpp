// The state of the LEA job; a number of the library. A PUT can only stop it, with any number but 1.
#include <libdmc/selfcalibration.h>

#include "resources/shapes/Setting.h"

namespace torvo::bridge {

class SelfQCLEA final : public Setting<SelfQCLEA, Number> {
 public:
    using Setting::Setting;

    static constexpr std::tuple queries{Support{NAMED(DmCtrlSupportedSelfQCLEA)}};
    static constexpr Step get{NAMED(DmCtrlGetSelfQCLEAState), "Get SelfQC LEA state."};

    void Put(BridgeResult&, const Monitor& monitor, const RequestRecord& request) override {
        const Value& data = request.data();
        checkRequest(isNumber(data), "data is not number.");
        checkRequest(toNumber<std::uint32_t>(data) != 1, "Cannot set state to run.");
        monitor.write(NAMED(DmCtrlSetSelfQCLEAStateToStop), "Set SelfQC LEA state to stop.");
    }
};

template struct Entry<SelfQCLEA>;

}  // namespace torvo::bridge
