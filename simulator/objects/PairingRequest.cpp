#include "simulator/objects/PairingRequest.h"

#include "simulator/objects/DeviceInformation.h"
#include "simulator/trace/Call.h"

namespace simulator
{
    namespace
    {
        // Keeps the answer to a request open beyond the handler's return.
        class Deferral final : public Object<platform::IDeferral, platform::IClosable>
        {
        public:
            explicit Deferral(std::shared_ptr<Operation> operation)
                : operation_(std::move(operation))
            {
            }

            // Once only: a second Complete is the program's error.
            HRESULT STDMETHODCALLTYPE Complete() override
            {
                return Call("Deferral.Complete", operation_->id,
                            [&](std::string&) { return Finish() ? S_OK : illegalMethodCall; });
            }

            HRESULT STDMETHODCALLTYPE Close() override
            {
                return Call("Deferral.Close", operation_->id, [&](std::string&) {
                    Finish();
                    return S_OK;
                });
            }

        private:
            char const* ClassName() const noexcept override
            {
                return "Windows.Foundation.Deferral";
            }

            bool Finish()
            {
                auto& neighbourhood = TheNeighbourhood();
                {
                    std::lock_guard const lock(neighbourhood.mutex);
                    if (finished_)
                    {
                        return false;
                    }
                    finished_ = true;
                    if (--operation_->deferrals == 0)
                    {
                        operation_->busy = true; // there is something to do for it again
                    }
                }
                neighbourhood.changed.notify_all();
                return true;
            }

            std::shared_ptr<Operation> const operation_;
            bool finished_ = false;
        };
    } // namespace

    PairingRequest::PairingRequest(std::shared_ptr<Operation> operation, Snapshot const& device,
                                   platform::DevicePairingKinds kind, std::string pin)
        : operation_(std::move(operation))
        , id_(device.Id())
        , deviceKind_(device.Kind())
        , properties_(device.All())
        , kind_(kind)
        , pin_(std::move(pin))
    {
    }

    HRESULT PairingRequest::get_DeviceInformation(platform::IDeviceInformation** value)
    {
        return GetObject("DevicePairingRequestedEventArgs.get_DeviceInformation", id_, value,
                         [&] { return Make<DeviceInformation>(id_, deviceKind_, properties_); });
    }

    HRESULT PairingRequest::get_PairingKind(platform::DevicePairingKinds* value)
    {
        return Get("DevicePairingRequestedEventArgs.get_PairingKind", id_, value, [&] { return kind_; });
    }

    HRESULT PairingRequest::get_Pin(HSTRING* value)
    {
        return GetString("DevicePairingRequestedEventArgs.get_Pin", id_, value, [&] { return pin_; });
    }

    HRESULT PairingRequest::Accept()
    {
        return Call("DevicePairingRequestedEventArgs.Accept", id_, [&](std::string&) {
            TakeAnswer({});
            return S_OK;
        });
    }

    HRESULT PairingRequest::AcceptWithPin(HSTRING pin)
    {
        auto text = FromHstring(pin);
        return Call("DevicePairingRequestedEventArgs.AcceptWithPin", id_ + ", " + Quoted(text), [&](std::string&) {
            TakeAnswer(std::move(text));
            return S_OK;
        });
    }

    HRESULT PairingRequest::GetDeferral(platform::IDeferral** deferral)
    {
        return Call("DevicePairingRequestedEventArgs.GetDeferral", id_, [&](std::string&) {
            if (!deferral)
            {
                return E_POINTER;
            }
            *deferral = nullptr;
            {
                std::lock_guard const lock(TheNeighbourhood().mutex);
                if (!operation_->answerable)
                {
                    return illegalMethodCall;
                }
                ++operation_->deferrals;
            }
            *deferral = Make<Deferral>(operation_).Detach();
            return S_OK;
        });
    }

    HRESULT PairingRequest::AcceptWithPasswordCredential(void*)
    {
        return Call("DevicePairingRequestedEventArgs.AcceptWithPasswordCredential", id_,
                    [](std::string&) { return E_NOTIMPL; }); // no Bluetooth device asks for one
    }

    // An answer that comes too late, or a second one, changes nothing.
    void PairingRequest::TakeAnswer(std::string pin)
    {
        std::lock_guard const lock(TheNeighbourhood().mutex);
        if (operation_->answerable && !operation_->accepted)
        {
            operation_->accepted = true;
            operation_->pin = std::move(pin);
        }
    }

    char const* PairingRequest::ClassName() const noexcept
    {
        return "Windows.Devices.Enumeration.DevicePairingRequestedEventArgs";
    }
} // namespace simulator
