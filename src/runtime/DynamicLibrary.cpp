#include "runtime/DynamicLibrary.h"

#include <mutex>

namespace platform = torvo::platform;

DynamicLibrary::~DynamicLibrary() {
    DynamicLibrary::unload();
}

void DynamicLibrary::unload() noexcept {
    if (const platform::Module module = handle_.exchange(nullptr)) platform::freeModule(module);
}

void DynamicLibrary::load(const fs::Path& file) {
    const std::lock_guard lock(loading_);
    if (!isLoaded() && platform::isAbsolute(file.text()))
        keep({platform::loadModule(file.text()), platform::freeModule});
}

void DynamicLibrary::loadImported(const std::string& fileName) {
    const std::lock_guard lock(loading_);
    if (!isLoaded()) keep({platform::importedModule(fileName), platform::freeModule});
}

void DynamicLibrary::keep(OwnedModule module) {
    if (!module) return;
    path_ = fs::Path(platform::fileOf(module.get()));
    handle_.store(module.release(), std::memory_order_release);
}

void* DynamicLibrary::findAddress(const char* name) const noexcept {
    const platform::Module module = handle_.load(std::memory_order_acquire);
    return module ? platform::findSymbol(module, name) : nullptr;
}
