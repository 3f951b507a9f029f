#pragma once

#include <nlohmann/json.hpp>

#include "json/Library.h"

namespace bench {

struct Nlohmann {
    static constexpr const char* name = "nlohmann";
    using Document = nlohmann::json;
    using Text = std::string;

    static Document parse(const std::string& text) { return Document::parse(text); }

    static Text write(const Document& document) { return document.dump(); }
    static std::string_view view(const Text& text) { return text; }

    static double readAll(const Document& document) {
        double sum = 0;
        switch (document.type()) {
            case Document::value_t::object:
                for (const auto& [memberName, member] : document.get_ref<const Document::object_t&>())
                    sum += 1 + readAll(*document.find(memberName));
                return sum;
            case Document::value_t::array:
                for (const auto& element : document) sum += readAll(element);
                return sum;
            case Document::value_t::string:
                return document.get_ref<const std::string&>().empty() ? 0 : 1;
            case Document::value_t::boolean:
                return document.get<bool>();
            case Document::value_t::null:
                return 0;
            default:
                return document.get<double>();
        }
    }

    static void copyAndChange(const Document& document) {
        Document copy = document;
        if (copy.is_object())
            copy["changed"] = 1;
        else if (copy.is_array() && !copy.empty())
            copy[0] = 1;
    }
};

static_assert(JsonLibrary<Nlohmann>);

}  // namespace bench
