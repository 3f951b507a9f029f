#include "runtime/Path.h"

#include "runtime/platform/Platform.h"

namespace fs {

namespace platform = torvo::platform;

Path Path::joined(std::string_view rest) const {
    if (empty()) return {};
    std::string text = text_;
    while (!rest.empty() && platform::isPathSeparator(rest.front())) rest.remove_prefix(1);
    if (!platform::isPathSeparator(text.back())) text += platform::pathSeparator;
    text += rest;
    return Path(std::move(text));
}

Path Path::parent() const {
    std::size_t end = text_.size();
    while (end > 0 && !platform::isPathSeparator(text_[end - 1])) --end;
    return Path(text_.substr(0, end > 0 ? end - 1 : 0));
}

}  // namespace fs
