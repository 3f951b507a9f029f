#include "host/Doctor.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <set>

#include "host/DoctorTables.h"
#include "host/Image.h"
#include "host/Platform.h"
#include "host/Report.h"

namespace host {

namespace {

using std::filesystem::path;
namespace platform = torvo::platform;

/// A companion library. Its functions begin with the prefix.
struct Companion {
    std::string_view name;
    std::string_view prefix;
    bool isImported;
};
constexpr Companion libdmc{"libdmc", "DmCtrl", true}, libcolour{"libcolour", "Colour_", true},
    bridgeHelper{"QtWebKitBridgeHelper", "BridgeHelper", true}, libfwupdate{"libfwupdate", "FW", false},
    libPlugin{"libPlugin", "Plg_", false}, libscrivo2{"libscrivo2", "scrivo_", false};

/// A folder that is looked in, and what people call it.
struct Place {
    std::string name;
    path folder;
};
using Places = std::vector<Place>;

/// The first file of a name that can be used.
struct Found {
    Place place;
    path file;
    Image image;
};

std::string fileNameOf(const Companion& companion) {
    auto name = platform::libraryFileName(std::string(companion.name).c_str());
    if (companion.name != bridgeHelper.name) return name;
    return std::string(companion.name) + path(name).extension().string();
}

bool isSameName(std::string_view left, std::string_view right) {
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [](unsigned char a, unsigned char b) { return std::tolower(a) == std::tolower(b); });
}

bool isSameFolder(const path& left, const path& right) {
    std::error_code error;
    return left == right || std::filesystem::equivalent(left, right, error);
}

bool isFile(const path& file) {
    std::error_code error;
    return std::filesystem::is_regular_file(file, error);
}

/// The first file of a name that is there, and cannot be used; no text when there is none.
struct Unusable {
    std::string text;
    bool isUnreadable = false;
};

enum class Presence { missing, unknown, present };
constexpr auto unreadableFolder = "its folder cannot be read, for want of permissions";
constexpr auto readableFolder = "Get the permission to read the folder, or ask as a user who has it.";

Presence presenceOf(const path& file) {
    std::error_code error;
    const auto type = std::filesystem::status(file, error).type();
    if (error == std::errc::permission_denied) return Presence::unknown;
    return std::filesystem::exists(std::filesystem::file_status(type)) ? Presence::present : Presence::missing;
}

/// The first of a list, and how many more there are.
std::string some(const std::vector<std::string>& names) {
    constexpr std::size_t shown = 4;
    std::string text;
    for (std::size_t i = 0; i < std::min(shown, names.size()); ++i) text += (i > 0 ? ", " : "") + names[i];
    return names.size() > shown ? text + " and " + std::to_string(names.size() - shown) + " more" : text;
}

std::string counted(std::size_t count, const std::string& noun) {
    return std::to_string(count) + " " + noun + (count == 1 ? "" : "s");
}

/// A resource that tells more than whether it is there, such as KVMSetting, answers an object.
bool saysYes(const Json& supports) {
    return (supports.is_object() ? supports.value("supports", Json()) : supports) == true;
}

std::string listOf(const Places& places) {
    std::string text;
    for (std::size_t i = 0; i < places.size(); ++i)
        text += (i == 0 ? "" : i + 1 == places.size() ? " and " : ", ") + places[i].name;
    return text;
}

class Examination {
 public:
    Examination(const Installation& installation, const Progress& progress)
        : plugin_(std::filesystem::absolute(installation.plugin).make_preferred()),
          own_{"libpell's folder", plugin_.parent_path()},
          program_{"the program's folder", installation.program.empty()
                                               ? own_.folder
                                               : std::filesystem::absolute(installation.program).make_preferred()},
          progress_(progress) {}

    Json run() {
        document_["plugin"] = {{"file", toUtf8(plugin_)}, {"version", nullptr}, {"exports", nullptr}};
        document_["folders"] = {{"libpell", toUtf8(own_.folder)}, {"program", toUtf8(program_.folder)}};
        const auto image = examinePlugin();
        for (const auto& companion : {libdmc, libcolour, bridgeHelper}) examineImported(companion, image);
        const auto byName = placesByName();
        examineByName(libfwupdate, byName, "the firmware of monitors cannot be updated");
        const auto host =
            examineByName(libPlugin, byName, "no request is logged, and tokens for the host's folders answer 404");
        document_["unavailable"] = image && dmc_ ? resourcesThatLackFunctions() : Json();
        document_["monitors"] = nullptr;
        const bool isComplete = errors_.empty();
        addConclusion();
        progress_.onFilesRead(document_);
        examineFolders(host);
        examineLogger();
        if (isComplete) askPlugin();
        addConclusion();
        return std::move(document_);
    }

