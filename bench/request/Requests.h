// The requests that are measured.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace bench {

struct Request {
    std::string name;  ///< of its row in the report
    const char* entry;
    std::string options;
    std::string params;
    std::string query;
    std::string body;
    std::uint32_t monitors = 1;  ///< connected; the last one is addressed

    using Entry = std::uint32_t(const char* options, const char* params, const char* query, const char* body);

    void call(Entry& function) const { function(options.c_str(), params.c_str(), query.c_str(), body.c_str()); }
};

std::vector<Request> requests();

}  // namespace bench
