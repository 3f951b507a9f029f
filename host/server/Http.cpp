#include "host/server/Http.h"

#include <nlohmann/json.hpp>

#include "simulator/core/Json.h"

namespace host::server {

HttpResponse errorResponse(unsigned status, std::string_view name, std::string_view message) {
    const simulator::Json envelope = {{"error", {{"name", name}, {"message", message}}}, {"value", nullptr}};
    return {.status = status, .type = "application/json", .body = simulator::writeJson(envelope)};
}

}  // namespace host::server
