#include "host/Surroundings.h"

#include "host/WideText.h"

#include <winrt/Windows.Devices.Enumeration.h>
#include <winrt/Windows.Foundation.Collections.h>
#include <winrt/Windows.Foundation.h>

#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <map>
#include <mutex>
#include <stdexcept>
#include <string_view>
#include <utility>

namespace host
{
    using namespace winrt::Windows::Devices::Enumeration;
    using winrt::Windows::Foundation::IInspectable;
    using winrt::Windows::Foundation::Collections::IMapView;

    namespace
    {
        constexpr wchar_t addressProperty[] = L"System.Devices.Aep.DeviceAddress";
        constexpr wchar_t connectedProperty[] = L"System.Devices.Aep.IsConnected";
        constexpr wchar_t presentProperty[] = L"System.Devices.Aep.IsPresent";
        constexpr wchar_t signalProperty[] = L"System.Devices.Aep.SignalStrength";

        std::wstring QueryOf(Selector selector)
        {
            constexpr wchar_t classic[] = LR"(System.Devices.Aep.ProtocolId:="{e0cbf06c-cd8b-4647-bb8a-263b43f0f974}")";
            constexpr wchar_t le[] = LR"(System.Devices.Aep.ProtocolId:="{bb7bb05e-5972-42b5-94fc-76eaa7084d49}")";
            // In the order of Among.
            constexpr wchar_t const* among[] = {
                L"",
                (L" AND (System.Devices.Aep.CanPair:=System.StructuredQueryType.Boolean#True"
                 L" OR System.Devices.Aep.IsPaired:=System.StructuredQueryType.Boolean#True)"),
                L" AND System.Devices.Aep.IsPaired:=System.StructuredQueryType.Boolean#True",
            };
            return std::wstring(selector.protocol == Protocol::Le ? le : classic) +
                   among[static_cast<std::size_t>(selector.among)];
        }

        // The identifier knows it; only one in no known form has it from the search.
        Protocol ProtocolOf(std::string_view id, Protocol searched)
        {
            return id.starts_with("BluetoothLE#") ? Protocol::Le
                   : id.starts_with("Bluetooth#") ? Protocol::Classic
                                                  : searched;
        }

        std::optional<int> SignalOf(IMapView<winrt::hstring, IInspectable> const& properties)
        {
            constexpr auto none = std::numeric_limits<std::int32_t>::max();
            auto const signal = winrt::unbox_value_or<std::int32_t>(properties.TryLookup(signalProperty), none);
            return signal == none ? std::nullopt : std::optional<int>(signal);
        }

        Seen Look(DeviceInformation const& device, Protocol searched)
        {
            auto const properties = device.Properties();
            auto const pairing = device.Pairing();
            auto id = ToUtf8(device.Id());
            auto const protocol = ProtocolOf(id, searched);
            return {
                .id = std::move(id),
                .name = ToUtf8(device.Name()),
                .address = ToUtf8(winrt::unbox_value_or<winrt::hstring>(properties.TryLookup(addressProperty), L"")),
                .protocol = protocol,
                .paired = pairing.IsPaired(),
                .canPair = pairing.CanPair(),
                .connected = winrt::unbox_value_or<bool>(properties.TryLookup(connectedProperty), false),
                .present = winrt::unbox_value_or<bool>(properties.TryLookup(presentProperty), false),
                .signal = SignalOf(properties),
            };
        }

        // An event as it has come. It is read on the taker's thread, so that handlers call nothing that can fail.
        struct Report
        {
            enum class Kind
            {
                Added,
                Updated,
                Removed,
                Completed,
                Stopped, // by the system: nobody takes what comes of our own stop
            };

            Kind kind;
            Protocol searched;
            DeviceInformation device{nullptr};       // of Added
            DeviceInformationUpdate update{nullptr}; // of Updated and Removed
        };

        struct Reports
        {
            std::mutex mutex;
            std::condition_variable changed;
            std::vector<Report> waiting;

