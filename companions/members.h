// The members of the companions' records by name: one table for each record, used wherever a record is told or taken as
// an object (C++ only).
#pragma once

#include <libdmc.h>
#include <libfwupdate.h>

#include <cstdint>
#include <tuple>

namespace companions {

template <class Record, class T>
struct Member {
    const char* name;
    T Record::*pointer;
};
template <class Record, class T>
Member(const char*, T Record::*) -> Member<Record, T>;

/// A number that stands for a boolean: anything but zero is true.
template <class Record>
struct Flag {
    const char* name;
    std::uint32_t Record::*pointer;
};
template <class Record>
Flag(const char*, std::uint32_t Record::*) -> Flag<Record>;

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
inline constexpr auto members<DmAmbientSensor> = std::tuple(Member{"name", &DmAmbientSensor::name},
                                                            Member{"serial", &DmAmbientSensor::serial});

template <>
inline constexpr auto members<DmCalibrationTarget> = std::tuple(
    Member{"accuracy", &DmCalibrationTarget::accuracy}, Member{"Lmax", &DmCalibrationTarget::Lmax},
    Flag{"LminEnable", &DmCalibrationTarget::LminEnable}, Member{"Lmin", &DmCalibrationTarget::Lmin},
    Member{"colorTemperature", &DmCalibrationTarget::colorTemperature},
    Member{"whitePoint", &DmCalibrationTarget::whitePoint},
    Member{"displayFunction", &DmCalibrationTarget::displayFunction}, Member{"exp", &DmCalibrationTarget::exp},
    Member{"userFileName", &DmCalibrationTarget::userFileName}, Flag{"LambEnable", &DmCalibrationTarget::LambEnable},
    Member{"Lamb", &DmCalibrationTarget::Lamb}, Member{"ambient", &DmCalibrationTarget::ambient},
    Member{"ambientSensor", &DmCalibrationTarget::ambientSensor}, Member{"lut", &DmCalibrationTarget::lut});

template <>
inline constexpr auto members<FirmwareVersionRecord> = std::tuple(
    Member{"system", &FirmwareVersionRecord::system}, Member{"controller", &FirmwareVersionRecord::controller},
    Member{"frontEnd", &FirmwareVersionRecord::frontEnd}, Member{"osd", &FirmwareVersionRecord::osd},
    Member{"fpga", &FirmwareVersionRecord::fpga});

}  // namespace companions
