// Records of self-calibration.
#pragma once

#include <libdmc/selfcalibration.h>
#include <records/color.h>

namespace companions {

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

}  // namespace companions
