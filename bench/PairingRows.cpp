#include "bench/Clients.h"
#include "bench/Comparison.h"
#include "bench/Neighbourhood.h"
#include "bench/Rows.h"
#include "bench/Stamps.h"

namespace bench
{
    namespace
    {
        constexpr std::int64_t neighbours = 10;

        void MeasureLateComer(benchmark::State& state, Client const& reference, double (*span)(Course const&))
        {
            (void)TheStamps();
            LoadWaitingNeighbourhood(neighbours);
            Events const events;
            auto const library = LibraryClient();
            Compare(
                state, [&] { return span(Pair(reference, neighbours - 1)); },
                [&] { return span(Pair(library, neighbours - 1)); }, true);
        }

        double ToRequest(Course const& course)
        {
            return SecondsBetween(course.event, course.request);
        }

        double ToReport(Course const& course)
        {
            return SecondsBetween(course.completed, course.reported);
        }
    } // namespace

    void AddPairings(Plan const& plan)
    {
        constexpr int repetitions = 7;
        std::int64_t const rounds = plan.quick ? 2 : 100;
        using Reading = BareClient::Reading;
        plan.Row("event to request", repetitions,
                 [](benchmark::State& state) { MeasureLateComer(state, PlainClient(), ToRequest); })
            ->Iterations(rounds);
        plan.Row(
                "event to request/same calls", repetitions,
                [](benchmark::State& state) { MeasureLateComer(state, PlainClient(Reading::AsTheLibrary), ToRequest); })
            ->Iterations(rounds);
        plan.Row("completion to callback", repetitions,
                 [](benchmark::State& state) { MeasureLateComer(state, PlainClient(), ToReport); })
            ->Iterations(rounds);
    }
} // namespace bench
