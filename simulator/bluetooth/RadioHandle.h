// Radio: the program's handle on the switch of the PC's radio.
#pragma once

#include "platform/abi/Radios.h"
#include "simulator/neighbourhood/Subscription.h"
#include "simulator/objects/AsyncOperation.h"
#include "simulator/objects/EventSource.h"

namespace simulator
{
    template <>
    inline constexpr auto operationClassName<platform::IRadio*> =
        "Windows.Foundation.IAsyncOperation`1<Windows.Devices.Radios.Radio>";
    template <>
    inline constexpr auto operationClassName<platform::RadioAccessStatus> =
        "Windows.Foundation.IAsyncOperation`1<Windows.Devices.Radios.RadioAccessStatus>";

    struct RadioEvents
    {
        std::shared_ptr<Lifetime> object;
        std::string id;
        EventSource<platform::RadioHandler> stateChanged{};
    };

    class RadioHandle final : public Object<platform::IRadio>
    {
    public:
        explicit RadioHandle(std::string id);
        ~RadioHandle() override;

        HRESULT STDMETHODCALLTYPE SetStateAsync(
            platform::RadioState value, platform::IAsyncOperation<platform::RadioAccessStatus>** operation) override;
        HRESULT STDMETHODCALLTYPE add_StateChanged(platform::RadioHandler* handler,
                                                   EventRegistrationToken* token) override;
        HRESULT STDMETHODCALLTYPE remove_StateChanged(EventRegistrationToken token) override;
        HRESULT STDMETHODCALLTYPE get_State(platform::RadioState* value) override;
        HRESULT STDMETHODCALLTYPE get_Name(HSTRING* value) override;
        HRESULT STDMETHODCALLTYPE get_Kind(platform::RadioKind* value) override;

    private:
        char const* ClassName() const noexcept override;

        std::shared_ptr<RadioEvents> const m_events;
        std::shared_ptr<Subscription> const m_subscription;
    };

    // Null where the PC has none.
    Ref<platform::IRadio> MakeRadio();
} // namespace simulator
