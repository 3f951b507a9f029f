#include "runtime/Loaders.h"

#include "runtime/BridgeResult.h"

namespace torvo {

void CompanionLoader::reportMissingFunction() const {
    throw BridgeResultError(404, "FunctionNotFoundError", missingFunctionMessage_);
}

void CompanionLoader::load() {
    if (isLoaded()) return;
    const std::string file = platform::libraryFileName(libraryName_);
    DynamicLibrary::load(fs::Path(platform::ownDirectory()).joined(file));
    DynamicLibrary::load(libdmcLoader::instance().directory().joined(file));
    DynamicLibrary::load(fs::Path(platform::folderPath(platform::Folder::Executable)).joined(file));
}

const libdmcLoader& libdmcLoader::instance() {
    auto& loader = processWide<libdmcLoader>();
    if (!loader.isLoaded()) loader.loadImported(platform::libraryFileName(loader.libraryName_));
    return loader;
}

const libfwupdateLoader& libfwupdateLoader::instance() {
    auto& loader = processWide<libfwupdateLoader>();
    loader.load();
    return loader;
}

const libPluginLoader& libPluginLoader::instance() {
    auto& loader = processWide<libPluginLoader>();
    loader.load();
    return loader;
}

}  // namespace torvo
