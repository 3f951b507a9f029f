#include "host/Plugin.h"

#include "simulator/core/Module.h"

namespace host {

namespace {

#ifdef _WIN32
constexpr auto fileName = "libpell.dll", bridgeHelperName = "QtWebKitBridgeHelper.dll";
#else
constexpr auto fileName = "libpell.so", bridgeHelperName = "QtWebKitBridgeHelper.so";
#endif

#define NAME(name) #name,
constexpr std::string_view names[] = {LIBPELL_RESOURCES(NAME)};
#undef NAME

const int here = 0;

/// The system binds a library's imports to one of that name that is loaded already.
std::optional<Library> ownBridgeHelper() {
    const auto file = simulator::directoryOfModule(&here) / bridgeHelperName;
    return std::filesystem::exists(file) ? std::optional<Library>(std::in_place, file) : std::nullopt;
}

}  // namespace

const std::span<const std::string_view> exportNames = names;

Plugin::Plugin(const std::filesystem::path& file) : bridgeHelper_(ownBridgeHelper()), library_(file) {}

std::filesystem::path Plugin::defaultFile() {
    return simulator::directoryOfModule(&here) / fileName;
}

}  // namespace host
