#pragma once

#include <jansson.h>

#include <cstdlib>
#include <memory>
#include <stdexcept>

#include "json/Library.h"

namespace bench {

struct Jansson {
    static constexpr const char* name = "jansson";
    struct Release {
        void operator()(json_t* value) const { json_decref(value); }
        void operator()(char* text) const { std::free(text); }
    };
    using Document = std::unique_ptr<json_t, Release>;
    using Text = std::unique_ptr<char, Release>;

    static Document parse(const std::string& text) {
        json_error_t error;
        Document document(json_loadb(text.data(), text.size(), JSON_DECODE_ANY, &error));
        if (!document) throw std::runtime_error(error.text);
        return document;
    }

    static Text write(const Document& document) {
        return Text(json_dumps(document.get(), JSON_COMPACT | JSON_ENCODE_ANY));
    }
    static std::string_view view(const Text& text) { return text.get(); }

    static double readAll(const Document& document) { return readAll(document.get()); }
    static double readAll(json_t* value) {
        double sum = 0;
        switch (json_typeof(value)) {
            case JSON_OBJECT:
                for (void* member = json_object_iter(value); member; member = json_object_iter_next(value, member))
                    sum += 1 + readAll(json_object_get(value, json_object_iter_key(member)));
                return sum;
            case JSON_ARRAY:
                for (std::size_t i = 0; i < json_array_size(value); ++i) sum += readAll(json_array_get(value, i));
                return sum;
            case JSON_STRING:
                return json_string_length(value) == 0 ? 0 : 1;
            case JSON_TRUE:
                return 1;
            default:
                return json_number_value(value);
        }
    }

    static void copyAndChange(const Document& document) {
        const Document copy(json_deep_copy(document.get()));
        if (json_is_object(copy.get()))
            json_object_set_new(copy.get(), "changed", json_integer(1));
        else if (json_array_size(copy.get()) > 0)
            json_array_set_new(copy.get(), 0, json_integer(1));
    }
};

static_assert(JsonLibrary<Jansson>);

}  // namespace bench
