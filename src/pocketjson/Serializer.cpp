#include "pocketjson/Serializer.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <utility>

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
    unsigned operator()(ByteBlock bytes) const noexcept { return bytes.among('"', '\\', '\x7F') | bytes.upTo('\x1F'); }
    bool operator()(char byte) const noexcept { return kEscapes[static_cast<unsigned char>(byte)] != 0; }
};

// Collects text in a buffer, which is appended to a string when it is full. Writers hold the cursor in it.
class Output {
 public:
    explicit Output(std::string& text) : text_(text) {}

    char* begin() { return buffer_.data(); }
    // Where to go on with space for at least kReserve bytes.
    char* reserve(char* at) {
        if (buffer_.data() + buffer_.size() - at >= static_cast<std::ptrdiff_t>(kReserve)) return at;
        flush(at);
        return begin();
    }
    void flush(const char* at) { text_.append(buffer_.data(), static_cast<std::size_t>(at - buffer_.data())); }
    char* appendLong(char* at, std::string_view text) {
        flush(at);
        text_ += text;
        return begin();
    }

    static constexpr std::size_t kReserve = 512;

 private:
    std::string& text_;
    std::array<char, 4096> buffer_;
};

template <std::size_t Size>
char* put(char* at, const char (&text)[Size]) {
    std::memcpy(at, text, Size - 1);
    return at + Size - 1;
}

template <class Bytes>
Bytes load(const char* from) {
    Bytes bytes;
    std::memcpy(&bytes, from, sizeof bytes);
    return bytes;
}

// Copies a text and returns whether all of it stands for itself in a string. Parts of it are copied twice where that
// saves a loop over single bytes.
bool copyIfPlain(std::string_view text, char* to) {
    const char* const from = text.data();
    const std::size_t size = text.size();
    if (size >= ByteBlock::size) {
        unsigned escaped = 0;
        const auto copy = [&](std::size_t offset) {
            const ByteBlock bytes(from + offset);
            bytes.store(to + offset);
            escaped |= Escaped()(bytes);
        };
        for (std::size_t offset = 0; offset + ByteBlock::size < size; offset += ByteBlock::size) copy(offset);
        copy(size - ByteBlock::size);
        return escaped == 0;
    }
    if (size >= 8) {
        const auto first = load<std::uint64_t>(from), last = load<std::uint64_t>(from + size - 8);
        std::memcpy(to, &first, sizeof first);
        std::memcpy(to + size - 8, &last, sizeof last);
        return Escaped()(ByteBlock(first, last)) == 0;
    }
    if (size >= 4) {
        const auto first = load<std::uint32_t>(from), last = load<std::uint32_t>(from + size - 4);
        std::memcpy(to, &first, sizeof first);
        std::memcpy(to + size - 4, &last, sizeof last);
        const std::uint64_t both = first | static_cast<std::uint64_t>(last) << 32;
        return Escaped()(ByteBlock(both, both)) == 0;
    }
    bool plain = true;
    for (std::size_t i = 0; i < size; ++i) {
        to[i] = from[i];
        plain &= !Escaped()(from[i]);
    }
    return plain;
}

}  // namespace

// Writes a value. Each step takes the cursor in the output and returns it behind what it has written.
class Writer {
 public:
    Writer(std::string& output, unsigned flags)
        : output_(output), pretty_(flags & Pretty), lineBreak_(flags & CarriageReturn ? "\r\n" : "\n") {
        const auto unit = flags & (FourSpaces | Tab);
        indentUnit_ = unit == FourSpaces ? "    " : unit == Tab ? "\t" : "  ";
    }

    // Nesting takes no call stack: the containers that are open are on a stack of our own.
    bool write(const Value& value) {
        char* at = startOfValue(output_.begin(), value);
        while (!failed_ && !open_.empty()) at = output_.reserve(entries(at));
        output_.flush(at);
        return !failed_;
    }

    void write(std::string_view text) { output_.flush(string(output_.begin(), text)); }

