// A text that the owner gives the monitor, and whether it is shown.
#include <libdmc/device.h>

#include "resources/shapes/Queries.h"

namespace torvo::bridge {

class AssetTag final : public MonitorBridgeTemplate {
 public:
    using MonitorBridgeTemplate::MonitorBridgeTemplate;

    static constexpr std::tuple queries{Support{DmCtrlSupportedAssetTag, "Support asset tag."}};

    void Get(BridgeResult& result, const Monitor& monitor, const RequestRecord& request) override {
        if (answerQuery(result, monitor, request.requestQuery, queries)) return;
        const std::uint32_t size = monitor.read(DmCtrlGetAssetTagSize, "Get asset tag.");
        const std::string tag = monitor.readText(size, DmCtrlGetAssetTag, "Get asset tag.");
        const auto enabled = monitor.read(DmCtrlGetEnableAssetTag, "Get asset tag enabled.");
        result.value = {{"tag", tag}, {"enabled", enabled != 0}};
    }

    void Put(BridgeResult&, const Monitor& monitor, const RequestRecord& request) override {
        const Value& data = request.data();
        const Value& tag = data.get("tag");
        checkRequest(data.has("tag") || data.has("enabled"), "data.tag or data.enabled is required.");
        checkRequest(!data.has("tag") || isText(tag), "data.tag is not string.");
        if (data.has("tag")) monitor.write(DmCtrlSetAssetTag, "Set asset tag.", tag.text().c_str());
        if (data.has("enabled"))
            monitor.write(DmCtrlSetEnableAssetTag, "Set asset tag enabled.",
                          std::uint32_t{lenientFlag(data.get("enabled"))});
    }
};

template struct Entry<AssetTag>;

}  // namespace torvo::bridge
