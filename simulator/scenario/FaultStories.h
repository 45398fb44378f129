// Faults as they happen in the field, each by one name.
#pragma once

#include "simulator/scenario/Scenario.h"

#include <set>
#include <span>

namespace simulator
{
    class TableReader;

    // A device before its keys are read.
    struct DeviceDraft
    {
        Endpoint endpoint;
        std::vector<std::int64_t> protocols;
    };

    // A second device that comes with a fault's own, of a name that begins with the name of that one.
    struct Companion
    {
        std::string_view nameEnd;
        std::int32_t laterMs; // negative: it comes first
    };

    struct FaultStory
    {
        std::string_view name;
        void (*whole)(Scenario& scenario) = nullptr; // ahead of the keys at the top
        void (*begin)(DeviceDraft& draft) = nullptr; // ahead of the device's keys
        void (*end)(Endpoint& endpoint) = nullptr;   // of the device, when all has been read
        std::optional<Companion> companion{};
    };

    std::span<FaultStory const> FaultStories();

    using Stories = std::set<FaultStory const*>; // in the table's order

    // At the top every name may stand. What does not concern the whole is told of each device.
    Stories ReadFaults(TableReader& reader);
    Stories ReadDeviceFaults(TableReader& reader, Stories const& atTheTop);

    // A time that counts from when the endpoint comes, or from the watcher's start where a verb brings it.
    std::int32_t AfterComing(Endpoint const& endpoint, std::int32_t ms);
} // namespace simulator
