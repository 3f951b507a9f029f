// The connected monitors: GET lists them, DELETE lets go of what the library holds about them.
#include <libdmc/monitors.h>

#include "bridge/MonitorList.h"
#include "bridge/Resource.h"

namespace torvo::bridge {

class Monitors final : public Bridge {
    BridgeResult Get(const RequestRecord& request) override {
        uri += "Monitors";
        if (request.requestQuery.get("update").asBool()) gated(DmCtrlFind)(0, 0);

        Value list = Value::array();
        MonitorAddress address;
        for (std::uint32_t index = 0; index < maximumMonitors && readMonitorAddress(index, address) >= 0; ++index)
            list.append({{"serial", address.serial}, {"product", address.product}});

        BridgeResult result;
        result.value = std::move(list);
        return result;
    }

    BridgeResult Delete(const RequestRecord&) override {
        uri += "Monitors";
        gated(DmCtrlRelease)();
        return {};
    }
};

template struct Entry<Monitors>;

}  // namespace torvo::bridge
