#include <windows.h>

// Nothing is set up or taken down here: the loader lock is held, and the host decides when to pay for what.
BOOL WINAPI DllMain(HINSTANCE, DWORD, LPVOID) {
    return TRUE;
}
