#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "Text.h"
#include "pocketjson/Serializer.h"

namespace pocketjson {
namespace {

TEST(Serializer, EscapesWhatCannotStandForItself) {
    EXPECT_EQ(written("A/\x7F\x0B\n"), R"("A/\u007f\u000b\n")");
    for (int byte = 0; byte < 256; ++byte) {
        const std::string text{'x', static_cast<char>(byte), 'y'};
        const std::string json = written(text);
        const bool escaped = byte < 0x20 || byte == 0x7F || byte == '"' || byte == '\\';
        EXPECT_EQ(json == '"' + text + '"', !escaped) << byte;
        EXPECT_EQ(parsed(json), text) << byte;
    }
    EXPECT_EQ(written("\b\t\n\f\r\"\\"), R"("\b\t\n\f\r\"\\")");
    EXPECT_EQ(written(Value{{"a\"\x1F", 1}}), R"({"a\"\u001f":1})");
}

TEST(Serializer, WritesTextsOfEveryLengthAndEscapesWhereverTheyStand) {
    const std::pair<char, const char*> escapes[] = {{'"', R"(\")"}, {'\x1F', R"(\u001f)"}, {'\x7F', R"(\u007f)"}};
    std::string text;
    for (int size = 0; size < 70; ++size, text += static_cast<char>('a' + size % 26)) {
        EXPECT_EQ(written(text), '"' + text + '"');
        for (std::size_t place = 0; place < text.size(); ++place) {
            for (const auto& [byte, escape] : escapes) {
                std::string escaped = text, expected = '"' + text + '"';
                escaped[place] = byte;
                EXPECT_EQ(written(escaped), expected.replace(1 + place, 1, escape));
            }
        }
    }
}

// It collects what it writes in a buffer of 4096 bytes, of which 512 are kept free.
TEST(Serializer, WritesTextsThatDoNotFitItsBuffer) {
    for (const std::size_t middle : {416U, 512U, 3584U, 4096U, 9000U}) {
        for (std::size_t size = middle - 9; size < middle + 9; ++size) {
            const std::string plain(size, 'p');
            for (const auto& [text, json] : {std::pair(plain, plain),
                                             {'\n' + plain, "\\n" + plain},
                                             {plain + '\n', plain + "\\n"},
                                             {plain + "\n\x1F" + plain, plain + "\\n\\u001f" + plain}}) {
                const std::string quoted = '"' + json + '"';
                EXPECT_EQ(written(text), quoted) << size;
                EXPECT_EQ(written(Value::array({text, -1, Value{{text, text}}})),
                          '[' + quoted + ",-1,{" + quoted + ':' + quoted + "}]")
                    << size;
            }
        }
    }
    std::string escapes;
    for (int i = 0; i < 2000; ++i) escapes += "\\u001f";
    EXPECT_EQ(written(std::string(2000, '\x1F')), '"' + escapes + '"');
}

TEST(Serializer, WritesListsThatDoNotFitItsBuffer) {
    Value numbers = Value::array(), members = Value::object();
    std::string list, pretty, object;
    for (int number = 1000; number < 3000; ++number) {
        const std::string text = std::to_string(number), separator = number == 1000 ? "" : ",";
        numbers.append(number);
        list += separator + text;
        pretty += separator + "\n    " + text;
        members[text] = number;
        object += separator + '"' + text + "\":" + text;
    }
    EXPECT_EQ(written(Value::array({numbers, numbers})), "[[" + list + "],[" + list + "]]");
    EXPECT_EQ(written(Value::array({numbers}), Pretty), "[\n  [" + pretty + "\n  ]\n]");
    EXPECT_EQ(written(members), '{' + object + '}');
}

TEST(Serializer, WritesScalarsAndAppends) {
    std::string output = "before ";
    EXPECT_TRUE(write(Value::array({nullptr, true, -5, 1.0, -0.0, 2.5, 1e300}), output));
    EXPECT_EQ(output, "before [null,true,-5,1,0.0,2.5,1.0000000000000001e+300]");
}

TEST(Serializer, StopsAtNumbersThatAreNotFinite) {
    for (const double number : {std::nan(""), HUGE_VAL, -HUGE_VAL}) {
        std::string output;
        EXPECT_FALSE(write(Value{{"a", 1}, {"b", Value::array({2, number, 3})}}, output));
        EXPECT_EQ(output, R"({"a":1,"b":[2,)");
    }
}

TEST(Serializer, PassesOverTagsThatNameNoKind) {
    Value unknown;
    unknown.setType(static_cast<Value::Type>(128));
    EXPECT_EQ(written(Value::array({unknown, 1, unknown})), "[,1,]");
}

TEST(Serializer, IndentsWhenPretty) {
    const Value value = parsed(R"({"b":[1,[],{"x":{}}],"a":"t"})");
    const auto pretty = [](std::string_view lineBreak, std::string_view unit) {
        std::string expected;
        for (const char c : std::string_view("{n>\"a\": \"t\",n>\"b\": [n>>1,n>>[],n>>{n>>>\"x\": {}n>>}n>]n}"))
            expected += c == 'n' ? lineBreak : c == '>' ? unit : std::string_view(&c, 1);
        return expected;
    };
    EXPECT_EQ(written(value, Pretty), pretty("\n", "  "));
    EXPECT_EQ(written(value, Pretty | FourSpaces), pretty("\n", "    "));
    EXPECT_EQ(written(value, Pretty | Tab | CarriageReturn), pretty("\r\n", "\t"));
    EXPECT_EQ(written(value, Pretty | FourSpaces | Tab), pretty("\n", "  "));
    EXPECT_EQ(written(value, FourSpaces | Tab | CarriageReturn), R"({"a":"t","b":[1,[],{"x":{}}]})");
    EXPECT_EQ(written(Value::object(), Pretty), "{}");
}

}  // namespace
}  // namespace pocketjson
