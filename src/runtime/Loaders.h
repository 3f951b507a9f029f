// The companion libraries whose functions libpell looks up by name. Each loader is one object for the life of the
// process. It is made, and its library loaded, when it is first needed.
#pragma once

#include "runtime/DynamicLibrary.h"
#include "runtime/ProcessWide.h"

namespace torvo {

class CompanionLoader : public DynamicLibrary {
 public:
    /// The function, or the loader's "FunctionNotFoundError" (404).
    template <class Function>
    Gated<Function> operator()(NamedFunction<Function> function) const {
        const Gated<Function> found = find(function);
        if (!found) reportMissingFunction();
        return found;
    }

    void reportMissingFunction() const override;

 protected:
    CompanionLoader(const char* libraryName, const char* missingFunctionMessage) noexcept
        : libraryName_(libraryName), missingFunctionMessage_(missingFunctionMessage) {}

    /// Unless it is loaded, loads the library from the first of these directories that has a file of it that can be
    /// loaded: libpell's own, that of libdmc, that of the host's program.
    void load();

    const char* const libraryName_;

 private:
    const char* missingFunctionMessage_;
};

/// The libdmc that libpell's imports are bound to, so that there is only one, wherever the system found it.
class libdmcLoader final : public CompanionLoader {
 public:
    static const libdmcLoader& instance();

 private:
    friend libdmcLoader& processWide<libdmcLoader>();
    libdmcLoader() noexcept : CompanionLoader("libdmc", "libdmc does not have a requested function.") {}
};

class libfwupdateLoader final : public CompanionLoader {
 public:
    static const libfwupdateLoader& instance();

 private:
    friend libfwupdateLoader& processWide<libfwupdateLoader>();
    libfwupdateLoader() noexcept : CompanionLoader("libfwupdate", "libfwupdate does not have a requested function.") {}
};

class libPluginLoader final : public CompanionLoader {
 public:
    static const libPluginLoader& instance();

 private:
    friend libPluginLoader& processWide<libPluginLoader>();
    libPluginLoader() noexcept : CompanionLoader("libPlugin", "libPlugin does not have a requested function.") {}
};

}  // namespace torvo
