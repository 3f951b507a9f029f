#include "pocketjson/Parser.h"

#include <algorithm>
#include <cstring>
#include <forward_list>
#include <limits>
#include <span>
#include <utility>

#include "Number.h"
#include "Scan.h"
#include "Stack.h"

namespace pocketjson {

namespace {

// What ends a run of bytes that stand for themselves in a string.
struct QuoteOrBackslash {
    unsigned operator()(Sixteen bytes) const noexcept { return bytes.among('"', '\\'); }
    bool operator()(char byte) const noexcept { return byte == '"' || byte == '\\'; }
};

struct NoWhitespace {
    unsigned operator()(Sixteen bytes) const noexcept { return bytes.among(' ', '\n', '\r', '\t') ^ 0xFFFF; }
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

}  // namespace

namespace {

// Bytes as a number in which the first byte is the most significant one.
template <class Number>
std::uint64_t inTextOrder(const char* bytes) noexcept {
    Number number;
    std::memcpy(&number, bytes, sizeof number);
    std::uint64_t swapped = number;  // which has them the other way round
    swapped = (swapped & 0x00FF00FF00FF00FF) << 8 | (swapped >> 8 & 0x00FF00FF00FF00FF);
    swapped = (swapped & 0x0000FFFF0000FFFF) << 16 | (swapped >> 16 & 0x0000FFFF0000FFFF);
    return swapped << 32 | swapped >> 32;
}

// The first eight bytes of a text as a number: texts are ordered as these numbers are, unless those are equal.
std::uint64_t beginningOf(std::string_view text) noexcept {
    const char* const bytes = text.data();
    const std::size_t size = text.size();
    if (size >= 8) return inTextOrder<std::uint64_t>(bytes);
    if (size >= 4)
        return inTextOrder<std::uint32_t>(bytes) | inTextOrder<std::uint32_t>(bytes + size - 4) >> (8 * (size - 4));
    std::uint64_t number = 0;
    for (std::size_t i = 0; i < size; ++i)
        number |= std::uint64_t{static_cast<unsigned char>(bytes[i])} << (56 - 8 * i);
    return number;
}

}  // namespace

/// The grammar's target that builds a Value. Values are gathered on one stack until their array or object ends: an
/// array is made in its exact size, and an object from its members in order of their names. A failed parse ends the
/// containers that are open, so that what was built stays in the target.
class ValueBuilder {
 public:
    explicit ValueBuilder(Value& target) : target_(target), previous_(target) {}
    ~ValueBuilder() {
        while (!values_.empty()) Value().unpack(values_.pop());
    }
    ValueBuilder(const ValueBuilder&) = delete;
    ValueBuilder& operator=(const ValueBuilder&) = delete;

    bool null() { return add(Value()); }
    bool boolean(bool value) { return add(value); }
    bool integer(std::int64_t value) { return add(value); }
    bool floating(double value) { return add(value); }
    bool string(std::string_view text) {
        return add(Value(Value::String, new (store_) Value::Container<std::string>(text)));
    }

    bool startArray() { return open(false); }
    bool startObject() { return open(true); }

    bool key(std::string_view name, bool isDecoded) {
        if (isDecoded) name = decodedNames_.emplace_front(name);
        names_.push({name, beginningOf(name), values_.size()});
        return true;
    }

    bool endArray() {
        auto* const array = new (store_) Value::Container<Value::Elements>(values_.size() - open_.firstValue);
        const auto* packed = values_.at(open_.firstValue);
        for (Value& element : array->payload) element.unpack(*packed++);
        values_.cutTo(open_.firstValue);
        return close(Value(Value::Array, array));
    }

    bool endObject() {
        auto* const object = new (store_) Value::Container<Value::Members>;
        Value value(Value::Object, object);
        const std::size_t count = values_.size() - open_.firstValue;  // a name without a value does not count
        const std::span<Name> names(names_.at(open_.firstName), count);
        if (!std::is_sorted(names.begin(), names.end())) std::sort(names.begin(), names.end());
        // From the last name to the first: the map then compares each only once to put it before the others. Of equal
        // names the last one counts, which is met first.
        const Name* after = nullptr;
        for (auto name = names.rbegin(); name != names.rend(); after = &*name++) {
            Value member = take(name->index);
            if (!after || !name->isSameAs(*after))
                object->payload.emplace_hint(object->payload.begin(), name->text, std::move(member));
        }
        values_.cutTo(open_.firstValue);
        names_.cutTo(open_.firstName);
        return close(std::move(value));
    }

    /// Ends what a failed parse has left open.
    void abandon() {
        while (!outer_.empty()) open_.isObject ? endObject() : endArray();
    }

