#include "simulator/bluetooth/RadioHandle.h"

#include "simulator/bluetooth/Factory.h"
#include "simulator/bluetooth/Pc.h"
#include "simulator/neighbourhood/RadioSwitch.h"

namespace simulator
{
    using platform::RadioAccessStatus;
    using platform::RadioState;

    namespace
    {
        RadioAccessStatus Switch(RadioState state)
        {
            auto const access = static_cast<RadioAccessStatus>(RadioNow().access);
            if (access != RadioAccessStatus::Allowed)
            {
                return access;
            }
            // What the system has disabled no program switches.
            bool const isSwitched = StateOfRadio() != RadioState::Disabled && SwitchRadio(state);
            return isSwitched ? RadioAccessStatus::Allowed : RadioAccessStatus::DeniedBySystem;
        }
    } // namespace

    RadioHandle::RadioHandle(std::string id)
        : m_events(new RadioEvents{ObjectLifetime(), std::move(id)})
        , m_subscription(new Subscription{std::string(radioSubject),
                                          [events = m_events](std::uint64_t generation, Happening const&) {
                                              Raise(
                                                  events->stateChanged, generation, "Radio.StateChanged", events->id,
                                                  [&] { return SenderOf<platform::IRadio>(*events->object); },
                                                  [] { return Ref<::IInspectable>(); });
                                          }})
    {
        Subscribe(m_subscription);
    }

    RadioHandle::~RadioHandle()
    {
        Unsubscribe(m_subscription);
        m_events->stateChanged.Clear();
    }

    HRESULT RadioHandle::SetStateAsync(RadioState value, platform::IAsyncOperation<RadioAccessStatus>** operation)
    {
        return BeginIf(value == RadioState::On || value == RadioState::Off, "Radio.SetStateAsync",
                       m_events->id + ", " + Text(value), operation,
                       [value](AsyncOperation<RadioAccessStatus>& async) { async.Complete(Switch(value)); });
    }

    HRESULT RadioHandle::add_StateChanged(platform::RadioHandler* handler, EventRegistrationToken* token)
    {
        return m_events->stateChanged.Add("Radio.add_StateChanged", m_events->id, handler, token);
    }

    HRESULT RadioHandle::remove_StateChanged(EventRegistrationToken token)
    {
        return m_events->stateChanged.Remove("Radio.remove_StateChanged", m_events->id, token);
    }

    HRESULT RadioHandle::get_State(RadioState* value)
    {
        return Get("Radio.get_State", m_events->id, value, [] { return StateOfRadio(); });
    }

    HRESULT RadioHandle::get_Name(HSTRING* value)
    {
        return GetString("Radio.get_Name", m_events->id, value, [] { return RadioNow().name; });
    }

    HRESULT RadioHandle::get_Kind(platform::RadioKind* value)
    {
        return Get("Radio.get_Kind", m_events->id, value, [] { return platform::RadioKind::Bluetooth; });
    }

    char const* RadioHandle::ClassName() const noexcept
    {
        return "Windows.Devices.Radios.Radio";
    }

    Ref<platform::IRadio> MakeRadio()
    {
        auto const adapter = AdapterNow();
        return adapter ? Ref<platform::IRadio>::Adopt(Make<RadioHandle>(InterfaceId(*adapter, radioInterface)).Detach())
                       : Ref<platform::IRadio>();
    }
} // namespace simulator
