// Records of power, inputs, energy saving, backlight and identity.
#pragma once

#include <libdmc/device.h>
#include <records/Member.h>

namespace companions {

template <>
inline constexpr auto members<DmSignalSync> = std::tuple(Member{"frequency", &DmSignalSync::frequency},
                                                         Member{"syncPolarity", &DmSignalSync::syncPolarity},
                                                         Member{"syncStatus", &DmSignalSync::syncStatus});

template <>
inline constexpr auto members<DmSignalInformation> = std::tuple(
    Member{"horizontal", &DmSignalInformation::horizontal}, Member{"vertical", &DmSignalInformation::vertical},
    Member{"scanType", &DmSignalInformation::scanType}, Flag{"isSyncOnGreen", &DmSignalInformation::isSyncOnGreen},
    Flag{"isComposite", &DmSignalInformation::isComposite}, Flag{"isDualLink", &DmSignalInformation::isDualLink},
    Flag{"isDigital", &DmSignalInformation::isDigital});

template <>
inline constexpr auto members<DmSignalResolution> = std::tuple(Member{"horizontal", &DmSignalResolution::horizontal},
                                                               Member{"vertical", &DmSignalResolution::vertical});

template <>
inline constexpr auto members<DmSignalInfoFrame> = std::tuple(Member{"inputRange", &DmSignalInfoFrame::inputRange},
                                                              Member{"colorDepth", &DmSignalInfoFrame::colorDepth},
                                                              Member{"colorFormat", &DmSignalInfoFrame::colorFormat},
                                                              Member{"colorimetry", &DmSignalInfoFrame::colorimetry},
                                                              Member{"eotf", &DmSignalInfoFrame::eotf});

template <>
inline constexpr auto members<DmAutoLumisavePoint> = std::tuple(
    Member{"brightness", &DmAutoLumisavePoint::brightness}, Member{"ambientLight", &DmAutoLumisavePoint::ambientLight},
    Member{"ambientLightLevel", &DmAutoLumisavePoint::ambientLightLevel});

template <>
inline constexpr auto members<DmAutoLumisaveSettings> = std::tuple(
    Member{"maxPoint", &DmAutoLumisaveSettings::maxPoint}, Member{"minPoint", &DmAutoLumisaveSettings::minPoint},
    Member{"inflectionPoint", &DmAutoLumisaveSettings::inflectionPoint},
    Member{"adjustMarginBrightness", &DmAutoLumisaveSettings::adjustMarginBrightness},
    Flag{"isAdjustableBrightness", &DmAutoLumisaveSettings::isAdjustableBrightness});

template <>
inline constexpr auto members<DmYearMonth> = std::tuple(Member{"year", &DmYearMonth::year},
                                                        Member{"month", &DmYearMonth::month});

template <>
inline constexpr auto members<DmBacklightReplaceInfo> =
    std::tuple(Member{"usageTime", &DmBacklightReplaceInfo::usageTime},
               Member{"deprecatedTime", &DmBacklightReplaceInfo::deprecatedTime},
               Member{"replacedTime", &DmBacklightReplaceInfo::replacedTime},
               Member{"replacedDate", &DmBacklightReplaceInfo::replacedDate});

template <>
inline constexpr auto members<DmBoosterTarget> =
    std::tuple(Member{"Lmax", &DmBoosterTarget::Lmax}, Member{"Lmin", &DmBoosterTarget::Lmin},
               Member{"colorTemperature", &DmBoosterTarget::colorTemperature},
               Member{"displayFunction", &DmBoosterTarget::displayFunction});

template <>
inline constexpr auto members<DmBacklightBooster> = std::tuple(Member{"status", &DmBacklightBooster::status},
                                                               Member{"mode", &DmBacklightBooster::mode},
                                                               Member{"target", &DmBacklightBooster::target});

template <>
inline constexpr auto members<DmBoosterUsageTime> = std::tuple(Member{"hours", &DmBoosterUsageTime::hours},
                                                               Member{"minutes", &DmBoosterUsageTime::minutes},
                                                               Member{"seconds", &DmBoosterUsageTime::seconds});

template <>
inline constexpr auto members<DmFirmwareVersion> = std::tuple(Member{"system", &DmFirmwareVersion::system},
                                                              Member{"controller", &DmFirmwareVersion::controller},
                                                              Member{"frontEnd", &DmFirmwareVersion::frontEnd});

template <>
inline constexpr auto members<DmDisplayFirmwareVersion> = std::tuple(
    Member{"deviceName", &DmDisplayFirmwareVersion::deviceName}, Member{"version", &DmDisplayFirmwareVersion::version});

template <>
inline constexpr auto members<DmUsageTime> = std::tuple(Member{"hour", &DmUsageTime::hour},
                                                        Member{"minute", &DmUsageTime::minute});

}  // namespace companions
