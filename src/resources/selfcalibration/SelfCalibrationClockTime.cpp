// The clock of the monitor. A PUT takes an object with months from 1, or an array like a script's date, with months
// from 0.
#include <libdmc/selfcalibration.h>
#include <records/selfcalibration.h>

#include "resources/shapes/Queries.h"
#include "runtime/DateTime.h"

namespace torvo::bridge {

class SelfCalibrationClockTime final : public MonitorBridgeTemplate {
    using MonitorBridgeTemplate::MonitorBridgeTemplate;

    void Get(BridgeResult& result, const Monitor& monitor, const RequestRecord& request) override {
        const Value& query = request.requestQuery;
        if (query.has("supports")) {
            result.value =
                monitor.supports(DmCtrlSupportedSelfCalibration) || monitor.supports(NAMED(DmCtrlSupportedSelfQCCal));
            return;
        }
        const DmClockTime time = monitor.read(DmCtrlGetSelfCalibrationClockTime, "Get SelfCalibration clock time.");
        if (query.has("string"))
            result.value = DateTime{time.year, time.month, time.day, time.hour, time.minute, 0}.text();
        else
            result.value = toValue(time);
    }

    void Put(BridgeResult&, const Monitor& monitor, const RequestRecord& request) override {
        const Value& data = request.data();
        checkRequest(isObject(data) || isArray(data), "data must be object or array.");
        const DmClockTime time = isArray(data) ? timeOfArray(data) : timeOfObject(data);
        monitor.write(DmCtrlSetSelfCalibrationClockTime, "Set SelfCalibration clock time.", &time);
    }

    static DmClockTime timeOfArray(const Value& data) {
        checkRequest(data.size() >= 3, "data must have 3 numbers at least.");
        for (const Value& element : data.elements()) checkRequest(isNumber(element), "data must have number array.");
        DmClockTime time{};
        time.year = toNumber<std::uint16_t>(data.at(0));
        time.month = static_cast<std::uint8_t>(toNumber<std::uint8_t>(data.at(1)) + 1);
        time.day = toNumber<std::uint8_t>(data.at(2));
        time.hour = toNumber<std::uint8_t>(data.at(3));
        time.minute = toNumber<std::uint8_t>(data.at(4));
        return time;
    }

    static DmClockTime timeOfObject(const Value& data) {
        for (const char* member : {"year", "month", "day"})
            checkRequest(isNumber(data.get(member)), "value@data is invalid.");
        return toRecord<DmClockTime>(data);
    }
};

template struct Entry<SelfCalibrationClockTime>;

}  // namespace torvo::bridge
