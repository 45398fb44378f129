// DevicePairingResult and DeviceUnpairingResult.
#pragma once

#include "platform/abi/Enumeration.h"
#include "simulator/com/Ref.h"

#include <cstdint>
#include <string>

namespace simulator
{
    // Statuses are numbers here: a rehearsal may use one that the platform does not define.
    Ref<platform::IDevicePairingResult> MakePairingResult(std::string device, std::int32_t status,
                                                          platform::DevicePairingProtectionLevel used);
    Ref<platform::IDeviceUnpairingResult> MakeUnpairingResult(std::string device, std::int32_t status);
} // namespace simulator
