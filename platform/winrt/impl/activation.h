#pragma once

#include "com_ptr.h"
#include "hstring.h"

#include <roapi.h>

#include <cstdint>

namespace winrt
{
    // Where the calling thread is to live: among all others, unless it says otherwise.
    enum class apartment_type : std::int32_t
    {
        multi_threaded,
        single_threaded,
    };

    inline void init_apartment(apartment_type const type = apartment_type::multi_threaded)
    {
        check_hresult(CoInitializeEx(nullptr, type == apartment_type::multi_threaded ? COINIT_MULTITHREADED
                                                                                     : COINIT_APARTMENTTHREADED));
    }

    namespace impl
    {
        // A class's static members. A thread that never initialised COM joins the process's implicit
        // multithreaded apartment, which then stays for the life of the process. A class that is not registered
        // stays an error: no module is searched by the class's name.
        template <typename Interface>
        com_ptr<Interface> get_activation_factory(wchar_t const* className)
        {
            param::hstring const name(className);
            auto const handle = static_cast<HSTRING>(get_abi(name));
            com_ptr<Interface> factory;
            HRESULT result = RoGetActivationFactory(handle, platform::iid_of<Interface>, factory.put_void());
            if (result == CO_E_NOTINITIALIZED)
            {
                CO_MTA_USAGE_COOKIE cookie = nullptr;
                CoIncrementMTAUsage(&cookie);
                result = RoGetActivationFactory(handle, platform::iid_of<Interface>, factory.put_void());
            }
            check_hresult(result);
            return factory;
        }
    } // namespace impl
} // namespace winrt
