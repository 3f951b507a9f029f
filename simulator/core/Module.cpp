#include "simulator/core/Module.h"

#ifdef _WIN32
#include <windows.h>

#include <string>
#else
#include <dlfcn.h>
#include <link.h>
#endif

namespace simulator {

#ifdef _WIN32

std::filesystem::path directoryOfModule(const void* address) {
    HMODULE module = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                       static_cast<const wchar_t*>(address), &module);
    std::wstring name(32768, L'\0');
    name.resize(GetModuleFileNameW(module, name.data(), static_cast<DWORD>(name.size())));
    return std::filesystem::path(name).parent_path();
}

#else

std::filesystem::path directoryOfModule(const void* address) {
    Dl_info info{};
    link_map* map = nullptr;
    if (!dladdr1(address, &info, reinterpret_cast<void**>(&map), RTLD_DL_LINKMAP))
        return std::filesystem::current_path();
    // The program itself has no name here; info has only what its caller called it.
    const auto isProgram = *map->l_name == '\0';
    return std::filesystem::canonical(isProgram ? "/proc/self/exe" : map->l_name).parent_path();
}

#endif

}  // namespace simulator
