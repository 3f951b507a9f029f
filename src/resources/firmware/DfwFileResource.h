// What the two resources of firmware packages share: a package is opened by POST, under an identifier, and closed by
// DELETE. They differ in how the library opens and describes it.
#pragma once

#include "bridge/Bridge.h"
#include "resources/firmware/DfwFileManager.h"
#include "runtime/Path.h"

namespace torvo::bridge {

class DfwFileResource : public Bridge {
 public:
    BridgeResult Post(const RequestRecord& request) override;
    BridgeResult Get(const RequestRecord& request) override;
    BridgeResult Delete(const RequestRecord& request) override;

 protected:
    /// `resourcePath` is the resource's part of the URI, a text of static storage.
    explicit DfwFileResource(const char* resourcePath) noexcept : resourcePath_(resourcePath) {}

 private:
    virtual FWDfwFile* open(const fs::Path& path) const = 0;

    /// What a GET answers about an open package. The manager's mutex is held.
    virtual pocketjson::Value describe(FWDfwFile* file, const pocketjson::Value& query) const = 0;

    /// The "id" of the request's parameters, which becomes part of the URI.
    const std::string& readIdentifier(const RequestRecord& request);

    const char* resourcePath_;
};

}  // namespace torvo::bridge
