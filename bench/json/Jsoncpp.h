#pragma once

#include <json/json.h>

#include <memory>
#include <sstream>
#include <stdexcept>

#include "json/Library.h"

namespace bench {

struct Jsoncpp {
    static constexpr const char* name = "jsoncpp";
    using Document = Json::Value;
    using Text = std::string;

    static Document parse(const std::string& text) {
        static const std::unique_ptr<Json::CharReader> reader = [] {
            Json::CharReaderBuilder builder;
            builder["collectComments"] = false;
            return std::unique_ptr<Json::CharReader>(builder.newCharReader());
        }();
        Document document;
        std::string message;
        if (!reader->parse(text.data(), text.data() + text.size(), &document, &message))
            throw std::runtime_error(message);
        return document;
    }

    static Text write(const Document& document) {
        static const std::unique_ptr<Json::StreamWriter> writer = [] {
            Json::StreamWriterBuilder builder;
            builder["indentation"] = "";
            builder["emitUTF8"] = true;
            return std::unique_ptr<Json::StreamWriter>(builder.newStreamWriter());
        }();
        std::ostringstream stream;
        writer->write(document, &stream);
        return std::move(stream).str();
    }
    static std::string_view view(const Text& text) { return text; }

    static double readAll(const Document& document) {
        double sum = 0;
        switch (document.type()) {
            case Json::objectValue:
                for (auto member = document.begin(); member != document.end(); ++member) {
                    const char* end = nullptr;
                    const char* const begin = member.memberName(&end);
                    sum += 1 + readAll(*document.find(begin, end));
                }
                return sum;
            case Json::arrayValue:
                for (const auto& element : document) sum += readAll(element);
                return sum;
            case Json::stringValue: {
                const char* begin = nullptr;
                const char* end = nullptr;
                document.getString(&begin, &end);
                return begin == end ? 0 : 1;
            }
            default:
                return document.asDouble();
        }
    }

    static void copyAndChange(const Document& document) {
        Document copy = document;
        if (copy.isObject())
            copy["changed"] = 1;
        else if (copy.isArray() && !copy.empty())
            copy[0] = 1;
    }
};

static_assert(JsonLibrary<Jsoncpp>);

}  // namespace bench
