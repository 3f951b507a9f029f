// Logging through the host's logging library, libscrivo2. Logging never fails: without the library, or with a part of
// it missing, lines are dropped silently.
#pragma once

#include <libscrivo2.h>

#include <atomic>
#include <cstdint>

#include "runtime/DynamicLibrary.h"
#include "runtime/ProcessWide.h"
#include "runtime/platform/Mutex.h"

namespace torvo {

/// One named logger. Lines may be logged from any thread.
class LoggerBase {
 public:
    /// `name` must outlive the logger.
    explicit LoggerBase(const char* name) noexcept : name_(name) {}
    virtual ~LoggerBase() = default;
    LoggerBase(const LoggerBase&) = delete;
    LoggerBase& operator=(const LoggerBase&) = delete;

    /// The first line loads the logging library from the host's exports directory. While that fails, later lines try
    /// again: the 2nd, 3rd, 5th, 9th and so on, and in the end one in 1024, since a failing load takes longer than most
    /// requests.
    void log(std::uint32_t level, const char* line);

 private:
    ScrivoLogger* findLogger();

    const char* name_;
    DynamicLibrary library_;
    std::atomic<ScrivoLogger*> logger_ = nullptr;
    platform::Mutex finding_;
    std::uint32_t missed_ = 0;  // lines without a logger
};

/// The plug-in's own logger.
class PellLogger final : public LoggerBase {
 public:
    static constexpr std::uint32_t successLevel = 2;
    static constexpr std::uint32_t failureLevel = 5;

    static PellLogger& instance() { return processWide<PellLogger>(); }

 private:
    friend PellLogger& processWide<PellLogger>();
    PellLogger() noexcept : LoggerBase("Pell") {}
};

}  // namespace torvo
