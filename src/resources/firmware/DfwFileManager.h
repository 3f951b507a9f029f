// The firmware packages that the page has opened.
#pragma once

#include <libfwupdate.h>

#include "resources/firmware/ResourceManager.h"
#include "runtime/ProcessWide.h"

namespace torvo {

/// Releases a package through the firmware library.
struct FWDfwFileDeleter {
    void operator()(FWDfwFile* file) const noexcept;
};

class DfwFileManager final : public ResourceManager<FWDfwFile*, FWDfwFileDeleter> {
 public:
    /// The one manager of the process. What is still open when the plug-in is unloaded is released then.
    static DfwFileManager& instance();

    /// The open package of this identifier, or "InternalError" ("Dfw file is not found.").
    Owner get(const std::string& identifier) const;

    /// Releases the package and forgets its identifier; does nothing when there is none. Without the library's function
    /// for that, answers "FunctionNotFoundError" and keeps the package.
    void close(const std::string& identifier);

 private:
    friend DfwFileManager& processWide<DfwFileManager>();
    DfwFileManager();
};

}  // namespace torvo
