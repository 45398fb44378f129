// What the platform tells of the Bluetooth devices around. Nothing here needs Windows.
#pragma once

#include <optional>
#include <string>

namespace host
{
    enum class Protocol
    {
        Classic,
        Le,
    };

    // One endpoint; a device that talks both ways has two. Texts are UTF-8, as the device and the platform have them.
    struct Seen
    {
        std::string id;
        std::string name;    // empty: none, or none yet
        std::string address; // "a4:c1:38:5e:22:0f"; empty where the platform does not tell it
        Protocol protocol = Protocol::Classic;
        bool paired = false;
        bool canPair = false;
        bool connected = false;
        bool present = false;      // paired devices are reported in their absence too
        std::optional<int> signal; // in dBm

        bool operator==(Seen const&) const = default;
    };

    // A change of what is seen.
    struct Sighting
    {
        enum class Kind
        {
            Added,
            Updated, // something that Seen tells
            Removed,
        };

        Kind kind;
        Seen device; // of a removed one, what was known last
    };
} // namespace host
