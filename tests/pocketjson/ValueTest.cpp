#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>

#include "Text.h"
#include "pocketjson/Value.h"

namespace pocketjson {
namespace {

const double kNan = std::nan("");

TEST(Value, LiesInMemoryAsATagAndAPayload) {
    const auto fields = [](const Value& value) {
        std::uint64_t words[2];
        std::memcpy(words, &value, sizeof words);
        return std::pair(static_cast<std::uint32_t>(words[0]), words[1]);
    };
    EXPECT_EQ(fields({}), std::pair(0U, std::uint64_t{0}));
    EXPECT_EQ(fields(true), std::pair(1U, std::uint64_t{1}));
    EXPECT_EQ(fields(-2), std::pair(2U, ~std::uint64_t{1}));
    EXPECT_EQ(fields(2.0), std::pair(4U, std::uint64_t{0x4000000000000000}));
    const Value text = "shared";
    const Value copy = text;
    const auto* container = reinterpret_cast<const Value::Container<std::string>*>(fields(text).second);
    EXPECT_EQ(fields(copy), fields(text));
    EXPECT_EQ(fields(copy).first, 16U);
    EXPECT_EQ(container->references, 2);
    EXPECT_EQ(reinterpret_cast<const char*>(&container->payload) - reinterpret_cast<const char*>(container), 16);
}

TEST(Value, IsBuiltFromScalarsMembersAndRanges) {
    const Value value{{"name", "pen"},
                      {"sizes", Value::array({1, 2.5, nullptr})},
                      {"more", {{"on", true}, {"big", std::numeric_limits<std::uint64_t>::max()}}},
                      {"list", Value::array(std::vector<std::string>{"x", "y"})},
                      {"name", std::string_view("ink")}};
    EXPECT_EQ(written(value), R"({"list":["x","y"],"more":{"big":1.8446744073709552e+19,"on":true},"name":"ink",)"
                              R"("sizes":[1,2.5,null]})");
}

TEST(Value, SetTypeEmptiesUnlessTheKindIsTheSame) {
    for (const Value& start : {Value(7), Value("text"), Value{{"a", 1}}, Value::array({1})}) {
        for (const Value& empty :
             {Value(), Value(false), Value(0), Value(0.0), Value(""), Value::object(), Value::array()}) {
            Value value = start;
            value.setType(empty.type());
            EXPECT_EQ(value, empty.type() == start.type() ? start : empty);
        }
    }
    // A tag of several kinds at once is kept, and owns nothing.
    Value value = "text";
    value.setType(static_cast<Value::Type>(Value::String | Value::Object));
    const Value copy = value;
    EXPECT_EQ(written(copy), "");
}

TEST(Value, LookupsAbsorbWrongKindsAndMissingNames) {
    for (const Value& value : {Value(), Value("x"), Value(1), Value::array({1}), Value{{"a", 1}}}) {
        EXPECT_TRUE(value.get("x").isNull());
        EXPECT_FALSE(value.has("x"));
        EXPECT_TRUE(value.at(1).isNull());
        EXPECT_EQ(&value.get("x"), &Value().at(5));
        Value changed = value;
        EXPECT_FALSE(changed.remove("x"));
        EXPECT_EQ(changed, value);
        changed["x"];
        EXPECT_EQ(changed.size(), value.isObject() ? 2U : 1U);
        EXPECT_TRUE(changed.has("x") && changed.get("x").isNull());
    }
}

TEST(Value, FindsNamesOfAnyLengthInByteOrder) {
    const std::string stem(40, 'm');
    const std::vector<std::string> names{"",   "Z",        "a",        "b",         std::string("b\0", 2),
                                         stem, stem + "a", stem + "b", stem + "ba", "\xC3\xA9"};
    Value value;
    for (auto name = names.rbegin(); name != names.rend(); ++name) value[*name] = *name;
    auto expected = names.begin();
    for (const auto& [name, member] : value.members()) {
        EXPECT_EQ(name, *expected++);
        EXPECT_EQ(value.get(name).text(), name);
        EXPECT_FALSE(value.has(name + "_"));
    }
    EXPECT_FALSE(value.has(stem.substr(1)));
    EXPECT_TRUE(value.remove(stem + "a"));
    EXPECT_FALSE(value.has(stem + "a"));
    EXPECT_EQ(value.size(), names.size() - 1);
}

TEST(Value, ChangesDoNotReachCopies) {
    const Value original = parsed(R"({"list":[1,[2]],"text":"t","inner":{"x":1}})");
    const std::string before = written(original);
    Value copy = original;
    copy["inner"]["x"] = 2;
    copy["text"] = "longer than what is held in place";
    copy["list"].element(1).append(3);
    copy["list"].element(3) = "filled up";
    copy["list"].append(copy["list"]);
    copy.remove("nothing");
    EXPECT_EQ(written(original), before);
    EXPECT_EQ(written(copy), R"({"inner":{"x":2},"list":[1,[2,3],null,"filled up",[1,[2,3],null,"filled up"]],)"
                             R"("text":"longer than what is held in place"})");

    Value text = "first";
    const Value textCopy = text;
    text = "second";
    EXPECT_EQ(textCopy, "first");
    const auto* inPlace = &text.text();
    text = std::string("third");
    EXPECT_EQ(text, "third");
    EXPECT_EQ(&text.text(), inPlace);
}

TEST(Value, MayBeAssignedWhatItHolds) {
    Value value{{"a", {{"b", "deep"}}}};
    value["self"] = value;
    EXPECT_EQ(written(value), R"({"a":{"b":"deep"},"self":{"a":{"b":"deep"}}})");
    value = value.get("self").get("a");
    EXPECT_EQ(written(value), R"({"b":"deep"})");
    value = std::move(value["b"]);
    value = value.text().c_str() + 1;
    EXPECT_EQ(value, "eep");
    value[value.text()];
    EXPECT_EQ(written(value), R"({"eep":null})");
    auto& same = value;
    value = same;
    swap(value, same);
    value.append(value);
    EXPECT_EQ(written(value), R"([{"eep":null}])");
    Value other = 1;
    swap(value, other);
    EXPECT_EQ(value, 1);
    EXPECT_EQ(written(other), R"([{"eep":null}])");
}

TEST(Value, EqualityIsOfKindAndContent) {
    Value different = parsed(R"([null, false, true, 0, 1, 0.0, 1.0, "", "1", {}, [], {"a":1}, {"b":1}, {"a":2},
                                 {"a":{"b":1}}, [1], [1,1], [[1]], [[2]], [[[1,2],3],4], [[[1,2],3],5]])");
    different.append(kNan);
    for (std::size_t i = 0; i < different.size(); ++i)
        for (std::size_t j = 0; j < different.size(); ++j)
            EXPECT_EQ(different.at(i) == different.at(j), i == j) << i << ' ' << j;
    EXPECT_EQ(parsed(R"({"a":[1,{"b":[]}],"c":0})"), parsed(R"({"c":0,"a":[1,{"b":[]}]})"));
}

TEST(Value, ConvertsToNumbers) {
    // A value, and what it is as an int, an unsigned int, a double and a boolean; null stands for the fallback.
    const Value cases = parsed(R"([
        [null, null, null, null, null], [{}, null, null, null, null], [[1], null, null, null, null],
        [true, 1, 1, 1, true], [false, 0, 0, 0, false], [0, 0, null, 0, false], [-3, -3, null, -3, true],
        [2147483647, 2147483647, 2147483647, 2147483647, true], [1.0, 1, 1, 1, true], [0.0, 0, 0, 0, false],
        [2147483648, null, 2147483648, 2147483648, true], [-2147483648, -2147483648, null, -2147483648, true],
        [4294967296, null, 0, 4294967296, true], [-2147483649, null, null, -2147483649, true], [4294967297, null, 1, 4294967297, true],
        [2.5, 3, 3, 2.5, true], [-2.5, -3, null, -2.5, true], [-0.4, 0, 0, -0.4, true],
        [2147483647.5, null, 2147483648, 2147483647.5, true], [-1e999, null, null, -1e999, true],
        [4294967295.4, null, 4294967295, 4294967295.4, true], [4294967295.5, null, null, 4294967295.5, true],
        ["0x10", 16, 16, null, null], ["-0X1f", -31, null, null, null], ["010", 8, 8, 10, null], ["0", 0, 0, 0, null],
        ["08", null, null, 8, null], ["+5", 5, 5, 5, null], ["-1.5e1", null, null, -15, null],
        ["4294967295", null, 4294967295, 4294967295, null], ["4294967296", null, null, 4294967296, null],
        ["99999999999999999999", null, null, 1e20, null], ["1e-999", null, null, 0, null], ["1e999", null, null, null, null],
        [".5", null, null, 0.5, null], ["5.", null, null, 5, null], [".", null, null, null, null],
        ["1e", null, null, null, null], ["true", null, null, null, true], ["false", null, null, null, false], ["True", null, null, null, null],
        ["", null, null, null, null], [" 1", null, null, null, null], ["1 ", null, null, null, null],
        ["1\u0000", null, null, null, null], ["10a", null, null, null, null], ["--1", null, null, null, null],
        ["-", null, null, null, null], ["0x", null, null, null, null], ["0x-1", null, null, null, null],
        ["inf", null, null, null, null], ["-nan", null, null, null, null]])");
    constexpr std::int32_t kNo = -77;
    for (const Value& row : cases.elements()) {
        SCOPED_TRACE(row.at(0).asString());
        const auto expected = [&row](std::size_t column, Value fallback) {
            return row.at(column).isNull() ? fallback : row.at(column);
        };
        EXPECT_EQ(Value(row.at(0).asInt(kNo)), expected(1, kNo));
        EXPECT_EQ(Value(row.at(0).asUInt(77)), expected(2, 77));
        EXPECT_EQ(row.at(0).asDouble(kNo), expected(3, kNo).asDouble());
        for (const bool fallback : {false, true}) EXPECT_EQ(Value(row.at(0).asBool(fallback)), expected(4, fallback));
    }
    EXPECT_EQ(Value(kNan).asInt(kNo), kNo);
    EXPECT_EQ(Value().asInt(), 0);
    EXPECT_EQ(Value().asInt64(), 0);

