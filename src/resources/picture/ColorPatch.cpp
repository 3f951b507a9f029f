// A patch of one colour on the screen. Members that the data leaves out are 0.
#include "bridge/Records.h"
#include "bridge/Resource.h"

namespace torvo::bridge {

class ColorPatch final : public MonitorBridgeTemplate {
    using MonitorBridgeTemplate::MonitorBridgeTemplate;

    void Get(BridgeResult& result, const Monitor& monitor, const RequestRecord& request) override {
        checkRequest(request.requestQuery.has("supports"), "supports query is required.");
        result.value = monitor.supports(NAMED(DmCtrlSupportedColorPatch));
    }

    void Put(BridgeResult&, const Monitor& monitor, const RequestRecord& request) override {
        const Value& data = request.data();
        DmColorPatch patch{};
        replaceMembers(patch, data);
        monitor.write(NAMED(DmCtrlShowColorPatch), "Show color patch.", &patch);
    }

    void Delete(BridgeResult&, const Monitor& monitor, const RequestRecord&) override {
        monitor.write(NAMED(DmCtrlHideColorPatch), "Hide color patch.");
    }
};

template std::uint32_t serve<ColorPatch>(const char*, const CallTexts&) noexcept;

}  // namespace torvo::bridge
