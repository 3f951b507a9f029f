#include "pocketjson/Serializer.h"

#include <array>
#include <cmath>
#include <vector>

#include "Entries.h"
#include "Number.h"

namespace pocketjson {

namespace {

// What follows the backslash for each byte that cannot stand for itself: a letter, or 'u' for \u00 and two digits.
constexpr auto kEscapes = [] {
    std::array<char, 256> escapes{};
    for (std::size_t control = 0; control < 0x20; ++control) escapes[control] = 'u';
    escapes[0x7F] = 'u';
    escapes['\b'] = 'b';
    escapes['\t'] = 't';
    escapes['\n'] = 'n';
    escapes['\f'] = 'f';
    escapes['\r'] = 'r';
    escapes['"'] = '"';
    escapes['\\'] = '\\';
    return escapes;
}();

class Writer {
 public:
    Writer(std::string& output, unsigned flags)
        : output_(output), pretty_(flags & Pretty), lineBreak_(flags & CarriageReturn ? "\r\n" : "\n") {
        const auto unit = flags & (FourSpaces | Tab);
        indentUnit_ = unit == FourSpaces ? "    " : unit == Tab ? "\t" : "  ";
    }

    // Nesting takes no call stack: the containers that are open are on a stack of our own.
    bool write(const Value& value) {
        if (!startOfValue(value)) return false;
        while (!open_.empty()) {
            auto& entries = open_.back();
            if (entries.atEnd()) {
                const char bracket = entries.isObject() ? '}' : ']';
                open_.pop_back();
                startLine();
                output_.push_back(bracket);
                continue;
            }
            if (!firstEntry_) output_.push_back(',');
            firstEntry_ = false;
            startLine();
            if (entries.isObject()) {
                string(entries.name());
                output_ += pretty_ ? ": " : ":";
            }
            const Value& entry = entries.value();
            entries.advance();
            if (!startOfValue(entry)) return false;
        }
        return true;
    }

 private:
    // All of a scalar or an empty container, or the opening bracket.
    bool startOfValue(const Value& value) {
        NumberBuffer buffer;
        switch (value.type()) {
            case Value::Null:
                output_ += "null";
                return true;
            case Value::Boolean:
                output_ += value.asBool() ? "true" : "false";
                return true;
            case Value::Integer:
                output_ += formatNumber(value.asInt64(), buffer);
                return true;
            case Value::Float:
                if (!std::isfinite(value.asDouble())) return false;
                output_ += formatNumber(value.asDouble(), buffer);
                return true;
            case Value::String:
                string(value.text());
                return true;
            case Value::Object:
            case Value::Array:
                if (value.empty()) {
                    output_ += value.isObject() ? "{}" : "[]";
                } else {
                    output_.push_back(value.isObject() ? '{' : '[');
                    open_.emplace_back(value);
                    firstEntry_ = true;
                }
                return true;
        }
        return true;  // a tag that names no kind
    }

    void string(std::string_view text) {
        constexpr std::string_view kDigits = "0123456789abcdef";
        output_.push_back('"');
        const char* run = text.data();
        const char* const end = run + text.size();
        for (const char* cursor = run; cursor != end; ++cursor) {
            const auto byte = static_cast<unsigned char>(*cursor);
            const char escape = kEscapes[byte];
            if (escape == 0) continue;
            output_.append(run, static_cast<std::size_t>(cursor - run));
            run = cursor + 1;
            output_.push_back('\\');
            output_.push_back(escape);
            if (escape == 'u') {
                output_ += "00";
                output_.push_back(kDigits[byte >> 4]);
                output_.push_back(kDigits[byte & 15]);
            }
        }
        output_.append(run, static_cast<std::size_t>(end - run));
        output_.push_back('"');
    }

    void startLine() {
        if (!pretty_) return;
        output_ += lineBreak_;
        for (std::size_t depth = 0; depth < open_.size(); ++depth) output_ += indentUnit_;
    }

    std::string& output_;
    const bool pretty_;
    const std::string_view lineBreak_;
    std::string_view indentUnit_;
    std::vector<Entries> open_;
    bool firstEntry_ = true;  // of the innermost open container
};

}  // namespace

bool write(const Value& value, std::string& output, unsigned flags) {
    return Writer(output, flags).write(value);
}

}  // namespace pocketjson
