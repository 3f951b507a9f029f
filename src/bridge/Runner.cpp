#include "bridge/Runner.h"

#include "bridge/Response.h"

namespace torvo {

std::uint32_t runRequest(BridgeTemplate& resource, const CallTexts& texts) noexcept {
    try {
        Promise promise;
        BridgeResult result;
        resource.handle(result, texts);
        promise.settle(result);
        return promise.id();
    } catch (...) {  // the host could not make a promise, so there is none to settle
        return 0;
    }
}

}  // namespace torvo
