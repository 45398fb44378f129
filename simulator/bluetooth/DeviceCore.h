// What both classes of device stand on: an endpoint as it is now, the device's events, and that it may be closed.
#pragma once

#include "simulator/bluetooth/BluetoothValues.h"
#include "simulator/bluetooth/Endpoints.h"
#include "simulator/neighbourhood/Subscription.h"
#include "simulator/objects/DeviceInformation.h"
#include "simulator/objects/Errand.h"
#include "simulator/objects/EventSource.h"

#include <atomic>

namespace simulator
{
    template <>
    inline constexpr auto operationClassName<platform::DeviceAccessStatus> =
        "Windows.Foundation.IAsyncOperation`1<Windows.Devices.Enumeration.DeviceAccessStatus>";

    Ref<DeviceInformation> InformationOf(Endpoint const& endpoint);
    Ref<AsyncOperation<platform::DeviceAccessStatus>> AllowAccess(Endpoint const& endpoint);

    template <typename Device>
    struct DeviceEvents
    {
        using Handler = platform::TypedEventHandler<Device*, ::IInspectable*>;

        std::shared_ptr<Lifetime> object;
        std::string id;
        std::string className; // as the trace has it
        EventSource<Handler> nameChanged{};
        EventSource<Handler> connectionStatusChanged{};
        EventSource<Handler> servicesChanged{}; // never raised: no device here has services
    };

    template <typename Device>
    void RaiseFor(DeviceEvents<Device>& events, std::uint64_t generation, Happening const& happening)
    {
        auto const raise = [&](auto& source, std::string const& event) {
            Raise(
                source, generation, events.className + "." + event, events.id,
                [&] { return SenderOf<Device>(*events.object); }, [] { return Ref<::IInspectable>(); });
        };
        for (auto const& [property, value] : happening.values)
        {
            if (SameText(property, "System.ItemNameDisplay"))
            {
                raise(events.nameChanged, "NameChanged");
            }
            else if (SameText(property, isConnectedProperty))
            {
                raise(events.connectionStatusChanged, "ConnectionStatusChanged");
            }
        }
    }

    template <typename Device>
    class DeviceCore
    {
    public:
        using Events = DeviceEvents<Device>;
        using Handler = typename Events::Handler;
        using Source = EventSource<Handler> Events::*;

        DeviceCore(std::shared_ptr<Lifetime> object, char const* className, Endpoint endpoint)
            : m_endpoint(std::move(endpoint))
            , m_information(InformationOf(m_endpoint))
            , m_events(new Events{std::move(object), m_endpoint.id, className})
            , m_subscription(new Subscription{
                  m_endpoint.id, [events = m_events](std::uint64_t generation, Happening const& happening) {
                      RaiseFor(*events, generation, happening);
                  }})
        {
            Subscribe(m_subscription);
        }

        DeviceCore(DeviceCore const&) = delete;
        DeviceCore& operator=(DeviceCore const&) = delete;

        ~DeviceCore()
        {
            Shut();
        }

        std::string const& Id() const noexcept
        {
            return m_endpoint.id;
        }

        HRESULT Close(Method method)
        {
            return Call(method, Id(), [&](std::string&) {
                Shut();
                return S_OK;
            });
        }

        // `read` is given the endpoint, as in all of these.
        template <typename T, typename ReadValue>
        HRESULT Get(Method method, T* value, ReadValue read)
        {
            return Call(method, Id(), [&](std::string& result) {
                if (!value)
                {
                    return E_POINTER;
                }
                *value = {};
                if (m_closed)
                {
                    return objectClosed;
                }
                *value = read(Now());
                result = Text(*value);
                return S_OK;
            });
        }

        template <typename ReadText>
        HRESULT GetText(Method method, HSTRING* value, ReadText read)
        {
            return Call(method, Id(), [&](std::string& result) {
                if (!value)
                {
                    return E_POINTER;
                }
                *value = nullptr;
                if (m_closed)
                {
                    return objectClosed;
                }
                std::string const text = read(Now());
                result = Quoted(text);
                return MakeHstring(text, value);
            });
        }

        template <typename Interface, typename MakeObject>
        HRESULT GetPart(Method method, Interface** value, MakeObject make)
        {
            return Call(method, Id(), [&](std::string&) {
                if (!value)
                {
                    return E_POINTER;
                }
                *value = nullptr;
                if (m_closed)
                {
                    return objectClosed;
                }
                *value = make(Now()).Detach();
                return S_OK;
            });
        }

        Ref<DeviceInformation> const& Information() const noexcept
        {
            return m_information;
        }

        HRESULT Add(Method method, Source source, Handler* handler, EventRegistrationToken* token)
        {
            return m_closed ? Call(method, Id(), [](std::string&) { return objectClosed; })
                            : ((*m_events).*source).Add(method, Id(), handler, token);
        }

        // Also of a closed device: whoever revokes late does nothing wrong.
        HRESULT Remove(Method method, Source source, EventRegistrationToken token)
        {
            return ((*m_events).*source).Remove(method, Id(), token);
        }

    private:
        // One that has gone with its neighbourhood is as it was, without a connection.
        Endpoint Now() const
        {
            if (auto now = FindEndpoint(m_endpoint.protocol, Id()))
            {
                return *std::move(now);
            }
            auto last = m_endpoint;
            last.properties[std::string(isConnectedProperty)] = false;
            return last;
        }

        void Shut()
        {
            if (!m_closed.exchange(true))
            {
                Unsubscribe(m_subscription);
                m_events->nameChanged.Clear();
                m_events->connectionStatusChanged.Clear();
                m_events->servicesChanged.Clear();
            }
        }

        Endpoint const m_endpoint;
        Ref<DeviceInformation> const m_information; // a snapshot, and one for the object's whole life
        std::shared_ptr<Events> const m_events;
        std::shared_ptr<Subscription> const m_subscription;
        std::atomic<bool> m_closed = false;
    };

    platform::BluetoothConnectionStatus ConnectionOf(Endpoint const& endpoint);
    platform::BluetoothAddressType AddressTypeOf(Endpoint const& endpoint);
    bool WasSecure(Endpoint const& endpoint);
} // namespace simulator
