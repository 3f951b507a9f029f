#include "bridge/RequestRecord.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "pocketjson/Parser.h"

namespace torvo {

using pocketjson::Value;

namespace {

constexpr std::array<const char*, 4> methodNames{"GET", "POST", "PUT", "DELETE"};

std::string_view viewOf(const char* text) noexcept {
    return text ? std::string_view(text) : std::string_view();
}

constexpr char upperCase(char character) noexcept {
    return character >= 'a' && character <= 'z' ? static_cast<char>(character - 'a' + 'A') : character;
}

Method methodOf(std::string_view text) noexcept {
    for (std::size_t i = 0; i < methodNames.size(); ++i) {
        const std::string_view name = methodNames[i];
        if (std::equal(text.begin(), text.end(), name.begin(), name.end(),
                       [](char left, char right) { return upperCase(left) == right; }))
            return static_cast<Method>(i);
    }
    return Method::Get;
}

}  // namespace

void RequestRecord::parse(const CallTexts& texts) {
    requestBodyText = viewOf(texts.body);
    requestOptions = pocketjson::parseOrNull(viewOf(texts.options));
    method = methodOf(requestOptions.get("method").text());
    requestParams = pocketjson::parseOrNull(viewOf(texts.params));
    requestQuery = pocketjson::parseOrNull(viewOf(texts.query));

    std::string message;
    if (!pocketjson::parse(message, requestBody, requestBodyText) && !requestBodyText.empty())
        requestBody = requestBodyText;
}

const Value& RequestRecord::data() const noexcept {
    const bool wrapped = requestBody.isObject() && requestBody.size() == 1 && requestBody.has("data");
    return wrapped ? requestBody.get("data") : requestBody;
}

const char* methodName(Method method) noexcept {
    return methodNames[static_cast<std::size_t>(method)];
}

}  // namespace torvo
