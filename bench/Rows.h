// The rows of the table, by what they look at.
#pragma once

#include <benchmark/benchmark.h>

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace bench
{
    struct Plan
    {
        bool quick = false; // every row once, and as small as it gets: does it run at all?

        // 1, 10, 100, ... within the two.
        std::vector<std::int64_t> Sizes(std::int64_t from, std::int64_t to) const
        {
            std::vector<std::int64_t> sizes;
            for (auto size = from; size <= (quick ? from : to); size *= 10)
            {
                sizes.push_back(size);
            }
            return sizes;
        }

        // A row whose function measures by itself. Its repetitions are what the table's spread is of.
        template <typename Function>
        benchmark::internal::Benchmark* Row(std::string const& name, int repetitions, Function function) const
        {
            return benchmark::RegisterBenchmark(name.c_str(), std::move(function))
                ->UseManualTime()
                ->Repetitions(quick ? 1 : repetitions)
                ->DisplayAggregatesOnly(true);
        }
    };

    void AddLookups(Plan const& plan);
    void AddPairings(Plan const& plan);
    void AddRecords(Plan const& plan);
    void AddStore(Plan const& plan);
    void AddListings(Plan const& plan);
    void AddSplitting(Plan const& plan);
    void AddLoading(Plan const& plan);
    void AddMemory(Plan const& plan);
    void AddSimulator(Plan const& plan);
} // namespace bench
