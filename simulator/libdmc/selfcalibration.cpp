// What monitors measure and correct by themselves. A job is started by its state 1, runs for the "milliseconds" of its
// state's setting, and is in state 0 then, with its result. It ends when somebody looks.
#include <records/selfcalibration.h>

#include <nlohmann/json.hpp>

#include "simulator/libdmc/Functions.h"

using simulator::Answer;
using simulator::answer;
using simulator::byNumber;
using simulator::Json;
using simulator::Monitor;
using simulator::MonitorCall;
using simulator::Output;
namespace result = simulator::result;

namespace {

constexpr std::uint32_t running = 1;

Json& valueOf(Monitor& monitor, const char* setting) {
    return monitor.settings.at(setting).at("value");
}

/// Puts a run in front of those that the setting keeps; no more of them than it says.
void keepRun(Monitor& monitor, const char* setting, Json run) {
    auto& kept = valueOf(monitor, setting);
    kept.insert(kept.begin(), std::move(run));
    if (kept.size() > monitor.settings.at(setting).at("keeps")) kept.erase(kept.size() - 1);
}

void finishSelfCalibration(Monitor& monitor) {
    valueOf(monitor, "selfCalibrationResult")["error"] = 0;
    valueOf(monitor, "selfCalibrationResult")["luminance"] = valueOf(monitor, "selfCalibrationTarget").at("luminance");
}

void finishCalibration(Monitor& monitor) {
    const auto& target = valueOf(monitor, "calibrationTarget");
    auto run = valueOf(monitor, "calibrationResults").at(0);
    run["date"] = valueOf(monitor, "clockTime");
    for (const char* measured : {"Lmax", "Lmin", "whitePoint", "colorTemperature"}) run[measured] = target.at(measured);
    keepRun(monitor, "calibrationResults", std::move(run));
    keepRun(monitor, "calibrationLastTargets", target);
}

void finishGrayScaleCheck(Monitor& monitor) {
    auto run = valueOf(monitor, "grayScaleCheckResults").at(0);
    run["date"] = valueOf(monitor, "clockTime");
    keepRun(monitor, "grayScaleCheckResults", std::move(run));

    auto& targets = monitor.settings.at("grayScaleCheckLastTargets");
    targets["beforeLast"] = targets.at("latest");
    for (const char* member : {"Lmax", "Lmin", "displayFunction", "exp", "userFileName"})
        targets["latest"][member] = valueOf(monitor, "calibrationTarget").at(member);
    const auto conditions = valueOf(monitor, "grayScaleCheckTarget").at("judgeCondition").get<std::uint32_t>();
    targets["latest"]["useAbsoluteCondition"] = conditions & 1;
    targets["latest"]["useGSDFCondition"] = conditions >> 1 & 1;
}

constexpr struct {
    const char* state;
    void (*finish)(Monitor&);
} jobs[] = {{"selfCalibrationState", finishSelfCalibration},
            {"calibrationJob", finishCalibration},
            {"grayScaleCheckJob", finishGrayScaleCheck}};

/// A setting, after the jobs that have run long enough are done.
Answer readAfterJobs(Monitor& monitor, const char* setting, std::initializer_list<const char*> members) {
    for (const auto& [name, finish] : jobs) {
        auto& state = monitor.settings.at(name);
        const std::chrono::milliseconds duration(state.at("milliseconds").get<std::int64_t>());
        if (state.at("value") != running || simulator::now() - monitor.jobsStarted[name] < duration) continue;
        state["value"] = 0;
        finish(monitor);
    }
    return monitor.settings.members(setting, members);
}

Answer writeState(Monitor& monitor, const char* setting, std::uint32_t state) {
    if (state == running) monitor.jobsStarted[setting] = simulator::now();
    return monitor.settings.write(setting, state);
}

}  // namespace

// What a job changes when it ends: its state, and its results.
#define GET_AFTER_JOBS(function, setting)                                                                        \
    DmResult function(const char* serial, const char* product, PARAMETER(function, 0) value) {                   \
        return MonitorCall(__func__, serial, product)                                                            \
            .run(setting, [](Monitor& monitor) { return readAfterJobs(monitor, setting, {"value"}); }, {value}); \
    }                                                                                                            \
    static_assert(true)

