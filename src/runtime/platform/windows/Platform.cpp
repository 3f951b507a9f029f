#include "runtime/platform/Platform.h"

#include <windows.h>
//
#include <icm.h>
#include <rpc.h>
#include <shlobj.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <stdexcept>

#include "runtime/platform/windows/Unload.h"

namespace torvo::platform {

namespace {

std::wstring toWide(const std::string& text) {
    const int size = static_cast<int>(text.size());
    std::wstring wide(static_cast<std::size_t>(MultiByteToWideChar(CP_UTF8, 0, text.data(), size, nullptr, 0)), L'\0');
    MultiByteToWideChar(CP_UTF8, 0, text.data(), size, wide.data(), static_cast<int>(wide.size()));
    return wide;
}

std::string toUtf8(const std::wstring& wide) {
    const int size = static_cast<int>(wide.size());
    std::string text(
        static_cast<std::size_t>(WideCharToMultiByte(CP_UTF8, 0, wide.data(), size, nullptr, 0, nullptr, nullptr)),
        '\0');
    WideCharToMultiByte(CP_UTF8, 0, wide.data(), size, text.data(), static_cast<int>(text.size()), nullptr, nullptr);
    return text;
}

std::string directoryOf(const std::string& file) {
    return file.substr(0, file.find_last_of("\\/"));
}

/// The module that an address of code or data lies in; null when there is none.
HMODULE moduleOf(const void* address, DWORD flags) {
    HMODULE module = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | flags, static_cast<LPCWSTR>(address), &module);
    return module;
}

const int ownData = 0;

HMODULE ownModule() {
    return moduleOf(&ownData, GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT);
}

/// The address of one of the functions that this module imports from a library, as the system wrote it into the import
/// table. (In C++, such a function's address may be that of a jump in this module.) Null when there is none.
const void* importFrom(const std::string& libraryFile) {
    const auto base = reinterpret_cast<const char*>(ownModule());
    const auto dos = reinterpret_cast<const IMAGE_DOS_HEADER*>(base);
    const auto headers = reinterpret_cast<const IMAGE_NT_HEADERS*>(base + dos->e_lfanew);
    const DWORD imports = headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT].VirtualAddress;
    for (auto library = reinterpret_cast<const IMAGE_IMPORT_DESCRIPTOR*>(base + imports); library->Name; ++library)
        if (lstrcmpiA(base + library->Name, libraryFile.c_str()) == 0)
            return *reinterpret_cast<const void* const*>(base + library->FirstThunk);
    return nullptr;
}

/// A system library that is loaded for a scope only. Those of the shell and of colours bring a dozen others with them,
/// and most of the time that loading the plug-in would take.
class SystemLibrary {
 public:
    explicit SystemLibrary(const wchar_t* name) noexcept
        : module_(LoadLibraryExW(name, nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32)) {}
    ~SystemLibrary() {
        if (module_) FreeLibrary(module_);
    }
    SystemLibrary(const SystemLibrary&) = delete;
    SystemLibrary& operator=(const SystemLibrary&) = delete;

    /// Null when it is missing, as all are without the library.
    template <class Function>
    Function* find(const char* name) const noexcept {
        return module_ ? reinterpret_cast<Function*>(findSymbol(module_, name)) : nullptr;
    }

 private:
    const HMODULE module_;
};

std::string shellFolder(int identifier) {
    const SystemLibrary shell(L"shell32.dll");
    const auto getFolderPath = shell.find<decltype(SHGetFolderPathW)>("SHGetFolderPathW");
    std::array<wchar_t, MAX_PATH> path{};
    const bool isKnown =
        getFolderPath && getFolderPath(nullptr, identifier, nullptr, SHGFP_TYPE_CURRENT, path.data()) == S_OK;
    return isKnown ? toUtf8(path.data()) : "";
}

std::string temporaryFolder() {
    std::array<wchar_t, MAX_PATH + 2> path{};
    const DWORD length = GetTempPathW(static_cast<DWORD>(path.size()), path.data());
    return length < path.size() ? toUtf8({path.data(), length}) : "";
}

std::string colorFolder() {
    const SystemLibrary colors(L"mscms.dll");
    const auto getColorDirectory = colors.find<decltype(GetColorDirectoryW)>("GetColorDirectoryW");
    std::array<wchar_t, MAX_PATH> path{};
    DWORD bytes = sizeof path;
    return getColorDirectory && getColorDirectory(nullptr, path.data(), &bytes) ? toUtf8(path.data()) : "";
}

}  // namespace

const char pathSeparator = '\\';

bool isPathSeparator(char character) noexcept {
    return character == '\\' || character == '/';
}

std::string libraryFileName(const char* libraryName) {
    return std::string(libraryName) + "_x64.dll";
}

