// The members of the companions' records by name: one table for each record, used wherever a record is told or taken as
// an object (C++ only).
#pragma once

#include <libdmc.h>
#include <libfwupdate.h>

#include <tuple>

namespace companions {

template <class Record, class T>
struct Member {
    const char* name;
    T Record::*pointer;
};
template <class Record, class T>
Member(const char*, T Record::*) -> Member<Record, T>;

/// A tuple of the record's members, specialised for each record.
template <class Record>
inline constexpr auto members = nullptr;

template <>
inline constexpr auto members<DmSixColors> = std::tuple(Member{"red", &DmSixColors::red},
                                                        Member{"green", &DmSixColors::green},
                                                        Member{"blue", &DmSixColors::blue},
                                                        Member{"cyan", &DmSixColors::cyan},
                                                        Member{"magenta", &DmSixColors::magenta},
                                                        Member{"yellow", &DmSixColors::yellow});

template <>
inline constexpr auto members<DmChromaticity> = std::tuple(Member{"x", &DmChromaticity::x},
                                                           Member{"y", &DmChromaticity::y});

template <>
inline constexpr auto members<DmPrimaries> = std::tuple(Member{"red", &DmPrimaries::red},
                                                        Member{"green", &DmPrimaries::green},
                                                        Member{"blue", &DmPrimaries::blue},
                                                        Member{"white", &DmPrimaries::white});

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

template <>
inline constexpr auto members<FirmwareVersionRecord> = std::tuple(
    Member{"system", &FirmwareVersionRecord::system}, Member{"controller", &FirmwareVersionRecord::controller},
    Member{"frontEnd", &FirmwareVersionRecord::frontEnd}, Member{"osd", &FirmwareVersionRecord::osd},
    Member{"fpga", &FirmwareVersionRecord::fpga});

}  // namespace companions
