// The gate between libpell and its companions: every call of a companion's function passes it.
//
// A companion may be made by another compiler, and its functions may end in an exception that is no C++ of ours: C++ of
// another compiler, an exception of another language, one of the system's. Our compiler cannot catch such an exception
// and does not run our destructors for it; it would leave locks held and the page without an answer. The gate turns it
// into a C++ exception, platform::ForeignException. C++ exceptions of our own compiler pass as they are. So do faults,
// such as an access violation: what those leave behind cannot be relied on, and they are the process's own affair.
//
// What is looked up by name (NAMED) is Gated from the start; an import is called as `gated(function)(arguments)`.
#pragma once

#include <cstddef>

#include "runtime/platform/GuardedCall.h"

namespace torvo {

/// A companion's function, or none.
template <class Function>
class Gated;

template <class Result, class... Parameters>
class Gated<Result(Parameters...)> {
 public:
    using Function = Result(Parameters...);

    /// Null is no function.
    explicit Gated(Function* function) noexcept : function_(function) {}

    explicit operator bool() const noexcept { return function_ != nullptr; }
    bool operator==(std::nullptr_t) const noexcept { return function_ == nullptr; }

    Result operator()(Parameters... parameters) const { return platform::callGuarded(function_, parameters...); }

    /// For destructors: drops whatever the function throws.
    void callQuietly(Parameters... parameters) const noexcept {
        try {
            (*this)(parameters...);
        } catch (...) {
        }
    }

 private:
    Function* function_;
};

template <class Function>
Gated<Function> gated(Function* function) noexcept {
    return Gated<Function>(function);
}

}  // namespace torvo
