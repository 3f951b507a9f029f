// Records of picture adjustment.
#pragma once

#include <libdmc/picture.h>
#include <records/color.h>

namespace companions {

template <>
inline constexpr auto members<DmSixColors> = std::tuple(Member{"red", &DmSixColors::red},
                                                        Member{"green", &DmSixColors::green},
                                                        Member{"blue", &DmSixColors::blue},
                                                        Member{"cyan", &DmSixColors::cyan},
                                                        Member{"magenta", &DmSixColors::magenta},
                                                        Member{"yellow", &DmSixColors::yellow});

template <>
inline constexpr auto members<DmPrimaries> =
    std::tuple(Member{"red", &DmPrimaries::red}.required(Needs::Object, "data.red must be object."),
               Member{"green", &DmPrimaries::green}.required(Needs::Object, "data.green must be object."),
               Member{"blue", &DmPrimaries::blue}.required(Needs::Object, "data.blue must be object."),
               Member{"white", &DmPrimaries::white}.required(Needs::Object, "data.white must be object."));

template <>
inline constexpr auto members<DmProfileData> = std::tuple(Member{"red", &DmProfileData::red},
                                                          Member{"green", &DmProfileData::green},
                                                          Member{"blue", &DmProfileData::blue},
                                                          Member{"white", &DmProfileData::white},
                                                          Member{"black", &DmProfileData::black},
                                                          Member{"luminance", &DmProfileData::luminance});

template <>
inline constexpr auto members<DmGainDefinition> = std::tuple(
    Member{"red", &DmGainDefinition::red}, Member{"green", &DmGainDefinition::green},
    Member{"blue", &DmGainDefinition::blue}, Member{"colorTemperature", &DmGainDefinition::colorTemperature});

template <>
inline constexpr auto members<DmPanelLuminance> = std::tuple(Member{"red", &DmPanelLuminance::red},
                                                             Member{"green", &DmPanelLuminance::green},
                                                             Member{"blue", &DmPanelLuminance::blue},
                                                             Member{"white", &DmPanelLuminance::white});

template <>
inline constexpr auto members<DmColor> = std::tuple(Member{"red", &DmColor::red}, Member{"green", &DmColor::green},
                                                    Member{"blue", &DmColor::blue});

template <>
inline constexpr auto members<DmBounds> = std::tuple(Member{"coordinate", &DmBounds::coordinate},
                                                     Member{"x", &DmBounds::x}, Member{"y", &DmBounds::y},
                                                     Member{"width", &DmBounds::width},
                                                     Member{"height", &DmBounds::height});

template <>
inline constexpr auto members<DmColorPatch> = std::tuple(Member{"color", &DmColorPatch::color},
                                                         Member{"background", &DmColorPatch::background},
                                                         Member{"bounds", &DmColorPatch::bounds});

}  // namespace companions
