#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <random>

#include "Text.h"
#include "pocketjson/Parser.h"

namespace pocketjson {
namespace {

constexpr auto kGarbage = "Gabage string exists after json string.";
constexpr auto kCharacter = "Unexpected character exists while parsing.";
constexpr auto kBoolean = "Invalid boolean type string exists.";
constexpr auto kNull = "Invalid null type string exists.";
constexpr auto kObject = "Unexpected string exists while parsing object.";
constexpr auto kObjectComma = "Unexpected comma exists while parsing object.";
constexpr auto kArray = "Unexpected string exists while parsing array.";
constexpr auto kArrayComma = "Unexpected comma exists while parsing array.";
constexpr auto kDigit = "Digit is not found while parsing number.";
constexpr auto kZero = "Unexpected '0' character is found while parsing number.";
constexpr auto kFraction = "Digit is not found after the decimal point while parsing number.";
constexpr auto kExponent = "Digit is not found after exponent keyword while parsing number.";
constexpr auto kUnterminated = "Expected string ending character '\"' is not found.";
constexpr auto kEscape = "Unexpected escape character is found while parsing string.";
constexpr auto kHex = "Invalid unicode hex string is found while parsing string.";
constexpr auto kSurrogates = "Invalid unicode surrogate pair is found while parsing string.";
constexpr auto kCancelled = "SAX handler cancels parsing.";

// Writes the events down, and cancels at the one with the given number.
class Recorder : public SaxHandler {
 public:
    explicit Recorder(int cancelAt = -1) : remaining_(cancelAt) {}

    bool null() override { return record("null"); }
    bool boolean(bool value) override { return record(value ? "true" : "false"); }
    bool integer(std::int64_t value) override { return record("i" + std::to_string(value)); }
    bool floating(double value) override { return record("f" + Value(value).asString()); }
    bool string(std::string_view text) override { return record("s" + std::string(text)); }
    bool startArray() override { return record("["); }
    bool endArray() override { return record("]"); }
    bool startObject() override { return record("{"); }
    bool key(std::string_view name) override { return record("k" + std::string(name)); }
    bool endObject() override { return record("}"); }

    std::vector<std::string> events;

 private:
    bool record(std::string event) {
        events.push_back(std::move(event));
        return remaining_-- != 0;
    }

