#include "bridge/RequestLog.h"

#include <array>
#include <charconv>
#include <cstdint>
#include <cstring>
#include <new>
#include <string_view>

#include "runtime/Logger.h"

namespace torvo {

namespace {

bool isSuccess(const BridgeResult& result) noexcept {
    return static_cast<std::uint32_t>(result.statusCode) - 200 < 100;
}

/// A NUL-terminated text in a buffer. What does not fit is left out but counted.
class Line {
 public:
    Line(char* buffer, std::size_t size) noexcept : buffer_(buffer), size_(size) { *buffer_ = '\0'; }

    void add(std::string_view text) noexcept {
        if (length_ + text.size() < size_) {
            std::memcpy(buffer_ + length_, text.data(), text.size());
            buffer_[length_ + text.size()] = '\0';
        }
        length_ += text.size();
    }

    /// Control characters percent-encoded: a line break would end the line, and a NUL would hide what follows.
    void addPrintable(std::string_view text) noexcept {
        std::size_t plain = 0;  // where what is not added yet begins
        for (std::size_t i = 0; i < text.size(); ++i) {
            const auto byte = static_cast<unsigned char>(text[i]);
            if (byte >= 0x20 && byte != 0x7F) continue;
            add(text.substr(plain, i - plain));
            add("%");
            addNumber(byte, 16, 2);
            plain = i + 1;
        }
        add(text.substr(plain));
    }

    /// With leading zeros, if it has fewer digits.
    void addNumber(auto number, int base, std::size_t digits) noexcept {
        std::array<char, 12> text;
        const char* const end = std::to_chars(text.data(), text.data() + text.size(), number, base).ptr;
        const std::string_view written(text.data(), end);
        for (std::size_t zeros = written.size(); zeros < digits; ++zeros) add("0");
        add(written);
    }

    /// Of the whole text, whether it fits or not.
    std::size_t length() const noexcept { return length_; }

 private:
    char* const buffer_;
    const std::size_t size_;
    std::size_t length_ = 0;
};

/// Writes the line; returns its length, whether it fits or not.
std::size_t formatLine(char* buffer, std::size_t size, Method method, std::string_view uri,
                       const BridgeResult& result) noexcept {
    Line line(buffer, size);
    line.add("statusCode:");
    line.addNumber(result.statusCode, 10, 1);
    line.add("\tmethod:");
    line.add(methodName(method));
    line.add("\turi:");
    line.addPrintable(uri);
    if (isSuccess(result)) {
        line.add("\tmsg:Success");
        return line.length();
    }
    line.add("\terr:");
    line.add(result.name);
    line.add("\tmsg:");
    line.add(result.message);
    if (const pocketjson::Value& code = result.error.get("code"); code.isNumber()) {
        line.add("\tcode:0x");
        line.addNumber(static_cast<std::uint32_t>(code.asInt64()), 16, 8);
    }
    return line.length();
}

}  // namespace

void logRequest(Method method, const std::string& uri, const BridgeResult& result) noexcept {
    try {
        PellLogger& logger = PellLogger::instance();
        const auto level = isSuccess(result) ? PellLogger::successLevel : PellLogger::failureLevel;

        std::array<char, 512> line;
        const std::size_t length = formatLine(line.data(), line.size(), method, uri, result);
        if (length < line.size()) return logger.log(level, line.data());
        try {
            std::string longLine(length, '\0');
            formatLine(longLine.data(), length + 1, method, uri, result);
            logger.log(level, longLine.c_str());
        } catch (const std::bad_alloc&) {
            formatLine(line.data(), line.size(), method, std::string_view(uri).substr(0, line.size() / 8), result);
            logger.log(level, line.data());
        }
    } catch (...) {
    }
}

}  // namespace torvo
