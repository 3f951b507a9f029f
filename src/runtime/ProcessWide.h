// Objects that live from their first use until libpell is unloaded.
#pragma once

#include <cstddef>
#include <new>

#include "runtime/platform/Platform.h"

namespace torvo {

/// The process's one object of a class: made by the thread that needs it first, and destroyed when libpell is unloaded,
/// those made last first. Not when the process ends (see `platform::atUnload`), which is why it is no static object.
/// A class that only this function may construct makes it a friend.
template <class T>
T& processWide() {
    alignas(T) static std::byte memory[sizeof(T)];
    static platform::UnloadFunction destroy{[] { std::launder(reinterpret_cast<T*>(memory))->~T(); }};
    static T* const object = [] {
        T* const made = ::new (memory) T();
        platform::atUnload(destroy);
        return made;
    }();
    return *object;
}

}  // namespace torvo
