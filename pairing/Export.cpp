#include "pairing/LibraryState.h"
#include "pairing/SubVorlink.h"

#include <windows.h>

std::unique_ptr<Vorlink> getVorlinkPtr()
{
    return std::make_unique<vorlink::SubVorlink>();
}

extern "C" BOOL WINAPI DllMain(HINSTANCE module, DWORD reason, LPVOID processEnds);

BOOL WINAPI DllMain(HINSTANCE, DWORD reason, LPVOID processEnds)
{
    if (reason == DLL_PROCESS_DETACH && processEnds)
    {
        vorlink::KeepLibraryState();
    }
    return TRUE;
}
