// JSON as docs/json.md says that libpell reads it, written for plainness: what the real parser is compared with.
#pragma once

#include <charconv>
#include <cstdint>
#include <cstdlib>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <string_view>

/// Recursive, so that the stack limits the depth of the texts.
class ReferenceParser {
 public:
    using Json = nlohmann::json;

    struct Options {
        bool allowTrailingComma = false;
        bool ignoreTrailingText = false;
    };

    /// Nothing for what is to be refused.
    static std::optional<Json> parse(std::string_view text, Options options) {
        ReferenceParser parser(text, options);
        parser.skipByteOrderMark();
        Json value;
        if (!parser.readValue(value)) return std::nullopt;
        if (options.ignoreTrailingText) return value;
        parser.skipSpace();
        if (!parser.atEnd() && parser.peek() != '\0') return std::nullopt;
        return value;
    }

 private:
    ReferenceParser(std::string_view text, Options options) : rest_(text), options_(options) {}

    bool atEnd() const { return rest_.empty(); }
    char peek() const { return rest_.front(); }
    bool take(std::string_view token) {
        if (!rest_.starts_with(token)) return false;
        rest_.remove_prefix(token.size());
        return true;
    }
    void skipSpace() { rest_.remove_prefix(std::min(rest_.find_first_not_of(" \t\n\r"), rest_.size())); }
    void skipByteOrderMark() { take("\xEF") && take("\xBB") && take("\xBF"); }

    bool readValue(Json& value) {
        skipSpace();
        if (take("null")) return true;
        if (take("true")) return value = true, true;
        if (take("false")) return value = false, true;
        if (take("[")) return readArray(value = Json::array());
        if (take("{")) return readObject(value = Json::object());
        if (!atEnd() && peek() == '"') {
            std::string text;
            if (!readString(text)) return false;
            value = std::move(text);
            return true;
        }
        return readNumber(value);
    }

    bool readArray(Json& array) {
        return readItems(']', [&] {
            array.push_back(nullptr);
            return readValue(array.back());
        });
    }

    bool readObject(Json& object) {
        return readItems('}', [&] {
            std::string name;
            if (!readString(name)) return false;
            skipSpace();
            return take(":") && readValue(object[name] = nullptr);
        });
    }

    /// What is between brackets; the text may end right after the opening one and right after a comma.
    template <class ReadItem>
    bool readItems(char close, const ReadItem& readItem) {
        const std::string_view closing(&close, 1);
        if (atEnd()) return true;
        skipSpace();
        if (take(closing)) return true;
        while (true) {
            if (!readItem()) return false;
            skipSpace();
            if (take(closing)) return true;
            if (!take(",")) return false;
            if (atEnd()) return true;
            skipSpace();
            if (options_.allowTrailingComma && take(closing)) return true;
        }
    }

    bool readString(std::string& text) {
        if (!take("\"")) return false;
        while (!atEnd()) {
            if (take("\"")) return true;
            if (take("\\")) {
                if (!readEscape(text)) return false;
            } else {
                text += peek();
                rest_.remove_prefix(1);
            }
        }
        return false;
    }

    bool readEscape(std::string& text) {
        constexpr std::string_view names = "\"\\/bfnrt";
        constexpr std::string_view meanings = "\"\\/\b\f\n\r\t";
        if (atEnd()) return false;
        if (const auto index = names.find(peek()); index != std::string_view::npos) {
            text += meanings[index];
            rest_.remove_prefix(1);
            return true;
        }
        std::uint32_t unit = 0;
        if (!take("u") || !readUnit(unit)) return false;
        if (unit >= 0xDC00 && unit < 0xE000) return false;
        if (unit >= 0xD800 && unit < 0xDC00) {
            std::uint32_t low = 0;
            if (!take("\\u") || !readUnit(low) || low < 0xDC00 || low >= 0xE000) return false;
            unit = 0x10000 + ((unit - 0xD800) << 10) + (low - 0xDC00);
        }
        appendUtf8(text, unit);
        return true;
    }

    bool readUnit(std::uint32_t& unit) {
        if (rest_.size() < 4) return false;
        const auto end = rest_.data() + 4;
        if (std::from_chars(rest_.data(), end, unit, 16).ptr != end) return false;
        rest_.remove_prefix(4);
        return true;
    }

    static void appendUtf8(std::string& text, std::uint32_t point) {
        const auto add = [&](std::uint32_t byte) { text += static_cast<char>(byte); };
        const auto follow = [&](unsigned shift) { add(0x80 | ((point >> shift) & 0x3F)); };
        if (point < 0x80) return add(point);
        if (point < 0x800) return add(0xC0 | (point >> 6)), follow(0);
        if (point < 0x10000) return add(0xE0 | (point >> 12)), follow(6), follow(0);
        add(0xF0 | (point >> 18)), follow(12), follow(6), follow(0);
    }

    bool skipDigits() {
        const auto count = std::min(rest_.find_first_not_of("0123456789"), rest_.size());
        rest_.remove_prefix(count);
        return count > 0;
    }

    bool readNumber(Json& value) {
        const auto begin = rest_;
        take("-");
        const bool isZero = take("0");
        if (isZero == skipDigits()) return false;  // no digits, or more behind a zero
        bool isInteger = true;
        if (take(".")) {
            isInteger = false;
            if (!skipDigits()) return false;
        }
        if (take("e") || take("E")) {
            isInteger = false;
            take("+") || take("-");
            if (!skipDigits()) return false;
        }
        const std::string token(begin.substr(0, begin.size() - rest_.size()));
        std::int64_t integer = 0;
        const auto end = token.data() + token.size();
        if (isInteger && std::from_chars(token.data(), end, integer).ec == std::errc())
            value = integer;
        else
            value = std::strtod(token.c_str(), nullptr);
        return true;
    }

    std::string_view rest_;
    const Options options_;
};
