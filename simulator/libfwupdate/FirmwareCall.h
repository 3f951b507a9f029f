// A function of the firmware library, and what its handles stand for.
#pragma once

#include <libfwupdate.h>

#include <memory>
#include <mutex>
#include <set>
#include <string>

#include "simulator/core/Gate.h"
#include "simulator/core/State.h"

struct FWDfwFile {
    simulator::FirmwarePackage package;
    std::set<std::string> texts{};  ///< handed out, and gone with the package
};

struct FWUtf8String {
    std::string text;
    std::set<std::string> texts{};
};

struct FWDeviceProfile {
    std::string device;
};

namespace simulator {

template <>
inline constexpr const char* handleKind<FWDfwFile> = "package";
template <>
inline constexpr const char* handleKind<FWUtf8String> = "string";
template <>
inline constexpr const char* handleKind<FWDeviceProfile> = "profile";

/// The journal has a monitor as "PRODUCT/SERIAL" (null when no connected one has the handle) and other handles by their
/// numbers. A monitor's handle makes it a call about that monitor, for work and scripts.
class FirmwareCall : public Call {
 public:
    template <class... Inputs>
    explicit FirmwareCall(const char* function, const Inputs&... inputs) noexcept : Call(function, {}) {
        (add(inputs), ...);
    }

    /// A handle of what is made; null when that is null, or the scripted result is 0 or a failure.
    template <class T, class Make>
    T* create(const Make& make) {
        std::shared_ptr<T> object;
        const auto result = run([&](World&) -> Answer {
            object = make();
            return object ? 1 : 0;
        });
        if (result.code == 0 || !object) return nullptr;
        auto& state = State::instance();
        const std::lock_guard lock(state.mutex);
        return state.handles.open(std::move(object));
    }

    template <class T>
    void release(T* handle) {
        run([&](World&) -> Answer {
            State::instance().handles.release(handle, function_);
            return result::success;
        });
    }

    /// What an open handle stands for; otherwise null, and a fault. Not to be asked within the work of a call.
    template <class T>
    std::shared_ptr<T> find(T* handle) const {
        auto& state = State::instance();
        const std::lock_guard lock(state.mutex);
        return state.handles.find(handle, function_);
    }

    /// A text that lives as long as the handle; null when it is empty, or the scripted result is 0 or a failure.
    template <class T, class Read>
    const char* text(T* handle, const Read& read) {
        const auto object = find(handle);
        std::string text;
        const auto result = run(
            [&](World&) -> Answer {
                text = object ? read(*object) : "";
                return text.empty() ? 0 : 1;
            },
            {&text});
        if (!object || result.code == 0 || result.failed()) return nullptr;
        const std::lock_guard lock(State::instance().mutex);
        return object->texts.insert(text).first->c_str();
    }

 private:
    void add(FWHidHandle handle) {
        auto& state = State::instance();
        const std::lock_guard lock(state.mutex);
        const auto monitor = state.world.findMonitor(handle);
        addArgument(monitor ? monitor->address().c_str() : nullptr);
        serial_ = monitor ? monitor->serial : "";
        product_ = monitor ? monitor->product : "";
    }
    template <class T>
    requires(handleKind<T> != nullptr) void add(T* handle) { addArgument(Handles::number(handle)); }
    void add(const char* text) { addArgument(text); }
    void add(const std::string& text) { addArgument(text); }
    void add(const FirmwareVersionRecord* version) { addArgument(version); }
};

}  // namespace simulator
