#include "bridge/Response.h"

#include <QtWebKitBridgeHelper.h>

#include <algorithm>
#include <array>

#include "bridge/Errors.h"
#include "pocketjson/Serializer.h"

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

bool writeText(BridgeResult& result) {
    std::string& text = result.text;
    if (*result.name || *result.message || !result.error.empty()) {
        text = R"({"error":)";
        if (!writeError(result, text)) return false;
        text += R"(,"value":)";
    } else {
        text = R"({"error":null,"value":)";
    }
    if (!pocketjson::write(result.value, text)) return false;
    text += '}';
    return true;
}

}  // namespace

void writeResponse(BridgeResult& result) noexcept {
    try {
        if (writeText(result)) return;
    } catch (...) {
    }
    result = unknownError();
}

Promise::Promise() : id_(BridgeHelperCreatePromiseID()) {}

Promise::~Promise() {
    settle(unknownError());
}

void Promise::settle(const BridgeResult& result) noexcept {
    if (settled_) return;
    settled_ = true;
    try {
        const char* const text = result.text.empty() ? unknownErrorText.data() : result.text.c_str();
        BridgeHelperSetResponse(id_, static_cast<std::uint32_t>(result.statusCode), text);
    } catch (...) {  // thrown by the host; the promise was handed over all the same
    }
}

}  // namespace torvo
