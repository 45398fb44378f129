#include "bench/BareClient.h"
#include "bench/Comparison.h"
#include "bench/Neighbourhood.h"
#include "bench/Rows.h"
#include "pairing/Selector.h"

namespace bench
{
    namespace
    {
        // All of a watcher's events, with nobody or somebody to hear them.
        double Watch(bool listens, std::int64_t count)
        {
            auto const watcher = enumeration::DeviceInformation::CreateWatcher(
                vorlink::Selector(false, false), nullptr, enumeration::DeviceInformationKind::AssociationEndpoint);
            enumeration::DeviceWatcher::Added_revoker added;
            if (listens)
            {
                added = watcher.Added(winrt::auto_revoke, [](auto const&, auto const&) {});
            }
            auto const time = TimeOf([&] {
                watcher.Start();
                WaitForEvents();
            });
            Settle();
            return time / static_cast<double>(count);
        }

        void MeasureEvents(benchmark::State& state, std::int64_t count)
        {
            LoadNeighbourhood(count);
            Compare(
                state, [&] { return Watch(false, count); }, [&] { return Watch(true, count); });
        }
    } // namespace

    void AddSimulator(Plan const& plan)
    {
        for (auto const count : plan.Sizes(1'000, 100'000))
        {
            plan.Row("simulated event/" + std::to_string(count), count >= 100'000 ? 5 : 9,
                     [count](benchmark::State& state) { MeasureEvents(state, count); })
                ->Iterations(1);
        }
    }
} // namespace bench
