#include "resources/firmware/DfwFileResource.h"

#include "bridge/Errors.h"
#include "bridge/Response.h"
#include "runtime/PathTokens.h"

namespace torvo::bridge {

namespace {

// A NUL would end the path early at the system's functions, and name another file than the page did.
bool isFile(const fs::Path& path) {
    return !path.empty() && path.text().find('\0') == std::string::npos && platform::isRegularFile(path.text());
}

}  // namespace

const std::string& DfwFileResource::readIdentifier(const RequestRecord& request) {
    const std::string& identifier = request.requestParams.get("id").text();
    uri += resourcePath_;
    uri += "/" + identifier;
    checkRequest(!identifier.empty(), "URI is invalid.");
    return identifier;
}

BridgeResult DfwFileResource::Post(const RequestRecord& request) {
    uri += resourcePath_;
    const fs::Path path = fs::resolve(request.data().get("path").text());
    checkRequest(isFile(path), "Input path is not a file or not existed.");
    DfwFileManager& manager = DfwFileManager::instance();
    DfwFileManager::Owner file(open(path), FWDfwFileDeleter());
    checkInternal(file != nullptr, "Failed to load dfw file.");

    // The page can close only what it has been told of: the package is kept once the answer is sure.
    const std::string identifier = platform::newUuid();
    BridgeResult result;
    result.value = {{"id", identifier}};
    writeResponseOrThrow(result);
    const std::lock_guard lock(manager.mutex());
    manager.add(identifier, std::move(file));
    return result;
}

BridgeResult DfwFileResource::Get(const RequestRecord& request) {
    const std::string& identifier = readIdentifier(request);
    const DfwFileManager& manager = DfwFileManager::instance();
    const std::lock_guard lock(manager.mutex());
    BridgeResult result;
    result.value = describe(manager.get(identifier).get(), request.requestQuery);
    return result;
}

BridgeResult DfwFileResource::Delete(const RequestRecord& request) {
    const std::string& identifier = readIdentifier(request);
    DfwFileManager& manager = DfwFileManager::instance();
    const std::lock_guard lock(manager.mutex());
    manager.close(identifier);
    return {};
}

}  // namespace torvo::bridge
