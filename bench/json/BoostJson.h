#pragma once

#include <boost/json.hpp>
#include <memory>

#include "json/Library.h"

namespace bench {

struct BoostJson {
    static constexpr const char* name = "Boost.JSON";
    using Document = boost::json::value;
    using Text = std::string;

    static Document parse(const std::string& text) { return boost::json::parse(text); }

    static Text write(const Document& document) { return boost::json::serialize(document); }
    static std::string_view view(const Text& text) { return text; }

    static double readAll(const Document& document) {
        double sum = 0;
        switch (document.kind()) {
            case boost::json::kind::object: {
                const auto& object = document.get_object();
                for (const auto& member : object) sum += 1 + readAll(*object.if_contains(member.key()));
                return sum;
            }
            case boost::json::kind::array:
                for (const auto& element : document.get_array()) sum += readAll(element);
                return sum;
            case boost::json::kind::string:
                return document.get_string().empty() ? 0 : 1;
            case boost::json::kind::bool_:
                return document.get_bool();
            case boost::json::kind::null:
                return 0;
            default:
                return document.to_number<double>();
        }
    }

    static void copyAndChange(const Document& document) { change(Document(document)); }
    static void change(Document copy) {
        if (auto* object = copy.if_object())
            (*object)["changed"] = 1;
        else if (auto* array = copy.if_array(); array && !array->empty())
            array->front() = 1;
    }
};

/// A bound rather than a peer: each document is in memory of its own that is given up as a whole, and one parser reads
/// them all.
struct BoostJsonMonotonic {
    static constexpr const char* name = "Boost.JSON monotonic";
    struct Document {
        std::unique_ptr<boost::json::monotonic_resource> memory;
        boost::json::value value;
    };
    using Text = BoostJson::Text;

    static Document parse(const std::string& text) {
        static boost::json::parser parser;  // keeps its buffers
        auto memory = std::make_unique<boost::json::monotonic_resource>();
        parser.reset(memory.get());
        parser.write(text);
        auto value = parser.release();
        return {std::move(memory), std::move(value)};
    }

    static Text write(const Document& document) { return BoostJson::write(document.value); }
    static std::string_view view(const Text& text) { return text; }
    static double readAll(const Document& document) { return BoostJson::readAll(document.value); }
    static void copyAndChange(const Document& document) {
        boost::json::monotonic_resource memory;
        BoostJson::change(boost::json::value(document.value, &memory));
    }
};

static_assert(JsonLibrary<BoostJson> && JsonLibrary<BoostJsonMonotonic>);

}  // namespace bench