 private:
    void addError(std::string_view about, const std::string& text, const std::string& remedy) {
        errors_.push_back({{"severity", "error"}, {"about", about}, {"text", text}, {"remedy", remedy}});
    }
    void addWarning(std::string_view about, const std::string& text, const std::string& remedy) {
        warnings_.push_back({{"severity", "warning"}, {"about", about}, {"text", text}, {"remedy", remedy}});
    }

    void addConclusion() {
        document_["ok"] = errors_.empty();
        auto& problems = document_["problems"] = errors_;
        problems.insert(problems.end(), warnings_.begin(), warnings_.end());
    }

    std::optional<Image> examinePlugin() {
        const std::string file = toUtf8(plugin_), remedy = "Name the libpell of the installation with --plugin.";
        std::error_code error;
        if (std::filesystem::is_directory(plugin_, error)) {
            addError("libpell", file + " cannot be used: it is a folder.", remedy);
            return {};
        }
        const auto presence = presenceOf(plugin_);
        if (presence == Presence::unknown)
            addError("libpell", file + " cannot be used: " + unreadableFolder + ".", readableFolder);
        if (presence == Presence::missing) addError("libpell", "There is no file " + file + ".", remedy);
        if (presence != Presence::present) return {};
        try {
            Image image = readImage(plugin_);
            if (!image.version.empty()) document_["plugin"]["version"] = image.version;
            std::vector<std::string> lacking;
            for (const auto name : exportNames)
                if (!image.exports.contains(name)) lacking.emplace_back(name);
            document_["plugin"]["exports"] = {{"count", exportNames.size()}, {"missing", lacking}};
            if (lacking.size() == exportNames.size()) {
                addError("libpell", file + " is not libpell: it has none of the functions, such as " + lacking[0] + ".",
                         remedy);
                return {};
            }
            if (!lacking.empty())
                addError("libpell", "This libpell lacks " + some(lacking) + ": it is older than this pellhost.",
                         "Install the libpell that came with this pellhost, or use the pellhost of that one.");
            return image;
        } catch (const std::runtime_error& reason) {
            addError("libpell", file + " cannot be used: " + reason.what() + ".",
                     "Compare it with the SHA256SUMS of its release, and install it anew. If it is another library, "
                     "name libpell with --plugin.");
            return {};
        }
    }

    /// Where the system looks for what libpell imports, when the host loads libpell with the altered search path. What
    /// the host's program has loaded before comes first; but whether it has, cannot be known here.
    Places placesOfImports() const {
        Places places{own_};
        for (const auto& folder : systemFolders()) places.push_back({"the system's folders", folder});
        for (const auto& folder : searchPath()) places.push_back({"the search path", folder});
        places.push_back(program_);
        return places;
    }

    Places placesByName() const {
        Places places{own_};
        if (dmc_) places.push_back({"libdmc's folder", dmc_->file.parent_path()});
        places.push_back(program_);
        return places;
    }

    /// The library in the first place that has it. By name, one that cannot be used is passed over for the next.
    std::optional<Found> lookFor(const Companion& companion, const Places& places, Json& library) {
        std::optional<Found> found;
        auto& searched = library["searched"] = Json::array();
        std::vector<path> folders;
        for (const auto& place : places) {
            const auto isKnown = [&](const path& folder) { return isSameFolder(folder, place.folder); };
            if (std::any_of(folders.begin(), folders.end(), isKnown)) continue;
            folders.push_back(place.folder);
            const path file = place.folder / fileNameOf(companion);
            Json& entry = searched.emplace_back(
                Json{{"place", place.name}, {"file", toUtf8(file)}, {"state", "missing"}, {"reason", nullptr}});
            const auto presence = presenceOf(file);
            if (presence == Presence::missing) continue;
            if (presence == Presence::unknown) {
                entry["state"] = "unusable";
                entry["reason"] = unreadableFolder;
                if (!found) unusable_ = {toUtf8(file) + " cannot be used: " + unreadableFolder + ".", true};
                continue;  // as the system does
            }
            try {
                Image image = readImage(file);
                const auto obstacle = obstacleTo(file, image);
                if (!obstacle.empty()) throw std::runtime_error(obstacle);
                entry["state"] = found ? "passed over" : "found";
                if (!found) found = {place, file, std::move(image)};
            } catch (const std::runtime_error& error) {
                entry["state"] = "unusable";
                entry["reason"] = error.what();
                if (!found) unusable_ = {toUtf8(file) + " cannot be used: " + error.what() + ".", false};
                if (companion.isImported) return found;
            }
        }
        return found;
    }

