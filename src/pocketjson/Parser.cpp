#include "pocketjson/Parser.h"

#include <charconv>
#include <iterator>
#include <utility>
#include <vector>

#include "Number.h"

namespace pocketjson {

namespace {

bool isDigit(char byte) {
    return byte >= '0' && byte <= '9';
}
bool isWhitespace(char byte) {
    return byte == ' ' || byte == '\n' || byte == '\r' || byte == '\t';
}

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

/// The grammar's target that builds a Value. Containers stand in their parents from their beginning, so that a failed
/// parse leaves them there; only the elements of open arrays are kept aside, on one stack, until their number is known.
class ValueBuilder {
 public:
    explicit ValueBuilder(Value& target) : target_(target), previous_(target) {}

    bool null() { return add({}); }
    bool boolean(bool value) { return add(value); }
    bool integer(std::int64_t value) { return add(value); }
    bool floating(double value) { return add(value); }
    bool string(std::string_view text) { return add(text); }
    bool string(std::string&& text) { return add(std::move(text)); }
    bool startArray() {
        Value array = Value::array();
        auto* const elements = &array.payload<Value::Elements>();
        add(std::move(array));
        open_.push_back({nullptr, elements, elements_.size()});
        return true;
    }
    bool endArray() {
        const auto first = elements_.begin() + static_cast<std::ptrdiff_t>(open_.back().firstElement);
        open_.back().elements->assign(std::move_iterator(first), std::move_iterator(elements_.end()));
        elements_.erase(first, elements_.end());
        open_.pop_back();
        return true;
    }
    bool startObject() {
        Value object = Value::object();
        auto* const members = &object.payload<Value::Members>();
        add(std::move(object));
        open_.push_back({members, nullptr, 0});
        return true;
    }
    bool key(std::string_view name) {
        name_ = name;
        return true;
    }
    bool key(std::string&& name) {
        name_ = std::move(name);
        return true;
    }
    bool endObject() {
        open_.pop_back();
        return true;
    }

    /// Ends what a failed parse has left open.
    void abandon() {
        while (!open_.empty()) open_.back().elements ? endArray() : endObject();
    }

 private:
    struct Open {
        Value::Members* members;    // of an object
        Value::Elements* elements;  // of an array
        std::size_t firstElement;   // of an array, in elements_
    };

    bool add(Value value) {
        if (open_.empty()) {
            target_ = std::move(value);
        } else if (auto* members = open_.back().members) {
            members->insert_or_assign(members->end(), std::move(name_), std::move(value));
        } else {
            elements_.push_back(std::move(value));
        }
        return true;
    }

    Value& target_;
    const Value previous_;  // keeps the text alive, should the target hold it
    std::vector<Open> open_;
    std::vector<Value> elements_;
    std::string name_;  // of the member that is being parsed
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
        : target_(target), errorMessage_(errorMessage), cursor_(begin), end_(end), flags_(flags) {}

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
    // What is due next.
    enum class Step { Value, FirstEntry, NextEntry, Separator, Failure };

    bool atEnd() const { return cursor_ == end_; }
    bool isNext(char byte) const { return cursor_ != end_ && *cursor_ == byte; }
    bool isDigitNext() const { return cursor_ != end_ && isDigit(*cursor_); }
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
        while (cursor_ != end_ && isWhitespace(*cursor_)) ++cursor_;
    }
    void skipDigits() {
        while (isDigitNext()) ++cursor_;
    }

    bool fail(const char* message) {
        errorMessage_ = message;
        return false;
    }
    bool goOn(bool handled) { return handled || fail("SAX handler cancels parsing."); }
    static Step stepAfter(bool success, Step next) { return success ? next : Step::Failure; }

    // Nesting takes no call stack: the containers that are open are on a stack of our own.
    bool value() {
        for (Step step = Step::Value;;) {
            switch (step) {
                case Step::Value:
                    step = startOfValue();
                    break;
                case Step::FirstEntry:
                    step = entry(true);
                    break;
                case Step::NextEntry:
                    step = entry(false);
                    break;
                case Step::Separator:
                    if (open_.empty()) return true;
                    step = separator();
                    break;
                case Step::Failure:
                    return false;
            }
        }
    }

