// One request as its handler sees it.
#pragma once

#include <string>

#include "pocketjson/Value.h"

namespace torvo {

/// The four texts of a call, NUL-terminated and borrowed for the call; a null pointer counts as an empty text.
struct CallTexts {
    const char* options;
    const char* params;
    const char* query;
    const char* body;
};

enum class Method { Get, Post, Put, Delete };

struct RequestRecord {
    pocketjson::Value requestOptions;  ///< {"method": ...}
    pocketjson::Value requestParams;   ///< {"product", "serial"} of a monitor resource
    pocketjson::Value requestQuery;    ///< what a GET asks for, decided by the presence of members
    pocketjson::Value requestBody;     ///< what a PUT or POST brings; a text that is not JSON is here as a JSON string
    std::string requestBodyText;       ///< the body as it came
    Method method = Method::Get;       ///< "method" of the options in any case of letters; a GET for whatever else

    /// Parses the texts. One that is not JSON leaves its member null; that is not an error here.
    void parse(const CallTexts& texts);

    /// What a PUT, POST or DELETE brings: the body, or what stands in it when the body is an object with the
    /// single member "data". So `50` and `{"data": 50}` are the same request.
    const pocketjson::Value& data() const noexcept;
};

/// The method's name in upper case.
const char* methodName(Method method) noexcept;

}  // namespace torvo
