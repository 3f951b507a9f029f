// The plug-in.
#pragma once

#include <libpell.h>

#include <optional>
#include <span>
#include <string_view>

#include "host/Library.h"

namespace host {

/// The resources of the libpell that this program was built with.
extern const std::span<const std::string_view> exportNames;

class Plugin {
 public:
    /// It is bound to the bridge helper beside this program, which keeps the answers, even if another one lies beside
    /// the plug-in. Throws std::runtime_error, with the system's reason, when it cannot be loaded.
    explicit Plugin(const std::filesystem::path& file);

    /// libpell beside this program.
    static std::filesystem::path defaultFile();

    /// Null when the plug-in has no such function.
    LibpellEntry find(const char* name) const { return reinterpret_cast<LibpellEntry>(library_.find(name)); }

 private:
    std::optional<Library> bridgeHelper_;
    Library library_;
};

}  // namespace host