    constexpr auto kMaximum = std::numeric_limits<std::int64_t>::max();
    EXPECT_EQ(Value(std::to_string(kMaximum)).asInt64(), kMaximum);
    EXPECT_EQ(Value("-9223372036854775808").asInt64(), -kMaximum - 1);
    EXPECT_EQ(Value("9223372036854775808").asInt64(kNo), kNo);
    EXPECT_EQ(Value(-0x1p63).asInt64(), -kMaximum - 1);
    EXPECT_EQ(Value(0x1p63).asInt64(kNo), kNo);
}

TEST(Value, ConvertsToText) {
    EXPECT_EQ(Value("as it is").asString("no"), "as it is");
    EXPECT_EQ(Value("as it is").size(), 8U);
    EXPECT_EQ(Value(true).asString(), "true");
    EXPECT_EQ(Value(std::numeric_limits<std::int64_t>::min()).asString(), "-9223372036854775808");
    EXPECT_EQ(Value(-0.0).asString(), "0.0");
    EXPECT_EQ(Value(0.1).asString(), "0.10000000000000001");
    EXPECT_EQ(Value(-kNan).asString(), "nan");
    EXPECT_EQ(Value(HUGE_VAL).asString(), "inf");
    EXPECT_EQ(Value(-HUGE_VAL).asString(), "-inf");
    for (const Value& value : {Value(), Value::object(), Value::array()}) EXPECT_EQ(value.asString("no"), "no");
    EXPECT_EQ(Value(5).text(), "");
}

}  // namespace
}  // namespace pocketjson
