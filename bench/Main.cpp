// vorlink_bench [--quick] [--benchmark_...]: measures the rows of the table, each against its reference.
#include "bench/Rows.h"

#include <cstdio>
#include <cstring>
#include <exception>
#include <filesystem>
#include <random>
#include <string>

namespace
{
    // The library keeps its files in the current folder.
    std::filesystem::path EnterOwnFolder()
    {
        auto folder =
            std::filesystem::temp_directory_path() / ("vorlink-bench-" + std::to_string(std::random_device{}()));
        std::filesystem::create_directories(folder);
        std::filesystem::current_path(folder);
        return folder;
    }

    void Leave(std::filesystem::path const& folder)
    {
        std::error_code ignored;
        std::filesystem::current_path(folder.parent_path(), ignored);
        std::filesystem::remove_all(folder, ignored);
    }

    // Says which row was measured; the numbers are in the file.
    class Progress : public benchmark::BenchmarkReporter
    {
    public:
        bool ReportContext(Context const&) override
        {
            return true;
        }

        void ReportRuns(std::vector<Run> const& runs) override
        {
            auto const& first = runs.front();
            if (first.error_occurred)
            {
                failed = true;
                std::fprintf(stderr, "%s: %s\n", first.run_name.function_name.c_str(), first.error_message.c_str());
                return;
            }
            std::fprintf(stderr, "%d %s\n", ++m_rows, first.run_name.function_name.c_str());
        }

        bool failed = false;

    private:
        int m_rows = 0;
    };

    void AddRows(bench::Plan const& plan)
    {
        bench::AddLookups(plan);
        bench::AddPairings(plan);
        bench::AddRecords(plan);
        bench::AddStore(plan);
        bench::AddListings(plan);
        bench::AddSplitting(plan);
        bench::AddLoading(plan);
        bench::AddMemory(plan);
        bench::AddSimulator(plan);
    }

    int Run(int argc, char** argv)
    {
        bench::Plan plan;
        if (argc > 1 && std::strcmp(argv[1], "--quick") == 0)
        {
            plan.quick = true;
            argv[1] = argv[0];
            --argc;
            ++argv;
        }
        benchmark::Initialize(&argc, argv);
        if (benchmark::ReportUnrecognizedArguments(argc, argv))
        {
            return 2;
        }
        AddRows(plan);
        Progress progress;
        bool const any = benchmark::RunSpecifiedBenchmarks(&progress) != 0;
        return any && !progress.failed ? 0 : 1;
    }
} // namespace

int main(int argc, char** argv)
{
    // A relative --benchmark_out would be in a folder that goes.
    auto const folder = EnterOwnFolder();
    int code = 1;
    try
    {
        code = Run(argc, argv);
    }
    catch (std::exception const& error)
    {
        std::fprintf(stderr, "%s\n", error.what());
    }
    Leave(folder);
    return code;
}
