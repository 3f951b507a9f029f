// The answer to the page: its JSON text, and the promise that is settled with it exactly once.
#pragma once

#include <cstdint>

#include "runtime/BridgeResult.h"

namespace torvo {

/// Writes the result's `text`, unless it is written already: {"error", "value"}. A result that cannot be written (a
/// number that JSON cannot hold, no memory) becomes the unknown error first, so that what is logged afterwards is what
/// the page receives.
void writeResponse(BridgeResult& result) noexcept;

/// The same for a handler that can still undo what it has done: throws when the result cannot be written.
void writeResponseOrThrow(BridgeResult& result);

/// The answer as it goes to the page. A success without a value and the unknown error need no memory, and no `text`:
/// the monitor has been set, and saying so must not fail.
const char* responseText(const BridgeResult& result) noexcept;

/// A promise of the page. It is settled exactly once: by `settle`, or on destruction with the unknown error.
class Promise {
 public:
    Promise();
    ~Promise();
    Promise(const Promise&) = delete;
    Promise& operator=(const Promise&) = delete;

    /// Hands the answer over; further calls do nothing.
    void settle(const BridgeResult& result) noexcept;

    std::uint32_t id() const noexcept { return id_; }

 private:
    std::uint32_t id_;
    bool settled_ = false;
};

}  // namespace torvo
