#include "pocketjson/Parser.h"

#include <limits>
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

/// The grammar's target that builds a Value. Elements are gathered on one stack until their array ends and their number
/// is known. A failed parse ends the containers that are open, so that they stay in the target.
class ValueBuilder {
 public:
    explicit ValueBuilder(Value& target) : target_(target), previous_(target) {}
    ~ValueBuilder() {
        while (!elements_.empty()) Value().unpack(elements_.pop());
    }
    ValueBuilder(const ValueBuilder&) = delete;
    ValueBuilder& operator=(const ValueBuilder&) = delete;

    bool null() { return add(Value()); }
    bool boolean(bool value) { return add(value); }
    bool integer(std::int64_t value) { return add(value); }
    bool floating(double value) { return add(value); }
    template <class Text>  // a view or a string to be moved
    bool string(Text&& text) {
        return add(Value(Value::String, new (store_) Value::Container<std::string>(std::forward<Text>(text))));
    }

    bool startArray() {
        Value* const slot = inArray() ? nullptr : &newSlot();
        outer_.push(open_);
        open_ = {nullptr, slot, elements_.size()};
        return true;
    }
    bool endArray() {
        auto* const array = new (store_) Value::Container<Value::Elements>(elements_.size() - open_.firstElement);
        const auto* packed = elements_.at(open_.firstElement);
        for (Value& element : array->payload) element.unpack(*packed++);
        elements_.cutTo(open_.firstElement);
        Value* const slot = open_.slot;
        open_ = outer_.pop();
        Value value(Value::Array, array);
        if (slot)
            slot->swap(value);
        else
            addElement(std::move(value));
        return true;
    }

    bool startObject() {
        auto* const object = new (store_) Value::Container<Value::Members>;
        add(Value(Value::Object, object));
        outer_.push(open_);
        open_ = {&object->payload, nullptr, 0};
        return true;
    }
    bool key(std::string_view name) {
        name_ = name;
        return true;
    }
    bool key(std::string&& name) {
        decodedName_ = std::move(name);
        return key(std::string_view(decodedName_));
    }
    bool endObject() {
        open_ = outer_.pop();
        return true;
    }

    /// Ends what a failed parse has left open.
    void abandon() {
        while (!outer_.empty()) inArray() ? endArray() : endObject();
    }

 private:
    // The innermost container that is open; the target's own place if there is none.
    struct Open {
        Value::Members* members;   // of an object
        Value* slot;               // of an array that is no element itself: where it will stand
        std::size_t firstElement;  // of an array, in elements_
    };

    bool inArray() const { return !open_.members && !outer_.empty(); }

    bool add(Value value) {
        if (inArray())
            addElement(std::move(value));
        else
            newSlot().swap(value);
        return true;
    }

    void addElement(Value&& value) {
        auto& element = elements_.extend();
        element = std::move(value).pack();
    }

    // Where the next value goes that is no element.
    Value& newSlot() {
        if (!open_.members) return target_;
        // Mostly, names come in order. A name that is there already keeps its place, and the new value replaces the
        // old.
        return open_.members->emplace_hint(open_.members->end(), name_, Value())->second;
    }

    Value& target_;
    const Value previous_;  // keeps the text alive, should the target hold it
    Store::Filler store_;
    std::string_view name_;  // of the member that is being parsed
    std::string decodedName_;
    Open open_{};
    Stack<Open, 8> outer_;
    Stack<Value::Packed, 32> elements_;
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
    bool key(std::string_view name) { return handler_.key(name); }
    bool endObject() { return handler_.endObject(); }
    void abandon() {}

 private:
    SaxHandler& handler_;
};

// The grammar. Text in strings and names goes to the target as a view of the input or, when it had to be decoded, as a
// string of its own.
template <class Target>
class Parser {
 public:
    Parser(Target& target, std::string& errorMessage, const char* begin, const char* end, unsigned flags)
        : target_(target), errorMessage_(errorMessage), begin_(begin), cursor_(begin), end_(end), flags_(flags) {}

    bool document() {
        errorMessage_.clear();
        if (skip('\xEF') && skip('\xBB')) skip('\xBF');
        if (!value()) {
            target_.abandon();
            return false;
        }
        if (flags_ & IgnoreTrailingText) return true;
        skipWhitespace();
        return atEnd() || *cursor_ == '\0' || fail("Gabage string exists after json string.");
    }

