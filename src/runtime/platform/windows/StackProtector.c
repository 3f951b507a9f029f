/* What the compiler's stack protector asks of a runtime library. GCC's own needs ADVAPI32, and chooses its canary while
 * the library is being loaded. Here the system chooses it: it is an address in the library, which lies elsewhere at
 * each start. Its low byte is 0, so that no text runs over it unnoticed. */

static const _Alignas(256) char addressed[256];
const void* __stack_chk_guard = addressed;

_Noreturn void __stack_chk_fail(void);
_Noreturn void __stack_chk_fail(void) {
    const int stackCookieCheckFailure = 2;
    /* The system's fast failure: the process ends, and no handler is asked. */
    __asm__ volatile("int $0x29" : : "c"(stackCookieCheckFailure));
    __builtin_unreachable();
}
