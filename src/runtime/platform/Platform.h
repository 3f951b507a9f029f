// Everything of libpell that differs between Windows and the native build. Texts are UTF-8 on both.
#pragma once

#include <string>

namespace torvo::platform {

/// A loaded shared library; null is none.
using Module = void*;

/// The file name of a companion library: "libdmc" becomes "libdmc_x64.dll" (natively "libdmc_x64.so").
std::string libraryFileName(const char* libraryName);

/// What stands between the parts of a path.
extern const char pathSeparator;

/// Whether the system takes this character for a path separator.
bool isPathSeparator(char character) noexcept;

/// Loads the library file at this full path; null when that fails. Each success is matched by one `freeModule`.
Module loadModule(const std::string& path);

/// The module that libpell's own imports from the library of this file name are bound to, wherever it was found; null
/// when it imports nothing from it. Each success is matched by one `freeModule`.
Module importedModule(const std::string& fileName);

/// The full path of a module's file; empty when it is unknown.
std::string fileOf(Module module);

/// The address of an exported function; null when the module has none of that name.
void* findSymbol(Module module, const char* name) noexcept;

void freeModule(Module module) noexcept;

/// Something to do when libpell is unloaded.
struct UnloadFunction {
    void (*call)() = nullptr;
    UnloadFunction* registeredBefore = nullptr;
};

/// Has the function called when libpell is unloaded, the one registered last first; it is registered once, and stays
/// where it is until then. When the process ends it is not called on Windows: the other threads have been stopped
/// wherever they were, some with a lock held, and libraries that it would call may be gone. Natively the two cannot be
/// told apart, and it is called in both.
void atUnload(UnloadFunction& function) noexcept;

/// The directory of the library that this code is linked into; empty when it is unknown.
std::string ownDirectory();

/// Directories that mean the same on both systems.
enum class Folder {
    Executable,             ///< of the running program
    Temporary,              ///< the user's
    CommonApplicationData,  ///< shared by all users
    UserApplicationData,
    ColorProfiles,
    Home,
    Desktop,
    System,  ///< the operating system's
};

/// Empty when it is unknown.
std::string folderPath(Folder folder);

/// Whether the path says where it begins, whatever the current directory and drive are.
bool isAbsolute(const std::string& path) noexcept;

/// Whether the path, links followed, names an existing regular file: no directory, device or pipe.
bool isRegularFile(const std::string& path);

/// The path in the form that the system's own functions take.
#ifdef _WIN32
using NativePath = std::wstring;
#else
using NativePath = std::string;
#endif
NativePath nativePath(const std::string& path);

/// A new universally unique identifier: 8-4-4-4-12 lower-case hexadecimal digits. Throws std::runtime_error when the
/// system has none.
std::string newUuid();

}  // namespace torvo::platform
