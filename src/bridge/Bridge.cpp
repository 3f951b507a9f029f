#include "bridge/Bridge.h"

#include "bridge/RequestLog.h"

namespace torvo {

void Bridge::postRequest(const RequestRecord& request, const BridgeResult& result) noexcept {
    logRequest(request.method, uri, result);
}

}  // namespace torvo
