#include "bridge/MonitorBridgeTemplate.h"

#include <initializer_list>
#include <string_view>
#include <utility>

#include "bridge/Errors.h"
#include "bridge/MonitorList.h"

namespace torvo {

Monitor MonitorBridgeTemplate::addressedMonitor(const RequestRecord& request) {
    const std::string& serial = request.requestParams.get("serial").text();
    const std::string& product = request.requestParams.get("product").text();
    uri.reserve(128);  // enough for nearly all
    for (const std::string_view part :
         std::initializer_list<std::string_view>{"Monitors/", product, "/", serial, "/", resourcePath_})
        uri += part;
    checkRequest(!serial.empty() && !product.empty(), "URI is invalid.");
    requireConnected(serial, product);
    return {serial.c_str(), product.c_str()};
}

BridgeResult MonitorBridgeTemplate::Get(const RequestRecord& request) {
    Get(result_, addressedMonitor(request), request);
    return std::move(result_);
}

BridgeResult MonitorBridgeTemplate::Put(const RequestRecord& request) {
    Put(result_, addressedMonitor(request), request);
    return std::move(result_);
}

BridgeResult MonitorBridgeTemplate::Post(const RequestRecord& request) {
    Post(result_, addressedMonitor(request), request);
    return std::move(result_);
}

BridgeResult MonitorBridgeTemplate::Delete(const RequestRecord& request) {
    Delete(result_, addressedMonitor(request), request);
    return std::move(result_);
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
