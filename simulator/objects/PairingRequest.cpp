#include "simulator/objects/PairingRequest.h"

#include "simulator/objects/DeviceInformation.h"
#include "simulator/trace/Call.h"

#include <atomic>

namespace simulator
{
    namespace
    {
        // Keeps the answer to a request open beyond the handler's return.
        class Deferral final : public Object<platform::IDeferral, platform::IClosable>
        {
        public:
            explicit Deferral(std::shared_ptr<Operation> operation)
                : m_operation(std::move(operation))
            {
            }

            // Once only: a second Complete is the program's error.
            HRESULT STDMETHODCALLTYPE Complete() override
            {
                return Call("Deferral.Complete", m_operation->id, [&](std::string&) {
                    if (IsLostHere())
                    {
                        return m_finished.exchange(true) ? illegalMethodCall : S_OK;
                    }
                    return Finish() ? S_OK : illegalMethodCall;
                });
            }

            HRESULT STDMETHODCALLTYPE Close() override
            {
                return Call("Deferral.Close", m_operation->id, [&](std::string&) {
                    Finish();
                    return S_OK;
                });
            }

        private:
            char const* ClassName() const noexcept override
            {
                return "Windows.Foundation.Deferral";
            }

            // From a single-threaded apartment the platform accepts the call, and the pairing hangs.
            static bool IsLostHere()
            {
                APTTYPE type{};
                APTTYPEQUALIFIER qualifier{};
                bool const isSta = SUCCEEDED(CoGetApartmentType(&type, &qualifier)) &&
                                   (type == APTTYPE_STA || type == APTTYPE_MAINSTA);
                auto& neighbourhood = TheNeighbourhood();
                std::lock_guard const lock(neighbourhood.mutex);
                return isSta && neighbourhood.scenario.choices.staDeferralsHang;
            }

            bool Finish()
            {
                if (m_finished.exchange(true))
                {
                    return false;
                }
                EndDeferral(*m_operation);
                return true;
            }

            std::shared_ptr<Operation> const m_operation;
            std::atomic<bool> m_finished = false;
        };
    } // namespace

    PairingRequest::PairingRequest(std::shared_ptr<Operation> operation, Snapshot const& device,
                                   platform::DevicePairingKinds kind, std::string pin)
        : m_operation(std::move(operation))
        , m_id(device.Id())
        , m_deviceKind(device.Kind())
        , m_properties(device.All())
        , m_kind(kind)
        , m_pin(std::move(pin))
    {
    }

    HRESULT PairingRequest::get_DeviceInformation(platform::IDeviceInformation** value)
    {
        return GetObject("DevicePairingRequestedEventArgs.get_DeviceInformation", m_id, value,
                         [&] { return Make<DeviceInformation>(m_id, m_deviceKind, m_properties); });
    }

    HRESULT PairingRequest::get_PairingKind(platform::DevicePairingKinds* value)
    {
        return Get("DevicePairingRequestedEventArgs.get_PairingKind", m_id, value, [&] { return m_kind; });
    }

    HRESULT PairingRequest::get_Pin(HSTRING* value)
    {
        return GetString("DevicePairingRequestedEventArgs.get_Pin", m_id, value, [&] { return m_pin; });
    }

    HRESULT PairingRequest::Accept()
    {
        return Call("DevicePairingRequestedEventArgs.Accept", m_id, [&](std::string&) {
            simulator::Accept(*m_operation, {});
            return S_OK;
        });
    }

    HRESULT PairingRequest::AcceptWithPin(HSTRING pin)
    {
        auto text = FromHstring(pin);
        return Call("DevicePairingRequestedEventArgs.AcceptWithPin", m_id + ", " + Quoted(text), [&](std::string&) {
            simulator::Accept(*m_operation, std::move(text));
            return S_OK;
        });
    }

    HRESULT PairingRequest::GetDeferral(platform::IDeferral** deferral)
    {
        return Call("DevicePairingRequestedEventArgs.GetDeferral", m_id, [&](std::string&) {
            if (!deferral)
            {
                return E_POINTER;
            }
            *deferral = nullptr;
            if (!Defer(*m_operation))
            {
                return illegalMethodCall;
            }
            *deferral = Make<Deferral>(m_operation).Detach();
            return S_OK;
        });
    }

    HRESULT PairingRequest::AcceptWithPasswordCredential(void*)
    {
        // No Bluetooth device asks for one.
        return Outside("DevicePairingRequestedEventArgs.AcceptWithPasswordCredential", m_id);
    }

    char const* PairingRequest::ClassName() const noexcept
    {
        return "Windows.Devices.Enumeration.DevicePairingRequestedEventArgs";
    }
} // namespace simulator
