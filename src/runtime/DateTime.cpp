#include "runtime/DateTime.h"

#include <algorithm>

namespace torvo {

namespace {

void append(std::string& text, unsigned number, std::size_t digits) {
    const std::string written = std::to_string(number);
    text.append(digits - std::min(digits, written.size()), '0');
    text += written;
}

}  // namespace

std::string DateTime::text() const {
    std::string text;
    append(text, year, 4);
    const struct {
        char separator;
        unsigned number;
    } rest[] = {{'-', month}, {'-', day}, {' ', hour}, {':', minute}, {':', second}};
    for (const auto& [separator, number] : rest) {
        text += separator;
        append(text, number, 2);
    }
    return text;
}

}  // namespace torvo
