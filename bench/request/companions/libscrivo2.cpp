#include <libscrivo2.h>

#include "World.h"

struct ScrivoLogger {};

ScrivoLogger* scrivo_get_logger() {
    static ScrivoLogger logger;
    return &logger;
}

void scrivo_log(ScrivoLogger*, const char*, uint32_t level, const char* line) {
    bench::World& world = bench::world();
    ++world.logLines;
    if (world.observer) world.observer->logged(level, line);
}