namespace {

/// A library that is damaged or lacks its own imports is a failure like another: while this lives, the system does not
/// put a box on the screen about it and wait.
class WithoutErrorBoxes {
 public:
    WithoutErrorBoxes() noexcept { SetThreadErrorMode(SEM_FAILCRITICALERRORS | SEM_NOOPENFILEERRORBOX, &previous_); }
    ~WithoutErrorBoxes() { SetThreadErrorMode(previous_, nullptr); }
    WithoutErrorBoxes(const WithoutErrorBoxes&) = delete;
    WithoutErrorBoxes& operator=(const WithoutErrorBoxes&) = delete;

 private:
    DWORD previous_ = 0;
};

}  // namespace

// The altered search path makes the library's own imports come from its folder first, not from the host's. It is only
// defined for a path with backslashes, and a host may give us others.
Module loadModule(const std::string& path) {
    std::wstring file = toWide(path);
    std::replace(file.begin(), file.end(), L'/', L'\\');
    const WithoutErrorBoxes quiet;
    return LoadLibraryExW(file.c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
}

Module importedModule(const std::string& fileName) {
    const void* const function = importFrom(fileName);
    return function ? moduleOf(function, 0) : nullptr;
}

// Windows cuts a path that does not fit the buffer, so the buffer grows until it does.
std::string fileOf(Module module) {
    std::wstring file(MAX_PATH, L'\0');
    for (;;) {
        const DWORD length =
            GetModuleFileNameW(static_cast<HMODULE>(module), file.data(), static_cast<DWORD>(file.size()));
        if (length < file.size()) {
            file.resize(length);
            return toUtf8(file);
        }
        file.resize(file.size() * 2);
    }
}

void* findSymbol(Module module, const char* name) noexcept {
    return reinterpret_cast<void*>(GetProcAddress(static_cast<HMODULE>(module), name));
}

void freeModule(Module module) noexcept {
    FreeLibrary(static_cast<HMODULE>(module));
}

namespace {

std::atomic<UnloadFunction*> registeredLast = nullptr;

}  // namespace

void atUnload(UnloadFunction& function) noexcept {
    function.registeredBefore = registeredLast;
    while (!registeredLast.compare_exchange_weak(function.registeredBefore, &function)) {
    }
}

void runAtUnload() noexcept {
    for (const UnloadFunction* next = registeredLast.exchange(nullptr); next; next = next->registeredBefore)
        next->call();
}

std::string ownDirectory() {
    return directoryOf(fileOf(ownModule()));
}

std::string folderPath(Folder folder) {
    switch (folder) {
        case Folder::Executable:
            return directoryOf(fileOf(nullptr));
        case Folder::Temporary:
            return temporaryFolder();
        case Folder::CommonApplicationData:
            return shellFolder(CSIDL_COMMON_APPDATA);
        case Folder::UserApplicationData:
            return shellFolder(CSIDL_APPDATA);
        case Folder::ColorProfiles:
            return colorFolder();
        case Folder::Home:
            return shellFolder(CSIDL_PROFILE);
        case Folder::Desktop:
            return shellFolder(CSIDL_DESKTOP);
        case Folder::System:
            return shellFolder(CSIDL_WINDOWS);
    }
    return {};
}

// "C:\\folder", or a share or device: "\\\\server\\share". "\\folder" and "C:folder" lack a part.
bool isAbsolute(const std::string& path) noexcept {
    if (path.size() < 3) return false;
    return isPathSeparator(path[0]) ? isPathSeparator(path[1]) : path[1] == ':' && isPathSeparator(path[2]);
}

// Asked of an opened file, since the attributes of a path are those of a link and do not show devices and pipes.
bool isRegularFile(const std::string& path) {
    const HANDLE file = CreateFileW(toWide(path).c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                    nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    if (file == INVALID_HANDLE_VALUE) return false;
    BY_HANDLE_FILE_INFORMATION information{};
    const bool isRegular = GetFileType(file) == FILE_TYPE_DISK && GetFileInformationByHandle(file, &information) &&
                           (information.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
    CloseHandle(file);
    return isRegular;
}

NativePath nativePath(const std::string& path) {
    return toWide(path);
}

std::string newUuid() {
    UUID uuid{};
    RPC_CSTR text = nullptr;
    const RPC_STATUS created = UuidCreate(&uuid);
    if ((created != RPC_S_OK && created != RPC_S_UUID_LOCAL_ONLY) || UuidToStringA(&uuid, &text) != RPC_S_OK)
        throw std::runtime_error("no identifier");
    std::array<char, 37> lowerCase{};
    for (std::size_t i = 0; i + 1 < lowerCase.size() && text[i]; ++i)
        lowerCase[i] = static_cast<char>(text[i] >= 'A' && text[i] <= 'F' ? text[i] - 'A' + 'a' : text[i]);
    RpcStringFreeA(&text);
    return lowerCase.data();
}

}  // namespace torvo::platform
