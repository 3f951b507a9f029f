#include "pocketjson/Parser.h"

#include <limits>

#include "Number.h"
#include "Scan.h"
#include "Stack.h"
#include "ValueBuilder.h"

namespace pocketjson {

namespace {

// What ends a run of bytes that stand for themselves in a string.
struct QuoteOrBackslash {
    unsigned operator()(ByteBlock bytes) const noexcept { return bytes.among('"', '\\'); }
    bool operator()(char byte) const noexcept { return byte == '"' || byte == '\\'; }
};

struct NonWhitespace {
    unsigned operator()(ByteBlock bytes) const noexcept { return bytes.among(' ', '\n', '\r', '\t') ^ 0xFFFF; }
    bool operator()(char byte) const noexcept { return byte != ' ' && byte != '\n' && byte != '\r' && byte != '\t'; }
};

int hexDigit(char byte) {
    if (isDigit(byte)) return byte - '0';
    const char lower = static_cast<char>(byte | 0x20);
    return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

void appendUtf8(std::string& text, std::uint32_t codePoint) {
    const auto append = [&text](std::uint32_t byte) { text.push_back(static_cast<char>(byte)); };
    if (codePoint < 0x80) {
        append(codePoint);
        return;
    }
    if (codePoint < 0x800) {
        append(0xC0 | codePoint >> 6);
    } else {
        if (codePoint < 0x10000) {
            append(0xE0 | codePoint >> 12);
        } else {
            append(0xF0 | codePoint >> 18);
            append(0x80 | (codePoint >> 12 & 0x3F));
        }
        append(0x80 | (codePoint >> 6 & 0x3F));
    }
    append(0x80 | (codePoint & 0x3F));
}

class SaxTarget {
 public:
    explicit SaxTarget(SaxHandler& handler) : handler_(handler) {}

    bool null() { return handler_.null(); }
    bool boolean(bool value) { return handler_.boolean(value); }
    bool integer(std::int64_t value) { return handler_.integer(value); }
    bool floating(double value) { return handler_.floating(value); }
    bool string(std::string_view text) { return handler_.string(text); }
    bool startArray() { return handler_.startArray(); }
    bool endArray(std::size_t) { return handler_.endArray(); }
    bool startObject() { return handler_.startObject(); }
    bool key(std::string_view name, bool) { return handler_.key(name); }
    bool endObject(std::size_t) { return handler_.endObject(); }

 private:
    SaxHandler& handler_;
};

// The grammar. Each rule takes where it begins in the text and returns where it ends, or null after a failure. Text in
// strings and names goes to the target as a view: of the input or, when it had to be decoded, of what is used again.
template <class Target>
class Parser {
 public:
    Parser(Target& target, std::string& errorMessage, const char* begin, const char* end, unsigned flags)
        : target_(target), errorMessage_(errorMessage), begin_(begin), end_(end), flags_(flags) {}

    bool document() {
        errorMessage_.clear();
        const char* at = value(skipByteOrderMark(begin_));
        if (!at) return false;
        if (flags_ & IgnoreTrailingText) return true;
        at = skipWhitespace(at);
        return at == end_ || *at == '\0' || fail("Gabage string exists after json string.");
    }

    /// After a failure, for a target that keeps what was built.
    void endOpenContainers() {
        while (!outer_.empty()) endContainer();
    }

 private:
    // A container that is open, or the text itself.
    struct Frame {
        char closingBracket;  // of the text: none
        std::size_t count;    // of elements that are complete, or of names
    };

    bool isNext(const char* at, char byte) const { return at != end_ && *at == byte; }
    // As much of it as is there.
    const char* skipByteOrderMark(const char* at) const {
        for (const char byte : {'\xEF', '\xBB', '\xBF'}) {
            if (!isNext(at, byte)) break;
            ++at;
        }
        return at;
    }
    const char* skipWhitespace(const char* at) const {
        if (at == end_ || static_cast<unsigned char>(*at) > ' ') return at;  // mostly, there is none
        return findFirst(at, end_, NonWhitespace());
    }

    const char* fail(const char* message) {
        errorMessage_ = message;
        return nullptr;
    }
    const char* goOn(bool handled, const char* at) { return handled ? at : fail("SAX handler cancels parsing."); }

    bool inArray() const { return innermost_.closingBracket == ']'; }

    // Nesting takes no call stack: the frames of the containers that are open are on a stack of our own.
    const char* value(const char* at) {
        do {
            at = skipWhitespace(at);
            if (at == end_) return fail(kUnexpected);
            if (*at == '[' || *at == '{')
                at = startContainer(at);
            else
                at = scalars(at);
            if (at) at = upToNextValue(at);
        } while (at && !outer_.empty());
        return at;
    }

    const char* startContainer(const char* at) {
        const bool isArray = *at == '[';
        outer_.push(innermost_);
        innermost_ = {isArray ? ']' : '}', 0};
        return goOn(isArray ? target_.startArray() : target_.startObject(), at + 1);
    }

    bool endContainer() {
        const bool handled = inArray() ? target_.endArray(innermost_.count) : target_.endObject(innermost_.count);
        innermost_ = outer_.pop();
        innermost_.count += inArray();
        return handled;
    }

    // From the end of a value, or of an opening bracket, past the end of all containers that end before the next value.
    const char* upToNextValue(const char* at) {
        while (at && !outer_.empty()) {
            const bool isFirst = innermost_.count == 0;
            if (!isFirst) {
                at = skipWhitespace(at);
                if (isNext(at, innermost_.closingBracket)) {
                    at = goOn(endContainer(), at + 1);
                    continue;
                }
                if (!isNext(at, ','))
                    return fail(inArray() ? "Unexpected string exists while parsing array." : kUnexpectedInObject);
                ++at;
            }
            // Behind an opening bracket or a comma, where the end of the text ends the container as well.
            if (at != end_) {
                at = skipWhitespace(at);
                if (!isNext(at, innermost_.closingBracket)) return inArray() ? at : name(at);
                if (!isFirst && !(flags_ & AllowTrailingComma))
                    return fail(inArray() ? "Unexpected comma exists while parsing array."
                                          : "Unexpected comma exists while parsing object.");
                ++at;
            }
            at = goOn(endContainer(), at);
        }
        return at;
    }

    // A scalar, and in an array those right behind it, as most are: a shorter way through the same grammar.
    const char* scalars(const char* at) {
        for (;;) {
            at = scalar(at);
            if (!at || !inArray()) return at;
            ++innermost_.count;
            const bool isScalarNext = end_ - at > 1 && *at == ',' && (isDigit(at[1]) || at[1] == '-' || at[1] == '"');
            if (!isScalarNext) return at;
            ++at;
        }
    }

    const char* scalar(const char* at) {
        const char byte = *at;
        if (byte == '"') return string(at + 1, [this](std::string_view text, bool) { return target_.string(text); });
        if (isDigit(byte) || byte == '-') return number(at);
        switch (byte) {
            case 't':
                at = literal(at, "true", "Invalid boolean type string exists.");
                return at ? goOn(target_.boolean(true), at) : nullptr;
            case 'f':
                at = literal(at, "false", "Invalid boolean type string exists.");
                return at ? goOn(target_.boolean(false), at) : nullptr;
            case 'n':
                at = literal(at, "null", "Invalid null type string exists.");
                return at ? goOn(target_.null(), at) : nullptr;
            default:
                return fail(kUnexpected);
        }
    }

    const char* name(const char* at) {
        if (!isNext(at, '"')) return fail(kUnexpectedInObject);
        at = string(at + 1, [this](std::string_view text, bool isDecoded) { return target_.key(text, isDecoded); });
        if (!at) return nullptr;
        ++innermost_.count;
        at = skipWhitespace(at);
        return isNext(at, ':') ? at + 1 : fail(kUnexpectedInObject);
    }

    const char* literal(const char* at, std::string_view word, const char* message) {
        const std::string_view rest(at, static_cast<std::size_t>(end_ - at));
        return rest.starts_with(word) ? at + word.size() : fail(message);
    }

    const char* number(const char* at) {
        const bool isNegative = *at == '-';
        if (isNegative) ++at;  // a branch, so that what follows need not wait for the byte
        const DecimalText decimal = scanDecimal(at, end_);
        const std::ptrdiff_t integerDigits = decimal.integerEnd - decimal.begin;
        if (integerDigits == 0) return fail("Digit is not found while parsing number.");
        if (*decimal.begin == '0' && integerDigits > 1)
            return fail("Unexpected '0' character is found while parsing number.");
        if (decimal.mantissaEnd - decimal.integerEnd == 1)
            return fail("Digit is not found after the decimal point while parsing number.");
        if (decimal.lacksExponentDigits) return fail("Digit is not found after exponent keyword while parsing number.");

        if (decimal.isInteger()) {
            constexpr std::uint64_t kLargest = std::numeric_limits<std::int64_t>::max();
            if (integerDigits < kDigitsOfDecimal ||
                (integerDigits == kDigitsOfDecimal && decimal.digits <= kLargest + isNegative))
                return goOn(
                    target_.integer(static_cast<std::int64_t>(isNegative ? 0 - decimal.digits : decimal.digits)),
                    decimal.end);
        }
        const double absolute = toDouble(decimal);
        return goOn(target_.floating(isNegative ? -absolute : absolute), decimal.end);
    }

    // The text after an opening quote.
    template <class Sink>
    const char* string(const char* at, Sink sink) {
        const char* run = at;
        at = skipPlainBytes(at);
        if (isNext(at, '"')) return goOn(sink(std::string_view(run, at), false), at + 1);
        decoded_.assign(run, at);
        while (isNext(at, '\\')) {
            at = escape(at + 1);
            if (!at) return nullptr;
            run = at;
            at = skipPlainBytes(at);
            decoded_.append(run, at);
        }
        return at != end_ ? goOn(sink(decoded_, true), at + 1) : fail(kUnterminated);
    }

    const char* skipPlainBytes(const char* at) const { return findFirst(at, end_, QuoteOrBackslash()); }

    // What follows a backslash.
    const char* escape(const char* at) {
        if (at == end_) return fail(kUnterminated);
        const char letter = *at++;
        if (letter == 'u') return unicodeEscape(at);
        constexpr std::string_view kLetters = "\"\\/bfnrt", kBytes = "\"\\/\b\f\n\r\t";
        const std::size_t index = kLetters.find(letter);
        if (index == kLetters.npos) return fail("Unexpected escape character is found while parsing string.");
        decoded_.push_back(kBytes[index]);
        return at;
    }

    const char* unicodeEscape(const char* at) {
        std::uint32_t unit = 0;
        at = codeUnit(at, unit);
        if (at && unit >= 0xD800 && unit < 0xE000) {
            if (unit >= 0xDC00 || !std::string_view(at, static_cast<std::size_t>(end_ - at)).starts_with("\\u"))
                return fail(kInvalidSurrogates);
            std::uint32_t low = 0;
            at = codeUnit(at + 2, low);
            if (at && (low < 0xDC00 || low >= 0xE000)) return fail(kInvalidSurrogates);
            unit = 0x10000 + ((unit - 0xD800) << 10) + (low - 0xDC00);
        }
        if (at) appendUtf8(decoded_, unit);
        return at;
    }

    const char* codeUnit(const char* at, std::uint32_t& unit) {
        for (int i = 0; i < 4; ++i) {
            if (at == end_) return fail(kUnterminated);
            const int digit = hexDigit(*at++);
            if (digit < 0) return fail("Invalid unicode hex string is found while parsing string.");
            unit = unit << 4 | static_cast<std::uint32_t>(digit);
        }
        return at;
    }

    static constexpr const char* kUnexpected = "Unexpected character exists while parsing.";
    static constexpr const char* kUnexpectedInObject = "Unexpected string exists while parsing object.";
    static constexpr const char* kUnterminated = "Expected string ending character '\"' is not found.";
    static constexpr const char* kInvalidSurrogates = "Invalid unicode surrogate pair is found while parsing string.";

    Target& target_;
    std::string& errorMessage_;
    const char* const begin_;
    const char* const end_;
    const unsigned flags_;
    Frame innermost_{'\0', 0};
    Stack<Frame, 32> outer_;
    std::string decoded_;  // what escapes stand for, in the string that is being parsed
};

}  // namespace

bool parse(std::string& errorMessage, Value& target, const char* begin, const char* end, unsigned flags) {
    ValueBuilder builder;
    Parser parser(builder, errorMessage, begin, end, flags);
    const bool isParsed = parser.document();
    if (!isParsed) parser.endOpenContainers();
    if (builder.hasValue()) target = builder.takeValue();  // only now: the text may be one that the target holds
    return isParsed;
}

bool parse(std::string& errorMessage, SaxHandler& target, const char* begin, const char* end, unsigned flags) {
    SaxTarget events(target);
    return Parser(events, errorMessage, begin, end, flags).document();
}

}  // namespace pocketjson
