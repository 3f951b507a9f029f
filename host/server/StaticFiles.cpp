#include "host/server/StaticFiles.h"

#include <algorithm>
#include <fstream>
#include <iterator>

#include "host/Platform.h"
#include "host/Query.h"

namespace host::server {

namespace {

namespace fs = std::filesystem;

/// A file is answered from memory.
constexpr std::uintmax_t maximumSize = 64u << 20;

std::string typeOf(const fs::path& file) {
    static constexpr std::pair<std::string_view, std::string_view> types[] = {
        {".html", "text/html; charset=utf-8"},
        {".js", "text/javascript; charset=utf-8"},
        {".mjs", "text/javascript; charset=utf-8"},
        {".css", "text/css; charset=utf-8"},
        {".json", "application/json"},
        {".jsonl", "application/x-ndjson"},
        {".map", "application/json"},
        {".txt", "text/plain; charset=utf-8"},
        {".md", "text/markdown; charset=utf-8"},
        {".svg", "image/svg+xml"},
        {".png", "image/png"},
        {".jpg", "image/jpeg"},
        {".jpeg", "image/jpeg"},
        {".gif", "image/gif"},
        {".webp", "image/webp"},
        {".ico", "image/x-icon"},
        {".woff", "font/woff"},
        {".woff2", "font/woff2"},
        {".ttf", "font/ttf"},
        {".wasm", "application/wasm"},
        {".xml", "application/xml"},
        {".pdf", "application/pdf"},
    };
    auto extension = toUtf8(file.extension());
    std::transform(extension.begin(), extension.end(), extension.begin(),
                   [](unsigned char letter) { return static_cast<char>(std::tolower(letter)); });
    const auto found =
        std::find_if(std::begin(types), std::end(types), [&](const auto& type) { return type.first == extension; });
    return std::string(found == std::end(types) ? "application/octet-stream" : found->second);
}

/// A name that every system takes for a plain one. Windows takes a colon for a drive or a hidden stream, a backslash
/// for a slash, and drops dots and spaces at the end.
bool isPlainName(std::string_view name) {
    return !name.empty() && name.back() != '.' && name.back() != ' ' &&
           std::none_of(name.begin(), name.end(), [](unsigned char letter) {
               return letter < 0x20 || letter == '\\' || letter == ':' || letter == '/' || letter == 0x7f;
           });
}

/// Empty when the path is not one below the folder.
fs::path fileAt(const fs::path& folder, std::string_view path) {
    auto file = folder;
    while (!path.empty()) {
        const auto end = std::min(path.find('/'), path.size());
        const auto name = decodePercent(path.substr(0, end));
        path.remove_prefix(std::min(end + 1, path.size()));
        if (!isPlainName(name)) return {};
        file /= fromUtf8(name);
    }
    return fs::is_directory(file) ? file / "index.html" : file;
}

/// Also when it is reached through links.
bool isBelow(const fs::path& folder, const fs::path& file) {
    const auto inner = finalPath(file);
    const auto outer = finalPath(folder);
    return std::mismatch(outer.begin(), outer.end(), inner.begin(), inner.end()).first == outer.end();
}

}  // namespace

HttpResponse staticFile(const fs::path& folder, std::string_view path, const HttpRequest& request) try {
    const auto notFound = [] { return errorResponse(404, "NotFound", "There is no such file."); };
    if (request.method != "GET" && request.method != "HEAD") {
        auto response = errorResponse(405, "MethodNotAllowed", "A file can only be read.");
        response.fields.emplace_back("Allow", "GET, HEAD");
        return response;
    }
    const auto file = fileAt(folder, path);
    if (file.empty() || !fs::is_regular_file(file) || !isBelow(folder, file)) return notFound();
    const auto isFolder = file.filename() == "index.html" && !path.ends_with("index.html");
    if (isFolder && !request.path().ends_with('/')) {  // whose relative links would lead astray
        HttpResponse response{.status = 302};
        const auto query = request.query();
        const auto name = request.path().substr(request.path().rfind('/') + 1);
        response.fields = {{"Location", std::string("./") + std::string(name) + "/" +
                                            (query.empty() ? "" : "?" + std::string(query))}};
        return response;
    }
    if (fs::file_size(file) > maximumSize) return errorResponse(503, "ServiceUnavailable", "The file is too large.");
    std::ifstream stream(file, std::ios::binary);
    if (!stream) return notFound();
    return {.type = typeOf(file), .body = std::string(std::istreambuf_iterator<char>(stream), {})};
} catch (const std::exception&) {  // a name that the system does not take
    return errorResponse(404, "NotFound", "There is no such file.");
}

}  // namespace host::server
