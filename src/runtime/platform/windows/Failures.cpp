// How libpell ends the process when its own state is not to be trusted: without a word, since there is no console. For
// libpell alone, like Exceptions.cpp.
#include <cstdlib>
#include <exception>

// The runtime library's own takes memory, and 70 KB of code, to write the exception's name.
void __gnu_cxx::__verbose_terminate_handler() {
    std::abort();
}

// What a failed assertion of the standard library's containers calls. The runtime library's own writes to the console.
namespace std {

void __glibcxx_assert_fail(const char*, int, const char*, const char*) noexcept {
    std::abort();
}

}  // namespace std
