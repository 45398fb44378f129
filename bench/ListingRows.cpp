#include "bench/Comparison.h"
#include "bench/Rows.h"
#include "bench/Silence.h"
#include "pairing/DeviceListing.h"

#include <fstream>

namespace bench
{
    namespace
    {
        // One device in ten is of Bluetooth LE, in blocks of seven lines and an empty one, as the tool prints them.
        std::string Listing(std::int64_t lines)
        {
            std::string text;
            for (std::int64_t line = 0; line < lines; ++line)
            {
                bool const isLe = line / 8 % 10 == 0;
                switch (line % 8)
                {
                case 0:
                    text += isLe ? "Instance ID:                BTHLE\\Dev_c1d2e3f4a5b6\\8&1a2b3c4d&0&C1D2E3F4A5B6\r\n"
                                 : "Instance ID:                PCI\\VEN_8086&DEV_9D3A&SUBSYS_225D17AA\\3&11583659\r\n";
                    break;
                case 1:
                    text += isLe ? "Device Description:         ?? LE ??\r\n" : "Device Description:         Host\r\n";
                    break;
                case 7:
                    text += "\r\n";
                    break;
                default:
                    text += "Manufacturer Name:          Standard system devices\r\n";
                }
            }
            return text;
        }

        // The same finds, by the plain loop.
        std::size_t PlainRead(std::istream& listing, std::ostream& echo)
        {
            std::size_t found = 0;
            std::string description;
            for (std::string line; std::getline(listing, line);)
            {
                if (line.ends_with('\r'))
                {
                    line.pop_back();
                }
                if (!line.empty())
                {
                    echo << line << '\n' << description << '\n';
                }
                if (line.find("BTHLE\\Dev_") != std::string::npos && std::getline(listing, description))
                {
                    echo << description << '\n';
                    if (description.find("?? LE ??") != std::string::npos)
                    {
                        auto const first = line.find('&');
                        auto const third = line.find('&', line.find('&', first + 1) + 1);
                        found += line.substr(third + 1).size();
                    }
                }
            }
            return found;
        }

        void MeasureListing(benchmark::State& state, std::int64_t lines)
        {
            constexpr char fileName[] = "listing.txt";
            std::ofstream(fileName, std::ios::binary) << Listing(lines);
            Nowhere nowhere;
            std::ostream echo(&nowhere);
            Compare(
                state,
                [&] {
                    return TimeOf([&] {
                        std::ifstream listing(fileName, std::ios::binary);
                        benchmark::DoNotOptimize(PlainRead(listing, echo));
                    });
                },
                [&] {
                    std::size_t found = 0;
                    auto const time = TimeOf([&] {
                        std::ifstream listing(fileName, std::ios::binary);
                        vorlink::ReadListing(
                            listing, echo,
                            {[](std::string const&) {}, [&](std::string const& piece) { found += piece.size(); }});
                    });
                    benchmark::DoNotOptimize(found);
                    return time;
                });
        }
    } // namespace

    void AddListings(Plan const& plan)
    {
        for (auto const lines : plan.Sizes(1'000, 100'000))
        {
            plan.Row("listing/" + std::to_string(lines), 11,
                     [=](benchmark::State& state) { MeasureListing(state, lines); })
                ->Iterations(plan.quick || lines >= 100'000 ? 1 : 10);
        }
    }
} // namespace bench