 private:
    // Entries of the innermost open container, until another one is open or there are no more.
    char* entries(char* at) {
        const std::size_t depth = open_.size();
        Entries entries = open_.top();
        for (bool first = std::exchange(isFirst_, false); !entries.atEnd(); first = false) {
            if (!first) *at++ = ',';
            if (pretty_) at = startLine(at);
            if (entries.isObject()) {
                at = string(at, entries.name());
                *at++ = ':';
                if (pretty_) *at++ = ' ';
            }
            at = startOfValue(at, entries.value());
            if (failed_) return at;
            entries.advance();
            if (open_.size() > depth) {
                *open_.at(depth - 1) = entries;
                return at;
            }
        }
        open_.pop();
        if (pretty_) at = startLine(at);
        *at++ = entries.isObject() ? '}' : ']';
        return at;
    }

    // All of a scalar or of an array of scalars; of other containers, as much as comes before the first one in it.
    char* startOfValue(char* at, const Value& value) {
        if (!value.holds(Value::kNestedMask)) return output_.reserve(scalar(at, value));
        Entries entries(value);
        *at++ = value.isObject() ? '{' : '[';
        bool first = true;
        if (value.isArray() && !pretty_) {
            for (; !entries.atEnd() && !entries.value().holds(Value::kNestedMask); entries.advance()) {
                if (!first) *at++ = ',';
                first = false;
                at = output_.reserve(scalar(at, entries.value()));
                if (failed_) return at;
            }
        }
        if (entries.atEnd()) {
            *at++ = value.isObject() ? '}' : ']';
        } else {
            open_.push(entries);
            isFirst_ = first;
        }
        return output_.reserve(at);
    }

    char* scalar(char* at, const Value& value) {
        return value.type_ == Value::Integer ? writeNumber(value.payload_.integer, at) : otherScalar(at, value);
    }

    char* otherScalar(char* at, const Value& value) {
        switch (value.type_) {
            case Value::Float:
                failed_ = !std::isfinite(value.payload_.floating);
                return failed_ ? at : writeNumber(value.payload_.floating, at);
            case Value::String:
                return string(at, value.payload<std::string>());
            case Value::Boolean:
                return value.payload_.boolean ? put(at, "true") : put(at, "false");
            case Value::Null:
                return put(at, "null");
            default:
                return at;  // a tag that names no kind
        }
    }

    char* string(char* at, std::string_view text) {
        *at++ = '"';
        if (text.size() <= kPlainLength && copyIfPlain(text, at))
            at += text.size();
        else
            at = escaped(at, text);
        *at++ = '"';
        return output_.reserve(at);
    }

    char* escaped(char* at, std::string_view text) {
        const char* const end = text.data() + text.size();
        for (const char* run = text.data();;) {
            const char* const next = findFirst(run, end, Escaped());
            const std::string_view plain(run, next);
            at = output_.reserve(at);
            if (plain.size() > kPlainLength)
                at = output_.appendLong(at, plain);
            else
                at = std::copy(plain.begin(), plain.end(), at);
            if (next == end) return at;
            at = escape(at, static_cast<unsigned char>(*next));
            run = next + 1;
        }
    }

    static char* escape(char* at, unsigned char byte) {
        constexpr std::string_view kDigits = "0123456789abcdef";
        *at++ = '\\';
        *at++ = kEscapes[byte];
        if (kEscapes[byte] != 'u') return at;
        at = put(at, "00");
        *at++ = kDigits[byte >> 4];
        *at++ = kDigits[byte & 15];
        return at;
    }

    char* startLine(char* at) {
        at = std::copy(lineBreak_.begin(), lineBreak_.end(), at);
        for (std::size_t depth = 0; depth < open_.size(); ++depth)
            at = std::copy(indentUnit_.begin(), indentUnit_.end(), output_.reserve(at));
        return output_.reserve(at);
    }

    // Of a text that is copied at once: a reserve has space for it and for what stands beside it (quotes, separators,
    // an escape).
    static constexpr std::size_t kPlainLength = Output::kReserve - 2 * kNumberBufferSize;

    Output output_;
    const bool pretty_;
    const std::string_view lineBreak_;
    std::string_view indentUnit_;
    bool isFirst_ = false;  // whether the next entry is the first one of its container
    bool failed_ = false;
    Stack<Entries, 8> open_;
};

bool write(const Value& value, std::string& output, unsigned flags) {
    return Writer(output, flags).write(value);
}

void writeString(std::string_view text, std::string& output) {
    Writer(output, 0).write(text);
}

}  // namespace pocketjson
