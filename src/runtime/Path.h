// A file-system path.
#pragma once

#include <string>
#include <string_view>

namespace fs {

/// One path as UTF-8 text; it becomes the system's own form only at the system calls.
class Path {
 public:
    Path() = default;
    explicit Path(std::string text) : text_(std::move(text)) {}
    virtual ~Path() = default;
    Path(const Path&) = default;
    Path(Path&&) = default;
    Path& operator=(const Path&) = default;
    Path& operator=(Path&&) = default;

    /// This path and the rest, with exactly one separator between them. An empty path stays empty: the root of the
    /// file system is never reached by leaving a directory out.
    Path joined(std::string_view rest) const;

    /// Everything before the last separator; empty when there is none.
    Path parent() const;

    const std::string& text() const noexcept { return text_; }
    bool empty() const noexcept { return text_.empty(); }

 private:
    std::string text_;
};

}  // namespace fs
