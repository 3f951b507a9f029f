// A function of the firmware library, and what its handles stand for.
#pragma once

#include <libfwupdate.h>

#include <memory>
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

    DmResult run(const Work& work, std::initializer_list<Output> outputs = {}) {
        return static_cast<DmResult>(pass(work, outputs));
    }

    using MonitorWork = std::function<Answer(Monitor&)>;
    DmResult runOn(FWHidHandle handle, const MonitorWork& work, std::initializer_list<Output> outputs = {}) {
        return run(
            [&](World& world) {
                const auto monitor = world.findMonitor(handle);
                return monitor ? work(*monitor) : Answer{result::connectionError};
            },
            outputs);
    }

    /// A handle of what the work makes; null when it makes nothing, or the scripted result is 0 or a failure.
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
        pass(
            [&](World&) {
                State::instance().handles.release(handle, function_);
                return Answer();
            },
            {});
    }

    /// What an open handle stands for, within the work of a call; otherwise null, which the tests learn as a fault.
    template <class T>
    std::shared_ptr<T> find(T* handle) const {
        return State::instance().handles.find(handle, function_);
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
    requires(handleKind<T> != nullptr) void take(T* handle) {
        arguments_.push_back(Handles::number(handle));
    }
    void take(const char* text) { arguments_.push_back(toJson(text)); }
    void take(const std::string& text) { arguments_.push_back(text); }
    void take(const FirmwareVersionRecord* version) { arguments_.push_back(toJson(version)); }

    const char* function_;
};

}  // namespace simulator