#define LIST_AFTER_JOBS(function, setting)                                                                      \
    DmResult function(const char* serial, const char* product, PARAMETER(function, 0) items, uint32_t* count) { \
        return MonitorCall(__func__, serial, product)                                                           \
            .run(setting, [](Monitor& monitor) { return readAfterJobs(monitor, setting, {"value"}); },          \
                 {Output::list(items, count)});                                                                 \
    }                                                                                                           \
    static_assert(true)

#define SET_STATE(function, setting)                                                                \
    DmResult function(const char* serial, const char* product, uint32_t state) {                    \
        return MonitorCall(__func__, serial, product, {state}).run(setting, [&](Monitor& monitor) { \
            return writeState(monitor, setting, state);                                             \
        });                                                                                         \
    }                                                                                               \
    static_assert(true)

// ---- Self-calibration -----------------------------------------------------------------------------------------------

SUPPORTS(DmCtrlSupportedSelfCalibration, "selfCalibration");
GET_AFTER_JOBS(DmCtrlGetSelfCalibrationState, "selfCalibrationState");
SET_STATE(DmCtrlSetSelfCalibrationState, "selfCalibrationState");
GET(DmCtrlGetSelfCalibrationTargetV3, "selfCalibrationTarget");
SET(DmCtrlSetSelfCalibrationTargetV3, "selfCalibrationTarget");
GET_AFTER_JOBS(DmCtrlGetSelfCalibrationResultV4, "selfCalibrationResult");
SET(DmCtrlSetSelfCalibrationResultV4, "selfCalibrationResult");
GET(DmCtrlGetSelfCalibrationClockTime, "clockTime");
SET(DmCtrlSetSelfCalibrationClockTime, "clockTime");

SUPPORTS(DmCtrlSupportedSelfCalibrationScheduleV2, "selfCalibrationSchedule");
GET(DmCtrlGetSelfCalibrationScheduleV2, "selfCalibrationSchedule");
SET(DmCtrlSetSelfCalibrationScheduleV2, "selfCalibrationSchedule");
GET(DmCtrlGetSelfCalibrationResultSetting, "selfCalibrationResultSetting");
SET(DmCtrlSetSelfCalibrationResultSetting, "selfCalibrationResultSetting");

COUNT(DmCtrlGetSelfIndexCount, "selfIndex", "of");
DmResult DmCtrlGetSelfIndex(const char* serial, const char* product, int32_t* index, uint32_t* fineContrast) {
    return MonitorCall(__func__, serial, product)
        .members("selfIndex", {"value", "fineContrast"}, {index, fineContrast});
}
DmResult DmCtrlSetSelfIndex(const char* serial, const char* product, int32_t index, uint32_t fineContrast) {
    return MonitorCall(__func__, serial, product, {index, fineContrast}).run("selfIndex", [&](Monitor& monitor) {
        auto written = monitor.settings.write("selfIndex", index);
        if (!written.result.failed()) monitor.settings.at("selfIndex")["fineContrast"] = fineContrast;
        return written;
    });
}
COUNT(DmCtrlGetSelfTargetCount, "selfTargetPairing", "value");
GET(DmCtrlGetSelfTargetIndex, "selfTargetIndex");
SET(DmCtrlSetSelfTargetIndex, "selfTargetIndex");
SUPPORTS(DmCtrlSupportedSelfTargetPairing, "selfTargetPairing");
GET_LIST(DmCtrlGetSelfTargetPairing, "selfTargetPairing");
SET_LIST(DmCtrlSetSelfTargetPairing, "selfTargetPairing");

SUPPORTS(DmCtrlSupportedAmbientLightCancelOnSelfCalibration, "ambientLightCancel");
GET(DmCtrlGetAmbientLightCancelOnSelfCalibration, "ambientLightCancel");
SET(DmCtrlSetAmbientLightCancelOnSelfCalibration, "ambientLightCancel");

SUPPORTS(DmCtrlSupportedCalibrationState, "calibrationState");
GET(DmCtrlGetCalibrationState, "calibrationState");
SET(DmCtrlSetCalibrationState, "calibrationState");

SUPPORTS(DmCtrlSupportedIFSCalibrationWindow, "calibrationWindow");
GET(DmCtrlGetIFSCalibrationWindow, "calibrationWindow");
SET(DmCtrlSetIFSCalibrationWindow, "calibrationWindow");

// ---- Self-correction and diagnosis ----------------------------------------------------------------------------------

SUPPORTS(DmCtrlSupportedSelfCorrection, "selfCorrection");
GET(DmCtrlGetSelfCorrectionTarget, "selfCorrectionTarget");
SET(DmCtrlSetSelfCorrectionTarget, "selfCorrectionTarget");
GET(DmCtrlGetSelfCorrectionResult, "selfCorrectionResult");