    /// Why the system cannot load a library: what it imports is missing. Only Windows' files tell where that should be.
    std::string obstacleTo(const path& file, const Image& image) {
        for (const auto& [library, functions] : image.imports) {
            const auto name = library;
            const auto isCompanion = [&](const Companion& companion) {
                return isSameName(fileNameOf(companion), name);
            };
            if (functions.empty() || name.starts_with("api-ms-") || name.starts_with("ext-ms-")) continue;
            if (std::ranges::any_of(std::array{libdmc, libcolour, bridgeHelper}, isCompanion)) continue;
            auto places = placesOfImports();
            places.push_back({"", file.parent_path()});
            const auto place = std::ranges::find_if(places, [&](const auto& p) { return isFile(p.folder / name); });
            if (place == places.end()) return "it needs " + name + ", which is not installed";
            if (place->name == "the system's folders" || !visited_.insert(place->folder / name).second) continue;
            const Image needed = readImage(place->folder / name);
            for (const auto& function : functions)
                if (!needed.exports.contains(function))
                    return "it needs " + function + ", which " + toUtf8(place->folder / name) + " does not have";
            if (const auto further = obstacleTo(place->folder / name, needed); !further.empty())
                return std::string("the ").append(name).append(" that it needs cannot be used: ").append(further);
        }
        return {};
    }

    Json& addLibrary(const Companion& companion) {
        return document_["libraries"].emplace_back(Json{{"name", companion.name},
                                                        {"file", fileNameOf(companion)},
                                                        {"needed", companion.isImported},
                                                        {"found", nullptr},
                                                        {"place", nullptr},
                                                        {"version", nullptr},
                                                        {"searched", Json::array()}});
    }

    void describe(Json& library, const std::optional<Found>& found) {
        if (!found) return;
        library["found"] = toUtf8(found->file);
        library["place"] = found->place.name;
        if (!found->image.version.empty()) library["version"] = found->image.version;
    }

    /// How many of these functions there should be, and which the library does not have.
    static std::vector<std::string> addFunctions(Json& library, const char* member,
                                                 const std::vector<std::string>& functions,
                                                 const std::optional<Found>& found) {
        std::vector<std::string> missing;
        for (const auto& function : functions)
            if (!found || !found->image.exports.contains(function)) missing.push_back(function);
        library[member] = {{"count", functions.size()}, {"missing", missing}};
        return missing;
    }

    static std::vector<std::string> importsOf(const Image& image, const Companion& companion) {
        std::vector<std::string> functions;
        for (const auto& import : image.imports)
            if (isSameName(import.library, fileNameOf(companion))) functions = import.functions;
        for (const auto& function : image.unresolved)
            if (function.starts_with(companion.prefix)) functions.push_back(function);
        return functions;
    }

    static std::vector<std::string> namesOf(const Companion& companion) {
        std::vector<std::string> functions;
        for (const auto function : functionsByName)
            if (function.starts_with(companion.prefix)) functions.emplace_back(function);
        return functions;
    }

