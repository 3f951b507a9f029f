// libpell's JSON against two other parsers: the dialect of docs/json.md, written down plainly, and nlohmann's for what
// is JSON to everyone. The input is one JSON text.
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>
#include <vector>

#include "fuzz/Finding.h"
#include "fuzz/ReferenceParser.h"
#include "pocketjson/Parser.h"
#include "pocketjson/Serializer.h"

namespace {

using nlohmann::json;
using pocketjson::Value;

/// Makes JSON of the parser's events.
class Builder final : public pocketjson::SaxHandler {
 public:
    bool null() override { return add(nullptr); }
    bool boolean(bool value) override { return add(value); }
    bool integer(std::int64_t value) override { return add(value); }
    bool floating(double value) override { return add(value); }
    bool string(std::string_view text) override { return add(text); }
    bool startArray() override { return open(json::array()); }
    bool endArray() override { return close(); }
    bool startObject() override { return open(json::object()); }
    bool key(std::string_view name) override { return name_ = name, true; }
    bool endObject() override { return close(); }

    json result;

 private:
    json& place(json value) {
        if (open_.empty()) return result = std::move(value);
        if (open_.back()->is_array()) return open_.back()->emplace_back(std::move(value));
        return (*open_.back())[name_] = std::move(value);
    }
    bool add(json value) { return place(std::move(value)), true; }
    bool open(json container) { return open_.push_back(&place(std::move(container))), true; }
    bool close() { return open_.pop_back(), true; }

    std::vector<json*> open_;
    std::string name_;
};

// NOLINTNEXTLINE(misc-no-recursion): the fuzzer's texts are short
json toJson(const Value& value) {
    switch (value.type()) {
        case Value::Null:
            return nullptr;
        case Value::Boolean:
            return value.asBool();
        case Value::Integer:
            return value.asInt64();
        case Value::Float:
            return value.asDouble();
        case Value::String:
            return value.text();
        case Value::Object: {
            auto object = json::object();
            for (const auto& [name, member] : value.members()) object[name] = toJson(member);
            return object;
        }
        case Value::Array: {
            auto array = json::array();
            for (const Value& element : value.elements()) array.push_back(toJson(element));
            return array;
        }
    }
    reportFinding("a value of no kind");
}

/// Kinds of numbers included, which nlohmann's == does not distinguish.
// NOLINTNEXTLINE(misc-no-recursion)
bool isSame(const json& left, const json& right) {
    if (left.is_number_float() != right.is_number_float()) return false;
    if (!left.is_structured()) return left == right;
    if (left.type() != right.type() || left.size() != right.size()) return false;
    for (auto item = left.begin(), other = right.begin(); item != left.end(); ++item, ++other)
        if ((left.is_object() && item.key() != other.key()) || !isSame(*item, *other)) return false;
    return true;
}

// NOLINTNEXTLINE(misc-no-recursion)
bool isFinite(const json& value) {
    if (value.is_number_float()) return std::isfinite(value.get<double>());
    if (value.is_structured())
        for (const json& item : value)
            if (!isFinite(item)) return false;
    return true;
}

/// A copy that ends where its memory ends, so that reading beyond it is noticed.
class ExactCopy {
 public:
    explicit ExactCopy(std::string_view text) : size_(text.size()), bytes_(std::make_unique<char[]>(size_)) {
        std::copy(text.begin(), text.end(), bytes_.get());
    }
    const char* begin() const { return bytes_.get(); }
    const char* end() const { return begin() + size_; }

 private:
    std::size_t size_;
    std::unique_ptr<char[]> bytes_;
};

bool parse(Value& value, std::string_view text, unsigned flags = 0) {
    const ExactCopy copy(text);
    std::string message;
    const bool good = pocketjson::parse(message, value, copy.begin(), copy.end(), flags);
    require(good == message.empty(), "a refusal has a message, and nothing else has");
    return good;
}

/// The texts that are written of a value are read as what it is, by us and by others.
void checkWriting(const Value& value, const json& meaning) {
    std::string text;
    require(pocketjson::write(value, text) == isFinite(meaning), "exactly what is finite is written", text);
    if (!isFinite(meaning)) return;

    Value again;
    require(parse(again, text), "what is written is not read", text);
    require(toJson(again) == meaning, "what is written is read as something else", text);
    std::string twice;
    require(pocketjson::write(again, twice) && twice == text, "written differently the second time", text);

    for (const unsigned flags :
         {0U, unsigned{pocketjson::FourSpaces}, unsigned{pocketjson::Tab}, unsigned{pocketjson::CarriageReturn}, 7U}) {
        std::string pretty;
        require(pocketjson::write(value, pretty, flags | pocketjson::Pretty), "not written with line breaks");
        Value unfolded;
        require(parse(unfolded, pretty) && unfolded == again, "line breaks change it", pretty);
    }

    // Strings may have any bytes, as the text had that they come from; nlohmann takes UTF-8 only.
    const auto read = json::parse(text, nullptr, false);
    if (read.is_discarded())
        require(shown(text).find("\\ufffd") != std::string::npos, "what is written is no JSON", text);
    else
        require(read == meaning, "others read something else", text);
}

/// The conversions take every value; what they yield is the tests' business.
void convert(const Value& value) {
    static_cast<void>(value.asInt() + value.asInt64() % 2 + static_cast<int>(value.asUInt() % 2));
    static_cast<void>(value.asDouble());
    static_cast<void>(value.asBool());
    static_cast<void>(value.asString("fallback"));
}

void checkParsing(std::string_view text, unsigned flags) {
    const auto expected =
        ReferenceParser::parse(text, {.allowTrailingComma = (flags & pocketjson::AllowTrailingComma) != 0,
                                      .ignoreTrailingText = (flags & pocketjson::IgnoreTrailingText) != 0});
    Value value;
    const bool good = parse(value, text, flags);
    require(good == expected.has_value(), good ? "taken" : "refused", text);

    const ExactCopy copy(text);
    Builder builder;
    std::string message;
    require(pocketjson::parse(message, builder, copy.begin(), copy.end(), flags) == good,
            "events and values disagree about", text);
    if (!good) return;

    const json meaning = toJson(value);
    require(isSame(meaning, *expected), "read as something else", text);
    require(isSame(builder.result, meaning), "the events are something else", text);
    if (flags != 0) return;

    const Value copied = value;
    require(copied == value, "a copy differs", text);
    for (const Value& element : value.elements()) convert(element);
    for (const auto& [name, member] : value.members()) convert(member);
    convert(value);
    checkWriting(value, meaning);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    for (unsigned flags = 0; flags < 4; ++flags) checkParsing(text, flags);

    // The other parser knows nothing of what is special about ours, but it is a parser of many years.
    if (const auto json = nlohmann::json::parse(text, nullptr, false); !json.is_discarded()) {
        Value value;
        require(parse(value, text), "JSON is refused", text);
        require(toJson(value) == json, "JSON is read as something else", text);
    }
    return 0;
}