    int remaining_;
};

TEST(Parser, AcceptsAndRejects) {
    const std::string nul(1, '\0');
    struct {
        std::string text;
        std::string message;  // empty on success
        std::string target;   // what the target is written as afterwards; it was "old" before
        unsigned flags = 0;
    } const cases[]{
        {"", kCharacter, "\"old\""},
        {" \t\r\n", kCharacter, "\"old\""},
        {"\v1", kCharacter, "\"old\""},
        {"\xEF\xBB\xBF[]", "", "[]"},
        {"\xEF\xBB 1", "", "1"},
        {"\xEF"
         "1",
         "", "1"},
        {"\xBB\xBF"
         "1",
         kCharacter, "\"old\""},
        {" true ", "", "true"},
        {"false", "", "false"},
        {"null", "", "null"},
        {"tru", kBoolean, "\"old\""},
        {"falsE", kBoolean, "\"old\""},
        {"nul", kNull, "\"old\""},
        {"[1] x", kGarbage, "[1]"},
        {"truex", kGarbage, "true"},
        {"[1] x", "", "[1]", IgnoreTrailingText},
        {"[1]  ", "", "[1]"},
        {"[1] " + nul + "more", "", "[1]"},
        {nul, kCharacter, "\"old\""},

        {"{}", "", "{}"},
        {"{", "", "{}"},
        {"{ ", kObject, "{}"},
        {" { } ", "", "{}"},
        {R"({"b":1,"a":{"c":[]},"b":2})", "", R"({"a":{"c":[]},"b":2})"},
        {R"({"b":1,)", "", R"({"b":1})"},
        {R"({"b":1,})", kObjectComma, R"({"b":1})"},
        {R"({"b":1 , })", "", R"({"b":1})", AllowTrailingComma},
        {"{,}", kObject, "{}", AllowTrailingComma},
        {"{1:2}", kObject, "{}"},
        {R"({"a" 1})", kObject, "{}"},
        {R"({"a")", kObject, "{}"},
        {R"({"a":)", kCharacter, "{}"},
        {R"({"a":1)", kObject, R"({"a":1})"},
        {R"({"a":1]})", kObject, R"({"a":1})"},
        {R"({"a":tru)", kBoolean, "{}"},
        {R"({"a":1,"b":{)", kObject, R"({"a":1,"b":{}})"},

        {"[", "", "[]"},
        {"[ ", kCharacter, "[]"},
        {"[[", kArray, "[[]]"},
        {"[1,", "", "[1]"},
        {"[1,2", kArray, "[1,2]"},
        {"[1,]", kArrayComma, "[1]"},
        {"[1, ]", "", "[1]", AllowTrailingComma},
        {"[,]", kCharacter, "[]", AllowTrailingComma},
        {"[1 2]", kArray, "[1]"},
        {"[1}", kArray, "[1]"},
        {R"([1,{"a":[2,[3,x)", kCharacter, R"([1,{"a":[2,[3]]}])"},

        {"12", "", "12"},
        {"-0", "", "0"},
        {"12.0", "", "12"},
        {"1E+2", "", "100"},
        {"-1.5e-1", "", "-0.14999999999999999"},
        {"9223372036854775807", "", "9223372036854775807"},
        {"-9223372036854775808", "", "-9223372036854775808"},
        {"9223372036854775808", "", "9.2233720368547758e+18"},
        {"-9223372036854775809", "", "-9.2233720368547758e+18"},
        {"1e-999", "", "0.0"},
        {"01", kZero, "\"old\""},
        {"-00", kZero, "\"old\""},
        {"-", kDigit, "\"old\""},
        {"-x", kDigit, "\"old\""},
        {"+1", kCharacter, "\"old\""},
        {".5", kCharacter, "\"old\""},
        {"1.", kFraction, "\"old\""},
        {"1.e1", kFraction, "\"old\""},
        {"1e", kExponent, "\"old\""},
        {"1e+", kExponent, "\"old\""},
        {"1e+-2", kExponent, "\"old\""},

        {"\"\x01\xC3\xA9\xFF\"", "", "\"\\u0001\xC3\xA9\xFF\""},
        {R"("\"\\\/\b\f\n\r\t")", "", R"("\"\\/\b\f\n\r\t")"},
        {R"("\u0041\u00E9\u20ac\u0000\uD83D\ude00z")", "", "\"A\xC3\xA9\xE2\x82\xAC\\u0000\xF0\x9F\x98\x80z\""},
        {R"("\uD7FF\uE000\uDBFF\uDFFF")", "", "\"\xED\x9F\xBF\xEE\x80\x80\xF4\x8F\xBF\xBF\""},
        {"\"abc", kUnterminated, "\"old\""},
        {"\"abc\\", kUnterminated, "\"old\""},
        {R"("\x")", kEscape, "\"old\""},
        {R"("\u00g0")", kHex, "\"old\""},
        {R"("\u00)", kUnterminated, "\"old\""},
        {R"("\uD83Dx")", kSurrogates, "\"old\""},
        {R"("\uD83D\n")", kSurrogates, "\"old\""},
        {R"("\uD83D\uD83D")", kSurrogates, "\"old\""},
        {R"("\uD83D\u0041")", kSurrogates, "\"old\""},
        {R"("\uD83D\u00z1")", kHex, "\"old\""},
        {R"("\uDE00")", kSurrogates, "\"old\""},
    };
    for (const auto& [text, message, target, flags] : cases) {
        SCOPED_TRACE(text);
        Value value = "old";
        std::string error = "previous message";
        EXPECT_EQ(parse(error, value, text, flags), message.empty());
        EXPECT_EQ(error, message);
        EXPECT_EQ(written(value), target);

        Recorder recorder;
        EXPECT_EQ(parse(error, recorder, text, flags), message.empty());
        EXPECT_EQ(error, message);
    }
}

TEST(Parser, TellsIntegersFromFloats) {
    EXPECT_TRUE(parsed("12").isInteger());
    for (const auto* text : {"12.0", "1e2", "-9223372036854775809", "1e999"})
        EXPECT_TRUE(parsed(text).isFloat()) << text;
    const std::string manyDigits(400, '9');
    for (const auto* text : {"1e999", "1e99999999999999999999999", "0.001e400", manyDigits.c_str()})
        EXPECT_EQ(parsed(text).asDouble(), std::numeric_limits<double>::infinity()) << text;
    const std::string manyZeros(400, '0');
    for (const auto& text :
         {std::string("1e-99999999999999999999999"), "1" + manyZeros + "e-800", "0." + manyZeros + "1"})
        EXPECT_EQ(parsed(text).asDouble(1), 0) << text;
    EXPECT_EQ(parsed("1" + manyZeros + "e-400").asDouble(), 1);
}

TEST(Parser, MayReadFromTheTextInItsTarget) {
    Value value = R"([[1,"two",{"three":4}],"and enough to be on the heap"])";
    const Value expected = parsed(value.text());
    std::string error;
    EXPECT_TRUE(parse(error, value, value.text()));
    EXPECT_EQ(value, expected);
}

TEST(Parser, SendsEventsInOrderUntilCancelled) {
    const std::string text = R"({"b":[1,2.5,"x\n"],"a":{"c":null},"a":[true,false]})";
    const std::vector<std::string> expected{"{",  "kb",   "[", "i1", "f2.5", "sx\n", "]",     "ka", "{",
                                            "kc", "null", "}", "ka", "[",    "true", "false", "]",  "}"};
    std::string error;
    Recorder all;
    EXPECT_TRUE(parse(error, all, text));
    EXPECT_EQ(all.events, expected);
    for (std::size_t i = 0; i < expected.size(); ++i) {
        Recorder some(static_cast<int>(i));
        EXPECT_FALSE(parse(error, some, text));
        EXPECT_EQ(error, kCancelled);
        EXPECT_EQ(some.events.size(), i + 1);
    }
    // The end of the text ends a container as its bracket would.
    Recorder lenient;
    EXPECT_TRUE(parse(error, lenient, "[1,"));
    EXPECT_EQ(lenient.events, (std::vector<std::string>{"[", "i1", "]"}));
}

// Each text lies in memory of its own, so that a sanitizer sees the parser look past the end.
TEST(Parser, SurvivesCutAndCorruptedTexts) {
    const std::string whole =
        " \xEF{\"k\\u00e9y\":[-12.5e+3,{\"a\":\"\\uD83D\\uDE00 \\\"\\\\\"}, [], true],\"f\":[false ,null]}";
    const auto tryBoth = [](std::string_view text) {
        const std::vector<char> bytes(text.begin(), text.end());
        const auto* end = bytes.data() + bytes.size();
        std::string error;
        std::string saxError;
        Value value;
        Recorder recorder;
        const bool success = parse(error, value, bytes.data(), end);
        EXPECT_EQ(success, error.empty());
        EXPECT_EQ(parse(saxError, recorder, bytes.data(), end), success);
        EXPECT_EQ(saxError, error);
        EXPECT_EQ(written(parsed(written(value))), written(value));
    };
    for (const auto document : {std::string_view(whole), std::string_view(whole).substr(2)}) {
        for (std::size_t length = 0; length <= document.size(); ++length) tryBoth(document.substr(0, length));
        for (std::size_t i = 0; i < document.size(); ++i) {
            for (const char byte : {'\0', '"', '\\', ',', ':', '[', '}', '0', 'e', 'u', '\xFF'}) {
                std::string corrupted(document);
                corrupted[i] = byte;
                tryBoth(corrupted);
            }
        }
    }
}

nlohmann::json randomDocument(std::mt19937& random, int depth) {
    const auto pick = [&random](unsigned limit) { return static_cast<unsigned>(random() % limit); };
    const auto text = [&] {
        const char* const pieces[]{"a",  "bcdefghij", "\"",       "\\",           "/",
                                   "\n", "\x7F",      "\xC3\xA9", "\xE2\x82\xAC", "\xF0\x9F\x98\x80"};
        std::string result;
        for (unsigned i = pick(12); i > 0; --i) result += pieces[pick(10)];
        return result;
    };
    switch (pick(depth > 0 ? 7 : 5)) {
        case 0:
            return nullptr;
        case 1:
            return pick(2) == 1;
        case 2:
            return std::int64_t{static_cast<std::int32_t>(random())} * static_cast<std::int32_t>(random());
        case 3:
            return pick(1000000) / 1000.5;
        case 4:
            return text();
        case 5: {
            auto array = nlohmann::json::array();
            for (unsigned i = pick(6); i > 0; --i) array.push_back(randomDocument(random, depth - 1));
            return array;
        }
        default: {
            auto object = nlohmann::json::object();
            for (unsigned i = pick(6); i > 0; --i) object[text()] = randomDocument(random, depth - 1);
            return object;
        }
    }
}

TEST(Parser, UnderstandsAndWritesWhatAnotherLibraryDoes) {
    std::mt19937 random(1);
    for (int i = 0; i < 2000; ++i) {
        const auto document = randomDocument(random, 5);
        const Value value = parsed(document.dump(i % 3 - 1, ' ', i % 2 == 0));
        EXPECT_EQ(nlohmann::json::parse(written(value)), document);
        EXPECT_EQ(nlohmann::json::parse(written(value, Pretty)), document);
    }
}

}  // namespace
}  // namespace pocketjson
