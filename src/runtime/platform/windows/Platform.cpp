#include "runtime/platform/Platform.h"

#include <windows.h>

namespace torvo::platform {

namespace {

std::wstring toWide(const std::string& text) {
    const int size = static_cast<int>(text.size());
    std::wstring wide(static_cast<std::size_t>(MultiByteToWideChar(CP_UTF8, 0, text.data(), size, nullptr, 0)), L'\0');
    MultiByteToWideChar(CP_UTF8, 0, text.data(), size, wide.data(), static_cast<int>(wide.size()));
    return wide;
}

std::string toUtf8(const std::wstring& wide) {
    const int size = static_cast<int>(wide.size());
    std::string text(
        static_cast<std::size_t>(WideCharToMultiByte(CP_UTF8, 0, wide.data(), size, nullptr, 0, nullptr, nullptr)),
        '\0');
    WideCharToMultiByte(CP_UTF8, 0, wide.data(), size, text.data(), static_cast<int>(text.size()), nullptr, nullptr);
    return text;
}

// The full path of a module's file. Windows cuts a path that does not fit the buffer, so the buffer grows until it
// does.
std::wstring fileOfModule(HMODULE module) {
    std::wstring file(MAX_PATH, L'\0');
    for (;;) {
        const DWORD length = GetModuleFileNameW(module, file.data(), static_cast<DWORD>(file.size()));
        if (length < file.size()) {
            file.resize(length);
            return file;
        }
        file.resize(file.size() * 2);
    }
}

}  // namespace

const char pathSeparator = '\\';

bool isPathSeparator(char character) noexcept {
    return character == '\\' || character == '/';
}

std::string libraryFileName(const char* libraryName) {
    return std::string(libraryName) + "_x64.dll";
}

// The altered search path makes the library's own imports come from its folder first, not from the host's.
Module loadModule(const std::string& path) {
    return LoadLibraryExW(toWide(path).c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
}

void* findSymbol(Module module, const char* name) noexcept {
    return reinterpret_cast<void*>(GetProcAddress(static_cast<HMODULE>(module), name));
}

void freeModule(Module module) noexcept {
    FreeLibrary(static_cast<HMODULE>(module));
}

std::string ownDirectory() {
    HMODULE module = nullptr;
    if (!GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                            reinterpret_cast<LPCWSTR>(&ownDirectory), &module))
        return {};
    const std::wstring file = fileOfModule(module);
    return toUtf8(file.substr(0, file.find_last_of(L"\\/")));
}

}  // namespace torvo::platform
