#include "bench/Comparison.h"
#include "bench/Rows.h"
#include "pairing/SplitText.h"

namespace bench
{
    namespace
    {
        std::vector<std::string> PlainSplit(std::string const& text, char delimiter)
        {
            std::vector<std::string> pieces;
            std::size_t begin = 0;
            for (auto end = text.find(delimiter); end != std::string::npos; end = text.find(delimiter, begin))
            {
                pieces.push_back(text.substr(begin, end - begin));
                begin = end + 1;
            }
            pieces.push_back(text.substr(begin));
            return pieces;
        }

        template <typename Split>
        double TimeOfMany(Split split)
        {
            return TimeOf([&] {
                for (int i = 0; i < 100; ++i) // one alone is near the clock's resolution
                {
                    benchmark::DoNotOptimize(split());
                }
            });
        }

        void MeasureSplit(benchmark::State& state, std::string const& text, char delimiter)
        {
            std::string const pattern(1, delimiter);
            Compare(
                state, [&] { return TimeOfMany([&] { return PlainSplit(text, delimiter); }); },
                [&] { return TimeOfMany([&] { return vorlink::SplitText(text, pattern); }); });
        }
    } // namespace

    void AddSplitting(Plan const& plan)
    {
        auto const add = [&](std::string const& name, std::string const& text, char delimiter) {
            plan.Row("split/" + name, 11, [=](benchmark::State& state) { MeasureSplit(state, text, delimiter); })
                ->Iterations(plan.quick ? 1 : 50);
        };
        add("identifier", "Bluetooth#Bluetooth00:1a:7d:da:71:13-a4:c1:38:5e:22:0f", '-');
        add("address", "a4:c1:38:5e:22:0f", ':');
        add("instance", "Instance ID:    BTHLE\\Dev_c1d2e3f4a5b6\\8&1a2b3c4d&0&C1D2E3F4A5B6", '&');
    }
} // namespace bench
