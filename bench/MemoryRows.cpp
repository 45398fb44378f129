#include "bench/BareClient.h"
#include "bench/Clients.h"
#include "bench/Comparison.h"
#include "bench/Neighbourhood.h"
#include "bench/Rows.h"
#include "pairing/DiscoveryQueue.h"
#include "pairing/Selector.h"

#include <windows.h>

#include <array>
#include <functional>
#include <vector>

namespace bench
{
    namespace
    {
        double AllocatedBytes()
        {
            std::array<HANDLE, 64> heaps{};
            DWORD const count = GetProcessHeaps(static_cast<DWORD>(heaps.size()), heaps.data());
            double bytes = 0;
            for (DWORD heap = 0; heap < count; ++heap)
            {
                PROCESS_HEAP_ENTRY entry{};
                while (HeapWalk(heaps[heap], &entry))
                {
                    bytes += entry.wFlags & PROCESS_HEAP_ENTRY_BUSY ? static_cast<double>(entry.cbData) : 0.0;
                }
            }
            return bytes;
        }

        // What a watcher's events leave behind in whoever keeps their devices.
        double Kept(enumeration::DeviceWatcher::AddedHandler const& handler, std::function<void()> const& letGo)
        {
            double grown = 0;
            {
                auto const watcher = enumeration::DeviceInformation::CreateWatcher(
                    vorlink::Selector(false, false), nullptr, enumeration::DeviceInformationKind::AssociationEndpoint);
                auto const added = watcher.Added(winrt::auto_revoke, handler);
                watcher.Start();
                WaitForEvents();
            }
            Settle();
            grown = AllocatedBytes();
            letGo();
            return grown - AllocatedBytes();
        }

        void MeasureQueued(benchmark::State& state, std::int64_t count)
        {
            LoadNeighbourhood(count);
            auto const each = static_cast<double>(count);
            Compare(
                state,
                [&] {
                    std::vector<enumeration::DeviceInformation> devices;
                    auto const bytes = Kept(
                        [&](auto const&, enumeration::DeviceInformation const& device) { devices.push_back(device); },
                        [&] { devices = std::vector<enumeration::DeviceInformation>(); });
                    return bytes / each;
                },
                [&] {
                    auto const bytes = Kept(vorlink::OnDiscoveryAdded, [] {
                        vorlink::FinishDiscovery();
                        enumeration::DeviceInformation device{nullptr};
                        while (vorlink::TakeDevice(device) == vorlink::TookDevice)
                        {
                        }
                    });
                    return bytes / each;
                });
        }
    } // namespace

    void AddMemory(Plan const& plan)
    {
        auto const count = plan.Sizes(10, 1'000).back();
        plan.Row("queued endpoint", 5, [count](benchmark::State& state) { MeasureQueued(state, count); })
            ->Iterations(1);
    }
} // namespace bench
