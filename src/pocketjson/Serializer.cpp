#include "pocketjson/Serializer.h"

#include <array>
#include <cmath>
#include <cstring>

#include "Entries.h"
#include "Number.h"
#include "Scan.h"
#include "Stack.h"

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

struct Escaped {
    unsigned operator()(Sixteen bytes) const noexcept { return bytes.among('"', '\\', '\x7F') | bytes.upTo('\x1F'); }
    bool operator()(char byte) const noexcept { return kEscapes[static_cast<unsigned char>(byte)] != 0; }
};

// Gathers text in a buffer, which is appended to a string when it is flushed or full.
class Output {
 public:
    explicit Output(std::string& text) : text_(text) {}

    // Where so many bytes can be written, at most kRoom and sixteen.
    char* room(std::size_t size) {
        if (static_cast<std::size_t>(buffer_.data() + buffer_.size() - end_) < size) flush();
        return end_;
    }
    void endAt(char* end) { end_ = end; }

    void put(char byte) {
        *room(1) = byte;
        ++end_;
    }
    void put(std::string_view text) {
        if (text.size() > kRoom) return putLong(text);
        std::memcpy(room(text.size()), text.data(), text.size());
        end_ += text.size();
    }

    void flush() {
        text_.append(buffer_.data(), static_cast<std::size_t>(end_ - buffer_.data()));
        end_ = buffer_.data();
    }

    static constexpr std::size_t kRoom = 512;

 private:
    void putLong(std::string_view text) {
        flush();
        text_ += text;
    }

    std::string& text_;
    std::array<char, 4096> buffer_;
    char* end_ = buffer_.data();
};

}  // namespace

class Writer {
 public:
    Writer(std::string& output, unsigned flags)
        : output_(output), pretty_(flags & Pretty), lineBreak_(flags & CarriageReturn ? "\r\n" : "\n") {
        const auto unit = flags & (FourSpaces | Tab);
        indentUnit_ = unit == FourSpaces ? "    " : unit == Tab ? "\t" : "  ";
    }

    // Nesting takes no call stack: the containers that are open are on a stack of our own.
    bool write(const Value& value) {
        bool written = startOfValue(value);
        while (written && !open_.empty()) written = entries();
        output_.flush();
        return written;
    }

 private:
    // Writes entries of the innermost open container, until one is a container itself or there are no more.
    bool entries() {
        const std::size_t depth = open_.size();
        auto& entries = open_.top();
        while (!entries.atEnd()) {
            if (!firstEntry_) output_.put(',');
            firstEntry_ = false;
            startLine();
            if (entries.isObject()) {
                string(entries.name());
                output_.put(':');
                if (pretty_) output_.put(' ');
            }
            const Value& entry = entries.value();
            entries.advance();
            if (!startOfValue(entry)) return false;
            if (open_.size() > depth) return true;
        }
        const char bracket = entries.isObject() ? '}' : ']';
        open_.pop();
        startLine();
        output_.put(bracket);
        return true;
    }

    // All of a scalar or an empty container, or the opening bracket.
    bool startOfValue(const Value& value) {
        switch (value.type_) {
            case Value::Null:
                output_.put("null");
                return true;
            case Value::Boolean:
                output_.put(value.payload_.boolean ? "true" : "false");
                return true;
            case Value::Integer:
                output_.endAt(writeNumber(value.payload_.integer, output_.room(kNumberRoom)));
                return true;
            case Value::Float:
                if (!std::isfinite(value.payload_.floating)) return false;
                output_.endAt(writeNumber(value.payload_.floating, output_.room(kNumberRoom)));
                return true;
            case Value::String:
                string(value.text());
                return true;
            case Value::Object:
            case Value::Array:
                if (value.empty()) {
                    output_.put(value.isObject() ? "{}" : "[]");
                } else {
                    output_.put(value.isObject() ? '{' : '[');
                    open_.push(Entries(value));
                    firstEntry_ = true;
                }
                return true;
        }
        return true;  // a tag that names no kind
    }

    void string(std::string_view text) {
        output_.put('"');
        if (text.size() > Output::kRoom || !plainString(text)) {
            const char* const end = text.data() + text.size();
            for (const char* run = text.data();;) {
                const char* const escaped = findFirst(text.data(), run, end, Escaped());
                output_.put(std::string_view(run, escaped));
                if (escaped == end) break;
                escape(static_cast<unsigned char>(*escaped));
                run = escaped + 1;
            }
        }
        output_.put('"');
    }

    // Copies first and looks for what cannot stand for itself afterwards: in the room it can look further than the
    // text.
    bool plainString(std::string_view text) {
        char* const copy = output_.room(text.size() + Sixteen::size);
        std::memcpy(copy, text.data(), text.size());
        char* const end = copy + text.size();
        for (const char* cursor = copy; cursor < end; cursor += Sixteen::size) {
            const unsigned escaped = Escaped()(Sixteen(cursor));
            if (escaped != 0 && cursor + std::countr_zero(escaped) < end) return false;
        }
        output_.endAt(end);
        return true;
    }

    void escape(unsigned char byte) {
        constexpr std::string_view kDigits = "0123456789abcdef";
        output_.put('\\');
        output_.put(kEscapes[byte]);
        if (kEscapes[byte] == 'u') {
            output_.put("00");
            output_.put(kDigits[byte >> 4]);
            output_.put(kDigits[byte & 15]);
        }
    }

    void startLine() {
        if (!pretty_) return;
        output_.put(lineBreak_);
        for (std::size_t depth = 0; depth < open_.size(); ++depth) output_.put(indentUnit_);
    }

    Output output_;
    const bool pretty_;
    const std::string_view lineBreak_;
    std::string_view indentUnit_;
    bool firstEntry_ = true;  // of the innermost open container
    Stack<Entries, 8> open_;
};

bool write(const Value& value, std::string& output, unsigned flags) {
    return Writer(output, flags).write(value);
}

}  // namespace pocketjson