    void examineImported(const Companion& companion, const std::optional<Image>& plugin) {
        auto& library = addLibrary(companion);
        const auto places = placesOfImports();
        unusable_ = {};
        const auto found = lookFor(companion, places, library);
        describe(library, found);
        const auto file = fileNameOf(companion);
        const auto lacking = addFunctions(library, "imported",
                                          plugin ? importsOf(*plugin, companion) : std::vector<std::string>(), found);
        if (companion.name == libdmc.name) {
            const auto older = addFunctions(library, "byName", namesOf(companion), found);
            if (found) noteMissing(older);  // without libdmc nothing is answered at all
            if (found && !older.empty())
                addWarning(companion.name,
                           "This libdmc lacks " + counted(older.size(), "newer function") + ", of " +
                               std::to_string(namesOf(companion).size()) + ": requests that need one answer 404.",
                           "Install a newer libdmc if the page makes such requests.");
            dmc_ = found;
        }
        if (!found) {
            const std::string remedy = unusable_.isUnreadable    ? std::string(readableFolder) + " Or install one in "
                                       : !unusable_.text.empty() ? "Install what it needs, or one that can be used, in "
                                       : companion.name == bridgeHelper.name
                                           ? "Build one, as examples/host does, and install it in "
                                           : "Install it in ";
            addError(
                companion.name,
                unusable_.text.empty() ? file + " is missing: libpell cannot be loaded without it." : unusable_.text,
                remedy + toUtf8(own_.folder) + ", or have the host load it, by its full path, before libpell.");
            return;
        }
        if (companion.name != bridgeHelper.name) files_.push_back(found->file);
        if (!lacking.empty())
            addError(companion.name,
                     toUtf8(found->file) + " lacks " + counted(lacking.size(), "function") +
                         " that libpell imports: " + some(lacking) + ". libpell cannot be loaded with it.",
                     "Install a " + file + " that has them.");
        if (found->place.name == program_.name && !isSameFolder(program_.folder, own_.folder))
            addWarning(companion.name,
                       file +
                           " lies in the program's folder only, where it is not looked for when libpell is loaded "
                           "with the altered search path.",
                       "Have the host load it before libpell, as a program does that is linked against it.");
        if (std::ranges::any_of(library["searched"], [](const Json& one) { return one["state"] == "passed over"; }))
            addWarning(companion.name,
                       "There is more than one " + file +
                           ": one that the host has loaded before libpell is used, else " + toUtf8(found->file) + ".",
                       "Remove all but one of them.");
    }

    std::optional<Found> examineByName(const Companion& companion, const Places& places, const std::string& effect) {
        auto& library = addLibrary(companion);
        unusable_ = {};
        auto found = lookFor(companion, places, library);
        describe(library, found);
        const auto functions = namesOf(companion);
        const auto lacking = addFunctions(library, "byName", functions, found);
        noteMissing(lacking);
        if (!unusable_.text.empty())
            addWarning(companion.name, unusable_.text,
                       unusable_.isUnreadable ? readableFolder
                                              : "Install what it needs, or one that can be used; or remove it.");
        if (!found && unusable_.text.empty())
            addWarning(companion.name, fileNameOf(companion) + " is missing: " + effect + ".",
                       "Install it in " + listOf(uniquePlaces(places)) + ".");
        if (found && !lacking.empty())
            addWarning(companion.name,
                       toUtf8(found->file) + " lacks " + counted(lacking.size(), "function") + ", of " +
                           std::to_string(functions.size()) + ": " + some(lacking) + ".",
                       "Install a newer one.");
        return found;
    }

    static Places uniquePlaces(const Places& places) {
        Places unique;
        for (const auto& place : places)
            if (std::ranges::none_of(unique, [&](const Place& p) { return isSameFolder(p.folder, place.folder); }))
                unique.push_back(place);
        for (std::size_t i = 0; i + 1 < unique.size(); ++i) unique[i].name += i + 2 == unique.size() ? " or" : "";
        return unique;
    }

    void noteMissing(const std::vector<std::string>& functions) { missing_.insert(functions.begin(), functions.end()); }

    /// The folders that tokens at the start of a path stand for, as libpell resolves them.
    void examineFolders(const std::optional<Found>& host) {
        std::optional<Library> library;
        if (host) try {
                progress_.onLoading(host->file);
                library.emplace(host->file);
            } catch (const std::runtime_error& error) {
                addWarning(libPlugin.name, error.what(), "Install one that can be loaded.");
            }
        auto& tokens = document_["tokens"] = Json::array();
        for (const auto& token : pathTokens) {
            std::string folder;
            if (token.function) {
                const auto function =
                    library ? reinterpret_cast<const char* (*)()>(library->find(token.function)) : nullptr;
                const char* const text = function ? function() : nullptr;
                folder = text ? text : "";
            } else {
                folder = token.folder == platform::Folder::Executable ? toUtf8(program_.folder)
                                                                      : platform::folderPath(token.folder);
            }
            tokens.push_back({{"token", token.token}, {"folder", folder.empty() ? Json() : Json(folder)}});
            if (token.token == ":exports") exports_ = folder;
            if (folder.empty() && (!token.function || library))
                addWarning(
                    "tokens", std::string(token.token) + " stands for no folder: paths that begin with it are refused.",
                    token.function ? "Have the host's libPlugin return one." : "Have the system tell it to this user.");
        }
    }

