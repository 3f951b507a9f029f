#include "runtime/Logger.h"

#include <libPlugin.h>

#include <mutex>

#include "runtime/Loaders.h"

namespace torvo {

ScrivoLogger* LoggerBase::findLogger() {
    if (ScrivoLogger* const logger = logger_.load(std::memory_order_acquire)) return logger;
    const std::lock_guard lock(finding_);  // lines that come meanwhile wait, and are not lost
    if (ScrivoLogger* const logger = logger_.load(std::memory_order_relaxed)) return logger;
    const std::uint32_t missed = missed_++;
    const bool isPowerOfTwo = (missed & (missed - 1)) == 0;  // or zero
    if (!isPowerOfTwo && missed % 1024 != 0) return nullptr;
    if (!library_.isLoaded()) {
        const auto exportsPath = libPluginLoader::instance().find(NAMED(Plg_GetRegistryExportsPath));
        const char* const directory = exportsPath ? exportsPath() : nullptr;
        if (!directory || !*directory) return nullptr;
        library_.load(fs::Path(directory).joined(platform::libraryFileName("libscrivo2")));
    }
    const auto getLogger = library_.find(NAMED(scrivo_get_logger));
    ScrivoLogger* const logger = getLogger ? getLogger() : nullptr;
    logger_.store(logger, std::memory_order_release);
    return logger;
}

void LoggerBase::log(std::uint32_t level, const char* line) {
    ScrivoLogger* const logger = findLogger();
    if (!logger) return;
    if (const auto writeLine = library_.find(NAMED(scrivo_log))) writeLine(logger, name_, level, line);
}

}  // namespace torvo
