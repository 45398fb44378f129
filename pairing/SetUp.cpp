#include "pairing/Language.h"
#include "pairing/LeStore.h"
#include "pairing/LibraryState.h"
#include "pairing/SubVorlink.h"

#include <windows.h>

namespace vorlink
{
    bool SubVorlink::Initialize()
    {
        SetConsoleOutputCP(CP_UTF8); // what the store echoes is UTF-8
        LoadLeData(leDataFile);
        return GetUiLanguage(GetUserDefaultUILanguage()).known;
    }

    bool SubVorlink::Uninitialize()
    {
        auto& library = Library();
        ClearLeData();
        if (library.IosDeviceList.Size() != 0)
        {
            library.IosDeviceList.Clear();
        }
        return true;
    }
} // namespace vorlink