 private:
    // The innermost container that is open.
    struct Open {
        bool isObject;
        std::size_t firstValue;  // its entries, in values_
        std::size_t firstName;   // of an object, in names_
    };

    struct Name {
        std::string_view text;
        std::uint64_t beginning;
        std::size_t index;  // of the member's value, in values_

        friend bool operator<(const Name& left, const Name& right) noexcept {
            if (left.beginning != right.beginning) return left.beginning < right.beginning;
            const int order = left.text.compare(right.text);
            return order != 0 ? order < 0 : left.index < right.index;
        }
        bool isSameAs(const Name& other) const noexcept { return beginning == other.beginning && text == other.text; }
    };

    bool open(bool isObject) {
        outer_.push(open_);
        open_ = {isObject, values_.size(), names_.size()};
        return true;
    }

    bool close(Value&& container) {
        open_ = outer_.pop();
        return add(std::move(container));
    }

    bool add(Value value) {
        if (outer_.empty()) {
            target_.swap(value);
        } else {
            auto& packed = values_.extend();
            packed = value.pack();
        }
        return true;
    }

    Value take(std::size_t index) {
        Value value;
        value.unpack(std::exchange(*values_.at(index), Value().pack()));
        return value;
    }

    Value& target_;
    const Value previous_;  // keeps the text alive, should the target hold it
    Store::BatchAllocator store_;
    Open open_{};
    Stack<Open, 8> outer_;
    Stack<Value::Packed, 64> values_;
    Stack<Name, 16> names_;
    std::forward_list<std::string> decodedNames_;
};

namespace {

class SaxTarget {
 public:
    explicit SaxTarget(SaxHandler& handler) : handler_(handler) {}

    bool null() { return handler_.null(); }
    bool boolean(bool value) { return handler_.boolean(value); }
    bool integer(std::int64_t value) { return handler_.integer(value); }
    bool floating(double value) { return handler_.floating(value); }
    bool string(std::string_view text) { return handler_.string(text); }
    bool startArray() { return handler_.startArray(); }
    bool endArray() { return handler_.endArray(); }
    bool startObject() { return handler_.startObject(); }
    bool key(std::string_view name, bool) { return handler_.key(name); }
    bool endObject() { return handler_.endObject(); }
    void abandon() {}

 private:
    SaxHandler& handler_;
};

// The grammar. Each rule takes where it begins in the text and returns where it ends, or null after a failure. Text in
// strings and names goes to the target as a view: of the input or, when it had to be decoded, of what is used again.
template <class Target>
class Parser {
 public:
    Parser(Target& target, std::string& errorMessage, const char* begin, const char* end, unsigned flags)
        : target_(target), errorMessage_(errorMessage), begin_(begin), end_(end), flags_(flags) {
        open_.push(kOutermost);
    }

    bool document() {
        errorMessage_.clear();
        const char* at = begin_;
        for (const char byte : {'\xEF', '\xBB', '\xBF'}) {
            if (!isNext(at, byte)) break;
            ++at;
        }
        at = value(at);
        if (!at) {
            target_.abandon();
            return false;
        }
        if (flags_ & IgnoreTrailingText) return true;
        at = skipWhitespace(at);
        return at == end_ || *at == '\0' || fail("Gabage string exists after json string.");
    }

 private:
    bool isNext(const char* at, char byte) const { return at != end_ && *at == byte; }
    char byteAt(const char* at) const { return at != end_ ? *at : '\0'; }
    const char* skipWhitespace(const char* at) const {
        if (at == end_ || static_cast<unsigned char>(*at) > ' ') return at;  // mostly, there is none
        return findFirst(begin_, at, end_, NoWhitespace());
    }

    const char* fail(const char* message) {
        errorMessage_ = message;
        return nullptr;
    }
    const char* goOn(bool handled, const char* at) { return handled ? at : fail("SAX handler cancels parsing."); }

    // Nesting takes no call stack: the containers that are open are on a stack of our own.
    const char* value(const char* at) {
        for (;;) {
            at = skipWhitespace(at);
            if (at == end_) return fail(kUnexpected);
            bool first = true;  // is the entry that is due next
            if (*at == '{') {
                open_.push('}');
                at = goOn(target_.startObject(), at + 1);
            } else if (*at == '[') {
                open_.push(']');
                at = goOn(target_.startArray(), at + 1);
            } else {
                while ((at = scalar(at)) && isScalarNext(at)) ++at;
                if (open_.top() == kOutermost) return at;
                first = false;
            }
            for (bool isClosed = true; isClosed; first = false) {
                if (!at) return nullptr;
                at = nextEntry(at, first, isClosed);
                if (!isClosed) break;
                const bool handled = inObject() ? target_.endObject() : target_.endArray();
                open_.pop();
                at = goOn(handled, at);
                if (open_.top() == kOutermost) return at;
            }
            if (!at) return nullptr;
        }
    }

