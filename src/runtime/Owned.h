// Handles of companion libraries, released when their owner goes.
#pragma once

#include <memory>

#include "runtime/Gate.h"

namespace torvo {

/// Releases a handle by a function of its library. Whatever that throws is dropped: it is called by destructors.
template <class Handle>
class Release {
 public:
    explicit Release(Gated<void(Handle*)> function) noexcept : function_(function) {}

    void operator()(Handle* handle) const noexcept { function_.callQuietly(handle); }

 private:
    Gated<void(Handle*)> function_;
};

/// Null owns nothing.
template <class Handle>
using Owned = std::unique_ptr<Handle, Release<Handle>>;

}  // namespace torvo
