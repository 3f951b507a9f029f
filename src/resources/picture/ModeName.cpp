// The names of the picture modes.
#include "resources/picture/PerMode.h"

namespace torvo::bridge {

class ModeName final : public PerMode<ModeName> {
 public:
    using PerMode::PerMode;
    static constexpr auto modeMember = "mode";
    static constexpr auto valueMember = "name";
    static constexpr auto needsMode = "each object must have mode.";
    static constexpr auto needsValue = "each object must have name.";
    static constexpr auto dataNeedsMode = needsMode;
    static constexpr auto dataNeedsValue = needsValue;

    // There is no function that tells whether names are supported: they are if their size can be read.
    static bool answers(BridgeResult& result, const Monitor& monitor, const Value& query) {
        if (query.has("supports"))
            result.value = monitor.canRead(DmCtrlGetModeNameSize);
        else if (query.has("nameSize"))
            result.value = monitor.read(DmCtrlGetModeNameSize, "Get mode name.");
        else
            return false;
        return true;
    }

    static auto modes(const Monitor& monitor) { return bridge::modes(monitor, "Get mode name."); }
    static Value read(const Monitor& monitor, std::uint32_t mode) {
        return monitor.readText(DmCtrlGetModeNameSize, DmCtrlGetModeName, "Get mode name.", mode);
    }
    static bool accepts(const Value& name) noexcept { return name.isString(); }
    static void write(const Monitor& monitor, std::uint32_t mode, const Value& name) {
        monitor.write(DmCtrlSetModeName, "Set mode name.", mode, name.text().c_str());
    }
};

template std::uint32_t serve<ModeName>(const char*, const CallTexts&) noexcept;

}  // namespace torvo::bridge
