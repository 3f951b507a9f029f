#include <gtest/gtest.h>

#include <limits>
#include <map>
#include <nlohmann/json.hpp>
#include <random>

#include "Text.h"
#include "pocketjson/Parser.h"

namespace pocketjson {
namespace {

using namespace std::string_literals;

TEST(Parser, Accepts) {
    const std::pair<std::string, std::vector<std::string>> cases[]{
        {"1", {"1", "\xEF\xBB\xBF\x31", "\xEF\xBB 1", "\xEF\x31", "\t\r\n 1\t\r\n ", "1 \0more"s}},
        {"{}", {"{}", " { } ", "{"}},
        {"[]", {"[]", "[\n]", "["}},
        {"[true,false,null]", {"[true ,false, null]", "[true,false,null,"}},
        {R"({"a":{"c":[]},"b":2})", {R"({"b":1,"a":{"c":[]},"b":2})", R"({"b":1,"a":{"c":[]},"b":2,)"}},
        {"[12,0,100,-0.14999999999999999,0.0]", {"[12,-0,1E+2,-1.5e-1,1e-999]", "[12.0,0,100,-0.15,0e5]"}},
        {"[9223372036854775807,-9223372036854775808]", {"[9223372036854775807,-9223372036854775808]"}},
        {"[9.2233720368547758e+18,-9.2233720368547758e+18]", {"[9223372036854775808,-9223372036854775809]"}},
        {"\"\\u0001\xC3\xA9\xFF\"", {"\"\x01\xC3\xA9\xFF\"", "\"\\u0001\\u00E9\xFF\""}},
        {R"("\"\\/\b\f\n\r\t")", {R"("\"\\\/\b\f\n\r\t")"}},
        {"\"A\xE2\x82\xAC\\u0000\xF0\x9F\x98\x80z\"", {R"("\u0041\u20ac\u0000\uD83D\ude00z")"}},
        {"\"\xED\x9F\xBF\xEE\x80\x80\xF0\x90\x80\x80\xF4\x8F\xBF\xBF\"", {R"("\uD7FF\uE000\uD800\uDC00\uDBFF\uDFFF")"}},
        {"\"\\u007f\xC2\x80\xDF\xBF\xE0\xA0\x80\"", {R"("\u007F\u0080\u07FF\u0800")"}}};
    for (const auto& [expected, texts] : cases)
        for (const auto& text : texts) EXPECT_EQ(written(parsed(text)), expected) << text;
    EXPECT_EQ(written(parsed(R"({"b":[1, ] , })", AllowTrailingComma)), R"({"b":[1]})");
    EXPECT_EQ(written(parsed("[1] x", IgnoreTrailingText)), "[1]");
}

TEST(Parser, RejectsWithAMessage) {
    const std::pair<std::string, std::vector<std::string>> cases[]{
        {"Gabage string exists after json string.", {"[1] x", "truex", "1 2"}},
        {"Unexpected character exists while parsing.",
         {"", " \t\r\n", "\v1", "\0"s, "\xBB\xBF\x31", "+1", ".5", "[ ", "[,]", R"({"a":)"}},
        {"Invalid boolean type string exists.", {"tru", "falsE"}},
        {"Invalid null type string exists.", {"nul", "n"}},
        {"Unexpected string exists while parsing object.",
         {"{ ", "{,}", "{1:2}", R"({"a" 1})", R"({"a")", R"({"a":1)", R"({"a":1])"}},
        {"Unexpected comma exists while parsing object.", {R"({"b":1,})"}},
        {"Unexpected string exists while parsing array.", {"[1,2", "[1 2]", "[1}", "[[", "[12:               ]"}},
        {"Unexpected comma exists while parsing array.", {"[1,]"}},
        {"Digit is not found while parsing number.", {"-", "-x"}},
        {"Unexpected '0' character is found while parsing number.", {"01", "-00"}},
        {"Digit is not found after the decimal point while parsing number.", {"1.", "1.e1"}},
        {"Digit is not found after exponent keyword while parsing number.", {"1e", "1e+", "1e+-2"}},
        {"Expected string ending character '\"' is not found.", {"\"abc", "\"abc\\", R"("\u00)", R"({"a)"}},
        {"Unexpected escape character is found while parsing string.", {R"("\x")"}},
        {"Invalid unicode hex string is found while parsing string.", {R"("\u00g0")", R"("\uD83D\u00z1")"}},
        {"Invalid unicode surrogate pair is found while parsing string.",
         {R"("\uD83Dx")", R"("\uD83D\n")", R"("\uD83D\uDBFF")", R"("\uD83D\uE000")", R"("\uD83D\u0041")",
          R"("\uDE00\uDE00")", R"("\uD83D)"}}};
    for (const auto& [message, texts] : cases) {
        for (const auto& text : texts) {
            Value value;
            Recorder recorder;
            std::string error = "previous message";
            EXPECT_FALSE(parse(error, value, text)) << text;
            EXPECT_EQ(error, message) << text;
            EXPECT_FALSE(parse(error, recorder, text)) << text;
            EXPECT_EQ(error, message) << text;
        }
    }
    Value value;
    std::string error = "previous message";
    EXPECT_TRUE(parse(error, value, "1"));
    EXPECT_EQ(error, "");
}

TEST(Parser, KeepsWhatWasBuiltUpToTheError) {
    for (const auto& [text, expected] :
         std::map<std::string, std::string>{{"tru", R"("old")"},
                                            {"[1] x", "[1]"},
                                            {R"({"a":1,"a":x)", R"({"a":1})"},
                                            {R"({"a":1,"b":{)", R"({"a":1,"b":{}})"},
                                            {R"([1,{"a":[2,[3,x)", R"([1,{"a":[2,[3]]}])"}}) {
        Value value = "old";
        std::string error;
        EXPECT_FALSE(parse(error, value, text));
        EXPECT_EQ(written(value), expected);
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

TEST(Parser, KeepsTheLastOfEqualNamesHoweverManyThereAre) {
    std::mt19937 random(3);
    for (const unsigned count : {2U, 16U, 40U, 300U}) {
        std::map<std::string, unsigned> expected;
        std::string text = "{";
        for (unsigned i = 0; i < count; ++i) {
            const std::string name = "a long beginning " + std::to_string(random() % (count / 2));
            text += '"' + name + "\":" + std::to_string(i) + ',';
            expected[name] = i;
        }
        EXPECT_EQ(written(parsed(text)), nlohmann::json(expected).dump()) << text;
    }
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
        EXPECT_EQ(error, "SAX handler cancels parsing.");
        EXPECT_EQ(some.events.size(), i + 1);
    }
    // The end of the text ends a container as its bracket would.
    Recorder lenient;
    EXPECT_TRUE(parse(error, lenient, "[1,"));
    EXPECT_EQ(lenient.events, (std::vector<std::string>{"[", "i1", "]"}));
}

// Each text lies in memory of its own, so that a sanitizer sees the parser look past the end. Whatever another library
// accepts as well, it must understand alike.
TEST(Parser, SurvivesCutAndCorruptedTexts) {
    const auto check = [](const std::string& text) {
        const std::vector<char> bytes(text.begin(), text.end());
        const auto* end = bytes.data() + bytes.size();
        std::string error;
        std::string saxError;
        Value value;
        Recorder recorder;
        const bool success = parse(error, value, bytes.data(), end);
        EXPECT_EQ(error.empty(), success);
        EXPECT_EQ(parse(saxError, recorder, bytes.data(), end), success);
        EXPECT_EQ(saxError, error);
        const auto understood = nlohmann::json::parse(text, nullptr, false);
        if (understood.is_discarded()) return;
        EXPECT_EQ(error, "") << text;
        EXPECT_EQ(nlohmann::json::parse(written(value)), understood) << text;
        EXPECT_EQ(nlohmann::json::parse(written(value, Pretty | Tab)), understood) << text;
    };
    const std::string whole = R"( {"k\u00e9y":[-12.5e+3,{"a":"\uD83D\uDE00 \"\\"}, [], 10, true],"f":[false ,null]})";
    for (const auto& document : {whole, "\xEF\xBB\xBF" + whole, written(parsed(whole), Pretty)}) {
        for (std::size_t i = 0; i <= document.size(); ++i) {
            check(document.substr(0, i));
            for (int byte = 0; byte < 256 && i < document.size(); ++byte) {
                std::string corrupted = document;
                corrupted[i] = static_cast<char>(byte);
                check(corrupted);
            }
        }
    }
}

}  // namespace
}  // namespace pocketjson
