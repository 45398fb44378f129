#include "bench/Clients.h"
#include "bench/Comparison.h"
#include "bench/Neighbourhood.h"
#include "bench/Rows.h"
#include "bench/Stamps.h"

namespace bench
{
    namespace
    {
        double Lookup(Client const& client, std::int64_t count)
        {
            auto const course = Pair(client, count - 1);
            return SecondsBetween(course.begun, course.request);
        }

        void MeasureLookup(benchmark::State& state, std::int64_t count)
        {
            (void)TheStamps(); // loads a neighbourhood of its own the first time
            LoadNeighbourhood(count);
            auto const bare = PlainClient();
            auto const library = LibraryClient();
            Lookup(bare, count); // each grows its buffers once
            Lookup(library, count);
            Compare(
                state, [&] { return Lookup(bare, count); }, [&] { return Lookup(library, count); });
        }

        // A large neighbourhood takes its time by itself; a small one is looked into often.
        std::int64_t RoundsFor(std::int64_t count)
        {
            return count >= 10'000 ? 1 : count >= 1'000 ? 3 : 25;
        }
    } // namespace

    void AddLookups(Plan const& plan)
    {
        for (auto const count : plan.Sizes(1, 100'000))
        {
            int const repetitions = count >= 100'000 ? 5 : 11;
            plan.Row("lookup/" + std::to_string(count), repetitions,
                     [count](benchmark::State& state) { MeasureLookup(state, count); })
                ->Iterations(plan.quick ? 1 : RoundsFor(count));
        }
    }
} // namespace bench
