// The companion libraries that libpell opens itself and whose functions it looks up by name. Each is one object for the
// life of the process, made and loaded from the plug-in's own folder when it is first needed.
#pragma once

#include "runtime/DynamicLibrary.h"

namespace torvo {

class CompanionLoader : public DynamicLibrary {
 public:
    /// The function, or the loader's "FunctionNotFoundError" (404).
    template <class Function>
    Function* operator()(NamedFunction<Function> function) const {
        Function* const found = find(function);
        if (!found) reportMissingFunction();
        return found;
    }

    void reportMissingFunction() const override;

 protected:
    CompanionLoader(const char* libraryName, const char* missingFunctionMessage) noexcept
        : libraryName_(libraryName), missingFunctionMessage_(missingFunctionMessage) {}

    /// Tries to load the library if it is not there yet.
    void load();

 private:
    const char* libraryName_;
    const char* missingFunctionMessage_;
};

class libdmcLoader final : public CompanionLoader {
 public:
    static const libdmcLoader& instance();

 private:
    libdmcLoader() noexcept : CompanionLoader("libdmc", "libdmc does not have a requested function.") {}
};

class libfwupdateLoader final : public CompanionLoader {
 public:
    static const libfwupdateLoader& instance();

 private:
    libfwupdateLoader() noexcept : CompanionLoader("libfwupdate", "libfwupdate does not have a requested function.") {}
};

class libPluginLoader final : public CompanionLoader {
 public:
    static const libPluginLoader& instance();

 private:
    libPluginLoader() noexcept : CompanionLoader("libPlugin", "libPlugin does not have a requested function.") {}
};

}  // namespace torvo
