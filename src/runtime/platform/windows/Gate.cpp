#include <windows.h>
//
#include <algorithm>
#include <iterator>

#include "runtime/platform/GuardedCall.h"

namespace {

/// What the processor reports. It leaves behind what cannot be relied on.
constexpr DWORD faults[] = {
    EXCEPTION_ACCESS_VIOLATION,
    EXCEPTION_IN_PAGE_ERROR,
    EXCEPTION_ILLEGAL_INSTRUCTION,
    EXCEPTION_PRIV_INSTRUCTION,
    EXCEPTION_STACK_OVERFLOW,
    EXCEPTION_GUARD_PAGE,
    EXCEPTION_DATATYPE_MISALIGNMENT,
    EXCEPTION_ARRAY_BOUNDS_EXCEEDED,
    EXCEPTION_INT_DIVIDE_BY_ZERO,
    EXCEPTION_INT_OVERFLOW,
    EXCEPTION_FLT_DENORMAL_OPERAND,
    EXCEPTION_FLT_DIVIDE_BY_ZERO,
    EXCEPTION_FLT_INEXACT_RESULT,
    EXCEPTION_FLT_INVALID_OPERATION,
    EXCEPTION_FLT_OVERFLOW,
    EXCEPTION_FLT_STACK_CHECK,
    EXCEPTION_FLT_UNDERFLOW,
    EXCEPTION_INVALID_DISPOSITION,
    EXCEPTION_NONCONTINUABLE_EXCEPTION,
};

/// What is meant for a debugger, after which the program goes on: breakpoints, names of threads, texts, control keys.
constexpr DWORD messages[] = {
    EXCEPTION_BREAKPOINT, EXCEPTION_SINGLE_STEP, 0x406D1388, DBG_PRINTEXCEPTION_C, 0x4001000A, DBG_CONTROL_C,
};

/// Our compiler's exceptions, which its handlers catch: thrown, unwinding, unwinding by force.
constexpr DWORD ofGcc[] = {0x20474343, 0x21474343, 0x22474343};

}  // namespace

/// Stops what programs raise, C++ exceptions of other compilers among them.
extern "C" LONG pellFilter(const EXCEPTION_POINTERS* exception, void*) noexcept {
    const auto isAmong = [code = exception->ExceptionRecord->ExceptionCode](const auto& codes) {
        return std::find(std::begin(codes), std::end(codes), code) != std::end(codes);
    };
    const bool passes = isAmong(faults) || isAmong(messages) || isAmong(ofGcc);
    return passes ? EXCEPTION_CONTINUE_SEARCH : EXCEPTION_EXECUTE_HANDLER;
}

extern "C" [[noreturn]] void pellThrowForeignException() {
    throw torvo::platform::ForeignException();
}
