// The parts of the compiler's runtime library that libpell brings itself, in a program of their own.
#include <gtest/gtest.h>
#include <windows.h>

#include <array>
#include <atomic>
#include <stdexcept>
#include <string>

namespace {

std::atomic<int> mistakes;

void expect(bool condition) {
    if (!condition) ++mistakes;
}

/// Throws while the exceptions of all the calls above are being handled.
int nest(int depth) {
    const std::string text = std::to_string(depth);
    try {
        throw std::runtime_error(text);
    } catch (const std::exception& error) {
        const int deeper = depth > 0 ? nest(depth - 1) : 0;
        expect(error.what() == text);
        return deeper + 1;
    }
}

struct Large {
    std::array<char, 2000> bytes;
};

/// Its first constructor throws, and all take time.
struct Variable {
    static inline std::atomic<int> attempts, made;
    Variable() {
        Sleep(20);
        if (attempts++ == 0) throw 5;
        ++made;
    }
    int value = 42;
};

int valueOfVariable() {
    static const Variable variable;
    return variable.value;
}

void useExceptions() {
    for (;;) {
        try {
            expect(valueOfVariable() == 42);
            break;
        } catch (int) {
        }
    }
    for (int i = 0; i < 300; ++i) {
        expect(std::uncaught_exceptions() == 0);
        expect(nest(i % 40) == i % 40 + 1);
        try {
            try {
                throw Large{};
            } catch (Large&) {
                throw;
            }
        } catch (Large&) {
        }
        try {
            try {
                throw 1;
            } catch (int) {
                throw std::string("second");
            }
        } catch (const std::string& text) {
            expect(text == "second");
        }
    }
    expect(nest(200) == 201);
}

TEST(CompilerRuntime, HandlesExceptionsAndVariablesOnManyThreads) {
    std::array<HANDLE, 60> threads;
    for (HANDLE& thread : threads)
        thread = CreateThread(
            nullptr, 0,
            [](void*) -> DWORD {
                useExceptions();
                return 7;
            },
            nullptr, 0, nullptr);
    for (const HANDLE thread : threads) {
        WaitForSingleObject(thread, INFINITE);
        DWORD code = 0;
        GetExitCodeThread(thread, &code);
        EXPECT_EQ(code, 7U);  // a thread that overflows its stack ends with another one
        CloseHandle(thread);
    }
    EXPECT_EQ(mistakes, 0);
    EXPECT_EQ(Variable::made, 1);
}

}  // namespace
