// A shared library, loaded and unloaded.
#pragma once

#include <filesystem>

namespace host {

class Library {
 public:
    /// Its own imports are searched for beside it first. Throws std::runtime_error, with the system's reason, when it
    /// cannot be loaded.
    explicit Library(const std::filesystem::path& file);
    ~Library();
    Library(const Library&) = delete;
    Library& operator=(const Library&) = delete;

    /// Null when the library has no such function.
    void* find(const char* name) const;

 private:
    void* module_;
};

}  // namespace host