 private:
    bool atEnd() const { return cursor_ == end_; }
    bool isDigitNext() const { return cursor_ != end_ && isDigit(*cursor_); }
    bool isNext(char byte) const { return cursor_ != end_ && *cursor_ == byte; }
    bool skip(char byte) {
        if (!isNext(byte)) return false;
        ++cursor_;
        return true;
    }
    bool skip(std::string_view bytes) {
        if (!std::string_view(cursor_, static_cast<std::size_t>(end_ - cursor_)).starts_with(bytes)) return false;
        cursor_ += bytes.size();
        return true;
    }
    void skipWhitespace() {
        if (cursor_ == end_ || *cursor_ > ' ') return;  // mostly, there is none
        cursor_ = findFirst(begin_, cursor_, end_, NoWhitespace());
    }

    bool fail(const char* message) {
        errorMessage_ = message;
        return false;
    }
    bool goOn(bool handled) { return handled || fail("SAX handler cancels parsing."); }

    // Nesting takes no call stack: the containers that are open are on a stack of our own.
    bool value() {
        for (;;) {
            const std::size_t depth = open_.size();
            if (!startOfValue()) return false;
            for (bool first = open_.size() > depth;; first = false) {
                if (!first && open_.empty()) return true;
                bool isClosed = false;
                if (!nextEntry(first, isClosed)) return false;
                if (!isClosed) break;
                if (!goOn(inObject() ? target_.endObject() : target_.endArray())) return false;
                open_.pop();
            }
        }
    }

    // All of a scalar, or an opening bracket.
    bool startOfValue() {
        skipWhitespace();
        if (atEnd()) return fail("Unexpected character exists while parsing.");
        switch (*cursor_) {
            case '"':
                ++cursor_;
                return string([this](auto&& text) { return target_.string(std::forward<decltype(text)>(text)); });
            case '{':
                ++cursor_;
                open_.push('}');
                return goOn(target_.startObject());
            case '[':
                ++cursor_;
                open_.push(']');
                return goOn(target_.startArray());
            case 't':
            case 'f':
                return boolean();
            case 'n':
                return null();
            default:
                return number();
        }
    }

    // Up to the value of the next entry of the innermost container, or past its closing bracket.
    bool nextEntry(bool first, bool& isClosed) {
        if (!first) {
            skipWhitespace();
            if (!skip(',')) {
                isClosed = skip(closingBracket());
                return isClosed ||
                       fail(inObject() ? kUnexpectedInObject : "Unexpected string exists while parsing array.");
            }
        }
        if (atEnd()) return isClosed = true;
        skipWhitespace();
        if (skip(closingBracket())) {
            isClosed = true;
            return first || flags_ & AllowTrailingComma ||
                   fail(inObject() ? "Unexpected comma exists while parsing object."
                                   : "Unexpected comma exists while parsing array.");
        }
        return !inObject() || name();
    }

    bool name() {
        if (!skip('"')) return fail(kUnexpectedInObject);
        if (!string([this](auto&& text) { return target_.key(std::forward<decltype(text)>(text)); })) return false;
        skipWhitespace();
        return skip(':') || fail(kUnexpectedInObject);
    }

    char closingBracket() const { return open_.top(); }
    bool inObject() const { return closingBracket() == '}'; }

    bool boolean() {
        if (skip("true")) return goOn(target_.boolean(true));
        if (skip("false")) return goOn(target_.boolean(false));
        return fail("Invalid boolean type string exists.");
    }

    bool null() { return skip("null") ? goOn(target_.null()) : fail("Invalid null type string exists."); }