            void Add(Report report) noexcept
            {
                std::lock_guard const lock(mutex);
                waiting.push_back(std::move(report));
                changed.notify_all();
            }

            std::vector<Report> Take(std::chrono::milliseconds patience)
            {
                std::unique_lock lock(mutex);
                changed.wait_for(lock, patience, [this] { return !waiting.empty(); });
                return std::exchange(waiting, {});
            }
        };

        // The handler stays registered until the end.
        class CustomPairing : public PendingPairing
        {
        public:
            explicit CustomPairing(DeviceInformation const& device)
                : m_pairing(device.Pairing().Custom())
                , m_token(m_pairing.PairingRequested(
                      [](DeviceInformationCustomPairing const&, DevicePairingRequestedEventArgs const& request) {
                          request.Accept();
                      }))
                , m_operation(m_pairing.PairAsync(DevicePairingKinds::ConfirmOnly,
                                                  DevicePairingProtectionLevel::EncryptionAndAuthentication))
            {
            }

            ~CustomPairing() override
            {
                m_pairing.PairingRequested(m_token);
            }

            std::optional<int> Status() const override
            {
                if (m_operation.Status() == winrt::Windows::Foundation::AsyncStatus::Started)
                {
                    return std::nullopt;
                }
                return static_cast<int>(m_operation.GetResults().Status());
            }

        private:
            DeviceInformationCustomPairing m_pairing;
            winrt::event_token m_token;
            winrt::Windows::Foundation::IAsyncOperation<DevicePairingResult> m_operation;
        };

        // One watcher. A handler may still run when it is gone: each holds the reports by itself.
        class Search
        {
        public:
            Search(Selector selector, std::shared_ptr<Reports> const& reports)
                : m_watcher(DeviceInformation::CreateWatcher(
                      winrt::hstring(QueryOf(selector)),
                      winrt::single_threaded_vector<winrt::hstring>(
                          {addressProperty, connectedProperty, presentProperty, signalProperty}),
                      DeviceInformationKind::AssociationEndpoint))
            {
                using Kind = Report::Kind;
                auto const protocol = selector.protocol;
                m_added = m_watcher.Added(winrt::auto_revoke,
                                          [=](DeviceWatcher const&, DeviceInformation const& device) noexcept {
                                              reports->Add({Kind::Added, protocol, device, nullptr});
                                          });
                auto const changes = [=](Kind kind) {
                    return [=](DeviceWatcher const&, DeviceInformationUpdate const& update) noexcept {
                        reports->Add({kind, protocol, nullptr, update});
                    };
                };
                m_updated = m_watcher.Updated(winrt::auto_revoke, changes(Kind::Updated));
                m_removed = m_watcher.Removed(winrt::auto_revoke, changes(Kind::Removed));
                auto const ends = [=](Kind kind) {
                    return [=](DeviceWatcher const&, IInspectable const&) noexcept {
                        reports->Add({kind, protocol, nullptr, nullptr});
                    };
                };
                m_completed = m_watcher.EnumerationCompleted(winrt::auto_revoke, ends(Kind::Completed));
                m_stopped = m_watcher.Stopped(winrt::auto_revoke, ends(Kind::Stopped));
                m_watcher.Start();
            }

            ~Search()
            {
                try
                {
                    m_watcher.Stop();
                }
                catch (...) // it has ended by itself, or the platform cannot: nobody asks any more
                {
                }
            }

            Search(Search const&) = delete;
            Search& operator=(Search const&) = delete;

        private:
            DeviceWatcher m_watcher;
            DeviceWatcher::Added_revoker m_added;
            DeviceWatcher::Updated_revoker m_updated;
            DeviceWatcher::Removed_revoker m_removed;
            DeviceWatcher::EnumerationCompleted_revoker m_completed;
            DeviceWatcher::Stopped_revoker m_stopped;
        };
    } // namespace

