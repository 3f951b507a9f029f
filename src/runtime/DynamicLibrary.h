// A shared library that is loaded while the program runs, and functions looked up in it by name.
#pragma once

#include <atomic>
#include <memory>
#include <string>

#include "runtime/Gate.h"
#include "runtime/Path.h"
#include "runtime/platform/Mutex.h"
#include "runtime/platform/Platform.h"

/// The name of a companion function together with its C type. Made by NAMED, so that the type comes from the
/// companion's header while no import of the function comes into being.
template <class Function>
struct NamedFunction {
    const char* name;
};

#define NAMED(function) (NamedFunction<decltype(function)>{#function})

/// Base of the companion loaders and of the logger's library handle. Any thread may load, find and call.
class DynamicLibrary {
 public:
    DynamicLibrary() = default;
    DynamicLibrary(const DynamicLibrary&) = delete;
    DynamicLibrary& operator=(const DynamicLibrary&) = delete;

    /// Frees the library if it is loaded.
    virtual ~DynamicLibrary();

    /// Frees the library now. No function found in it may be called any more.
    virtual void unload() noexcept;

    /// Called when a caller needs a function that is not there. Does nothing here; the companion loaders throw.
    virtual void reportMissingFunction() const {}

    /// Loads the library file at this full path, unless a library is loaded already. A failure is silent, and the next
    /// call tries again: a file that has been installed meanwhile is found. A path that depends on the current
    /// directory is a failure: anybody's library may lie there.
    void load(const fs::Path& file);

    /// Takes the very module that libpell's imports from the library of this file name are bound to, with a reference
    /// of its own, unless a library is loaded already.
    void loadImported(const std::string& fileName);

    /// The directory of the loaded file; empty when none is loaded, or when it is unknown.
    fs::Path directory() const { return isLoaded() ? path_.parent() : fs::Path(); }

    bool isLoaded() const noexcept { return handle_.load(std::memory_order_acquire) != nullptr; }

    /// The function of this name, or null when it is missing or the library is not loaded.
    template <class Function>
    torvo::Gated<Function> find(NamedFunction<Function> function) const noexcept {
        return torvo::gated(reinterpret_cast<Function*>(findAddress(function.name)));
    }

 private:
    using OwnedModule = std::unique_ptr<void, decltype(&torvo::platform::freeModule)>;

    void keep(OwnedModule module);
    void* findAddress(const char* name) const noexcept;

    fs::Path path_;
    std::atomic<torvo::platform::Module> handle_ = nullptr;
    torvo::platform::Mutex loading_;  // one load at a time, so that each load is freed again
};
