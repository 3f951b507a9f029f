// The names of the fine-contrast modes.
#include "resources/picture/PerMode.h"

namespace torvo::bridge {

class FineContrastName final : public PerMode<FineContrastName> {
 public:
    using PerMode::PerMode;
    static constexpr auto modeMember = "fineContrast";
    static constexpr auto valueMember = "name";
    static constexpr auto needsMode = "each object must have fineContrast.";
    static constexpr auto needsValue = "each object must have name.";
    static constexpr auto dataNeedsMode = needsMode;
    static constexpr auto dataNeedsValue = needsValue;

    // There is no function that tells whether names are supported: they are if their size can be read.
    static bool answers(BridgeResult& result, const Monitor& monitor, const Value& query) {
        if (query.has("supports"))
            result.value = monitor.canRead(DmCtrlGetFineContrastNameSize);
        else if (query.has("nameSize"))
            result.value = monitor.read(DmCtrlGetFineContrastNameSize, "Get fine contrast name.");
        else
            return false;
        return true;
    }

    static auto modes(const Monitor& monitor) { return fineContrasts(monitor, "Get fine contrast name."); }
    static Value read(const Monitor& monitor, std::uint32_t mode) {
        return monitor.readText(DmCtrlGetFineContrastNameSize, DmCtrlGetFineContrastName, "Get fine contrast name.",
                                mode);
    }
    static bool accepts(const Value& name) noexcept { return name.isString(); }
    static void write(const Monitor& monitor, std::uint32_t mode, const Value& name) {
        monitor.write(DmCtrlSetFineContrastName, "Set fine contrast name.", mode, name.text().c_str());
    }
};

template std::uint32_t serve<FineContrastName>(const char*, const CallTexts&) noexcept;

}  // namespace torvo::bridge
