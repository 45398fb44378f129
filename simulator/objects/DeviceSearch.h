// FindAllAsync: a search that is over once it has found what there is.
#pragma once

#include "simulator/objects/AsyncOperation.h"
#include "simulator/query/Aqs.h"

namespace simulator
{
    template <>
    inline constexpr auto operationClassName<platform::DeviceCollection*> =
        "Windows.Foundation.IAsyncOperation`1<Windows.Devices.Enumeration.DeviceInformationCollection>";

    using SearchOperation = AsyncOperation<platform::DeviceCollection*>;

    struct Search
    {
        std::string name; // "#1": it counts among the watchers
        Ref<SearchOperation> operation;
    };

    Search FindAll(Query filter, std::vector<std::string> const& requested, platform::DeviceInformationKind kind);
} // namespace simulator
