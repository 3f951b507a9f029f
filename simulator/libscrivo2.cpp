#include <libscrivo2.h>

#include "simulator/core/Gate.h"
#include "simulator/core/Recorder.h"

struct ScrivoLogger {};

using simulator::Answer;
using simulator::HostCall;
using simulator::World;

ScrivoLogger* scrivo_get_logger() {
    static ScrivoLogger logger;
    return HostCall(__func__).handle(&logger);
}

void scrivo_log(ScrivoLogger*, const char* name, uint32_t level, const char* line) {
    HostCall(__func__).run([&](World&) {
        simulator::recordLogLine(name, level, line);
        return Answer();
    });
}
