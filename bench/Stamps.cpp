#include "bench/Stamps.h"

#include "bench/BareClient.h"
#include "bench/Neighbourhood.h"
#include "platform/abi/Enumeration.h"
#include "simulator/VorlinkSimulator.h"
#include "tests/support/ReplacedMethod.h"

#include <atomic>
#include <cstddef>

namespace bench
{
    namespace
    {
        using AddAdded = HRESULT STDMETHODCALLTYPE(platform::IDeviceWatcher*, platform::AddedHandler*,
                                                   EventRegistrationToken*);
        using PairAsync = HRESULT STDMETHODCALLTYPE(platform::IDeviceInformationCustomPairing*,
                                                    platform::DevicePairingKinds,
                                                    platform::DevicePairingProtectionLevel,
                                                    platform::PairingOperation**);
        using PutCompleted = HRESULT STDMETHODCALLTYPE(platform::PairingOperation*, platform::PairingCompletedHandler*);

        constexpr std::size_t addAddedSlot = 6;
        constexpr std::size_t pairAsyncSlot = 7;
        constexpr std::size_t putCompletedSlot = 6;

        Stamps stamps;
        bool stampsEvents = false;
        AddAdded* addAdded = nullptr;
        PairAsync* pairAsync = nullptr;
        PutCompleted* putCompleted = nullptr;

        // Stands before a handler and hands on what comes, with the time taken.
        template <typename Handler, typename... Args>
        class Stamping final : public Handler
        {
        public:
            Stamping(Handler* handler, Clock::time_point& stamp)
                : m_handler(handler)
                , m_stamp(stamp)
            {
                m_handler->AddRef();
            }

            HRESULT STDMETHODCALLTYPE Invoke(Args... args) override
            {
                m_stamp = Clock::now();
                return m_handler->Invoke(args...);
            }

            HRESULT STDMETHODCALLTYPE QueryInterface(GUID const& id, void** object) override
            {
                *object = id == platform::iid_of<::IUnknown> || id == platform::iid_of<Handler> ||
                                  id == platform::iid_of<platform::IAgileObject>
                              ? this
                              : nullptr;
                return *object ? (AddRef(), S_OK) : E_NOINTERFACE;
            }

            ULONG STDMETHODCALLTYPE AddRef() override
            {
                return ++m_references;
            }

            ULONG STDMETHODCALLTYPE Release() override
            {
                auto const left = --m_references;
                if (left == 0)
                {
                    m_handler->Release();
                    delete this;
                }
                return left;
            }

        private:
            Handler* m_handler;
            Clock::time_point& m_stamp;
            std::atomic<ULONG> m_references = 1;
        };

        HRESULT STDMETHODCALLTYPE StampAdded(platform::IDeviceWatcher* watcher, platform::AddedHandler* handler,
                                             EventRegistrationToken* token)
        {
            if (!stampsEvents)
            {
                return addAdded(watcher, handler, token);
            }
            auto* const stamping =
                new Stamping<platform::AddedHandler, platform::IDeviceWatcher*, platform::IDeviceInformation*>(
                    handler, stamps.event);
            auto const result = addAdded(watcher, stamping, token);
            stamping->Release();
            return result;
        }

        HRESULT STDMETHODCALLTYPE StampRequest(platform::IDeviceInformationCustomPairing* custom,
                                               platform::DevicePairingKinds kinds,
                                               platform::DevicePairingProtectionLevel level,
                                               platform::PairingOperation** operation)
        {
            stamps.request = Clock::now();
            return pairAsync(custom, kinds, level, operation);
        }

        HRESULT STDMETHODCALLTYPE StampCompleted(platform::PairingOperation* operation,
                                                 platform::PairingCompletedHandler* handler)
        {
            auto* const stamping =
                new Stamping<platform::PairingCompletedHandler, platform::PairingOperation*, platform::AsyncStatus>(
                    handler, stamps.completed);
            auto const result = putCompleted(operation, stamping);
            stamping->Release();
            return result;
        }

        // One object of each class has the methods of all of them.
        void ReplaceMethods()
        {
            enumeration::DeviceInformation device{nullptr};
            LoadNeighbourhood(1);
            auto const watcher = enumeration::DeviceInformation::CreateWatcher(
                L"", nullptr, enumeration::DeviceInformationKind::AssociationEndpoint);
            auto const added = watcher.Added(
                winrt::auto_revoke, [&](auto const&, enumeration::DeviceInformation const& one) { device = one; });
            watcher.Start();
            WaitForEvents();
            auto const custom = device.Pairing().Custom();
            auto const operation = custom.PairAsync(enumeration::DevicePairingKinds::ConfirmOnly,
                                                    enumeration::DevicePairingProtectionLevel::Default);
            addAdded = test::ReplaceMethod(winrt::get_abi(watcher), addAddedSlot, StampAdded);
            pairAsync = test::ReplaceMethod(winrt::get_abi(custom), pairAsyncSlot, StampRequest);
            putCompleted = test::ReplaceMethod(winrt::get_abi(operation), putCompletedSlot, StampCompleted);
        }
    } // namespace

    Stamps const& TheStamps()
    {
        if (!addAdded)
        {
            ReplaceMethods();
        }
        return stamps;
    }

    Events::Events()
    {
        stampsEvents = true;
    }

    Events::~Events()
    {
        stampsEvents = false;
    }
} // namespace bench
