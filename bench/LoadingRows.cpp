#include "bench/Comparison.h"
#include "bench/Library.h"
#include "bench/Rows.h"

#include <psapi.h>

#include <stdexcept>

namespace bench
{
    namespace
    {
        // Copies: the library itself may be loaded already, and loading it again would be counting to two.
        std::filesystem::path CopyOf(char const* name)
        {
            auto copy = std::filesystem::current_path() / (std::string("loaded-") + name);
            std::filesystem::copy_file(ProgramFolder() / name, copy, std::filesystem::copy_options::overwrite_existing);
            return copy;
        }

        double TimeToLoad(std::filesystem::path const& file)
        {
            Module module;
            return TimeOf([&] { module = LoadModule(file); });
        }

        void Touch(Module const& module)
        {
            if (!GetProcAddress(module.get(), "Touch"))
            {
                throw std::runtime_error("not the empty library");
            }
        }

        void MeasureLoading(benchmark::State& state)
        {
            auto const empty = CopyOf("vorlink_empty.dll");
            auto const library = CopyOf("vorlink.dll");
            Compare(
                state, [&] { return TimeToLoad(empty); }, [&] { return TimeToLoad(library); });
        }

        // Up to the first object; of the empty library, up to its function.
        void MeasureFirstObject(benchmark::State& state)
        {
            auto const empty = CopyOf("vorlink_empty.dll");
            auto const library = CopyOf("vorlink.dll");
            Compare(
                state,
                [&] {
                    Module module;
                    return TimeOf([&] {
                        module = LoadModule(empty);
                        Touch(module);
                    });
                },
                [&] {
                    Module module;
                    return TimeOf([&] {
                        module = LoadModule(library);
                        benchmark::DoNotOptimize(MakeVorlink(module).release()); // some bytes: it has no destructor
                    });
                });
        }

        void MeasureSize(benchmark::State& state)
        {
            auto const bytes = [](char const* name) {
                return static_cast<double>(std::filesystem::file_size(ProgramFolder() / name));
            };
            for ([[maybe_unused]] auto turn : state)
            {
                state.SetIterationTime(1);
            }
            Tell(state, {bytes("vorlink_empty.dll")}, {bytes("vorlink.dll")});
        }

        double ResidentBytes()
        {
            PROCESS_MEMORY_COUNTERS memory{};
            GetProcessMemoryInfo(GetCurrentProcess(), &memory, sizeof memory);
            return static_cast<double>(memory.WorkingSetSize);
        }

        double ResidentGrowth(std::filesystem::path const& file)
        {
            double const before = ResidentBytes();
            auto const module = LoadModule(file);
            return ResidentBytes() - before;
        }

        void MeasureResident(benchmark::State& state)
        {
            auto const empty = CopyOf("vorlink_empty.dll");
            auto const library = CopyOf("vorlink.dll");
            Compare(
                state, [&] { return ResidentGrowth(empty); }, [&] { return ResidentGrowth(library); });
        }
    } // namespace

    void AddLoading(Plan const& plan)
    {
        std::int64_t const rounds = plan.quick ? 1 : 20;
        plan.Row("load", 9, MeasureLoading)->Iterations(rounds);
        plan.Row("first object", 9, MeasureFirstObject)->Iterations(rounds);
        plan.Row("size", 1, MeasureSize)->Iterations(1);
        plan.Row("resident", 9, MeasureResident)->Iterations(plan.quick ? 1 : 5);
    }
} // namespace bench
