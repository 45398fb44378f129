#include "simulator/objects/AsyncOperation.h"

#include <atomic>

namespace simulator
{
    UINT32 NextOperationNumber() noexcept
    {
        static constinit std::atomic<UINT32> last{0};
        return ++last;
    }

    template <>
    char const* OperationClassName<platform::IDevicePairingResult>() noexcept
    {
        return "Windows.Foundation.IAsyncOperation`1<Windows.Devices.Enumeration.DevicePairingResult>";
    }

    template <>
    char const* OperationClassName<platform::IDeviceUnpairingResult>() noexcept
    {
        return "Windows.Foundation.IAsyncOperation`1<Windows.Devices.Enumeration.DeviceUnpairingResult>";
    }
} // namespace simulator