    // Whether an element has another one right behind it, as most have: a shorter way through the same grammar.
    bool isScalarNext(const char* at) const {
        return open_.top() == ']' && end_ - at > 1 && *at == ',' && (isDigit(at[1]) || at[1] == '-' || at[1] == '"');
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

    // Up to the value of the next entry of the innermost container, or past its closing bracket.
    const char* nextEntry(const char* at, bool first, bool& isClosed) {
        const char closingBracket = open_.top();
        const bool inObject = closingBracket == '}';
        isClosed = false;
        if (!first) {
            at = skipWhitespace(at);
            if (!isNext(at, ',')) {
                if (!isNext(at, closingBracket))
                    return fail(inObject ? kUnexpectedInObject : "Unexpected string exists while parsing array.");
                isClosed = true;
                return at + 1;
            }
            ++at;
        }
        if (at == end_) {
            isClosed = true;
            return at;
        }
        at = skipWhitespace(at);
        if (isNext(at, closingBracket)) {
            if (!first && !(flags_ & AllowTrailingComma))
                return fail(inObject ? "Unexpected comma exists while parsing object."
                                     : "Unexpected comma exists while parsing array.");
            isClosed = true;
            return at + 1;
        }
        return inObject ? name(at) : at;
    }

    const char* name(const char* at) {
        if (!isNext(at, '"')) return fail(kUnexpectedInObject);
        at = string(at + 1, [this](std::string_view text, bool isDecoded) { return target_.key(text, isDecoded); });
        if (!at) return nullptr;
        at = skipWhitespace(at);
        return isNext(at, ':') ? at + 1 : fail(kUnexpectedInObject);
    }

    bool inObject() const { return open_.top() == '}'; }

    const char* literal(const char* at, std::string_view word, const char* message) {
        const std::string_view rest(at, static_cast<std::size_t>(end_ - at));
        return rest.starts_with(word) ? at + word.size() : fail(message);
    }

    const char* number(const char* at) {
        const bool negative = *at == '-';
        if (negative) ++at;
        const char* const mantissa = at;
        if (at == end_ || !isDigit(*at)) return fail("Digit is not found while parsing number.");
        auto digits = static_cast<std::uint64_t>(*at++ - '0');
        const char* point = nullptr;
        char next = byteAt(at);
        if (next == '.') point = at++;
        for (;; point = at++) {
            at = scanDigits(at, end_, digits);
            next = byteAt(at);
            if (next != '.' || point) break;
        }

        std::int64_t count = at - mantissa, exponent = 0;
        if (*mantissa == '0') {
            --count;
            if (mantissa + 1 != (point ? point : at))
                return fail("Unexpected '0' character is found while parsing number.");
        }
        if (point) {
            --count;
            exponent = point + 1 - at;
            if (exponent == 0) return fail("Digit is not found after the decimal point while parsing number.");
        }
        const char* const mantissaEnd = at;
        if (next == 'e' || next == 'E') {
            next = byteAt(++at);
            if (next == '+' || next == '-') ++at;
            const char* const exponentDigits = at;
            std::int64_t stated = 0;
            at = scanExponent(at, end_, stated);
            if (at == exponentDigits) return fail("Digit is not found after exponent keyword while parsing number.");
            exponent += next == '-' ? -stated : stated;
        } else if (!point) {
            constexpr std::uint64_t kLargest = std::numeric_limits<std::int64_t>::max();
            if (count < kDigitsOfDecimal || (count == kDigitsOfDecimal && digits <= kLargest + negative))
                return goOn(target_.integer(static_cast<std::int64_t>(negative ? 0 - digits : digits)), at);
        }
        const double absolute = toDouble({mantissa, mantissaEnd}, count, digits, exponent);
        return goOn(target_.floating(negative ? -absolute : absolute), at);
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

    const char* skipPlainBytes(const char* at) const { return findFirst(begin_, at, end_, QuoteOrBackslash()); }

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
    static constexpr char kOutermost = '\0';
    Stack<char, 64> open_;  // the closing brackets of the open containers
    std::string decoded_;   // what escapes stand for, in the string that is being parsed
};

}  // namespace

bool parse(std::string& errorMessage, Value& target, const char* begin, const char* end, unsigned flags) {
    ValueBuilder builder(target);
    return Parser(builder, errorMessage, begin, end, flags).document();
}

bool parse(std::string& errorMessage, SaxHandler& target, const char* begin, const char* end, unsigned flags) {
    SaxTarget events(target);
    return Parser(events, errorMessage, begin, end, flags).document();
}

}  // namespace pocketjson
