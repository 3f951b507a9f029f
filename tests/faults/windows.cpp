#include <windows.h>

#include <cstdlib>
#include <cstring>
#include <iterator>
#include <stdexcept>
#include <string_view>

#include "tests/faults/Platform.h"

using faults::grant;
using faults::Need;

namespace {

/// Stands in for a function: `onRefusal` is its result when what it gives is withheld.
template <auto original, Need need, auto onRefusal>
struct Refusing;
template <class Result, class... Arguments, Result(WINAPI* original)(Arguments...), Need need, auto onRefusal>
struct Refusing<original, need, onRefusal> {
    static Result WINAPI call(Arguments... arguments) {
        return grant(need) ? original(arguments...) : Result(onRefusal);
    }
};

void* allocate(std::size_t size) {
    return grant(Need::memory, size) ? std::malloc(size) : nullptr;
}
void* allocateZeros(std::size_t count, std::size_t size) {
    return grant(Need::memory, count * size) ? std::calloc(count, size) : nullptr;
}
void* reallocate(void* memory, std::size_t size) {
    return grant(Need::memory, size) ? std::realloc(memory, size) : nullptr;
}
void* allocateAligned(std::size_t size, std::size_t alignment) {
    return grant(Need::memory, size) ? _aligned_malloc(size, alignment) : nullptr;
}
FARPROC WINAPI look(HMODULE module, LPCSTR name) {
    return faults::vanished && std::strcmp(name, faults::vanished) == 0 ? nullptr : GetProcAddress(module, name);
}

template <class Function>
void* address(Function* function) {
    return reinterpret_cast<void*>(function);
}
template <auto original, Need need, auto onRefusal = 0>
void* refusing() {
    return address(&Refusing<original, need, onRefusal>::call);
}

const struct {
    std::string_view name;
    void* function;
} replacements[] = {
    {"malloc", address(allocate)},
    {"calloc", address(allocateZeros)},
    {"realloc", address(reallocate)},
    {"_aligned_malloc", address(allocateAligned)},
    {"CreateFileW", refusing<&CreateFileW, Need::handle, -1LL>()},
    {"LoadLibraryExW", refusing<&LoadLibraryExW, Need::handle, nullptr>()},
    {"GetProcAddress", address(look)},
};

void replace(void** entry, void* function) {
    DWORD protection = 0;
    VirtualProtect(entry, sizeof *entry, PAGE_READWRITE, &protection);
    *entry = function;
    VirtualProtect(entry, sizeof *entry, protection, &protection);
}

}  // namespace

void faults::standIn() {
    auto* const base = reinterpret_cast<char*>(GetModuleHandleW(L"libpell.dll"));
    const auto* const dos = reinterpret_cast<const IMAGE_DOS_HEADER*>(base);
    const auto* const headers = reinterpret_cast<const IMAGE_NT_HEADERS*>(base + dos->e_lfanew);
    const DWORD imports = headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT].VirtualAddress;
    std::size_t replaced = 0;
    const auto* library = reinterpret_cast<const IMAGE_IMPORT_DESCRIPTOR*>(base + imports);
    for (; library->Name; ++library) {
        const auto* name = reinterpret_cast<const IMAGE_THUNK_DATA*>(base + library->OriginalFirstThunk);
        auto* entry = reinterpret_cast<void**>(base + library->FirstThunk);
        for (; name->u1.AddressOfData; ++name, ++entry) {
            if (IMAGE_SNAP_BY_ORDINAL(name->u1.Ordinal)) continue;
            const auto* const import = reinterpret_cast<const IMAGE_IMPORT_BY_NAME*>(base + name->u1.AddressOfData);
            for (const auto& [known, function] : replacements)
                if (known == reinterpret_cast<const char*>(import->Name)) {
                    replace(entry, function);
                    ++replaced;
                }
        }
    }
    if (replaced != std::size(replacements)) throw std::logic_error("libpell imports other functions than these");
}

void faults::raise(unsigned long code) {
    RaiseException(code, 0, 0, nullptr);
}
