// How a row is measured: a reference and the subject that is held against it, in turn, in one process.
#pragma once

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <vector>

namespace bench
{
    using Clock = std::chrono::steady_clock;

    inline double SecondsBetween(Clock::time_point from, Clock::time_point to)
    {
        return std::chrono::duration<double>(to - from).count();
    }

    template <typename Action>
    double TimeOf(Action action)
    {
        auto const begun = Clock::now();
        action();
        return SecondsBetween(begun, Clock::now());
    }

    inline double Quantile(std::vector<double> values, double share)
    {
        auto const at = values.begin() + static_cast<std::ptrdiff_t>(share * static_cast<double>(values.size() - 1));
        std::nth_element(values.begin(), at, values.end());
        return *at;
    }

    // One repetition's medians; where a row looks at the rare slow one too, its 99th percentiles.
    inline void Tell(benchmark::State& state, std::vector<double> const& reference, std::vector<double> const& subject,
                     bool percentile = false)
    {
        state.counters["reference"] = Quantile(reference, 0.5);
        state.counters["subject"] = Quantile(subject, 0.5);
        if (percentile)
        {
            state.counters["reference_p99"] = Quantile(reference, 0.99);
            state.counters["subject_p99"] = Quantile(subject, 0.99);
        }
    }

    // Each returns what it measured of itself, in seconds: what it had to prepare is its own affair.
    template <typename Reference, typename Subject>
    void Compare(benchmark::State& state, Reference reference, Subject subject, bool percentile = false)
    {
        std::vector<double> references;
        std::vector<double> subjects;
        for ([[maybe_unused]] auto turn : state)
        {
            bool const subjectFirst = references.size() % 2 == 1;
            if (subjectFirst)
            {
                subjects.push_back(subject());
            }
            references.push_back(reference());
            if (!subjectFirst)
            {
                subjects.push_back(subject());
            }
            state.SetIterationTime(subjects.back());
        }
        Tell(state, references, subjects, percentile);
    }
} // namespace bench
