// The call behind runtime/Gate.h.
#pragma once

#include <array>
#include <cstddef>
#include <type_traits>

#ifdef _WIN32
// In windows/Gate.S.
extern "C" {
void pellGate0();
void pellGate1();
void pellGate2();
void pellGate3();
void pellGate4();
void pellGate5();
void pellGate6();
void pellGate7();
void pellGate8();
void pellGate9();
void pellGate10();
void pellGate11();
void pellGate12();
}
#endif

namespace torvo::platform {

/// Stands for an exception that our compiler does not catch.
struct ForeignException {};

#ifdef _WIN32

inline constexpr std::array gates{pellGate0, pellGate1, pellGate2, pellGate3,  pellGate4,  pellGate5, pellGate6,
                                  pellGate7, pellGate8, pellGate9, pellGate10, pellGate11, pellGate12};

/// Whether a C function returns this type in memory, whose address is then a first argument of its own.
template <class Result>
constexpr bool isReturnedInMemory() {
    if constexpr (std::is_class_v<Result> || std::is_union_v<Result>)
        return sizeof(Result) > 8 || (sizeof(Result) & (sizeof(Result) - 1)) != 0;
    else
        return false;
}

/// Calls the function. Throws ForeignException when it ends in an exception that our compiler does not catch.
template <class Result, class... Parameters>
Result callGuarded(Result (*function)(Parameters...), std::type_identity_t<Parameters>... arguments) {
    constexpr std::size_t count = sizeof...(Parameters) + (isReturnedInMemory<Result>() ? 1 : 0);
    static_assert(count < gates.size(), "windows/Gate.S needs a gate for so many arguments");
    using Gate = Result(Parameters..., Result(*)(Parameters...));
    return reinterpret_cast<Gate*>(gates[count])(arguments..., function);
}

#else

/// Calls the function; here our compiler catches what others throw.
template <class Result, class... Parameters>
Result callGuarded(Result (*function)(Parameters...), std::type_identity_t<Parameters>... arguments) {
    return function(arguments...);
}

#endif

}  // namespace torvo::platform
