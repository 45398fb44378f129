// DeviceInformationCollection: the devices that a search has found.
#pragma once

#include "platform/abi/Enumeration.h"
#include "simulator/com/Ref.h"

#include <vector>

namespace simulator
{
    Ref<platform::DeviceCollection> MakeDeviceCollection(std::vector<Ref<platform::IDeviceInformation>> devices);
}
