#include "bench/Comparison.h"
#include "bench/Rows.h"
#include "bench/Silence.h"
#include "pairing/LeData.h"
#include "pairing/LeStore.h"

#include <windows.h>
#include <io.h>

#include <cstdio>
#include <fstream>
#include <iostream>

namespace bench
{
    namespace
    {
        constexpr char fileName[] = "MyLEData";

        // All of one length: a saved store's lines are in the order of the keys.
        std::string KeyOf(std::int64_t index)
        {
            auto const number = std::to_string(index);
            return "Device " + std::string(7 - number.size(), '0') + number;
        }

        void WriteFile(std::int64_t count)
        {
            std::ofstream file(fileName, std::ios::binary);
            for (std::int64_t index = 0; index < count; ++index)
            {
                file << KeyOf(index) << '=' << 0xC1D200000000 + index << '\n';
            }
        }

        void PlainLoad(vorlink::LeData& store)
        {
            std::ifstream file(fileName, std::ios::binary);
            for (std::string line; std::getline(file, line);)
            {
                auto const at = line.find('=');
                auto key = line.substr(0, at);
                auto value = line.substr(at + 1);
                std::cout << key << ':' << value << '\n';
                store.emplace(std::move(key), std::move(value));
            }
        }

        // On the disk before it takes the old one's place, as whoever must not lose a store does.
        void PlainSave(vorlink::LeData const& store)
        {
            std::FILE* const file = std::fopen("plain.new", "wb");
            for (auto const& [key, value] : store)
            {
                auto const line = key + '=' + value + '\n'; // this runtime's fprintf would take most of the time
                std::fwrite(line.data(), 1, line.size(), file);
                std::cout << key << ':' << value << '\n';
            }
            std::fflush(file);
            _commit(_fileno(file));
            std::fclose(file);
            MoveFileExA("plain.new", "plain", MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH);
        }

        void MeasureLoad(benchmark::State& state, std::int64_t count)
        {
            Silence const silence;
            WriteFile(count);
            Compare(
                state,
                [] {
                    vorlink::LeData store;
                    return TimeOf([&] { PlainLoad(store); });
                },
                [] {
                    vorlink::ClearLeData();
                    return TimeOf([] { vorlink::LoadLeData(fileName); });
                });
            vorlink::ClearLeData();
        }

        void MeasureSave(benchmark::State& state, std::int64_t count)
        {
            Silence const silence;
            WriteFile(count);
            vorlink::LoadLeData(fileName);
            vorlink::LeData store;
            PlainLoad(store);
            Compare(
                state, [&] { return TimeOf([&] { PlainSave(store); }); },
                [] { return TimeOf([] { vorlink::SaveLeData(fileName); }); });
            vorlink::ClearLeData();
        }

        // A hundred keys from all over the store, by a map of one's own or by the library's.
        void MeasureFind(benchmark::State& state, std::int64_t count)
        {
            Silence const silence;
            WriteFile(count);
            vorlink::LoadLeData(fileName);
            vorlink::LeData store;
            PlainLoad(store);
            std::vector<std::string> keys;
            for (std::int64_t index = 0; index < 100; ++index)
            {
                keys.push_back(KeyOf(index * 7919 % count));
            }
            Compare(
                state,
                [&] {
                    return TimeOf([&] {
                        for (auto const& key : keys)
                        {
                            auto const entry = store.find(key);
                            benchmark::DoNotOptimize(entry == store.end() ? std::string() : entry->second);
                        }
                    });
                },
                [&] {
                    return TimeOf([&] {
                        for (auto const& key : keys)
                        {
                            benchmark::DoNotOptimize(vorlink::GetLeData(key));
                        }
                    });
                });
            vorlink::ClearLeData();
        }
    } // namespace

    void AddStore(Plan const& plan)
    {
        for (auto const count : plan.Sizes(100, 1'000'000))
        {
            int const repetitions = count >= 1'000'000 ? 3 : count >= 100'000 ? 5 : 11;
            auto const size = '/' + std::to_string(count);
            std::int64_t const rounds = plan.quick || count >= 100'000 ? 1 : count >= 10'000 ? 3 : 10;
            plan.Row("store load" + size, repetitions, [=](benchmark::State& state) { MeasureLoad(state, count); })
                ->Iterations(rounds);
            plan.Row("store save" + size, repetitions, [=](benchmark::State& state) { MeasureSave(state, count); })
                ->Iterations(rounds);
            plan.Row("store find" + size, repetitions, [=](benchmark::State& state) { MeasureFind(state, count); })
                ->Iterations(plan.quick ? 1 : 200);
        }
    }
} // namespace bench
