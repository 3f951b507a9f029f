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
/// numbers. Scripts for one monitor work as with functions that name it.
class FirmwareCall : public Call {
 public:
    template <class... Inputs>
    explicit FirmwareCall(const char* function, Inputs... inputs) noexcept : Call(function, true), function_(function) {
        (take(inputs), ...);
    }

    /// A result, a number or a truth.
    std::uint32_t run(const Work& work, std::initializer_list<Output> outputs = {}) { return pass(work, outputs); }

    using MonitorWork = std::function<Answer(Monitor&)>;
    DmResult run(FWHidHandle handle, const MonitorWork& work, std::initializer_list<Output> outputs = {}) {
        const auto find = [&](World& world) {
            const auto monitor = world.findMonitor(handle);
            return monitor ? work(*monitor) : Answer{result::connectionError};
        };
        return static_cast<DmResult>(pass(find, outputs));
    }

    /// A handle of what is made; null when that is null, or the scripted result is 0 or a failure.
    template <class T>
    T* create(const std::function<std::shared_ptr<T>()>& make) {
        std::shared_ptr<T> object;
        const auto work = [&](World&) {
            object = make();
            return Answer{object ? 1u : 0u};
        };
        if (pass(work, {}) == 0 || !object) return nullptr;
        auto& state = State::instance();
        const std::lock_guard lock(state.mutex);
        return state.handles.open(std::move(object));
    }

    template <class T>
    void release(T* handle) {
        const auto work = [&](World&) {
            State::instance().handles.release(handle, function_);
            return Answer();
        };
        pass(work, {});
    }

    /// What an open handle stands for; otherwise null, and a fault. Not to be asked within the work of a call.
    template <class T>
    std::shared_ptr<T> find(T* handle) const {
        auto& state = State::instance();
        const std::lock_guard lock(state.mutex);
        return state.handles.find(handle, function_);
    }

    /// A text that lives as long as the handle; null when it is empty, or the scripted result is 0 or a failure.
    template <class T>
    const char* text(T* handle, const std::function<std::string(const T&)>& tell) {
        const auto object = find(handle);
        std::string text;
        const auto work = [&](World&) {
            text = object ? tell(*object) : "";
            return Answer{text.empty() ? 0u : 1u};
        };
        const auto code = pass(work, {&text});
        if (!object || code == 0 || (code & 0x80000000u)) return nullptr;
        const std::lock_guard lock(State::instance().mutex);
        return object->texts.insert(text).first->c_str();
    }

 private:
    void take(FWHidHandle handle) {
        auto& state = State::instance();
        const std::lock_guard lock(state.mutex);
        const auto monitor = state.world.findMonitor(handle);
        arguments_.push_back(monitor ? Json(monitor->address()) : Json());
        product_ = monitor ? monitor->product : "";
        serial_ = monitor ? monitor->serial : "";
    }
    template <class T>
    requires(handleKind<T> != nullptr) void take(T* handle) { arguments_.push_back(Handles::number(handle)); }
    void take(const char* text) { arguments_.push_back(toJson(text)); }
    void take(const std::string& text) { arguments_.push_back(text); }
    void take(const FirmwareVersionRecord* version) { arguments_.push_back(toJson(version)); }

    const char* function_;
};

}  // namespace simulator
