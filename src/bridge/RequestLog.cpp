#include "bridge/RequestLog.h"

#include <array>
#include <cstdint>
#include <cstdio>
#include <new>

#include "runtime/Logger.h"

namespace torvo {

namespace {

bool isSuccess(const BridgeResult& result) noexcept {
    return static_cast<std::uint32_t>(result.statusCode) - 200 < 100;
}

/// Writes the line with at most `uriLength` bytes of the URI; returns the length of the whole line, whether it fits or
/// not.
std::size_t formatLine(char* buffer, std::size_t size, Method method, const std::string& uri, std::size_t uriLength,
                       const BridgeResult& result) noexcept {
    std::array<char, 24> code{};
    if (const pocketjson::Value& value = result.error.get("code"); value.isNumber())
        std::snprintf(code.data(), code.size(), "\tcode:0x%08x", static_cast<unsigned>(value.asInt64()));

    const bool success = isSuccess(result);
    const int length =
        std::snprintf(buffer, size, "statusCode:%d\tmethod:%s\turi:%.*s%s%s\tmsg:%s%s",
                      static_cast<int>(result.statusCode), methodName(method), static_cast<int>(uriLength), uri.c_str(),
                      success ? "" : "\terr:", success ? "" : result.name, success ? "Success" : result.message,
                      success ? "" : code.data());
    return static_cast<std::size_t>(length < 0 ? 0 : length);
}

}  // namespace

void logRequest(Method method, const std::string& uri, const BridgeResult& result) noexcept {
    try {
        static const PellLogger logger;
        const auto level = isSuccess(result) ? PellLogger::successLevel : PellLogger::failureLevel;

        std::array<char, 512> line{};
        const std::size_t length = formatLine(line.data(), line.size(), method, uri, uri.size(), result);
        if (length < line.size()) return logger.log(level, line.data());
        try {
            std::string longLine(length + 1, '\0');
            formatLine(longLine.data(), longLine.size(), method, uri, uri.size(), result);
            logger.log(level, longLine.c_str());
        } catch (const std::bad_alloc&) {
            formatLine(line.data(), line.size(), method, uri, line.size() / 2, result);
            logger.log(level, line.data());
        }
    } catch (...) {
    }
}

}  // namespace torvo
