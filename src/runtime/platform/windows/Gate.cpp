#include <windows.h>

#include "runtime/platform/GuardedCall.h"

/// Stops what programs raise, C++ exceptions of other compilers among them. Lets pass what GCC raises, which its own
/// handlers catch; what the system reports, such as an access violation; and what is meant for a debugger.
extern "C" LONG pellFilter(const EXCEPTION_POINTERS* exception, void*) noexcept {
    const DWORD code = exception->ExceptionRecord->ExceptionCode;
    const bool isOfGcc = (code & 0xFFFFFF) == 0x474343;  // "GCC"
    const bool isOfSystem = code >> 16 == 0xC000 || code >> 16 == 0x8000;
    const bool isForDebugger = code >> 30 == 1;
    return isOfGcc || isOfSystem || isForDebugger ? EXCEPTION_CONTINUE_SEARCH : EXCEPTION_EXECUTE_HANDLER;
}

extern "C" [[noreturn]] void pellThrowForeignException() {
    throw torvo::platform::ForeignException();
}
