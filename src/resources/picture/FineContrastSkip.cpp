// Whether the mode key skips a fine-contrast mode.
#include "resources/picture/PerMode.h"

namespace torvo::bridge {

class FineContrastSkip final : public PerMode<FineContrastSkip> {
 public:
    using PerMode::PerMode;
    static constexpr auto modeMember = "fineContrast";
    static constexpr auto valueMember = "skip";
    static constexpr auto needsMode = "each object must have fineContrast.";
    static constexpr auto needsValue = "each object must have skip.";
    static constexpr auto dataNeedsMode = "data must have fineContrast.";
    static constexpr auto dataNeedsValue = "data must have skip.";

    static bool answers(BridgeResult& result, const Monitor& monitor, const Value& query) {
        if (!query.has("supports")) return false;
        result.value = monitor.supports(DmCtrlSupportedFineContrastSkip);
        return true;
    }

    static auto modes(const Monitor& monitor) { return fineContrasts(monitor, "Get fine contrast skip."); }
    static Value read(const Monitor& monitor, std::uint32_t mode) {
        return monitor.read(DmCtrlGetFineContrastSkip, "Get fine contrast skip.", mode) != 0;
    }
    static bool accepts(const Value& skip) noexcept { return skip.isBoolean(); }
    static void write(const Monitor& monitor, std::uint32_t mode, const Value& skip) {
        monitor.write(DmCtrlSetFineContrastSkip, "Set fine contrast skip.", mode, std::uint32_t{skip.asBool()});
    }
};

template std::uint32_t serve<FineContrastSkip>(const char*, const CallTexts&) noexcept;

}  // namespace torvo::bridge
