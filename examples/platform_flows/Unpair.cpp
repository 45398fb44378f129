// Unpairs a device.
// Usage: flow_unpair NAME
#include "Common.h"

extern "C" int wmain(int argc, wchar_t** argv)
{
    if (argc != 2)
    {
        return Usage("flow_unpair NAME");
    }
    return Run([&] {
        auto const device = FindByName(argv[1]);
        if (!device)
        {
            return;
        }
        Say(Text(device) + ": " + Text(device.Pairing().UnpairAsync().get().Status()));
        Say("It is " + StateOf(device.Id()) + " now.");
    });
}
