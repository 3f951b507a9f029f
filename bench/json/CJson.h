#pragma once

#include <cjson/cJSON.h>

#include <memory>
#include <stdexcept>

#include "json/Library.h"

namespace bench {

struct CJson {
    static constexpr const char* name = "cJSON";
    struct Release {
        void operator()(cJSON* value) const { cJSON_Delete(value); }
        void operator()(char* text) const { cJSON_free(text); }
    };
    using Document = std::unique_ptr<cJSON, Release>;
    using Text = std::unique_ptr<char, Release>;

    static Document parse(const std::string& text) {
        Document document(cJSON_Parse(text.c_str()));
        if (!document) throw std::runtime_error("not JSON");
        return document;
    }

    static Text write(const Document& document) { return Text(cJSON_PrintUnformatted(document.get())); }
    static std::string_view view(const Text& text) { return text.get(); }

    static double readAll(const Document& document) { return readAll(document.get()); }
    static double readAll(const cJSON* value) {
        double sum = 0;
        const cJSON* entry = nullptr;
        if (cJSON_IsObject(value)) {
            cJSON_ArrayForEach(entry, value) sum += 1 + readAll(cJSON_GetObjectItemCaseSensitive(value, entry->string));
        } else if (cJSON_IsArray(value)) {
            cJSON_ArrayForEach(entry, value) sum += readAll(entry);
        } else if (cJSON_IsString(value)) {
            sum = *value->valuestring == '\0' ? 0 : 1;
        } else if (cJSON_IsNumber(value)) {
            sum = value->valuedouble;
        } else if (cJSON_IsTrue(value)) {
            sum = 1;
        }
        return sum;
    }

    static void copyAndChange(const Document& document) {
        const Document copy(cJSON_Duplicate(document.get(), true));
        if (cJSON_IsObject(copy.get()))
            cJSON_AddNumberToObject(copy.get(), "changed", 1);
        else if (cJSON_GetArraySize(copy.get()) > 0)
            cJSON_ReplaceItemInArray(copy.get(), 0, cJSON_CreateNumber(1));
    }
};

static_assert(JsonLibrary<CJson>);

}  // namespace bench
