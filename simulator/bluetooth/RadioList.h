// The list of the PC's radios.
#pragma once

#include "platform/abi/Radios.h"
#include "simulator/com/Ref.h"
#include "simulator/objects/AsyncOperation.h"

#include <vector>

namespace simulator
{
    template <>
    inline constexpr auto operationClassName<platform::IVectorView<platform::IRadio*>*> =
        "Windows.Foundation.IAsyncOperation`1<Windows.Foundation.Collections.IVectorView`1"
        "<Windows.Devices.Radios.Radio>>";

    Ref<platform::IVectorView<platform::IRadio*>> MakeRadioList(std::vector<Ref<platform::IRadio>> radios);
} // namespace simulator
