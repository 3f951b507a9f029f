#include "host/Library.h"

#include <stdexcept>
#include <system_error>

#include "host/Platform.h"

#ifdef _WIN32
#include <windows.h>
#else
#include <dlfcn.h>
#endif

namespace host {

namespace {

[[noreturn]] void fail(const std::filesystem::path& file, const std::string& reason) {
    throw std::runtime_error("cannot load " + toUtf8(file) + ": " + reason);
}

#ifdef _WIN32

/// No box on the screen about a library that cannot be loaded: the reason is ours to tell.
void* load(const std::filesystem::path& file) {
    DWORD previous = 0;
    SetThreadErrorMode(SEM_FAILCRITICALERRORS | SEM_NOOPENFILEERRORBOX, &previous);
    const auto module = LoadLibraryExW(file.c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
    const auto error = static_cast<int>(GetLastError());
    SetThreadErrorMode(previous, nullptr);
    if (!module) fail(file, std::system_category().message(error) + " (" + std::to_string(error) + ")");
    return module;
}

#else

void* load(const std::filesystem::path& file) {
    const auto module = dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (!module) fail(file, dlerror());
    return module;
}

#endif

}  // namespace

Library::Library(const std::filesystem::path& file) {
    // Only a full path makes the system search beside it.
    const auto full = std::filesystem::absolute(file).make_preferred();
    if (!std::filesystem::exists(full)) fail(full, "there is no such file");
    module_ = load(full);
}

#ifdef _WIN32

Library::~Library() {
    FreeLibrary(static_cast<HMODULE>(module_));
}

void* Library::find(const char* name) const {
    return reinterpret_cast<void*>(GetProcAddress(static_cast<HMODULE>(module_), name));
}

#else

Library::~Library() {
    dlclose(module_);
}

void* Library::find(const char* name) const {
    return dlsym(module_, name);
}

#endif

}  // namespace host
