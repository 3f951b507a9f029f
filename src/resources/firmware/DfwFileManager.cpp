#include "resources/firmware/DfwFileManager.h"

#include "bridge/Errors.h"
#include "runtime/Loaders.h"

namespace torvo {

void FWDfwFileDeleter::operator()(FWDfwFile* file) const noexcept {
    if (!file) return;
    try {
        if (const auto release = libfwupdateLoader::instance().find(NAMED(FWDfwFileRelease))) release(file);
    } catch (...) {
    }
}

// Made after the loader, and so destroyed before it: the library is still there when the last packages are released.
DfwFileManager::DfwFileManager() {
    libfwupdateLoader::instance();
}

DfwFileManager& DfwFileManager::instance() {
    return processWide<DfwFileManager>();
}

DfwFileManager::Owner DfwFileManager::get(const std::string& identifier) const {
    Owner file = find(identifier);
    checkInternal(file != nullptr, "Dfw file is not found.");
    return file;
}

void DfwFileManager::close(const std::string& identifier) {
    if (!find(identifier)) return;
    libfwupdateLoader::instance()(NAMED(FWDfwFileRelease));
    remove(identifier);
}

}  // namespace torvo
