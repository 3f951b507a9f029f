// A resource with a URI, whose requests are logged.
#pragma once

#include <string>
#include <string_view>

#include "bridge/BridgeTemplate.h"

namespace torvo {

class Bridge : public BridgeTemplate {
 public:
    /// What every URI of the plug-in begins with.
    static constexpr const char* hostPrefix = "/pell/";

    /// Writes the request's one log line.
    void postRequest(const RequestRecord& request, const BridgeResult& result) noexcept override;

 protected:
    /// The resource's part of the URI, appended as soon as it is known so that refused requests are logged with it.
    std::string uri = hostPrefix;
};

}  // namespace torvo
