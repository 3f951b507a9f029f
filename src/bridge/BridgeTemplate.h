// The root of all resources: what happens to a request from its four texts to its result.
#pragma once

#include <cstdint>

#include "bridge/RequestRecord.h"
#include "runtime/BridgeResult.h"

/// A resource lives for one call, on the stack of its export. It overrides the methods that it serves.
class BridgeTemplate {
 public:
    BridgeTemplate() = default;
    virtual ~BridgeTemplate() = default;
    BridgeTemplate(const BridgeTemplate&) = delete;
    BridgeTemplate& operator=(const BridgeTemplate&) = delete;

    /// Parses the texts, calls the method, and fills the result, its `text` included. Whatever a handler throws becomes
    /// the result.
    virtual void handle(torvo::BridgeResult& result, const torvo::CallTexts& texts) noexcept;

    virtual void preRequest(const torvo::RequestRecord& request);

    /// Called once for every request with what the page is going to receive.
    virtual void postRequest(const torvo::RequestRecord& request, const torvo::BridgeResult& result) noexcept;

    /// The defaults throw "MethodError".
    virtual torvo::BridgeResult Get(const torvo::RequestRecord& request);
    virtual torvo::BridgeResult Put(const torvo::RequestRecord& request);
    virtual torvo::BridgeResult Post(const torvo::RequestRecord& request);
    virtual torvo::BridgeResult Delete(const torvo::RequestRecord& request);
};
