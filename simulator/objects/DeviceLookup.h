// CreateFromIdAsync: a device as it is now, by its identifier.
#pragma once

#include "simulator/objects/AsyncOperation.h"

namespace simulator
{
    template <>
    inline constexpr auto operationClassName<platform::IDeviceInformation*> =
        "Windows.Foundation.IAsyncOperation`1<Windows.Devices.Enumeration.DeviceInformation>";

    using LookupOperation = AsyncOperation<platform::IDeviceInformation*>;

    // Unknown stands for every kind.
    Ref<LookupOperation> LookUp(std::string const& id, std::vector<std::string> const& requested,
                                platform::DeviceInformationKind kind);
} // namespace simulator
