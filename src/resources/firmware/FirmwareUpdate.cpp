// Whether a monitor's firmware can be updated, whether a package fits it, and how far a transfer has come.
#include "resources/firmware/Firmware.h"

namespace torvo::bridge {

class FirmwareUpdate final : public MonitorBridgeTemplate {
    using MonitorBridgeTemplate::MonitorBridgeTemplate;

    void Get(BridgeResult& result, const Monitor& monitor, const RequestRecord& request) override {
        const Value& query = request.requestQuery;
        const FWHidHandle handle = hidHandle(monitor);
        if (query.has("checkDfwFile"))
            result.value = askAbout(query.get("checkDfwFile"), NAMED(FWDfwFileCheckMonitor), monitor, handle);
        else if (query.has("supports") && query.has("dfwFile"))
            result.value = askAbout(query.get("dfwFile"), NAMED(FWDfwFileSupportsMonitor), monitor, handle) != 0;
        else if (query.has("supports"))
            result.value = supportsUpdate(query.get("supports"), monitor, handle);
        else
            result.value = {{"state", transferState(monitor, handle)}};
    }

    /// A function about a package and the monitor. The package stays open until it has answered.
    template <class Function>
    static std::uint32_t askAbout(const Value& identifier, NamedFunction<Function> function, const Monitor& monitor,
                                  FWHidHandle handle) {
        const DfwFileManager::Owner file = findDfwFile(identifier.text());
        const ScopedMonitorLock lock(monitor);
        return static_cast<std::uint32_t>(firmwareLibrary()(function)(file.get(), handle));
    }

    static bool supportsUpdate(const Value& generation, const Monitor& monitor, FWHidHandle handle) {
        const ScopedMonitorLock lock(monitor);
        return generation.text() == "v4" ? firmwareLibrary()(NAMED(FWMonitorSupportsFirmwareUpdateV4))(handle) != 0
                                         : firmwareLibrary()(NAMED(FWMonitorSupportsFirmwareUpdate))(handle) != 0;
    }

    static std::uint32_t transferState(const Monitor& monitor, FWHidHandle handle) {
        const ScopedMonitorLock lock(monitor);
        std::uint32_t state = 0;
        checkMonitorControl(firmwareLibrary()(NAMED(FWMonitorGetTransferState))(handle, &state), "Get transfer state.");
        return state;
    }
};

template struct Entry<FirmwareUpdate>;

}  // namespace torvo::bridge
