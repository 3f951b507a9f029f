#include <libPlugin.h>

#include <string>

#include "simulator/core/Module.h"

namespace {

const int here = 0;

// The folder of this library is every folder of the host.
const char* directory() {
    static const std::string path = [] {
        const auto text = simulator::directoryOfModule(&here).u8string();
        return std::string(text.begin(), text.end());
    }();
    return path.c_str();
}

}  // namespace

const char* Plg_GetRegistryPath() {
    return directory();
}
const char* Plg_GetRegistryHtmlPath() {
    return directory();
}
const char* Plg_GetRegistryExportsPath() {
    return directory();
}
