// Every test program's main: a working directory of its own for each run (the library keeps its log, its
// data file and its listing in the current directory), and a watchdog that names the test that hangs.
#include "tests/support/TestSeconds.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <future>
#include <random>
#include <string>
#include <thread>
#include <utility>

#ifdef _WIN32
#include <windows.h>
#endif

namespace
{
    constexpr int watchdogExitCode = 97;

    // Above the longest wait of the library itself, below the test runner's own limit. A longer look adds its time.
    std::chrono::seconds WatchdogLimit()
    {
        return std::chrono::seconds(50) + test::TestSeconds(std::chrono::seconds(0));
    }

    [[noreturn]] void EndProcess(int code)
    {
#ifdef _WIN32
        // Not by exit: a module that hangs must not be asked to clean up.
        TerminateProcess(GetCurrentProcess(), static_cast<UINT>(code));
#endif
        std::_Exit(code);
    }

    void WatchForHang()
    {
        // Wine ends a process abnormally whose end meets a thread that has not quite begun: wait until it has.
        std::promise<void> promise;
        auto const begun = promise.get_future();
        std::thread([promise = std::move(promise), limit = WatchdogLimit()]() mutable {
            promise.set_value();
            std::this_thread::sleep_for(limit);
            auto const* test = testing::UnitTest::GetInstance()->current_test_info();
            std::fprintf(stderr, "watchdog: %s.%s still runs after %lld s\n", test ? test->test_suite_name() : "?",
                         test ? test->name() : "?", static_cast<long long>(limit.count()));
            std::fflush(stderr);
            EndProcess(watchdogExitCode);
        }).detach();
        begun.wait();
    }

    std::filesystem::path EnterOwnDirectory()
    {
        auto const directory =
            std::filesystem::temp_directory_path() / ("vorlink-test-" + std::to_string(std::random_device{}()));
        std::filesystem::create_directories(directory);
        std::filesystem::current_path(directory);
        return directory;
    }
} // namespace

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    if (testing::GTEST_FLAG(list_tests))
    {
        return RUN_ALL_TESTS();
    }
    WatchForHang();
    auto const directory = EnterOwnDirectory();
    int const result = RUN_ALL_TESTS();
    std::error_code ignored; // a detached thread of the library may still hold a file
    std::filesystem::current_path(directory.parent_path(), ignored);
    std::filesystem::remove_all(directory, ignored);
    return result;
}
