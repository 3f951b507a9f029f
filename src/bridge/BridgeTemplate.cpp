#include "bridge/BridgeTemplate.h"

#include "bridge/Errors.h"
#include "bridge/Response.h"

using torvo::BridgeResult;
using torvo::BridgeResultError;
using torvo::CallTexts;
using torvo::Method;
using torvo::RequestRecord;

namespace {

BridgeResult dispatch(BridgeTemplate& resource, const RequestRecord& request) {
    switch (request.method) {
        case Method::Post:
            return resource.Post(request);
        case Method::Put:
            return resource.Put(request);
        case Method::Delete:
            return resource.Delete(request);
        case Method::Get:
            break;
    }
    return resource.Get(request);
}

}  // namespace

void BridgeTemplate::handle(BridgeResult& result, const CallTexts& texts) noexcept {
    RequestRecord request;
    try {
        request.parse(texts);
        preRequest(request);
        result = dispatch(*this, request);
    } catch (BridgeResultError& error) {
        result = std::move(error.result);
    } catch (...) {
        result = torvo::unknownError();
    }
    torvo::writeResponse(result);
    postRequest(request, result);
}

void BridgeTemplate::preRequest(const RequestRecord&) {}

void BridgeTemplate::postRequest(const RequestRecord&, const BridgeResult&) noexcept {}

BridgeResult BridgeTemplate::Get(const RequestRecord&) {
    torvo::throwMethodNotAllowed(Method::Get);
}

BridgeResult BridgeTemplate::Put(const RequestRecord&) {
    torvo::throwMethodNotAllowed(Method::Put);
}

BridgeResult BridgeTemplate::Post(const RequestRecord&) {
    torvo::throwMethodNotAllowed(Method::Post);
}

BridgeResult BridgeTemplate::Delete(const RequestRecord&) {
    torvo::throwMethodNotAllowed(Method::Delete);
}
