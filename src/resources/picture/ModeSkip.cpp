// Whether the mode key skips a picture mode.
#include "resources/picture/PerMode.h"

namespace torvo::bridge {

class ModeSkip final : public PerMode<ModeSkip> {
 public:
    using PerMode::PerMode;
    static constexpr auto modeMember = "mode";
    static constexpr auto valueMember = "skip";
    static constexpr auto needsMode = "each object must have mode.";
    static constexpr auto needsValue = "each object must have skip.";
    static constexpr auto dataNeedsMode = "data must have mode.";
    static constexpr auto dataNeedsValue = "data must have skip.";

    static bool answers(BridgeResult& result, const Monitor& monitor, const Value& query) {
        if (!query.has("supports")) return false;
        result.value = monitor.supports(DmCtrlSupportedModeSkip);
        return true;
    }

    static auto modes(const Monitor& monitor) { return bridge::modes(monitor, "Get mode skip."); }
    static Value read(const Monitor& monitor, std::uint32_t mode) {
        return monitor.read(DmCtrlGetModeSkip, "Get mode skip.", mode) != 0;
    }
    static bool accepts(const Value& skip) noexcept { return skip.isBoolean(); }
    static void write(const Monitor& monitor, std::uint32_t mode, const Value& skip) {
        monitor.write(DmCtrlSetModeSkip, "Set mode skip.", mode, std::uint32_t{skip.asBool()});
    }
};

template std::uint32_t serve<ModeSkip>(const char*, const CallTexts&) noexcept;

}  // namespace torvo::bridge
