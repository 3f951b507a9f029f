// Logging through the host's logging library, libscrivo2. Logging never fails: without the library, or with a part of
// it missing, lines are dropped silently.
#pragma once

#include <libscrivo2.h>

#include <cstdint>

#include "runtime/DynamicLibrary.h"

namespace torvo {

/// One named logger. Lines may be logged from any thread.
class LoggerBase {
 public:
    /// Loads the logging library from the host's exports directory. `name` must outlive the logger.
    explicit LoggerBase(const char* name);
    virtual ~LoggerBase() = default;
    LoggerBase(const LoggerBase&) = delete;
    LoggerBase& operator=(const LoggerBase&) = delete;

    void log(std::uint32_t level, const char* line) const;

 private:
    const char* name_;
    DynamicLibrary library_;
    ScrivoLogger* logger_ = nullptr;
};

/// The plug-in's own logger.
class PellLogger final : public LoggerBase {
 public:
    static constexpr std::uint32_t successLevel = 2;
    static constexpr std::uint32_t failureLevel = 5;

    PellLogger() : LoggerBase("Pell") {}
};

}  // namespace torvo
