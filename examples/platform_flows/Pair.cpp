// Pairs a device without a ceremony of the program's own. A device that wants more than a confirmation is refused.
// Usage: flow_pair NAME
#include "Common.h"

extern "C" int wmain(int argc, wchar_t** argv)
{
    if (argc != 2)
    {
        return Usage("flow_pair NAME");
    }
    return Run([&] {
        auto const device = FindByName(argv[1]);
        if (!device)
        {
            return;
        }
        auto const pairing = device.Pairing();
        if (!pairing.CanPair())
        {
            Say(Text(device) + " cannot pair.");
            return;
        }
        Say(Text(device) + ": " + Text(pairing.PairAsync().get()));
        Say("The object that was found says " + std::string(pairing.IsPaired() ? "paired" : "not paired") +
            ", a new one " + StateOf(device.Id()));
    });
}
