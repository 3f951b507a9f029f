#include "runtime/PathTokens.h"

#include <libPlugin.h>

#include <string>

#include "runtime/Loaders.h"
#include "runtime/platform/Platform.h"

namespace fs {

namespace {

using torvo::platform::Folder;
using HostFolder = decltype(Plg_GetRegistryPath);

/// A token stands for a folder of the system, or for one that libPlugin returns.
struct Token {
    std::string_view name;
    Folder folder{};
    NamedFunction<HostFolder> hostFolder{nullptr};
};

// In the order in which they are tried. Each of two pairs names one directory.
constexpr Token tokens[] = {
    {":executable", Folder::Executable},
    {":bundle", Folder::Executable},
    {":temporary", Folder::Temporary},
    {":common_application_data", Folder::CommonApplicationData},
    {":user_application_data", Folder::UserApplicationData},
    {":common_color_profile", Folder::ColorProfiles},
    {":user_color_profile", Folder::ColorProfiles},
    {":home", Folder::Home},
    {":desktop", Folder::Desktop},
    {":system_root", Folder::System},
    {":registry", {}, NAMED(Plg_GetRegistryPath)},
    {":html", {}, NAMED(Plg_GetRegistryHtmlPath)},
    {":exports", {}, NAMED(Plg_GetRegistryExportsPath)},
};

std::string directoryOf(const Token& token) {
    if (!token.hostFolder.name) return torvo::platform::folderPath(token.folder);
    const char* const directory = torvo::libPluginLoader::instance()(token.hostFolder)();
    return directory ? directory : "";
}

}  // namespace

Path resolve(std::string_view text) {
    for (const Token& token : tokens)
        if (text.starts_with(token.name)) return Path(directoryOf(token)).joined(text.substr(token.name.size()));
    return Path(std::string(text));
}

}  // namespace fs
