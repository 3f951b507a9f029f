#include "runtime/Loaders.h"

#include "runtime/BridgeResult.h"

namespace torvo {

void CompanionLoader::reportMissingFunction() const {
    throw BridgeResultError(404, "FunctionNotFoundError", missingFunctionMessage_);
}

void CompanionLoader::load() {
    if (!isLoaded())
        DynamicLibrary::load(fs::Path(platform::ownDirectory()).joined(platform::libraryFileName(libraryName_)));
}

const libdmcLoader& libdmcLoader::instance() {
    static libdmcLoader loader;
    loader.load();
    return loader;
}

const libfwupdateLoader& libfwupdateLoader::instance() {
    static libfwupdateLoader loader;
    loader.load();
    return loader;
}

const libPluginLoader& libPluginLoader::instance() {
    static libPluginLoader loader;
    loader.load();
    return loader;
}

}  // namespace torvo
