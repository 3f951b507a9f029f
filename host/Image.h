// What the file of a shared library says about itself, read without loading it: so nothing of it runs, and it need not
// be loadable.
#pragma once

#include <filesystem>
#include <set>
#include <string>
#include <vector>

namespace host {

struct Image {
    /// What the library needs of another one.
    struct Import {
        std::string library;  ///< file name
        std::vector<std::string> functions;
    };

    std::vector<Import> imports;          ///< empty for ELF, which does not tell what comes from which library
    std::vector<std::string> unresolved;  ///< the functions that an ELF file needs of others
    std::set<std::string, std::less<>> exports;
    std::string version;  ///< of the VERSIONINFO, as 1.0.0.0; empty when there is none
};

/// Reads a DLL, or natively a shared object, for x86-64. Throws std::runtime_error, with the reason, when the file is
/// none or cannot be read.
Image readImage(const std::filesystem::path& file);

}  // namespace host
