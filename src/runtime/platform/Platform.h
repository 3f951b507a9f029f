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

/// The address of an exported function; null when the module has none of that name.
void* findSymbol(Module module, const char* name) noexcept;

void freeModule(Module module) noexcept;

/// The directory of the library that this code is linked into, which is where its companions lie. Empty when the
/// system does not tell.
std::string ownDirectory();

}  // namespace torvo::platform
