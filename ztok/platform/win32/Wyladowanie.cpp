#include <windows.h>

#include "ztok/platform/Wyladowanie.h"

// The loader calls this; the library has nothing to do but to close itself when it goes. When the whole process ends
// (reserved is not null) the other threads are gone already, wherever they were: nothing waits for a lock then.
extern "C" BOOL WINAPI DllMain(HINSTANCE /*modul*/, DWORD powod, LPVOID /*zastrzezone*/) {
    if (powod == DLL_PROCESS_DETACH)
        ztok::ZamknijPrzyWyladowaniu();
    return TRUE;
}
