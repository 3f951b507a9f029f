// The handles that simulated libraries give out and want back.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace simulator {

/// What counts and logs call the handles of a type; specialised for each.
template <class T>
inline constexpr const char* handleKind = nullptr;

/// A handle is a number that no other handle of the process has had, never an address: a wrong one is found out without
/// being followed. Not thread-safe: whoever uses the handles holds the simulator's mutex.
class Handles {
 public:
    template <class T>
    T* open(std::shared_ptr<T> object) {
        return reinterpret_cast<T*>(insert(handleKind<T>, std::move(object)));
    }

    /// Null, and a fault of the function that was given it, when this is not an open handle of its type.
    template <class T>
    std::shared_ptr<T> find(T* handle, const char* function) {
        const auto entry = lookUp(handleKind<T>, number(handle), function);
        return entry ? std::static_pointer_cast<T>(entry->object) : nullptr;
    }

    template <class T>
    void release(T* handle, const char* function) {
        erase(handleKind<T>, number(handle), function);
    }

    void releaseAll() { entries_.clear(); }

    /// How many of each kind are open.
    std::map<std::string, std::size_t> count() const;

    /// The wrong uses since this was asked last.
    std::vector<std::string> takeFaults() { return std::exchange(faults_, {}); }

    template <class T>
    static std::uintptr_t number(T* handle) {
        return reinterpret_cast<std::uintptr_t>(handle);
    }

 private:
    struct Entry {
        const char* kind;
        std::shared_ptr<void> object;
    };

    std::uintptr_t insert(const char* kind, std::shared_ptr<void> object);
    Entry* lookUp(const char* kind, std::uintptr_t number, const char* function);
    void erase(const char* kind, std::uintptr_t number, const char* function);

    std::map<std::uintptr_t, Entry> entries_;
    std::uintptr_t last_ = 0;
    std::vector<std::string> faults_;
};

/// Appends a line to the file that the environment variable PELL_SIMULATOR_HANDLES names, if it does: what a process
/// does with its handles up to its end can thus be seen from outside.
void logHandles(const std::string& line);

}  // namespace simulator
