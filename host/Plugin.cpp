#include "host/Plugin.h"

#include "simulator/core/Module.h"

namespace host {

namespace {

#ifdef _WIN32
constexpr auto fileName = "libpell.dll";
#else
constexpr auto fileName = "libpell.so";
#endif

#define NAME(name) #name,
constexpr std::string_view names[] = {LIBPELL_RESOURCES(NAME)};
#undef NAME

const int here = 0;

}  // namespace

const std::span<const std::string_view> exportNames = names;

std::filesystem::path Plugin::defaultFile() {
    return simulator::directoryOfModule(&here) / fileName;
}

}  // namespace host
