// What the platform gives the plug-in, and how it is withheld: memory and handles from the n-th request for them on,
// and functions that are looked up by name.
//
// Natively this program's own functions stand in for those of the system, for everything in the process; so a thread
// counts only what it does outside simulated functions. Under Windows the import table of libpell.dll is changed, and
// nothing else in the process notices. In a build with sanitizers, which have functions of their own there, only C++'s
// `operator new` is withheld.
#pragma once

#include <cstddef>

namespace faults {

enum class Need { memory, handle };

/// Of one thread. Simulated functions never lack anything.
struct Supply {
    bool isWatched = false;  ///< a request runs
    Need need = Need::memory;
    long untilFailure = 0;  ///< counts down to what is refused; 0: nothing is
    bool lasting = false;   ///< all that follows is refused, too
    bool failed = false;    ///< something was refused
    int simulated = 0;      ///< how many simulated functions the thread is in
    std::size_t bytes = 0;  ///< of memory that were asked for

    void watch(Need newNeed, long nth, bool newLasting) {
        isWatched = true, need = newNeed, untilFailure = nth, lasting = newLasting;
    }
};
inline thread_local constinit Supply supply;

/// More than this is refused whatever the supply is: no request needs nearly as much.
inline constexpr std::size_t mostBytes = std::size_t{1} << 29;

inline bool grant(Need need, std::size_t bytes = 0) {
    if (!supply.isWatched || supply.simulated > 0) return true;
    supply.bytes += bytes;
    if (bytes > 0 && supply.bytes > mostBytes) return false;
    if (need != supply.need || supply.untilFailure == 0) return true;
    if (--supply.untilFailure > 0) return true;
    supply.untilFailure = supply.lasting ? 1 : 0;
    supply.failed = true;
    return false;
}

/// The function that cannot be looked up; null: all can.
inline thread_local constinit const char* vanished = nullptr;

/// To be called whenever the plug-in has been loaded.
void standIn();

/// Raises a foreign exception, as programs of other compilers do; only under Windows, elsewhere nothing happens.
void raise(unsigned long code);

}  // namespace faults
