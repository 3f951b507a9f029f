#include "json/ByteScan.h"

namespace bench {

std::size_t countQuotes(std::string_view text) noexcept {
    std::size_t count = 0;
    for (const char byte : text) count += byte == '"';
    return count;
}

}  // namespace bench