    void examineLogger() {
        if (exports_.empty() || !platform::isAbsolute(exports_)) {
            addLibrary(libscrivo2)["byName"] = {{"count", namesOf(libscrivo2).size()},
                                                {"missing", namesOf(libscrivo2)}};
            if (!exports_.empty())
                addWarning(libscrivo2.name,
                           "libPlugin names the folder " + exports_ +
                               " for libscrivo2, which depends on the current directory: no request is logged.",
                           "Have libPlugin return a full path.");
            return;
        }
        examineByName(libscrivo2, {{"the folder of :exports", fromUtf8(exports_)}}, "no request is logged");
    }

    Json resourcesThatLackFunctions() const {
        auto unavailable = Json::array();
        for (const auto& [resource, tellsSupport, functions] : resourceNeeds) {
            auto missing = Json::array();
            for (const auto& function : missing_)
                if (functions.find(" " + function + " ") != std::string_view::npos) missing.push_back(function);
            if (!missing.empty()) unavailable.push_back({{"resource", resource}, {"functions", missing}});
        }
        return unavailable;
    }

    /// Loads what was found, each by its full path, so that it is just this that libpell is bound to.
    void askPlugin() {
        std::vector<std::unique_ptr<Library>> libraries;
        std::optional<Session> session;
        try {
            for (const auto& file : files_) {
                progress_.onLoading(file);
                libraries.push_back(std::make_unique<Library>(file));
            }
            progress_.onLoading(plugin_);
            session.emplace(plugin_);
        } catch (const std::runtime_error& error) {
            addError("libpell", "The system " + std::string(error.what()) + ".",
                     "See what the system says; a virus scanner or the file's permissions may be in the way.");
            return;
        }
        const auto outcome = readOutcome(session->call({.resource = "Monitors"}));
        if (!outcome.succeeded()) {
            addError(libdmc.name, "The monitors cannot be listed: " + describeError(outcome.error),
                     "Ask the monitors' own software for them; restart it, or the computer.");
            return;
        }
        document_["monitors"] = {{"simulated", simulator::companionsAreSimulated()}, {"list", Json::array()}};
        for (const auto& monitor : outcome.value)
            document_["monitors"]["list"].push_back(askMonitor(*session, monitor));
        if (outcome.value.empty())
            addWarning("monitors", "No monitor is connected.",
                       "Connect one with a USB cable beside the one for the picture, and ask again.");
    }

    Json askMonitor(const Session& session, const Json& monitor) {
        Json answer{{"product", monitor.at("product")}, {"serial", monitor.at("serial")}};
        auto& supported = answer["supported"] = Json::array();
        auto& unsupported = answer["unsupported"] = Json::array();
        auto& unavailable = answer["unavailable"] = Json::array();
        auto& failing = answer["failing"] = Json::array();
        for (const auto& [resource, tellsSupport, functions] : resourceNeeds) {
            if (!tellsSupport) continue;
            const auto outcome = readOutcome(session.call(host::Request{.resource = std::string(resource),
                                                                        .product = monitor.at("product"),
                                                                        .serial = monitor.at("serial"),
                                                                        .query = R"({"supports":true})"}));
            if (outcome.succeeded())
                (saysYes(outcome.value) ? supported : unsupported).push_back(resource);
            else if (outcome.status == 404)
                unavailable.push_back(resource);
            else
                failing.push_back({{"resource", resource}, {"error", describeError(outcome.error)}});
        }
        const auto name = monitor.at("product").get<std::string>() + "/" + monitor.at("serial").get<std::string>();
        if (!failing.empty())
            addWarning("monitors", name + " fails to tell what it supports: " + failing[0]["error"].get<std::string>(),
                       "Check its cable and its power, and ask again.");
        return answer;
    }

    const path plugin_;
    const Place own_;
    const Place program_;
    const Progress& progress_;
    Json document_;
    Json errors_ = Json::array();
    Json warnings_ = Json::array();
    std::optional<Found> dmc_;
    std::vector<path> files_;  // of the imported libraries, but for the bridge helper, of which pellhost has its own
    std::set<path> visited_;   // what was looked at on the way to an obstacle
    Unusable unusable_;
    std::set<std::string> missing_;  // functions that no library has
    std::string exports_;
};

}  // namespace

Json examine(const Installation& installation, const Progress& progress) {
    return Examination(installation, progress).run();
}

}  // namespace host