    Step startOfValue() {
        skipWhitespace();
        if (atEnd()) return stepAfter(fail("Unexpected character exists while parsing."), Step::Failure);
        switch (*cursor_) {
            case '"':
                ++cursor_;
                return stepAfter(
                    string([this](auto&& text) { return target_.string(std::forward<decltype(text)>(text)); }),
                    Step::Separator);
            case '{':
                ++cursor_;
                open_.push_back('}');
                return stepAfter(goOn(target_.startObject()), Step::FirstEntry);
            case '[':
                ++cursor_;
                open_.push_back(']');
                return stepAfter(goOn(target_.startArray()), Step::FirstEntry);
            case 't':
            case 'f':
                return stepAfter(boolean(), Step::Separator);
            case 'n':
                return stepAfter(null(), Step::Separator);
            default:
                return stepAfter(number(), Step::Separator);
        }
    }

    // Where an entry may stand, after the opening bracket or a comma.
    Step entry(bool first) {
        if (atEnd()) return close();
        skipWhitespace();
        if (skip(closingBracket())) {
            if (first || flags_ & AllowTrailingComma) return close();
            return stepAfter(fail(inObject() ? "Unexpected comma exists while parsing object."
                                             : "Unexpected comma exists while parsing array."),
                             Step::Failure);
        }
        return inObject() ? stepAfter(name(), Step::Value) : Step::Value;
    }

    bool name() {
        if (!skip('"')) return fail(kUnexpectedInObject);
        if (!string([this](auto&& text) { return target_.key(std::forward<decltype(text)>(text)); })) return false;
        skipWhitespace();
        return skip(':') || fail(kUnexpectedInObject);
    }

    // After an entry.
    Step separator() {
        skipWhitespace();
        if (skip(',')) return Step::NextEntry;
        if (skip(closingBracket())) return close();
        return stepAfter(fail(inObject() ? kUnexpectedInObject : "Unexpected string exists while parsing array."),
                         Step::Failure);
    }

    char closingBracket() const { return open_.back(); }
    bool inObject() const { return closingBracket() == '}'; }
    Step close() {
        const bool handled = inObject() ? target_.endObject() : target_.endArray();
        open_.pop_back();
        return stepAfter(goOn(handled), Step::Separator);
    }

    bool boolean() {
        if (skip("true")) return goOn(target_.boolean(true));
        if (skip("false")) return goOn(target_.boolean(false));
        return fail("Invalid boolean type string exists.");
    }

    bool null() { return skip("null") ? goOn(target_.null()) : fail("Invalid null type string exists."); }

    bool number() {
        const char* const begin = cursor_;
        const bool negative = skip('-');
        if (!isDigitNext())
            return fail(negative ? "Digit is not found while parsing number."
                                 : "Unexpected character exists while parsing.");
        if (skip('0') && isDigitNext()) return fail("Unexpected '0' character is found while parsing number.");
        skipDigits();
        bool isInteger = true;
        if (skip('.')) {
            isInteger = false;
            if (!isDigitNext()) return fail("Digit is not found after the decimal point while parsing number.");
            skipDigits();
        }
        if (skip('e') || skip('E')) {
            isInteger = false;
            if (!skip('+')) skip('-');
            if (!isDigitNext()) return fail("Digit is not found after exponent keyword while parsing number.");
            skipDigits();
        }
        std::int64_t integer = 0;
        if (isInteger && std::from_chars(begin, cursor_, integer).ec == std::errc{})
            return goOn(target_.integer(integer));
        double floating = 0;
        if (!readNumber({begin, cursor_}, floating)) return fail("Failed to parse floating point.");
        return goOn(target_.floating(floating));
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

    void skipPlainBytes() {
        while (cursor_ != end_ && *cursor_ != '"' && *cursor_ != '\\') ++cursor_;
    }

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
    const char* cursor_;
    const char* const end_;
    const unsigned flags_;
    std::string open_;  // the closing bracket of each open container
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
