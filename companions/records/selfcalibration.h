// Records of self-calibration.
#pragma once

#include <libdmc/selfcalibration.h>
#include <records/color.h>

namespace companions {

template <>
inline constexpr auto members<DmAmbientSensor> = std::tuple(Member{"name", &DmAmbientSensor::name},
                                                            Member{"serial", &DmAmbientSensor::serial});

inline constexpr std::tuple calibrationTargetWithoutLut(
    Member{"accuracy", &DmCalibrationTarget::accuracy}, Member{"Lmax", &DmCalibrationTarget::Lmax},
    Flag{"LminEnable", &DmCalibrationTarget::LminEnable}, Member{"Lmin", &DmCalibrationTarget::Lmin},
    Member{"colorTemperature", &DmCalibrationTarget::colorTemperature},
    Member{"whitePoint", &DmCalibrationTarget::whitePoint},
    Member{"displayFunction", &DmCalibrationTarget::displayFunction}, Member{"exp", &DmCalibrationTarget::exp},
    Member{"userFileName", &DmCalibrationTarget::userFileName}, Flag{"LambEnable", &DmCalibrationTarget::LambEnable},
    Member{"Lamb", &DmCalibrationTarget::Lamb}, Member{"ambient", &DmCalibrationTarget::ambient},
    Member{"ambientSensor", &DmCalibrationTarget::ambientSensor});

template <>
inline constexpr auto members<DmCalibrationTarget> =
    std::tuple_cat(calibrationTargetWithoutLut, std::tuple(Member{"lut", &DmCalibrationTarget::lut}));

template <>
inline constexpr auto members<DmSelfQCSchedule> = std::tuple(
    Member{"timing", &DmSelfQCSchedule::timing}, Member{"type", &DmSelfQCSchedule::type},
    Variant<DmSelfQCSchedule, DM_SCHEDULE_DETAILS_SIZE, 9>{
        &DmSelfQCSchedule::type,
        &DmSelfQCSchedule::details,
        {
            Layout{16, {Field{"usageHour", 0, 4}}},
            Layout{17,
                   {Field{"year", 0, 2}, Field{"month", 2, 1}, Field{"day", 3, 1}, Field{"hour", 4, 1},
                    Field{"minute", 5, 1}}},
            Layout{31, {Field{"usageHour", 0, 4}}},
            Layout{32, {Field{"hour", 0, 1}, Field{"minute", 1, 1}}},
            Layout{33, {Field{"dayOfWeek", 0, 4}, Field{"hour", 4, 1}, Field{"minute", 5, 1}}},
            Layout{34, {Field{"day", 0, 1}, Field{"hour", 1, 1}, Field{"minute", 2, 1}}},
            Layout{35, {Field{"quarter", 0, 4}, Field{"day", 4, 1}, Field{"hour", 5, 1}, Field{"minute", 6, 1}}},
            Layout{36, {Field{"halfYear", 0, 4}, Field{"day", 4, 1}, Field{"hour", 5, 1}, Field{"minute", 6, 1}}},
            Layout{37, {Field{"month", 0, 1}, Field{"day", 1, 1}, Field{"hour", 2, 1}, Field{"minute", 3, 1}}},
        }});

template <>
inline constexpr auto members<DmClockTime> = std::tuple(Member{"year", &DmClockTime::year},
                                                        Member{"month", &DmClockTime::month},
                                                        Member{"day", &DmClockTime::day},
                                                        Member{"hour", &DmClockTime::hour},
                                                        Member{"minute", &DmClockTime::minute});

template <>
inline constexpr auto members<DmSelfCorrectionTarget> =
    std::tuple(Member{"id", &DmSelfCorrectionTarget::id}.required(Needs::Number, "data must have id."),
               Flag{"enable", &DmSelfCorrectionTarget::enable}, Member{"P", &DmSelfCorrectionTarget::P},
               Member{"Q", &DmSelfCorrectionTarget::Q}, Member{"R", &DmSelfCorrectionTarget::R});

template <>
inline constexpr auto members<DmSelfCorrectionResult> = std::tuple(Member{"error", &DmSelfCorrectionResult::error},
                                                                   Member{"P", &DmSelfCorrectionResult::P},
                                                                   Member{"Q", &DmSelfCorrectionResult::Q},
                                                                   Member{"R", &DmSelfCorrectionResult::R});

template <>
inline constexpr auto members<DmSelfDiagnosis> = std::tuple(
    Flag{"stable", &DmSelfDiagnosis::stable}, Member{"currentPhotoSensorAD", &DmSelfDiagnosis::currentPhotoSensorAD},
    Member{"targetPhotoSensorAD", &DmSelfDiagnosis::targetPhotoSensorAD});

template <>
inline constexpr auto members<DmCalibrationWindow> = std::tuple(Member{"x", &DmCalibrationWindow::x},
                                                                Member{"y", &DmCalibrationWindow::y},
                                                                Member{"width", &DmCalibrationWindow::width},
                                                                Member{"height", &DmCalibrationWindow::height});

template <>
inline constexpr auto members<DmSelfCalibrationTarget> = std::tuple(
    Member{"id", &DmSelfCalibrationTarget::id}.required(Needs::Number, "data must have id."),
    Flag{"enable", &DmSelfCalibrationTarget::enable}, Flag{"clipping", &DmSelfCalibrationTarget::clipping},
    Member{"luminance", &DmSelfCalibrationTarget::luminance}.required(Needs::Number, "data must have luminance."),
    Member{"colorTemperature", &DmSelfCalibrationTarget::colorTemperature}.required(Needs::Number,
                                                                                    "data must have colorTemperature."),
    Member{"gamma", &DmSelfCalibrationTarget::gamma}.required(Needs::Number, "data must have gamma."),
    Member{"gamut", &DmSelfCalibrationTarget::gamut}.required(Needs::Number, "data must have gamut."),
    Part{"white", &DmSelfCalibrationTarget::white, colorXy}, Part{"red", &DmSelfCalibrationTarget::red, colorXy},
    Part{"green", &DmSelfCalibrationTarget::green, colorXy}, Part{"blue", &DmSelfCalibrationTarget::blue, colorXy});

template <>
inline constexpr auto members<DmSelfCalibrationResult> = std::tuple(
    Member{"error", &DmSelfCalibrationResult::error}.required(Needs::Anything, "data must have error."),
    Member{"luminance", &DmSelfCalibrationResult::luminance}, Member{"gamma", &DmSelfCalibrationResult::gamma},
    Part{"white", &DmSelfCalibrationResult::white, colorXYZ}, Part{"red", &DmSelfCalibrationResult::red, colorXYZ},
    Part{"green", &DmSelfCalibrationResult::green, colorXYZ}, Part{"blue", &DmSelfCalibrationResult::blue, colorXYZ},
    Part{"black", &DmSelfCalibrationResult::black, colorXYZ});

template <>
inline constexpr auto members<DmSelfCalibrationResultSetting> = std::tuple(
    Member{"brightness", &DmSelfCalibrationResultSetting::brightness}.required(Needs::Anything,
                                                                               "data must have brightness."),
    Member{"contrast", &DmSelfCalibrationResultSetting::contrast}.required(Needs::Anything, "data must have contrast."),
    Member{"gainMatrix", &DmSelfCalibrationResultSetting::gainMatrix}.required(Needs::Anything,
                                                                               "data must have gainMatrix."),
    Member{"emulationMatrix", &DmSelfCalibrationResultSetting::emulationMatrix}.required(
        Needs::Anything, "data must have emulationMatrix."));

template <>
inline constexpr auto members<DmSelfCalibrationSchedule> = std::tuple(
    Member{"timing", &DmSelfCalibrationSchedule::timing}.required(Needs::Number, "data must have timing and type."),
    Member{"type", &DmSelfCalibrationSchedule::type}.required(Needs::Number, "data must have timing and type."),
    Member{"year", &DmSelfCalibrationSchedule::year}.writtenAs("yaer").omittedWhenAllOnes(),
    Member{"month", &DmSelfCalibrationSchedule::month}.omittedWhenAllOnes(),
    Member{"day", &DmSelfCalibrationSchedule::day}.omittedWhenAllOnes(),
    Member{"week", &DmSelfCalibrationSchedule::week}.omittedWhenAllOnes(),
    Member{"dayOfWeek", &DmSelfCalibrationSchedule::dayOfWeek}.omittedWhenAllOnes(),
    Member{"hour", &DmSelfCalibrationSchedule::hour}.omittedWhenAllOnes(),
    Member{"minute", &DmSelfCalibrationSchedule::minute}.omittedWhenAllOnes(),
    Member{"usageTime", &DmSelfCalibrationSchedule::usageTime}.omittedWhenAllOnes());

template <>
inline constexpr auto members<DmUsageHourMinute> = std::tuple(Member{"hour", &DmUsageHourMinute::hour},
                                                              Member{"minute", &DmUsageHourMinute::minute});

template <>
inline constexpr auto members<DmSelfQCNextSchedule> = std::tuple(Member{"type", &DmSelfQCNextSchedule::type},
                                                                 Member{"usageTime", &DmSelfQCNextSchedule::usageTime},
                                                                 Member{"date", &DmSelfQCNextSchedule::date});

template <>
inline constexpr auto members<DmSelfQCCalibrationResult> = std::tuple(
    Member{"date", &DmSelfQCCalibrationResult::date}, Member{"errorCode", &DmSelfQCCalibrationResult::errorCode},
    Member{"Lmax", &DmSelfQCCalibrationResult::Lmax}, Member{"Lmin", &DmSelfQCCalibrationResult::Lmin},
    Member{"whitePoint", &DmSelfQCCalibrationResult::whitePoint},
    Member{"colorTemperature", &DmSelfQCCalibrationResult::colorTemperature},
    Member{"ambientTemperature", &DmSelfQCCalibrationResult::ambientTemperature});

template <>
inline constexpr auto members<DmGrayScaleCheckTarget> =
    std::tuple(Flag{"judgeEnable", &DmGrayScaleCheckTarget::judgeEnable},
               Member{"judgeCondition", &DmGrayScaleCheckTarget::judgeCondition},
               Member{"absoluteErrorRate", &DmGrayScaleCheckTarget::absoluteErrorRate},
               Member{"GSDFErrorRate", &DmGrayScaleCheckTarget::GSDFErrorRate});

template <>
inline constexpr auto members<DmGrayScaleCheckLastTarget> = std::tuple(
    Member{"Lmax", &DmGrayScaleCheckLastTarget::Lmax}, Member{"Lmin", &DmGrayScaleCheckLastTarget::Lmin},
    Member{"displayFunction", &DmGrayScaleCheckLastTarget::displayFunction},
    Member{"exp", &DmGrayScaleCheckLastTarget::exp}, Member{"userFileName", &DmGrayScaleCheckLastTarget::userFileName},
    Flag{"useAbsoluteCondition", &DmGrayScaleCheckLastTarget::useAbsoluteCondition},
    Flag{"useGSDFCondition", &DmGrayScaleCheckLastTarget::useGSDFCondition});

template <>
inline constexpr auto members<DmGrayScaleCheckResult> = std::tuple(
    Member{"date", &DmGrayScaleCheckResult::date}, Member{"errorCode", &DmGrayScaleCheckResult::errorCode},
    Member{"AAPMErrorRate", &DmGrayScaleCheckResult::AAPMErrorRate},
    Member{"stepCount", &DmGrayScaleCheckResult::stepCount}, Member{"JNDIdeal", &DmGrayScaleCheckResult::JNDIdeal},
    Member{"AAPMIdeal", &DmGrayScaleCheckResult::AAPMIdeal}, Member{"errorRate", &DmGrayScaleCheckResult::errorRate},
    Member{"judgeThreshold", &DmGrayScaleCheckResult::judgeThreshold},
    Member{"ambientTemperature", &DmGrayScaleCheckResult::ambientTemperature});

template <>
inline constexpr auto members<DmLEAData> = std::tuple(Member{"usageTime", &DmLEAData::usageTime},
                                                      Member{"luminance", &DmLEAData::luminance});

template <>
inline constexpr auto members<DmPhotoADAgingCorrection> = std::tuple(Member{"date", &DmPhotoADAgingCorrection::date},
                                                                     Member{"before",
                                                                            &DmPhotoADAgingCorrection::before},
                                                                     Member{"after", &DmPhotoADAgingCorrection::after});

}  // namespace companions
