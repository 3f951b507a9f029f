// The plug-in library, loaded and unloaded.
#pragma once

#include <libpell.h>

#include <filesystem>
#include <span>
#include <string_view>

namespace host {

/// The resources of the libpell that this program was built with.
extern const std::span<const std::string_view> exportNames;

class Plugin {
 public:
    /// Throws std::runtime_error, with the system's reason, when it cannot be loaded.
    explicit Plugin(const std::filesystem::path& file);
    ~Plugin();
    Plugin(const Plugin&) = delete;
    Plugin& operator=(const Plugin&) = delete;

    /// libpell beside this program.
    static std::filesystem::path defaultFile();

    /// Null when the plug-in has no such function.
    LibpellEntry find(const char* name) const;

 private:
    void* module_;
};

}  // namespace host
