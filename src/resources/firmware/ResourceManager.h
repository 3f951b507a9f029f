// Handles of a companion library that live longer than a request, each under an identifier that the page knows.
#pragma once

#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <type_traits>
#include <utility>

#include "runtime/platform/Mutex.h"
#include "runtime/platform/Platform.h"

namespace torvo {

/// A table of handles. A handle has shared owners: one that is removed while a request works with it is released when
/// that request is done. Callers hold the manager's mutex around every operation, and while they must not be
/// interrupted between two of them.
template <class Handle, class Deleter>
class ResourceManager {
 public:
    using Owner = std::shared_ptr<std::remove_pointer_t<Handle>>;

    ResourceManager() = default;
    ResourceManager(const ResourceManager&) = delete;
    ResourceManager& operator=(const ResourceManager&) = delete;

    /// Releases the handles that are still there, in the order of their identifiers.
    virtual ~ResourceManager() {
        while (!handles_.empty()) handles_.erase(handles_.begin());
    }

    platform::Mutex& mutex() const noexcept { return mutex_; }

    /// Takes the handle over, in place of one that the identifier named before. Should that fail, the handle is
    /// released.
    void add(const std::string& identifier, Owner handle) { handles_.insert_or_assign(identifier, std::move(handle)); }

    /// Null when there is none of exactly this identifier.
    Owner find(const std::string& identifier) const {
        const auto found = handles_.find(identifier);
        return found == handles_.end() ? nullptr : found->second;
    }

    /// Does nothing when there is none. The handle is released when it is no longer in the table, since a library may
    /// let requests in meanwhile.
    void remove(const std::string& identifier) { const auto removed = handles_.extract(identifier); }

 private:
    mutable platform::Mutex mutex_;
    std::map<std::string, Owner> handles_;
};

}  // namespace torvo
