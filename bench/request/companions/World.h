// What the companion libraries of the request benchmark have in common. They do next to nothing, so that what is
// measured is the plug-in's own work.
#pragma once

#include <cstddef>
#include <cstdint>

namespace bench {

/// Is told what a request did. Everything is borrowed for the call.
class Observer {
 public:
    virtual ~Observer() = default;
    virtual void answered(std::uint32_t status, const char* json) = 0;
    virtual void logged(std::uint32_t level, const char* line) = 0;
    /// A function of the monitor-control library was given these bytes.
    virtual void written(const void* data, std::size_t size) = 0;
};

struct World {
    static constexpr std::uint32_t maximumMonitors = 64;
    std::uint32_t monitors = 1;  ///< the last one is the monitor that requests address: TQ271-P/10000001

    std::uint32_t promises = 0;
    std::uint64_t answers = 0;
    std::uint64_t answerBytes = 0;
    std::uint64_t logLines = 0;
    std::uint64_t writes = 0;

    Observer* observer = nullptr;  ///< null while time is measured
};

/// The one world of the process; for one thread.
World& world() noexcept;

}  // namespace bench
