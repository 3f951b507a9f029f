#include "host/Plugin.h"

#include <stdexcept>
#include <system_error>

#include "host/Platform.h"
#include "simulator/core/Module.h"

#ifdef _WIN32
#include <windows.h>
#else
#include <dlfcn.h>
#endif

namespace host {

namespace {

#define NAME(name) #name,
constexpr std::string_view names[] = {LIBPELL_RESOURCES(NAME)};
#undef NAME

[[noreturn]] void fail(const std::filesystem::path& file, const std::string& reason) {
    throw std::runtime_error("cannot load the plug-in " + toUtf8(file) + ": " + reason);
}

#ifdef _WIN32

constexpr auto fileName = "libpell.dll";

void* load(const std::filesystem::path& file) {
    const auto module = LoadLibraryExW(file.c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
    if (!module) {
        const auto error = static_cast<int>(GetLastError());
        fail(file, std::system_category().message(error) + " (" + std::to_string(error) + ")");
    }
    return module;
}
void unload(void* module) {
    FreeLibrary(static_cast<HMODULE>(module));
}
void* findSymbol(void* module, const char* name) {
    return reinterpret_cast<void*>(GetProcAddress(static_cast<HMODULE>(module), name));
}

#else

constexpr auto fileName = "libpell.so";

void* load(const std::filesystem::path& file) {
    const auto module = dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (!module) fail(file, dlerror());
    return module;
}
void unload(void* module) {
    dlclose(module);
}
void* findSymbol(void* module, const char* name) {
    return dlsym(module, name);
}

#endif

const int here = 0;

}  // namespace

const std::span<const std::string_view> exportNames = names;

Plugin::Plugin(const std::filesystem::path& file) {
    // Its companions are searched for beside it, which takes a full path.
    auto full = std::filesystem::absolute(file).make_preferred();
    if (!std::filesystem::exists(full)) fail(full, "there is no such file");
    module_ = load(full);
}

Plugin::~Plugin() {
    unload(module_);
}

std::filesystem::path Plugin::defaultFile() {
    return simulator::directoryOfModule(&here) / fileName;
}

LibpellEntry Plugin::find(const char* name) const {
    return reinterpret_cast<LibpellEntry>(findSymbol(module_, name));
}

}  // namespace host
