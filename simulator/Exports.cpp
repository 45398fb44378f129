// The two entries by which the operating system finds the simulated classes.
#include "simulator/objects/DeviceStatics.h"
#include "simulator/objects/PairingStatics.h"
#include "simulator/trace/Call.h"

#include <windows.h>
#include <objbase.h>

extern "C" HRESULT WINAPI DllGetActivationFactory(HSTRING name, ::IActivationFactory** factory);

namespace
{
    using namespace simulator;

    // Threads of the simulator may be in its code at any time: once used, the module stays.
    void StayLoaded()
    {
        HMODULE module = nullptr;
        GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_PIN | GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS,
                           reinterpret_cast<LPCWSTR>(&DllGetActivationFactory), &module);
    }

    // Windows refuses to activate on a thread that has no apartment; Wine itself would let it through.
    bool IsInApartment()
    {
        APTTYPE type{};
        APTTYPEQUALIFIER qualifier{};
        return SUCCEEDED(CoGetApartmentType(&type, &qualifier));
    }

    template <typename Factory>
    HRESULT GetFactory(Method method, ::IActivationFactory** factory)
    {
        return Call(method, {}, [&](std::string&) {
            if (!IsInApartment())
            {
                return comNotInitialized;
            }
            *factory = Make<Factory>().Detach();
            return S_OK;
        });
    }
} // namespace

extern "C" HRESULT WINAPI DllGetActivationFactory(HSTRING name, ::IActivationFactory** factory)
{
    if (!factory)
    {
        return E_INVALIDARG;
    }
    *factory = nullptr;
    StayLoaded();
    auto const className = FromHstring(name);
    if (className == "Windows.Devices.Enumeration.DeviceInformation")
    {
        return GetFactory<DeviceInformationFactory>("DeviceInformation.GetActivationFactory", factory);
    }
    if (className == "Windows.Devices.Enumeration.DeviceInformationPairing")
    {
        return GetFactory<PairingFactory>("DeviceInformationPairing.GetActivationFactory", factory);
    }
    return classNotAvailable;
}

extern "C" HRESULT WINAPI DllCanUnloadNow()
{
    return simulator::LiveObjects() == 0 ? S_OK : S_FALSE;
}
