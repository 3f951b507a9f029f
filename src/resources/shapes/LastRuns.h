// What a monitor keeps of the last runs of a job: {"latest", "beforeLast"}, as far as there are any.
#pragma once

#include <libdmc/selfcalibration.h>
#include <records/selfcalibration.h>

#include <algorithm>
#include <vector>

#include "bridge/Records.h"
#include "bridge/Resource.h"

namespace torvo::bridge {

/// `toJson` makes a value of one run; the runs are in order, the latest first.
template <class Run, class ToJson>
Value lastRuns(const std::vector<Run>& runs, ToJson toJson) {
    Value value = Value::object();
    if (!runs.empty()) value["latest"] = toJson(runs[0]);
    if (runs.size() > 1) value["beforeLast"] = toJson(runs[1]);
    return value;
}

/// How many error codes a result has. A result has space for so many only, whatever the library says.
inline std::uint32_t errorCodeSize(const Monitor& monitor) {
    const std::uint32_t size = monitor.read(NAMED(DmCtrlGetSelfQCErrorCodeSize), "Get SelfQC error code size.");
    return std::min<std::uint32_t>(size, DM_ERROR_CODES);
}

/// The first numbers of a list.
template <class Number, std::size_t Size>
Value firstOf(const Number (&list)[Size], std::uint32_t count) {
    return Value::array(std::vector<Number>(list, list + std::min<std::size_t>(count, Size)));
}

/// What the results of both jobs begin with: {"date", "errorCode"}.
template <class Result>
Value resultSummary(const Result& result, std::uint32_t errorCodes) {
    return {{"date", toValue(result.date)}, {"errorCode", firstOf(result.errorCode, errorCodes)}};
}

/// Results of a job. A Resource has the step `get`, and `addMeasured(value, result)` for what was measured.
template <class Resource>
class JobResult : public MonitorBridgeTemplate {
 public:
    using MonitorBridgeTemplate::MonitorBridgeTemplate;

    void Get(BridgeResult& result, const Monitor& monitor, const RequestRecord& request) override {
        const Value& query = request.requestQuery;
        const std::uint32_t errorCodes = errorCodeSize(monitor);
        if (query.has("errorCodeSize")) {
            result.value = errorCodes;
            return;
        }
        const auto runs = monitor.enumerate(Resource::get.function, Resource::get.action);
        result.value = lastRuns(runs, [&](const auto& run) {
            Value value = resultSummary(run, errorCodes);
            if (!query.has("summary")) Resource::addMeasured(value, run);
            return value;
        });
    }
};

}  // namespace torvo::bridge
