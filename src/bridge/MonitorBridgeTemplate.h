// A resource of one monitor, which the request names by its serial and product.
#pragma once

#include "bridge/Bridge.h"
#include "bridge/Monitor.h"

namespace torvo {

/// Resources override the monitor-level methods that they serve. They are called for a connected monitor only; `result`
/// stands at 200 with a null value.
class MonitorBridgeTemplate : public Bridge {
 public:
    /// `resourcePath` is the last part of the URI ("SelfQC/Calibration/Target"), a text of static storage.
    explicit MonitorBridgeTemplate(const char* resourcePath) noexcept : resourcePath_(resourcePath) {}

    BridgeResult Get(const RequestRecord& request) override;
    BridgeResult Put(const RequestRecord& request) override;
    BridgeResult Post(const RequestRecord& request) override;
    BridgeResult Delete(const RequestRecord& request) override;

    /// The defaults throw "MethodError".
    virtual void Get(BridgeResult& result, const Monitor& monitor, const RequestRecord& request);
    virtual void Put(BridgeResult& result, const Monitor& monitor, const RequestRecord& request);
    virtual void Post(BridgeResult& result, const Monitor& monitor, const RequestRecord& request);
    virtual void Delete(BridgeResult& result, const Monitor& monitor, const RequestRecord& request);

 private:
    /// The monitor that the request names; the URI is extended by it. "BadRequestError" for a request that names none,
    /// "DmError" when it is not connected.
    Monitor addressedMonitor(const RequestRecord& request);

    const char* resourcePath_;
    BridgeResult result_;  // no local, so that a failed check finds nothing to clean up on its way
};

}  // namespace torvo
