// The platform's device enumeration, with all that its types need where C++/WinRT asks for it by header.
#pragma once

#include <winrt/Windows.Devices.Enumeration.h>
#include <winrt/Windows.Foundation.Collections.h>
#include <winrt/Windows.Foundation.h>

namespace vorlink
{
    namespace enumeration = winrt::Windows::Devices::Enumeration;
}
