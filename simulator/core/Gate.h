// The gate that every simulated function passes: it journals the call, applies scripted results and finds the monitor.
//
// A function is one expression:
//   DmResult DmCtrlGetX(const char* serial, const char* product, uint32_t* x) {
//       return monitorCall(__func__, serial, product).get("x", x);
//   }
// libdmc/Functions.h makes one line of the common ones. `run` beneath takes work of any kind: it is handed the monitor
// and answers a result and the out-parameters as JSON, which the same outputs write that write scripted ones.
#pragma once

#include <libdmc.h>

#include <functional>
#include <initializer_list>
#include <string>

#include "simulator/core/World.h"

namespace simulator {

/// Results of the monitor-control library.
namespace result {
inline constexpr std::uint32_t success = 0;
inline constexpr std::uint32_t failed = 0x80000000;
inline constexpr std::uint32_t invalidArgument = 0x80000001;
inline constexpr std::uint32_t invalidBufferSize = 0x80000003;
inline constexpr std::uint32_t unsupported = 0x80000007;
inline constexpr std::uint32_t stall = 0x80000008;
inline constexpr std::uint32_t outOfRange = 0x8000000A;
inline constexpr std::uint32_t noMoreData = 0x8000000B;
inline constexpr std::uint32_t canceled = 0x8000000C;
inline constexpr std::uint32_t locked = 0x8000000F;
inline constexpr std::uint32_t alreadyUsed = 0x80000012;
inline constexpr std::uint32_t invalidPrecondition = 0x80000015;
inline constexpr std::uint32_t invalidData = 0x8000001A;
inline constexpr std::uint32_t invalidDataSize = 0x8000001B;
inline constexpr std::uint32_t connectionError = 0x80010001;
inline constexpr std::uint32_t criticalSectionOwned = 0x8001000A;
}  // namespace result

/// What a function's normal work comes to; outputs are in the order of the out-parameters.
struct Answer {
    std::uint32_t result = result::success;
    Json outputs = Json::array();
};

/// Success with these out-parameters.
template <class... Values>
Answer answer(const Values&... values) {
    Answer answer;
    (answer.outputs.push_back(values), ...);
    return answer;
}

/// A setting's value, or of a value that is a list or an object the part at an index or a name. Null: there is none.
Json* part(Json& setting, const Json& key);

/// Answers that part, or replaces it by a value that suits the setting and is as long as the list that it replaces.
Answer readSetting(Json& setting, const Json& key);
Answer writeSetting(Json& setting, const Json& key, const Json& value);

/// Tells the observer of a call from its first allocation to its last.
class Presence {
 public:
    Presence();
    ~Presence();
    Presence(const Presence&) = delete;
    Presence& operator=(const Presence&) = delete;
};

/// Lets other threads at the world for a while, in the midst of a function's work. The calling thread is then the
/// plug-in's, not the simulator's, and what it knew of the world may be wrong afterwards.
class Intermission {
 public:
    Intermission();
    ~Intermission();
    Intermission(const Intermission&) = delete;
    Intermission& operator=(const Intermission&) = delete;
};

/// One call of a simulated function. It lives as long as the call and never throws, unless a script says so.
class Call {
    const Presence presence_;

 public:
    Call(const Call&) = delete;
    Call& operator=(const Call&) = delete;

 protected:
    Call(const char* function, bool journalled);

    using Work = std::function<Answer(World&)>;
    std::uint32_t pass(const Work& work, std::initializer_list<Output> outputs);

    Json arguments_ = Json::array();
    std::string product_;
    std::string serial_;

 private:
    Answer perform(const Work& work, std::initializer_list<Output> outputs, Json& entry);

    const char* function_;
    bool journalled_;
};

/// A function of a library as a whole.
class LibraryCall : public Call {
 public:
    template <class... Inputs>
    LibraryCall(const char* function, bool journalled, Inputs... inputs) noexcept : Call(function, journalled) {
        (arguments_.push_back(toJson(inputs)), ...);
    }

    std::uint32_t result(const Work& work, std::initializer_list<Output> outputs = {}) { return pass(work, outputs); }
    DmResult run(const Work& work, std::initializer_list<Output> outputs = {}) {
        return static_cast<DmResult>(pass(work, outputs));
    }

    /// A function without a result.
    void tell(const std::function<void()>& work);

    /// A handle, or null when the scripted result is 0.
    template <class Handle>
    Handle* handle(Handle* normal) {
        return pass([](World&) { return Answer{1}; }, {}) != 0 ? normal : nullptr;
    }

    /// A text that lives as long as the process, or null when the scripted result is 0. It is the only output.
    const char* text(std::string normal);
};

/// A function of one monitor.
class MonitorCall : public Call {
 public:
    template <class... Inputs>
    MonitorCall(const char* function, const char* serial, const char* product, Inputs... inputs) noexcept
        : Call(function, true) {
        address(serial, product);
        (arguments_.push_back(toJson(inputs)), ...);
    }

    using MonitorWork = std::function<Answer(Monitor&)>;
    DmResult run(const MonitorWork& work, std::initializer_list<Output> outputs = {});

    /// As `run`; result::unsupported when the monitor lacks the feature.
    DmResult run(const char* feature, const MonitorWork& work, std::initializer_list<Output> outputs = {});

    /// 1 or 0; 0 for a monitor that is not connected or lacks the feature.
    std::int32_t supports(const char* feature, const std::function<bool(Monitor&)>& condition = {});

    /// A setting of the monitor, or the part of it at a key; `set` writes the last argument.
    DmResult get(const char* setting, Output value, const Json& key = {});
    DmResult set(const char* setting, const Json& key = {});

    /// What else a setting has ("min", "of" ...), in the order of the outputs; and how many items such a list has.
    DmResult members(const char* setting, std::initializer_list<const char*> names,
                     std::initializer_list<Output> outputs);
    DmResult count(const char* setting, const char* member, Output count);

    /// A setting as 0 to 100 per cent of its range, rounded to its steps.
    DmResult getPercentage(const char* setting, Output percentage);
    DmResult setPercentage(const char* setting);

 private:
    void address(const char* serial, const char* product);
};

template <class... Inputs>
MonitorCall monitorCall(const char* function, const char* serial, const char* product, Inputs... inputs) {
    return MonitorCall(function, serial, product, inputs...);
}

/// A list of the caller's, as an input.
template <class T>
std::span<const T> list(const T* items, std::uint32_t count) {
    return {items, items ? count : 0};
}

template <class... Inputs>
LibraryCall libraryCall(const char* function, Inputs... inputs) {
    return LibraryCall(function, true, inputs...);
}

/// A function of the host's own libraries, which keep lists of what they are told and stay out of the journal.
inline LibraryCall hostCall(const char* function) {
    return LibraryCall(function, false);
}

}  // namespace simulator
