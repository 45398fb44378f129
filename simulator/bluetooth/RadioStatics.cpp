#include "simulator/bluetooth/RadioStatics.h"

#include "simulator/bluetooth/Endpoints.h"
#include "simulator/bluetooth/Pc.h"
#include "simulator/bluetooth/RadioHandle.h"
#include "simulator/bluetooth/RadioList.h"

namespace simulator
{
    using platform::IRadio;
    using platform::RadioAccessStatus;

    HRESULT RadioFactory::ActivateInstance(::IInspectable** instance)
    {
        return Outside("Radio.ActivateInstance", {}, instance);
    }

    HRESULT RadioFactory::GetRadiosAsync(platform::IAsyncOperation<List*>** operation)
    {
        return Begin("Radio.GetRadiosAsync", {}, operation, [](AsyncOperation<List*>& async) {
            std::vector<Ref<IRadio>> radios;
            if (auto radio = MakeRadio())
            {
                radios.push_back(std::move(radio));
            }
            async.Complete(MakeRadioList(std::move(radios)));
        });
    }

    HRESULT RadioFactory::GetDeviceSelector(HSTRING* selector)
    {
        return GetString("Radio.GetDeviceSelector", {}, selector, [] { return InterfaceSelector(radioInterface); });
    }

    HRESULT RadioFactory::FromIdAsync(HSTRING id, platform::IAsyncOperation<IRadio*>** operation)
    {
        auto const text = FromHstring(id);
        return BeginIf(!text.empty(), "Radio.FromIdAsync", Quoted(text), operation,
                       [text](AsyncOperation<IRadio*>& async) {
                           auto const adapter = AdapterNow();
                           bool const isIt = adapter && SameText(text, InterfaceId(*adapter, radioInterface));
                           async.Complete(isIt ? MakeRadio() : Ref<IRadio>());
                       });
    }

    HRESULT RadioFactory::RequestAccessAsync(platform::IAsyncOperation<RadioAccessStatus>** operation)
    {
        return Begin("Radio.RequestAccessAsync", {}, operation, [](AsyncOperation<RadioAccessStatus>& async) {
            async.Complete(static_cast<RadioAccessStatus>(RadioNow().access));
        });
    }
} // namespace simulator
