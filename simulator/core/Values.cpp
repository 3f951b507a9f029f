#include "simulator/core/Values.h"

#include <records/device.h>
#include <records/firmware.h>
#include <records/picture.h>
#include <records/selfcalibration.h>

#include <algorithm>
#include <functional>

#include "simulator/core/Parameters.h"

namespace simulator {

template <class T>
const Type& typeOf() {
    static constexpr Type type = {
        sizeof(T),
        std::is_trivially_copyable_v<T>,
        [](const void* value) { return toJson(*static_cast<const T*>(value)); },
        [](const Json& json, void* value) {
            T ignored{};
            return fromJson(json, value ? *static_cast<T*>(value) : ignored);
        },
    };
    return type;
}

template const Type& typeOf<std::uint8_t>();
template const Type& typeOf<std::uint16_t>();
template const Type& typeOf<std::uint32_t>();
template const Type& typeOf<std::uint64_t>();
template const Type& typeOf<std::int32_t>();
template const Type& typeOf<double>();
template const Type& typeOf<std::string>();

template const Type& typeOf<DmSixColors>();
template const Type& typeOf<DmChromaticity>();
template const Type& typeOf<DmPrimaries>();
template const Type& typeOf<DmProfileData>();
template const Type& typeOf<DmGainDefinition>();
template const Type& typeOf<DmPanelLuminance>();
template const Type& typeOf<DmColor>();
template const Type& typeOf<DmColorPatch>();
template const Type& typeOf<DmCalibrationTarget>();
template const Type& typeOf<DmSignalInformation>();
template const Type& typeOf<DmSignalResolution>();
template const Type& typeOf<DmSignalInfoFrame>();
template const Type& typeOf<DmAutoLumisaveSettings>();
template const Type& typeOf<DmBacklightReplaceInfo>();
template const Type& typeOf<DmBacklightBooster>();
template const Type& typeOf<DmBoosterUsageTime>();
template const Type& typeOf<DmFirmwareVersion>();
template const Type& typeOf<DmDisplayFirmwareVersion>();
template const Type& typeOf<DmUsageTime>();
template const Type& typeOf<DmClockTime>();
template const Type& typeOf<DmSelfCalibrationTarget>();
template const Type& typeOf<DmSelfCalibrationResult>();
template const Type& typeOf<DmSelfCalibrationResultSetting>();
template const Type& typeOf<DmSelfCalibrationSchedule>();
template const Type& typeOf<DmSelfCorrectionTarget>();
template const Type& typeOf<DmSelfCorrectionResult>();
template const Type& typeOf<DmSelfDiagnosis>();
template const Type& typeOf<DmCalibrationWindow>();
template const Type& typeOf<DmSelfQCSchedule>();
template const Type& typeOf<DmSelfQCNextSchedule>();
template const Type& typeOf<DmSelfQCCalibrationResult>();
template const Type& typeOf<DmGrayScaleCheckTarget>();
template const Type& typeOf<DmGrayScaleCheckLastTarget>();
template const Type& typeOf<DmGrayScaleCheckResult>();
template const Type& typeOf<DmLEAData>();
template const Type& typeOf<DmPhotoADAgingCorrection>();
template const Type& typeOf<FirmwareVersionRecord>();

namespace {

void replaceLeaves(Json& json, const Json& by) {
    if (!json.is_structured()) {
        json = by;
        return;
    }
    for (auto& member : json) replaceLeaves(member, by);
}

}  // namespace

Json Input::json() const {
    if (kind_ == Kind::text) return toJson(static_cast<const char*>(value_));
    if (kind_ == Kind::value) return value_ ? type_->toJson(value_) : Json();
    auto list = Json::array();
    const auto items = static_cast<const std::byte*>(value_);
    for (std::size_t i = 0; items && i < count_; ++i) list.push_back(type_->toJson(items + i * type_->size));
    return list;
}

bool Output::write(const Json& json) const {
    if (json.is_null()) return true;
    switch (kind_) {
        case Kind::value:
            return type_->fromJson(json, value_);
        case Kind::text:
            return writeText(json);
        case Kind::sizedText:
            return json.is_number() ? writeCount(json) : writeText(json);
        case Kind::list:
            return writeItems(json);
        case Kind::countedList:
            return json.is_number() ? writeCount(json) : writeItems(json);
        case Kind::handle:
            return writeHandle(json);
    }
    return false;
}

void Output::distort(const Json& lie) const {
    constexpr std::size_t distortedItems = 64;  // of a list, which a lie may have made a long one
    const bool isList = kind_ == Kind::list || kind_ == Kind::countedList;
    if (kind_ == Kind::handle) return;
    if (kind_ == Kind::text || kind_ == Kind::sizedText) writeText(lie);
    if (kind_ == Kind::value && value_) distortItem(value_, lie);
    if (isList && value_)
        for (std::size_t i = 0; i < std::min(capacity_, distortedItems); ++i)
            distortItem(static_cast<std::byte*>(value_) + i * type_->size, lie);
    writeCount(lie);
}

void Output::distortItem(void* item, const Json& lie) const {
    auto all = type_->toJson(item);
    const std::function<void(Json&)> distortPart = [&](Json& part) {
        const auto truth = part;
        replaceLeaves(part, lie);
        if (type_->fromJson(all, nullptr)) return;
        part = truth;
        if (part.is_structured())
            for (auto& member : part) distortPart(member);
    };
    distortPart(all);
    type_->fromJson(all, item);
}

void Output::overwrite(std::span<const std::uint8_t> bytes) const {
    if (kind_ == Kind::handle || !value_) return;
    if (kind_ == Kind::value && !type_->isPlain) {
        static_cast<std::string*>(value_)->assign(bytes.begin(), bytes.end());
        return;
    }
    const auto capacity = kind_ == Kind::value ? 1 : kind_ == Kind::sizedText && count_ ? *count_ : capacity_;
    const auto size = capacity * (type_ ? type_->size : 1);
    for (std::size_t i = 0; i < size; ++i) static_cast<std::uint8_t*>(value_)[i] = bytes[i % bytes.size()];
}

bool Output::writeCount(const Json& json) const {
    std::uint32_t ignored = 0;
    return fromJson(json, count_ ? *count_ : ignored);
}

bool Output::writeText(const Json& json) const {
    if (!json.is_string()) return false;
    const auto& text = json.get_ref<const std::string&>();
    const auto capacity = count_ ? *count_ : capacity_;
    if (value_) detail::copyText(text, static_cast<char*>(value_), capacity);
    if (count_) *count_ = static_cast<std::uint32_t>(text.size() + 1);
    return true;
}

bool Output::writeItems(const Json& json) const {
    if (!json.is_array()) return false;
    const auto items = static_cast<std::byte*>(value_);
    const auto written = items ? std::min(capacity_, json.size()) : 0;
    for (std::size_t i = 0; i < written; ++i)
        if (!type_->fromJson(json[i], items + i * type_->size)) return false;
    if (count_) *count_ = static_cast<std::uint32_t>(json.size());
    return true;
}

bool Output::writeHandle(const Json& json) const {
    if (!json.is_number_unsigned()) return false;
    const auto number = json.get<std::uintptr_t>();
    if (value_) std::memcpy(value_, &number, sizeof number);
    return true;
}

}  // namespace simulator
