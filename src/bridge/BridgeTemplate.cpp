#include "bridge/BridgeTemplate.h"

#include "bridge/Errors.h"
#include "bridge/Response.h"

using torvo::BridgeResult;
using torvo::BridgeResultError;
using torvo::CallTexts;
using torvo::Method;
using torvo::RequestRecord;

void BridgeTemplate::handle(BridgeResult& result, const CallTexts& texts) noexcept {
    RequestRecord request;
    try {
        request.parse(texts);
        preRequest(request);
        result = dispatch(request);
    } catch (BridgeResultError& error) {
        result = std::move(error.result);
    } catch (...) {
        result = torvo::unknownError();
    }
    torvo::writeResponse(result);
    postRequest(request, result);
}

BridgeResult BridgeTemplate::dispatch(const RequestRecord& request) {
    switch (request.method()) {
        case Method::Post:
            return Post(request);
        case Method::Put:
            return Put(request);
        case Method::Delete:
            return Delete(request);
        case Method::Get:
            break;
    }
    return Get(request);
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
