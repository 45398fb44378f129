#include "host/Look.h"

namespace host
{
    std::optional<Seen> LookFor(Surroundings& surroundings, std::function<bool(Seen const&)> const& fits,
                                Clock::time_point end, Interruption const& interruption, Progress& progress,
                                std::string const& doing)
    {
        auto const start = Clock::now();
        while (!surroundings.IsComplete() && Clock::now() < end && !interruption.Requested())
        {
            progress.Show(doing, std::chrono::floor<std::chrono::seconds>(Clock::now() - start));
            for (auto const& [kind, device] : surroundings.Take(std::chrono::milliseconds(50)))
            {
                if (kind != Sighting::Kind::Removed && fits(device))
                {
                    return device;
                }
            }
        }
        return std::nullopt;
    }
} // namespace host