    bool number() {
        const bool negative = skip('-');
        const char* const mantissa = cursor_;
        if (!isDigitNext())
            return fail(negative ? "Digit is not found while parsing number."
                                 : "Unexpected character exists while parsing.");
        auto digits = static_cast<std::uint64_t>(*cursor_++ - '0');
        if (isDigitNext()) {
            if (digits == 0) return fail("Unexpected '0' character is found while parsing number.");
            cursor_ = scanDigits(cursor_, end_, digits);
        }

        std::int64_t count = cursor_ - mantissa, exponent = 0;
        bool isInteger = true;
        if (skip('.')) {
            isInteger = false;
            const char* const fraction = cursor_;
            cursor_ = scanDigits(cursor_, end_, digits);
            exponent = fraction - cursor_;
            count -= exponent;
            if (exponent == 0) return fail("Digit is not found after the decimal point while parsing number.");
        }
        const std::string_view mantissaText(mantissa, cursor_);
        if (skip('e') || skip('E')) {
            isInteger = false;
            const bool negativeExponent = skip('-');
            if (!negativeExponent) skip('+');
            std::int64_t stated = 0;
            const char* const exponentDigits = cursor_;
            cursor_ = scanExponent(cursor_, end_, stated);
            if (cursor_ == exponentDigits)
                return fail("Digit is not found after exponent keyword while parsing number.");
            exponent += negativeExponent ? -stated : stated;
        }

        constexpr std::uint64_t kLargest = std::numeric_limits<std::int64_t>::max();
        if (isInteger && count <= kDigitsOfDecimal && digits <= kLargest + negative)
            return goOn(target_.integer(static_cast<std::int64_t>(negative ? 0 - digits : digits)));
        const double absolute = toDouble(mantissaText, count, digits, exponent);
        return goOn(target_.floating(negative ? -absolute : absolute));
    }

    // The text after an opening quote.
    template <class Sink>
    bool string(Sink sink) {
        const char* const begin = cursor_;
        skipPlainBytes();
        const std::string_view plain(begin, cursor_);
        if (skip('"')) return goOn(sink(plain));
        std::string text(plain);
        while (skip('\\')) {
            if (!escape(text)) return false;
            const char* const run = cursor_;
            skipPlainBytes();
            text.append(run, static_cast<std::size_t>(cursor_ - run));
        }
        return skip('"') ? goOn(sink(std::move(text))) : fail(kUnterminated);
    }

    void skipPlainBytes() { cursor_ = findFirst(begin_, cursor_, end_, QuoteOrBackslash()); }

    // What follows a backslash.
    bool escape(std::string& text) {
        if (atEnd()) return fail(kUnterminated);
        switch (const char letter = *cursor_++) {
            case '"':
            case '\\':
            case '/':
                text.push_back(letter);
                return true;
            case 'b':
                text.push_back('\b');
                return true;
            case 'f':
                text.push_back('\f');
                return true;
            case 'n':
                text.push_back('\n');
                return true;
            case 'r':
                text.push_back('\r');
                return true;
            case 't':
                text.push_back('\t');
                return true;
            case 'u':
                return unicodeEscape(text);
            default:
                return fail("Unexpected escape character is found while parsing string.");
        }
    }

    bool unicodeEscape(std::string& text) {
        std::uint32_t unit = 0;
        if (!codeUnit(unit)) return false;
        if (unit >= 0xD800 && unit < 0xE000) {
            std::uint32_t low = 0;
            if (unit >= 0xDC00 || !skip("\\u")) return fail(kInvalidSurrogates);
            if (!codeUnit(low)) return false;
            if (low < 0xDC00 || low >= 0xE000) return fail(kInvalidSurrogates);
            unit = 0x10000 + ((unit - 0xD800) << 10) + (low - 0xDC00);
        }
        appendUtf8(text, unit);
        return true;
    }

    bool codeUnit(std::uint32_t& unit) {
        for (int i = 0; i < 4; ++i) {
            if (atEnd()) return fail(kUnterminated);
            const int digit = hexDigit(*cursor_++);
            if (digit < 0) return fail("Invalid unicode hex string is found while parsing string.");
            unit = unit << 4 | static_cast<std::uint32_t>(digit);
        }
        return true;
    }

    static constexpr const char* kUnexpectedInObject = "Unexpected string exists while parsing object.";
    static constexpr const char* kUnterminated = "Expected string ending character '\"' is not found.";
    static constexpr const char* kInvalidSurrogates = "Invalid unicode surrogate pair is found while parsing string.";

    Target& target_;
    std::string& errorMessage_;
    const char* const begin_;
    const char* cursor_;
    const char* const end_;
    const unsigned flags_;
    Stack<char, 64> open_;  // the closing bracket of each open container
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
