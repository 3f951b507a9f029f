#include "runtime/DynamicLibrary.h"

namespace platform = torvo::platform;

DynamicLibrary::~DynamicLibrary() {
    DynamicLibrary::unload();
}

void DynamicLibrary::unload() noexcept {
    if (const platform::Module module = handle_.exchange(nullptr)) platform::freeModule(module);
    path_.clear();
}

void DynamicLibrary::load(const fs::Path& file) {
    const std::lock_guard lock(loading_);
    if (isLoaded()) return;
    fs::Path path = file;
    if (const platform::Module module = platform::loadModule(path.text())) {
        path_ = std::move(path);
        handle_.store(module, std::memory_order_release);
    }
}

void* DynamicLibrary::findAddress(const char* name) const noexcept {
    const platform::Module module = handle_.load(std::memory_order_acquire);
    return module ? platform::findSymbol(module, name) : nullptr;
}
