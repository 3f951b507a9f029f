#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>

#include "Text.h"
#include "pocketjson/Value.h"

namespace pocketjson {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
const double kNan = std::nan("");

TEST(Value, LiesInMemoryAsATagAndAPayload) {
    const auto tagOf = [](const Value& value) {
        std::uint32_t tag = 0;
        std::memcpy(&tag, &value, sizeof tag);
        return tag;
    };
    const auto payloadOf = [](const Value& value) {
        std::uint64_t payload = 0;
        std::memcpy(&payload, reinterpret_cast<const char*>(&value) + 8, sizeof payload);
        return payload;
    };
    EXPECT_EQ(tagOf({}), 0U);
    EXPECT_EQ(payloadOf({}), 0U);
    EXPECT_EQ(tagOf(true), 1U);
    EXPECT_EQ(payloadOf(true) & 0xFF, 1U);
    EXPECT_EQ(tagOf(-2), 2U);
    EXPECT_EQ(payloadOf(-2), ~std::uint64_t{1});
    EXPECT_EQ(tagOf(2.0), 4U);
    EXPECT_EQ(payloadOf(2.0), 0x4000000000000000U);
    EXPECT_EQ(tagOf("x"), 16U);
    EXPECT_EQ(tagOf(Value::object()), 32U);
    EXPECT_EQ(tagOf(Value::array()), 64U);

    const Value text = "shared";
    const Value copy = text;
    const auto payload = payloadOf(text);
    EXPECT_EQ(payloadOf(copy), payload);
    const auto* container = reinterpret_cast<const Value::AbstractContainer*>(payload);
    EXPECT_EQ(container->references, 2);
    EXPECT_EQ(reinterpret_cast<const char*>(&text.text()) - reinterpret_cast<const char*>(container), 16);
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
        for (const auto& [type, empty] : std::map<Value::Type, Value>{{Value::Null, {}},
                                                                      {Value::Boolean, false},
                                                                      {Value::Integer, 0},
                                                                      {Value::Float, 0.0},
                                                                      {Value::String, ""},
                                                                      {Value::Object, Value::object()},
                                                                      {Value::Array, Value::array()}}) {
            Value value = start;
            value.setType(type);
            EXPECT_EQ(value, type == start.type() ? start : empty);
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
    value.append(value);
    EXPECT_EQ(written(value), R"([{"eep":null}])");
}

TEST(Value, EqualityIsOfKindAndContent) {
    const std::vector<Value> different{{},
                                       false,
                                       true,
                                       0,
                                       1,
                                       0.0,
                                       1.0,
                                       kNan,
                                       "",
                                       "1",
                                       Value::object(),
                                       Value::array(),
                                       Value{{"a", 1}},
                                       Value{{"b", 1}},
                                       Value{{"a", 2}},
                                       Value{{"a", {{"b", 1}}}},
                                       Value::array({1}),
                                       Value::array({1, 1}),
                                       Value::array({Value::array({1})}),
                                       Value::array({Value::array({2})})};
    for (std::size_t i = 0; i < different.size(); ++i)
        for (std::size_t j = 0; j < different.size(); ++j)
            EXPECT_EQ(different[i] == different[j], i == j) << i << ' ' << j;
    EXPECT_EQ(parsed(R"({"a":[1,{"b":[]}],"c":0})"), parsed(R"({"c":0,"a":[1,{"b":[]}]})"));
    EXPECT_NE(parsed(R"([[[1,2],3],4])"), parsed(R"([[[1,2],3],5])"));
}

TEST(Value, ConvertsToNumbers) {
    constexpr std::int32_t kNo = -77;
    constexpr std::uint32_t kNoU = 77;
    struct {
        Value value;
        std::int32_t asInt;
        std::uint32_t asUInt;
        double asDouble;
        bool asBool;  // with the fallback false
    } const cases[]{
        {{}, kNo, kNoU, kNo, false},
        {Value::object(), kNo, kNoU, kNo, false},
        {Value::array({1}), kNo, kNoU, kNo, false},
        {true, 1, 1, 1, true},
        {false, 0, 0, 0, false},
        {0, 0, kNoU, 0, false},
        {-3, -3, kNoU, -3, true},
        {2147483648, kNo, 2147483648U, 2147483648.0, true},
        {-2147483648, std::numeric_limits<std::int32_t>::min(), kNoU, -2147483648.0, true},
        {4294967296, kNo, 0, 4294967296.0, true},
        {4294967297, kNo, 1, 4294967297.0, true},
        {2.5, 3, 3, 2.5, true},
        {-2.5, -3, kNoU, -2.5, true},
        {-0.4, 0, 0, -0.4, true},
        {2147483647.5, kNo, 2147483648U, 2147483647.5, true},
        {4294967295.4, kNo, 4294967295U, 4294967295.4, true},
        {4294967295.5, kNo, kNoU, 4294967295.5, true},
        {1e300, kNo, kNoU, 1e300, true},
        {-kInfinity, kNo, kNoU, -kInfinity, true},
        {"0x10", 16, 16, kNo, false},
        {"-0X1f", -31, kNoU, kNo, false},
        {"010", 8, 8, 10, false},
        {"08", kNo, kNoU, 8, false},
        {"0", 0, 0, 0, false},
        {"+5", 5, 5, 5, false},
        {"4294967295", kNo, 4294967295U, 4294967295.0, false},
        {"4294967296", kNo, kNoU, 4294967296.0, false},
        {"99999999999999999999", kNo, kNoU, 1e20, false},
        {"10a", kNo, kNoU, kNo, false},
        {" 1", kNo, kNoU, kNo, false},
        {"1 ", kNo, kNoU, kNo, false},
        {"--1", kNo, kNoU, kNo, false},
        {"-", kNo, kNoU, kNo, false},
        {"0x", kNo, kNoU, kNo, false},
        {"0x-1", kNo, kNoU, kNo, false},
        {"", kNo, kNoU, kNo, false},
        {std::string("1\0", 2), kNo, kNoU, kNo, false},
        {"-1.5e1", kNo, kNoU, -15, false},
        {"inf", kNo, kNoU, kNo, false},
        {"1e999", kNo, kNoU, kNo, false},
        {"1e-999", kNo, kNoU, 0, false},
        {"true", kNo, kNoU, kNo, true},
        {"True", kNo, kNoU, kNo, false},
    };
    for (const auto& [value, asInt, asUInt, asDouble, asBool] : cases) {
        SCOPED_TRACE(value.asString());
        EXPECT_EQ(value.asInt(kNo), asInt);
        EXPECT_EQ(value.asUInt(kNoU), asUInt);
        EXPECT_EQ(value.asDouble(kNo), asDouble);
        EXPECT_EQ(value.asBool(), asBool);
    }
    EXPECT_EQ(Value(kNan).asInt(kNo), kNo);
    EXPECT_TRUE(Value("falsehood").asBool(true));
    EXPECT_FALSE(Value("false").asBool(true));

    constexpr auto kMaximum = std::numeric_limits<std::int64_t>::max();
    EXPECT_EQ(Value(std::to_string(kMaximum)).asInt64(), kMaximum);
    EXPECT_EQ(Value("-9223372036854775808").asInt64(), -kMaximum - 1);
    EXPECT_EQ(Value("9223372036854775808").asInt64(kNo), kNo);
    EXPECT_EQ(Value(-0x1p63).asInt64(), -kMaximum - 1);
    EXPECT_EQ(Value(0x1p63).asInt64(kNo), kNo);
}

TEST(Value, ConvertsToText) {
    EXPECT_EQ(Value("as it is").asString("no"), "as it is");
    EXPECT_EQ(Value(true).asString(), "true");
    EXPECT_EQ(Value(std::numeric_limits<std::int64_t>::min()).asString(), "-9223372036854775808");
    EXPECT_EQ(Value(-0.0).asString(), "0.0");
    EXPECT_EQ(Value(0.1).asString(), "0.10000000000000001");
    EXPECT_EQ(Value(-kNan).asString(), "nan");
    EXPECT_EQ(Value(kInfinity).asString(), "inf");
    EXPECT_EQ(Value(-kInfinity).asString(), "-inf");
    for (const Value& value : {Value(), Value::object(), Value::array()}) EXPECT_EQ(value.asString("no"), "no");
    EXPECT_EQ(Value(5).text(), "");
}

}  // namespace
}  // namespace pocketjson
