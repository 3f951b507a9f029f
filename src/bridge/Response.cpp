#include "bridge/Response.h"

#include <QtWebKitBridgeHelper.h>

#include <algorithm>
#include <array>
#include <stdexcept>

#include "bridge/Errors.h"
#include "pocketjson/Serializer.h"
#include "runtime/Gate.h"

namespace torvo {

using pocketjson::Value;

namespace {

template <std::size_t... Sizes>
consteval auto joined(const char (&... parts)[Sizes]) {
    std::array<char, ((Sizes - 1) + ...) + 1> text{};
    char* end = text.data();
    ((end = std::copy(parts, parts + Sizes - 1, end)), ...);
    return text;
}

// The unknown error as a text that is there already, for when there is no memory to write one.
constexpr auto unknownErrorText =
    joined(R"({"error":{"message":")", unknownErrorMessage, R"(","name":")", unknownErrorName, R"("},"value":null})");

bool writeError(const BridgeResult& result, std::string& text) {
    if (result.error.empty()) {  // as it mostly is
        text += R"({"message":)";
        pocketjson::writeString(result.message, text);
        text += R"(,"name":)";
        pocketjson::writeString(result.name, text);
        text += '}';
        return true;
    }
    Value error = result.error;
    error["name"] = result.name;
    error["message"] = result.message;
    return pocketjson::write(error, text);
}

bool isError(const BridgeResult& result) noexcept {
    return *result.name || *result.message || !result.error.empty();
}

bool writeText(const BridgeResult& result, std::string& text) {
    text = R"({"error":)";
    if (!isError(result))
        text += "null";
    else if (!writeError(result, text))
        return false;
    text += R"(,"value":)";
    if (!pocketjson::write(result.value, text)) return false;
    text += '}';
    return true;
}

}  // namespace

void writeResponseOrThrow(BridgeResult& result) {
    const bool isThere = !result.text.empty() || (!isError(result) && result.value.isNull());
    if (!isThere && !writeText(result, result.text)) throw std::runtime_error("no JSON");
}

void writeResponse(BridgeResult& result) noexcept {
    try {
        writeResponseOrThrow(result);
    } catch (...) {
        result = unknownError();
    }
}

const char* responseText(const BridgeResult& result) noexcept {
    if (!result.text.empty()) return result.text.c_str();
    return isError(result) ? unknownErrorText.data() : R"({"error":null,"value":null})";
}

Promise::Promise() : id_(gated(BridgeHelperCreatePromiseID)()) {}

Promise::~Promise() {
    settle(unknownError());
}

void Promise::settle(const BridgeResult& result) noexcept {
    if (settled_) return;
    settled_ = true;
    try {
        gated(BridgeHelperSetResponse)(id_, static_cast<std::uint32_t>(result.statusCode), responseText(result));
    } catch (...) {  // thrown by the host; the promise was handed over all the same
    }
}

}  // namespace torvo
