// The statics of Radio.
#pragma once

#include "platform/abi/Radios.h"
#include "simulator/bluetooth/Factory.h"

namespace simulator
{
    class RadioFactory final : public Factory<platform::IRadioStatics>
    {
        using List = platform::IVectorView<platform::IRadio*>;

    public:
        HRESULT STDMETHODCALLTYPE ActivateInstance(::IInspectable** instance) override;
        HRESULT STDMETHODCALLTYPE GetRadiosAsync(platform::IAsyncOperation<List*>** operation) override;
        HRESULT STDMETHODCALLTYPE GetDeviceSelector(HSTRING* selector) override;
        HRESULT STDMETHODCALLTYPE FromIdAsync(HSTRING id,
                                              platform::IAsyncOperation<platform::IRadio*>** operation) override;
        HRESULT STDMETHODCALLTYPE
        RequestAccessAsync(platform::IAsyncOperation<platform::RadioAccessStatus>** operation) override;
    };
} // namespace simulator
