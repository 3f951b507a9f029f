#include "runtime/Logger.h"

#include <libPlugin.h>

#include "runtime/Loaders.h"

namespace torvo {

LoggerBase::LoggerBase(const char* name) : name_(name) {
    const auto exportsPath = libPluginLoader::instance().find(NAMED(Plg_GetRegistryExportsPath));
    const char* const directory = exportsPath ? exportsPath() : nullptr;
    if (!directory || !*directory) return;
    library_.load(fs::Path(directory).joined(platform::libraryFileName("libscrivo2")));
    if (const auto getLogger = library_.find(NAMED(scrivo_get_logger))) logger_ = getLogger();
}

void LoggerBase::log(std::uint32_t level, const char* line) const {
    if (!logger_) return;
    if (const auto writeLine = library_.find(NAMED(scrivo_log))) writeLine(logger_, name_, level, line);
}

}  // namespace torvo
