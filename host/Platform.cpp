#include "host/Platform.h"

#include <algorithm>
#include <cstdlib>
#ifdef __GLIBC__
#include <malloc.h>
#endif

#ifdef _WIN32
#include <fcntl.h>
#include <io.h>
#include <windows.h>
//
#include <shellapi.h>
#else
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <thread>
#endif

namespace host {

namespace {

std::vector<std::filesystem::path> foldersOf(const std::filesystem::path::string_type& list,
                                             std::filesystem::path::value_type separator) {
    std::vector<std::filesystem::path> folders;
    for (std::size_t start = 0; start < list.size();) {
        const auto end = std::min(list.find(separator, start), list.size());
        if (end > start) folders.emplace_back(list.substr(start, end - start));
        start = end + 1;
    }
    return folders;
}

}  // namespace

void returnLargeBlocks() {
#ifdef __GLIBC__
    constexpr int large = 1 << 20;
    mallopt(M_MMAP_THRESHOLD, large);  // which otherwise grows with the blocks that are released
#endif
}

#ifdef _WIN32

std::vector<std::string> arguments(int, char**) {
    int count = 0;
    const auto wide = CommandLineToArgvW(GetCommandLineW(), &count);
    std::vector<std::string> texts;
    for (int i = 1; i < count; ++i) texts.push_back(toUtf8(wide[i]));
    LocalFree(wide);
    return texts;
}

void prepareStandardStreams() {
    for (const auto stream : {stdin, stdout, stderr}) _setmode(_fileno(stream), _O_BINARY);
    SetConsoleOutputCP(CP_UTF8);
}

bool showsColours(std::FILE* stream) {
    const auto console = reinterpret_cast<HANDLE>(_get_osfhandle(_fileno(stream)));
    DWORD mode = 0;
    return !std::getenv("NO_COLOR") && GetConsoleMode(console, &mode) &&
           SetConsoleMode(console, mode | ENABLE_VIRTUAL_TERMINAL_PROCESSING);
}

bool isTerminal(std::FILE* stream) {
    return _isatty(_fileno(stream));
}

void openInBrowser(const std::string& address) {
    ShellExecuteW(nullptr, L"open", fromUtf8(address).c_str(), nullptr, nullptr, SW_SHOWNORMAL);
}

// The standard library's own does not follow links here.
std::filesystem::path finalPath(const std::filesystem::path& file) {
    constexpr DWORD anyUse = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    const auto handle =
        CreateFileW(file.c_str(), 0, anyUse, nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    std::wstring name(32768, L'\0');
    const auto size = handle == INVALID_HANDLE_VALUE
                          ? 0
                          : GetFinalPathNameByHandleW(handle, name.data(), static_cast<DWORD>(name.size()), 0);
    if (handle != INVALID_HANDLE_VALUE) CloseHandle(handle);
    if (size == 0 || size >= name.size())
        throw std::filesystem::filesystem_error("no final path", file,
                                                std::make_error_code(std::errc::no_such_file_or_directory));
    name.resize(size);
    return name;
}

std::vector<std::filesystem::path> systemFolders() {
    std::vector<std::filesystem::path> folders;
    for (const auto get : {GetSystemDirectoryW, GetWindowsDirectoryW}) {
        std::wstring folder(MAX_PATH, L'\0');
        folder.resize(get(folder.data(), MAX_PATH));
        folders.emplace_back(folder);
    }
    return folders;
}

std::vector<std::filesystem::path> searchPath() {
    const auto* const path = _wgetenv(L"PATH");
    return foldersOf(path ? path : L"", L';');
}

#else

std::vector<std::filesystem::path> systemFolders() {
    return {};
}

std::vector<std::filesystem::path> searchPath() {
    const auto* const path = std::getenv("LD_LIBRARY_PATH");
    return foldersOf(path ? path : "", ':');
}

std::filesystem::path finalPath(const std::filesystem::path& file) {
    return std::filesystem::canonical(file);
}

void openInBrowser(const std::string& address) {
    const char* const command[] = {"xdg-open", address.c_str(), nullptr};
    pid_t process{};
    if (posix_spawnp(&process, command[0], nullptr, nullptr, const_cast<char* const*>(command), environ) != 0) return;
    std::thread([process] { waitpid(process, nullptr, 0); }).detach();
}

std::vector<std::string> arguments(int argc, char** argv) {
    return {argv + 1, argv + argc};
}

void prepareStandardStreams() {}

bool showsColours(std::FILE* stream) {
    return !std::getenv("NO_COLOR") && isTerminal(stream);
}

bool isTerminal(std::FILE* stream) {
    return isatty(fileno(stream));
}

#endif

std::string toUtf8(const std::filesystem::path& path) {
    const auto text = path.u8string();
    return {text.begin(), text.end()};
}

std::filesystem::path fromUtf8(const std::string& text) {
    return std::u8string(text.begin(), text.end());
}

}  // namespace host
