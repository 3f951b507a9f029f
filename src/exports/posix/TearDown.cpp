// ELF has no forwarded exports, so TearDown is a function of its own here.
#include <libdmc.h>

extern "C" DmResult TearDown() {
    return DmCtrlRelease();
}
