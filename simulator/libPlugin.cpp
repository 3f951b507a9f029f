#include <libPlugin.h>

#include <filesystem>

#include "simulator/core/Gate.h"
#include "simulator/core/Module.h"

using simulator::LibraryCall;

namespace {

const int here = 0;

/// UTF-8; the directory of this library itself for an empty name.
std::string directory(const char* name) {
    const auto own = simulator::directoryOfModule(&here);
    const auto text = (*name ? own / name : own).u8string();
    return {text.begin(), text.end()};
}

}  // namespace

const char* Plg_GetRegistryPath() {
    return LibraryCall(__func__).text(directory(""));
}
const char* Plg_GetRegistryHtmlPath() {
    return LibraryCall(__func__).text(directory("html"));
}
const char* Plg_GetRegistryExportsPath() {
    return LibraryCall(__func__).text(directory("exports"));
}
