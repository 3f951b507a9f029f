#include "bridge/MonitorBridgeTemplate.h"

#include "bridge/Errors.h"
#include "bridge/MonitorList.h"

namespace torvo {

BridgeResult MonitorBridgeTemplate::callOnMonitor(MonitorMethod method, const RequestRecord& request) {
    const Monitor monitor(request.requestParams.get("serial").text(), request.requestParams.get("product").text());
    uri += "Monitors/" + monitor.product + "/" + monitor.serial + "/" + resourcePath_;
    checkRequest(!monitor.serial.empty() && !monitor.product.empty(), "URI is invalid.");
    findMonitor(monitor.serial, monitor.product);

    BridgeResult result;
    (this->*method)(result, monitor, request);
    return result;
}

BridgeResult MonitorBridgeTemplate::Get(const RequestRecord& request) {
    return callOnMonitor(&MonitorBridgeTemplate::Get, request);
}

BridgeResult MonitorBridgeTemplate::Put(const RequestRecord& request) {
    return callOnMonitor(&MonitorBridgeTemplate::Put, request);
}

BridgeResult MonitorBridgeTemplate::Post(const RequestRecord& request) {
    return callOnMonitor(&MonitorBridgeTemplate::Post, request);
}

BridgeResult MonitorBridgeTemplate::Delete(const RequestRecord& request) {
    return callOnMonitor(&MonitorBridgeTemplate::Delete, request);
}

void MonitorBridgeTemplate::Get(BridgeResult&, const Monitor&, const RequestRecord&) {
    throwMonitorMethodNotAllowed(Method::Get);
}

void MonitorBridgeTemplate::Put(BridgeResult&, const Monitor&, const RequestRecord&) {
    throwMonitorMethodNotAllowed(Method::Put);
}

void MonitorBridgeTemplate::Post(BridgeResult&, const Monitor&, const RequestRecord&) {
    throwMonitorMethodNotAllowed(Method::Post);
}

void MonitorBridgeTemplate::Delete(BridgeResult&, const Monitor&, const RequestRecord&) {
    throwMonitorMethodNotAllowed(Method::Delete);
}

}  // namespace torvo
