// DeviceThumbnail: a picture of a device, as a stream that can only be read.
#pragma once

#include "simulator/objects/AsyncOperation.h"

#include <span>

namespace simulator
{
    template <>
    inline constexpr auto operationClassName<platform::DeviceThumbnail*> =
        "Windows.Foundation.IAsyncOperation`1<Windows.Devices.Enumeration.DeviceThumbnail>";

    using ThumbnailOperation = AsyncOperation<platform::DeviceThumbnail*>;

    // The picture is not copied. `id` is the device's.
    Ref<ThumbnailOperation> OpenThumbnail(std::string const& id, std::span<unsigned char const> picture);
} // namespace simulator
