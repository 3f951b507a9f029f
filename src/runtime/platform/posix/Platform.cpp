#include "runtime/platform/Platform.h"

#include <dlfcn.h>

namespace torvo::platform {

const char pathSeparator = '/';

bool isPathSeparator(char character) noexcept {
    return character == '/';
}

std::string libraryFileName(const char* libraryName) {
    return std::string(libraryName) + "_x64.so";
}

Module loadModule(const std::string& path) {
    return dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
}

void* findSymbol(Module module, const char* name) noexcept {
    return dlsym(module, name);
}

void freeModule(Module module) noexcept {
    dlclose(module);
}

std::string ownDirectory() {
    Dl_info info{};
    if (dladdr(reinterpret_cast<const void*>(&ownDirectory), &info) == 0 || info.dli_fname == nullptr) return {};
    const std::string file = info.dli_fname;
    const auto slash = file.rfind('/');
    return slash == std::string::npos ? "." : file.substr(0, slash);
}

}  // namespace torvo::platform
