#include "pairing/Language.h"
#include "pairing/LeStore.h"
#include "pairing/PhoneWatcher.h"
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
        ClearLeData();
        ClearIosDeviceList();
        return true;
    }
} // namespace vorlink
