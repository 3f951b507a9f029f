#include <libscrivo2.h>

#include "simulator/core/Gate.h"
#include "simulator/core/Simulator.h"

struct ScrivoLogger {};

using simulator::hostCall;
using simulator::Recording;
using simulator::toJson;

ScrivoLogger* scrivo_get_logger() {
    static ScrivoLogger logger;
    return hostCall(__func__).handle(&logger);
}

void scrivo_log(ScrivoLogger*, const char* name, uint32_t level, const char* line) {
    hostCall(__func__).tell([&] {
        if (const auto recording = Recording::current())
            recording->log.push_back({{"name", toJson(name)}, {"level", level}, {"line", toJson(line)}});
    });
}
