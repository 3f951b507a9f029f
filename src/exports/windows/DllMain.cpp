#include <windows.h>

#include "pocketjson/Store.h"
#include "runtime/platform/windows/Unload.h"

// Nothing is set up here: the loader lock is held, and the host decides when to pay for what. When the process ends
// (`reserved` is not null) nothing is taken down either.
BOOL WINAPI DllMain(HINSTANCE, DWORD reason, LPVOID reserved) {
    if (reason == DLL_PROCESS_DETACH && !reserved) {
        torvo::platform::runAtUnload();
        pocketjson::Store::freeSpares();
    }
    return TRUE;
}