SUPPORTS(DmCtrlSupportedRCSelfDiagnosis, "selfDiagnosis");
GET(DmCtrlGetRCSelfDiagnosisData, "selfDiagnosis");

// ---- SelfQC: one application at a time ------------------------------------------------------------------------------

namespace {

std::uint32_t owner(Monitor& monitor) {
    if (monitor.selfQCLockedUntil <= simulator::now()) valueOf(monitor, "selfQCOwner") = 0;
    return monitor.settings.number("selfQCOwner");
}

bool isOthers(Monitor& monitor, std::uint32_t applicationID) {
    return owner(monitor) != 0 && owner(monitor) != applicationID;
}

}  // namespace

SUPPORTS(DmCtrlSupportedSelfCalibrationMutex, "selfQC");
DmResult DmCtrlGetSelfCalibrationMutexOwner(const char* serial, const char* product, uint32_t* applicationID) {
    return MonitorCall(__func__, serial, product)
        .run("selfQC", [](Monitor& monitor) { return answer({owner(monitor)}); }, {applicationID});
}
DmResult DmCtrlLockSelfCalibration(const char* serial, const char* product, uint32_t applicationID, uint8_t timeout) {
    return MonitorCall(__func__, serial, product, {applicationID, timeout}).run("selfQC", [&](Monitor& monitor) {
        if (isOthers(monitor, applicationID)) return result::criticalSectionOwned;
        valueOf(monitor, "selfQCOwner") = applicationID;
        monitor.selfQCLockedUntil = simulator::now() + std::chrono::minutes(timeout);
        return result::success;
    });
}
DmResult DmCtrlUnlockSelfCalibration(const char* serial, const char* product, uint32_t applicationID) {
    return MonitorCall(__func__, serial, product, {applicationID}).run("selfQC", [&](Monitor& monitor) {
        if (isOthers(monitor, applicationID)) return result::criticalSectionOwned;
        valueOf(monitor, "selfQCOwner") = 0;
        return result::success;
    });
}

int32_t DmCtrlHasFineContrast(const char* serial, const char* product, uint32_t fineContrast) {
    return MonitorCall(__func__, serial, product, {fineContrast}).test("fineContrast", [&](Monitor& monitor) {
        return monitor.settings.offers("fineContrast", fineContrast);
    });
}
GET_LIST(DmCtrlGetEnableSelfCalibrationMode, "selfQCEnable");
SET_LIST(DmCtrlSetEnableSelfCalibrationMode, "selfQCEnable");
GET(DmCtrlGetSelfQCTargetSelect, "selfQCTarget");
SET(DmCtrlSetSelfQCTargetSelect, "selfQCTarget");

// ---- SelfQC: calibration --------------------------------------------------------------------------------------------

SUPPORTS(DmCtrlSupportedSelfQCCal, "selfQC");
GET_AFTER_JOBS(DmCtrlGetSelfQCCalState, "calibrationJob");
SET_STATE(DmCtrlSetSelfQCCalState, "calibrationJob");
GET(DmCtrlGetSelfQCCalTarget, "calibrationTarget");
SET(DmCtrlSetSelfQCCalTarget, "calibrationTarget");
LIST_AFTER_JOBS(DmCtrlGetSelfQCCalLastTarget, "calibrationLastTargets");
LIST_AFTER_JOBS(DmCtrlGetSelfQCCalResult, "calibrationResults");
MEMBER(DmCtrlGetSelfQCErrorCodeSize, "calibrationResults", "errorCodes");

// ---- SelfQC: grayscale check ----------------------------------------------------------------------------------------

