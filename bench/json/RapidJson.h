#pragma once

#include <rapidjson/document.h>
#include <rapidjson/error/en.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <stdexcept>

#include "json/Library.h"

namespace bench {

struct RapidJson {
    static constexpr const char* name = "RapidJSON";
    using Document = rapidjson::Document;
    using Text = rapidjson::StringBuffer;

    static Document parse(const std::string& text) {
        Document document;
        if (document.Parse(text.c_str()).HasParseError())
            throw std::runtime_error(rapidjson::GetParseError_En(document.GetParseError()));
        return document;
    }

    static Text write(const Document& document) {
        Text text;
        rapidjson::Writer<Text> writer(text);
        document.Accept(writer);
        return text;
    }
    static std::string_view view(const Text& text) { return {text.GetString(), text.GetSize()}; }

    static double readAll(const rapidjson::Value& value) {
        double sum = 0;
        switch (value.GetType()) {
            case rapidjson::kObjectType:
                for (const auto& member : value.GetObject()) sum += 1 + readAll(value.FindMember(member.name)->value);
                return sum;
            case rapidjson::kArrayType:
                for (const auto& element : value.GetArray()) sum += readAll(element);
                return sum;
            case rapidjson::kStringType:
                return value.GetStringLength() == 0 ? 0 : 1;
            case rapidjson::kNumberType:
                return value.GetDouble();
            case rapidjson::kTrueType:
                return 1;
            default:
                return 0;
        }
    }

    static void copyAndChange(const Document& document) {
        Document copy;
        copy.CopyFrom(document, copy.GetAllocator());
        if (copy.IsObject())
            copy.AddMember("changed", 1, copy.GetAllocator());
        else if (copy.IsArray() && !copy.Empty())
            copy[0] = 1;
    }
};

static_assert(JsonLibrary<RapidJson>);

}  // namespace bench
