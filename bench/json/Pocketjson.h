#pragma once

#include <stdexcept>

#include "json/Library.h"
#include "pocketjson/Parser.h"
#include "pocketjson/Serializer.h"

namespace bench {

struct Pocketjson {
    static constexpr const char* name = "libpell";
    using Document = pocketjson::Value;
    using Text = std::string;

    static Document parse(const std::string& text) {
        Document document;
        std::string message;
        if (!pocketjson::parse(message, document, text)) throw std::runtime_error(message);
        return document;
    }

    static Text write(const Document& document) {
        Text text;
        if (!pocketjson::write(document, text)) throw std::runtime_error("a number is not finite");
        return text;
    }
    static std::string_view view(const Text& text) { return text; }

    static double readAll(const Document& document) {
        double sum = 0;
        switch (document.type()) {
            case Document::Object:
                for (const auto& [memberName, member] : document.members())
                    sum += 1 + readAll(document.get(memberName));
                return sum;
            case Document::Array:
                for (const auto& element : document.elements()) sum += readAll(element);
                return sum;
            case Document::String:
                return document.text().empty() ? 0 : 1;
            default:
                return document.asDouble();
        }
    }

    static void copyAndChange(const Document& document) {
        Document copy = document;
        if (copy.isObject())
            copy["changed"] = 1;
        else if (copy.isArray() && !copy.empty())
            copy.element(0) = 1;
    }
};

static_assert(JsonLibrary<Pocketjson>);

}  // namespace bench
