// How much of the caller's stack a request takes: the plug-in's own part, with companions that take next to none.
#include <array>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>

#include "request/Requests.h"

#ifdef _WIN32
#include <windows.h>
#else
#include <dlfcn.h>
#endif

namespace {

using Entry = bench::Request::Entry;

#ifdef _WIN32
void* load(const std::filesystem::path& folder) {
    return LoadLibraryExW((folder / "libpell.dll").c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
}
Entry* find(void* module, const char* name) {
    return reinterpret_cast<Entry*>(reinterpret_cast<void*>(GetProcAddress(static_cast<HMODULE>(module), name)));
}
#else
void* load(const std::filesystem::path& folder) {
    return dlopen((folder / "libpell.so").c_str(), RTLD_NOW | RTLD_LOCAL);
}
Entry* find(void* module, const char* name) {
    return reinterpret_cast<Entry*>(dlsym(module, name));
}
#endif

constexpr std::size_t areaSize = 1 << 18;
constexpr unsigned char paint = 0xA5;

/// Paints the stack below the caller and returns where the area begins.
[[gnu::noinline]] std::uintptr_t paintStack() {
    std::array<volatile unsigned char, areaSize> area;
    for (volatile unsigned char& byte : area) byte = paint;
    return reinterpret_cast<std::uintptr_t>(area.data());
}

/// How much of the area has been written to since, from its upper end.
[[gnu::noinline]] std::size_t usedStack(std::uintptr_t area) {
    const auto* const bytes = reinterpret_cast<const volatile unsigned char*>(area);
    std::size_t untouched = 0;
    while (untouched < areaSize && bytes[untouched] == paint) ++untouched;
    return areaSize - untouched;
}

std::size_t measure(Entry* entry, const bench::Request& request) {
    const std::uintptr_t area = paintStack();
    request.call(*entry);
    return usedStack(area);
}

}  // namespace

int main(int, char** argv) {
    void* const module = load(std::filesystem::absolute(argv[0]).parent_path());
    if (!module) {
        std::fprintf(stderr, "cannot load libpell from this program's folder\n");
        return EXIT_FAILURE;
    }
    std::puts("Stack of a request in bytes, the first of its process and one after it:");
    for (const bench::Request& request : bench::requests()) {
        if (request.monitors > 1) continue;
        Entry* const entry = find(module, request.entry);
        const std::size_t first = measure(entry, request);
        std::printf("  %-28s %6zu %6zu\n", request.name.c_str(), first, measure(entry, request));
    }
    return EXIT_SUCCESS;
}
