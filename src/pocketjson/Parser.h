#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "pocketjson/Value.h"

namespace pocketjson {

enum ParseFlags : unsigned {
    AllowTrailingComma = 1,  ///< A comma may stand before a closing bracket.
    IgnoreTrailingText = 2,  ///< What follows the first value is not looked at.
};

/// Receives a text as a sequence of events instead of a Value. Each returns whether to go on; false ends the parse with
/// the message "SAX handler cancels parsing.". Views are good during the call only.
class SaxHandler {
 public:
    virtual ~SaxHandler() = default;
    virtual bool null() = 0;
    virtual bool boolean(bool value) = 0;
    virtual bool integer(std::int64_t value) = 0;
    virtual bool floating(double value) = 0;
    virtual bool string(std::string_view text) = 0;
    virtual bool startArray() = 0;
    virtual bool endArray() = 0;
    virtual bool startObject() = 0;
    virtual bool key(std::string_view name) = 0;
    virtual bool endObject() = 0;
};

/// Parses one JSON value (UTF-8, not validated) out of [begin, end). Returns true and an empty message, or false and
/// the English message of the first error. Nesting has no limit, and the time is linear in the length of the text but
/// for the ordering of members.
///
/// Lenient on purpose: a byte order mark (EF BB BF) at the beginning is skipped, and so are its first byte or its first
/// two; a text that ends right after an opening bracket or a comma ends that one object or array; a NUL after the value
/// and whitespace ends the text.
///
/// A number without fraction and exponent is an Integer; beyond the signed 64-bit range it is a Float, as are all other
/// numbers. A number too large for a double, such as 1e999, is an infinity, which write() refuses; one too small is 0.
///
/// On failure the target keeps what was built up to the error, unfinished containers included, and its old content if
/// nothing was. std::bad_alloc passes through, with the target as it was. The text may be one that the target holds.
bool parse(std::string& errorMessage, Value& target, const char* begin, const char* end, unsigned flags = 0);
bool parse(std::string& errorMessage, SaxHandler& target, const char* begin, const char* end, unsigned flags = 0);

inline bool parse(std::string& errorMessage, Value& target, std::string_view text, unsigned flags = 0) {
    return parse(errorMessage, target, text.data(), text.data() + text.size(), flags);
}
inline bool parse(std::string& errorMessage, SaxHandler& target, std::string_view text, unsigned flags = 0) {
    return parse(errorMessage, target, text.data(), text.data() + text.size(), flags);
}

/// The value of a text, or null when it cannot be parsed.
inline Value parseOrNull(std::string_view text) {
    Value value;
    std::string message;
    if (!parse(message, value, text)) value = nullptr;
    return value;
}

}  // namespace pocketjson
