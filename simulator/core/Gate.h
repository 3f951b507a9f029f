// The gate that every simulated function passes: it journals the call, applies scripted results and finds the monitor.
//
// A function is one expression:
//   DmResult DmCtrlGetX(const char* serial, const char* product, uint32_t* x) {
//       return MonitorCall(__func__, serial, product).get("x", x);
//   }
// libdmc/Functions.h makes one line of the common ones. `run` beneath takes work of any kind.
#pragma once

#include <initializer_list>
#include <memory>
#include <string>
#include <type_traits>

#include "simulator/core/World.h"

namespace simulator {

/// Reports its scope to the observer of the gate.
class ObservedScope {
 public:
    ObservedScope();
    ~ObservedScope();
    ObservedScope(const ObservedScope&) = delete;
    ObservedScope& operator=(const ObservedScope&) = delete;
};

/// Releases the simulator's mutex for its scope, in the midst of a function's work. The calling thread is then the
/// plug-in's, not the simulator's, and what it knew of the world may be wrong afterwards.
class ScopedUnlock {
 public:
    ScopedUnlock();
    ~ScopedUnlock();
    ScopedUnlock(const ScopedUnlock&) = delete;
    ScopedUnlock& operator=(const ScopedUnlock&) = delete;
};

/// A function's normal work: refers to a function object that takes the world, or the monitor that the call is about.
/// It is called with the simulator's mutex held.
class Work {
 public:
    template <class Function>
    requires(std::is_invocable_r_v<Answer, const Function&, World&>) Work(const Function& function)
        : function_(&function), onWorld_([](const void* object, World& world) -> Answer {
              return (*static_cast<const Function*>(object))(world);
          }) {}

    template <class Function>
    requires(std::is_invocable_r_v<Answer, const Function&, Monitor&>) Work(const Function& function)
        : function_(&function), onMonitor_([](const void* object, Monitor& monitor) -> Answer {
              return (*static_cast<const Function*>(object))(monitor);
          }) {}

    bool isAboutMonitor() const { return onMonitor_; }
    Answer operator()(World& world) const { return onWorld_(function_, world); }
    Answer operator()(Monitor& monitor) const { return onMonitor_(function_, monitor); }

 private:
    const void* function_;
    Answer (*onWorld_)(const void* function, World&) = nullptr;
    Answer (*onMonitor_)(const void* function, Monitor&) = nullptr;
};

/// One call of a simulated function. It lives as long as the call and never throws, unless a script says so.
class Call {
    const ObservedScope scope_;

 public:
    Call(const Call&) = delete;
    Call& operator=(const Call&) = delete;
    ~Call();

    /// Does what a script says, else the work; writes the outputs and journals the call. Work on a monitor fails
    /// without being done when the monitor is not connected or lacks the feature.
    Result run(const Work& work, std::initializer_list<Output> outputs = {}) { return pass({}, work, outputs); }
    Result run(const char* feature, const Work& work, std::initializer_list<Output> outputs = {}) {
        return pass({.feature = feature}, work, outputs);
    }

    /// 1 when a condition holds of the monitor; 0 when not, or when it is not connected or lacks the feature.
    template <class Condition>
    requires(std::is_invocable_r_v<bool, const Condition&, Monitor&>) Result
        test(const char* feature, const Condition& condition) {
        return pass({.feature = feature, .withoutMonitor = 0, .withoutFeature = 0},
                    [&](Monitor& monitor) -> Answer { return condition(monitor) ? 1 : 0; }, {});
    }
    Result test(const char* feature) {
        return test(feature, [](Monitor&) { return true; });
    }

 protected:
    enum class Journal { keep, skip };

    Call(const char* function, std::initializer_list<Input> arguments, Journal journal = Journal::keep) noexcept;

    void addArgument(const Input& argument) noexcept;

    const char* const function_;
    std::string serial_;
    std::string product_;

 private:
    /// What a call about a monitor needs, and its results without.
    struct Needs {
        const char* feature = nullptr;
        std::uint32_t withoutMonitor = result::connectionError;
        std::uint32_t withoutFeature = result::unsupported;
    };

    Result pass(const Needs& needs, const Work& work, std::initializer_list<Output> outputs);
    Answer perform(const Needs& needs, const Work& work, World& world) const;

    const Journal journal_;
    const std::unique_ptr<Json> arguments_;
};

/// A function of a library as a whole.
class LibraryCall : public Call {
 public:
    explicit LibraryCall(const char* function, std::initializer_list<Input> arguments = {},
                         Journal journal = Journal::keep) noexcept
        : Call(function, arguments, journal) {}

    /// A handle, or null when the scripted result is 0.
    template <class Handle>
    Handle* handle(Handle* normal) {
        return succeeds() ? normal : nullptr;
    }

    /// A text that lives as long as the process, or null when the scripted result is 0. It is the only output.
    const char* text(std::string normal);

 private:
    bool succeeds(std::initializer_list<Output> outputs = {});
};

/// A function of the host's own libraries, whose calls stand in lists of their own in a recording, not in its journal.
class HostCall : public LibraryCall {
 public:
    explicit HostCall(const char* function) noexcept : LibraryCall(function, {}, Journal::skip) {}
};

/// A function of one monitor.
class MonitorCall : public Call {
 public:
    MonitorCall(const char* function, const char* serial, const char* product,
                std::initializer_list<Input> inputs = {}) noexcept;

    /// A setting of the monitor, or the part of it at a key.
    Result get(const char* setting, const Output& value, Key key = {});
    Result set(const char* setting, const Input& value, Key key = {});

    /// What else a setting has ("min", "of" ...), in the order of the outputs; and how many items such a list has.
    Result members(const char* setting, std::initializer_list<const char*> names,
                   std::initializer_list<Output> outputs);
    Result count(const char* setting, const char* member, const Output& count);

    /// A setting as 0 to 100 per cent of its range.
    Result getPercentage(const char* setting, double* percentage);
    Result setPercentage(const char* setting, double percentage);

    /// What has no effect to see on a monitor that has the feature.
    Result succeed(const char* feature);
};

}  // namespace simulator