SUPPORTS(DmCtrlSupportedSelfQCGSC, "selfQC");
GET_AFTER_JOBS(DmCtrlGetSelfQCGSCState, "grayScaleCheckJob");
SET_STATE(DmCtrlSetSelfQCGSCState, "grayScaleCheckJob");
GET(DmCtrlGetSelfQCGSCTarget, "grayScaleCheckTarget");
SET(DmCtrlSetSelfQCGSCTarget, "grayScaleCheckTarget");
DmResult DmCtrlGetSelfQCGSCLastTarget(const char* serial, const char* product, DmGrayScaleCheckLastTarget* latest,
                                      DmGrayScaleCheckLastTarget* beforeLast) {
    constexpr auto setting = "grayScaleCheckLastTargets";
    return MonitorCall(__func__, serial, product)
        .run(setting,
             [](Monitor& monitor) {
                 return readAfterJobs(monitor, setting, {"latest", "beforeLast"});
             },
             {latest, beforeLast});
}
MEMBER(DmCtrlGetSupportedSelfQCGSCLastTargetCount, "grayScaleCheckLastTargets", "keeps");
LIST_AFTER_JOBS(DmCtrlGetSelfQCGSCResult, "grayScaleCheckResults");
SUPPORTS(DmCtrlSupportedSelfQCRecalibrationForGSCErrorEnable, "recalibrationForGSCError");
GET(DmCtrlGetSelfQCRecalibrationForGSCErrorEnable, "recalibrationForGSCError");
SET(DmCtrlSetSelfQCRecalibrationForGSCErrorEnable, "recalibrationForGSCError");

// ---- SelfQC: LEA ----------------------------------------------------------------------------------------------------

SUPPORTS(DmCtrlSupportedSelfQCLEA, "lea");
GET(DmCtrlGetSelfQCLEAState, "lea");
DmResult DmCtrlSetSelfQCLEAStateToStop(const char* serial, const char* product) {
    return MonitorCall(__func__, serial, product).run("lea", [](Monitor& monitor) {
        return monitor.settings.write("lea", std::uint32_t{0});
    });
}
SUPPORTS(DmCtrlSupportedSelfQCLEAMeasTiming, "leaTiming");
GET(DmCtrlGetSelfQCLEAMeasTiming, "leaTiming");
SET(DmCtrlSetSelfQCLEAMeasTiming, "leaTiming");
LIST(DmCtrlGetSelfQCLEAData, "leaData", "value");

SUPPORTS(DmCtrlFSSupportedPhotoADAgingCorrectLog, "photoADAgingCorrectLog");
DmResult DmCtrlFSGetPhotoADAgingCorrectLog(const char* serial, const char* product, uint32_t index,
                                           DmPhotoADAgingCorrection* correction) {
    return MonitorCall(__func__, serial, product, {index}).get("photoADAgingCorrectLog", correction, index);
}

// ---- SelfQC: schedules ----------------------------------------------------------------------------------------------

LIST(DmCtrlEnumSupportedSelfCalibrationScheduleType, "calibrationSchedule", "types");
GET(DmCtrlGetSelfQCCalSchedule, "calibrationSchedule");
SET(DmCtrlSetSelfQCCalSchedule, "calibrationSchedule");
GET(DmCtrlGetSelfQCGSCSchedule, "grayScaleCheckSchedule");
SET(DmCtrlSetSelfQCGSCSchedule, "grayScaleCheckSchedule");

namespace {

/// Of a schedule by usage, when so much usage has passed; of one for a date, that date; of all others, the next day at
/// the schedule's time.
Json nextRun(const Json& schedule, const Json& clock) {
    if (schedule.contains("usageHour"))
        return {{"type", 1}, {"usageTime", {{"hour", schedule.at("usageHour")}, {"minute", 0}}}};
    auto date = clock;
    if (schedule.contains("year")) {
        for (auto& [name, number] : date.items()) number = schedule.at(name);
    } else {
        const bool isLastDay = clock.at("day") >= 28;  // every month has so many
        const bool isLastMonth = isLastDay && clock.at("month") >= 12;
        date["day"] = isLastDay ? 1 : clock.at("day").get<int>() + 1;
        if (isLastDay) date["month"] = isLastMonth ? 1 : clock.at("month").get<int>() + 1;
        if (isLastMonth) date["year"] = clock.at("year").get<int>() + 1;
        date["hour"] = schedule.value("hour", 0);
        date["minute"] = schedule.value("minute", 0);
    }
    return {{"type", 0}, {"date", date}};
}

}  // namespace

DmResult DmCtrlGetSelfQCNextSchedule(const char* serial, const char* product, uint32_t job,
                                     DmSelfQCNextSchedule* schedule) {
    return MonitorCall(__func__, serial, product, {job})
        .run("selfQC",
             [&](Monitor& monitor) -> Answer {
                 constexpr const char* schedules[] = {"calibrationSchedule", "grayScaleCheckSchedule", "leaSchedule"};
                 if (job >= std::size(schedules)) return result::invalidArgument;
                 return Answer(Json::array({nextRun(valueOf(monitor, schedules[job]), valueOf(monitor, "clockTime"))}));
             },
             {schedule});
}