    class Surroundings::Searches
    {
    public:
        explicit Searches(std::vector<Selector> const& selectors)
            : m_running(selectors.size())
        {
            for (auto const& selector : selectors)
            {
                m_searches.push_back(std::make_unique<Search>(selector, m_reports));
            }
        }

        std::vector<Sighting> Take(std::chrono::milliseconds patience)
        {
            std::vector<Sighting> sightings;
            for (auto const& report : m_reports->Take(patience))
            {
                if (auto sighting = Note(report))
                {
                    sightings.push_back(std::move(*sighting));
                }
            }
            return sightings;
        }

        std::vector<Seen> All() const
        {
            std::vector<Seen> all;
            all.reserve(m_known.size());
            for (auto const& [id, known] : m_known)
            {
                all.push_back(known.seen);
            }
            return all;
        }

        bool IsComplete() const
        {
            return m_running == 0;
        }

        DeviceInformation const& Device(std::string const& id) const
        {
            return m_known.at(id).device;
        }

    private:
        struct Known
        {
            DeviceInformation device;
            Seen seen;
        };

        std::optional<Sighting> Note(Report const& report)
        {
            switch (report.kind)
            {
            case Report::Kind::Added:
                return NoteAdded(report.device, report.searched);
            case Report::Kind::Updated:
                return NoteUpdated(report.update);
            case Report::Kind::Removed:
                return NoteRemoved(report.update);
            case Report::Kind::Completed:
                --m_running;
                return std::nullopt;
            default:
                throw std::runtime_error("the platform has stopped the search");
            }
        }

        // The platform may add a device once more that has never gone.
        std::optional<Sighting> NoteAdded(DeviceInformation const& device, Protocol searched)
        {
            auto seen = Look(device, searched);
            auto const [known, isNew] = m_known.try_emplace(seen.id, Known{device, seen});
            if (isNew)
            {
                return Sighting{Sighting::Kind::Added, std::move(seen)};
            }
            known->second.device = device;
            return Renew(known->second, std::move(seen));
        }

        std::optional<Sighting> NoteUpdated(DeviceInformationUpdate const& update)
        {
            auto const known = m_known.find(ToUtf8(update.Id()));
            if (known == m_known.end())
            {
                return std::nullopt;
            }
            auto const& device = known->second.device;
            device.Update(update);
            return Renew(known->second, Look(device, known->second.seen.protocol));
        }

        std::optional<Sighting> NoteRemoved(DeviceInformationUpdate const& update)
        {
            auto const known = m_known.extract(ToUtf8(update.Id()));
            return known ? std::optional(Sighting{Sighting::Kind::Removed, std::move(known.mapped().seen)})
                         : std::nullopt;
        }

        static std::optional<Sighting> Renew(Known& known, Seen seen)
        {
            if (known.seen == seen)
            {
                return std::nullopt;
            }
            known.seen = seen;
            return Sighting{Sighting::Kind::Updated, std::move(seen)};
        }

        std::shared_ptr<Reports> const m_reports = std::make_shared<Reports>();
        std::vector<std::unique_ptr<Search>> m_searches;
        std::size_t m_running;
        std::map<std::string, Known> m_known;
    };

    Surroundings::Surroundings(std::vector<Selector> const& selectors)
        : m_searches(std::make_unique<Searches>(selectors))
    {
    }

    Surroundings::~Surroundings() = default;

    std::vector<Sighting> Surroundings::Take(std::chrono::milliseconds patience)
    {
        return m_searches->Take(patience);
    }

    std::vector<Seen> Surroundings::All() const
    {
        return m_searches->All();
    }

    bool Surroundings::IsComplete() const
    {
        return m_searches->IsComplete();
    }

    std::unique_ptr<PendingPairing> Surroundings::BeginPairing(std::string const& id) const
    {
        return std::make_unique<CustomPairing>(m_searches->Device(id));
    }

    bool IsNamed(std::string const& deviceName, std::string const& name)
    {
        constexpr std::size_t longName = 14;
        return name.size() < longName ? deviceName == name : deviceName.find(name) != std::string::npos;
    }
} // namespace host
