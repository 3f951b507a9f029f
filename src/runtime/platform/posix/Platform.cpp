#include "runtime/platform/Platform.h"

#include <dlfcn.h>
#include <link.h>
#include <pwd.h>
#include <sys/random.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <stdexcept>

namespace torvo::platform {

namespace {

std::string directoryOf(const std::string& file) {
    const auto slash = file.rfind('/');
    return slash == std::string::npos ? "." : file.substr(0, slash);
}

/// The variable's text; the fallback when it is unset or empty.
std::string environment(const char* name, const std::string& fallback) {
    const char* const text = std::getenv(name);
    return text && *text ? text : fallback;
}

std::string home() {
    if (std::string variable = environment("HOME", ""); !variable.empty()) return variable;
    std::array<char, 4096> buffer{};
    passwd entry{};
    passwd* found = nullptr;
    getpwuid_r(getuid(), &entry, buffer.data(), buffer.size(), &found);
    return found ? found->pw_dir : "";
}

/// A path below the home directory; empty when there is none.
std::string belowHome(const char* rest) {
    const std::string directory = home();
    return directory.empty() ? "" : directory + rest;
}

/// As the desktop environment's settings say: XDG_DESKTOP_DIR="$HOME/..." in user-dirs.dirs.
std::string desktop() {
    const std::string key = "XDG_DESKTOP_DIR=\"";
    std::ifstream settings(environment("XDG_CONFIG_HOME", belowHome("/.config")) + "/user-dirs.dirs");
    for (std::string line; std::getline(settings, line);) {
        if (!line.starts_with(key) || line.back() != '"') continue;
        const std::string path = line.substr(key.size(), line.size() - key.size() - 1);
        return path.starts_with("$HOME") ? belowHome(path.c_str() + 5) : path;
    }
    return belowHome("/Desktop");
}

std::string executable() {
    std::string path(4096, '\0');
    const ssize_t length = readlink("/proc/self/exe", path.data(), path.size());
    return length <= 0 ? "" : path.substr(0, static_cast<std::size_t>(length));
}

/// The dynamic linker has a module's path as it was given: relative, perhaps, to the directory of that time, which the
/// program has hopefully not left since.
std::string fullPath(const char* path) {
    std::array<char, 4096> directory{};
    const bool isRelative = *path && *path != '/' && getcwd(directory.data(), directory.size());
    return isRelative ? directory.data() + std::string("/") + path : path;
}

}  // namespace

const char pathSeparator = '/';

bool isPathSeparator(char character) noexcept {
    return character == '/';
}

std::string libraryFileName(const char* libraryName) {
    return std::string(libraryName) + "_x64.so";
}

Module loadModule(const std::string& path) {
    return dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
}

// By name, as the dynamic linker resolved the import. The address of an imported function need not lie in the library:
// in a program at a fixed address it is that of a jump in the program.
Module importedModule(const std::string& fileName) {
    return dlopen(fileName.c_str(), RTLD_LAZY | RTLD_NOLOAD);
}

std::string fileOf(Module module) {
    const link_map* map = nullptr;
    return dlinfo(module, RTLD_DI_LINKMAP, &map) == 0 ? fullPath(map->l_name) : "";
}

void* findSymbol(Module module, const char* name) noexcept {
    return dlsym(module, name);
}

void freeModule(Module module) noexcept {
    dlclose(module);
}

// In a shared library, `atexit` is about the library.
void atUnload(UnloadFunction& function) noexcept {
    std::atexit(function.call);
}

std::string ownDirectory() {
    Dl_info info{};
    if (dladdr(reinterpret_cast<const void*>(&ownDirectory), &info) == 0 || info.dli_fname == nullptr) return {};
    return directoryOf(fullPath(info.dli_fname));
}

std::string folderPath(Folder folder) {
    switch (folder) {
        case Folder::Executable:
            return directoryOf(executable());
        case Folder::Temporary:
            return environment("TMPDIR", "/tmp");
        case Folder::CommonApplicationData: {
            const std::string directories = environment("XDG_DATA_DIRS", "/usr/local/share");
            return directories.substr(0, directories.find(':'));
        }
        case Folder::UserApplicationData:
            return environment("XDG_DATA_HOME", belowHome("/.local/share"));
        case Folder::ColorProfiles:
            return "/usr/share/color/icc";
        case Folder::Home:
            return home();
        case Folder::Desktop:
            return desktop();
        case Folder::System:
            return "/";
    }
    return {};
}

bool isAbsolute(const std::string& path) noexcept {
    return path.starts_with('/');
}

bool isRegularFile(const std::string& path) {
    struct stat information {};
    return stat(path.c_str(), &information) == 0 && S_ISREG(information.st_mode);
}

NativePath nativePath(const std::string& path) {
    return path;
}

// A random UUID: version 4, variant 1.
std::string newUuid() {
    std::array<unsigned char, 16> bytes{};
    if (getrandom(bytes.data(), bytes.size(), 0) != static_cast<ssize_t>(bytes.size()))
        throw std::runtime_error("no random bytes");
    bytes[6] = static_cast<unsigned char>((bytes[6] & 0x0F) | 0x40);
    bytes[8] = static_cast<unsigned char>((bytes[8] & 0x3F) | 0x80);
    std::string text;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        constexpr const char* digits = "0123456789abcdef";
        if (i == 4 || i == 6 || i == 8 || i == 10) text += '-';
        text += digits[bytes[i] >> 4];
        text += digits[bytes[i] & 15];
    }
    return text;
}

}  // namespace torvo::platform
