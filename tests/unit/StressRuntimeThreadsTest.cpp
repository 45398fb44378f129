// What the runtime makes for threads, or hands from one to another, under load.
#include "tests/support/Patience.h"
#include "tests/unit/StressRuntime.h"

#include <windows.h>

#include <atomic>
#include <future>
#include <memory>
#include <stdexcept>
#include <string>
#include <thread>
#include <utility>
#include <vector>

using namespace test;

namespace
{
    // A function's static object for each N, so that a process has enough of them.
    std::atomic<int> made = 0;

    struct Made
    {
        Made()
        {
            std::this_thread::yield();
            value = ++made;
        }
        int value = 0;
    };

    template <int N>
    int StaticOf()
    {
        static Made const object;
        return object.value;
    }

    template <int... N>
    std::vector<int (*)()> StaticsOf(std::integer_sequence<int, N...>)
    {
        return {&StaticOf<N>...};
    }

    std::atomic<int> ownBegun = 0;
    std::atomic<int> ownEnded = 0;

    struct Own
    {
        Own()
        {
            ++ownBegun;
        }
        ~Own()
        {
            ++ownEnded;
        }
        std::string text = "own";
    };

    thread_local Own own;
} // namespace

// As many as there are, once a process: the runner's repetitions are the load here.
TEST_F(StressRuntime, StaticObjectsAreMadeOnce)
{
    constexpr int count = 500;
    auto const statics = StaticsOf(std::make_integer_sequence<int, count>());
    std::vector<std::vector<int>> seen(threads);
    Rounds([] {},
           [&](int thread) {
               auto& mine = seen[static_cast<std::size_t>(thread)];
               mine.clear();
               for (auto* const get : statics)
               {
                   mine.push_back(get());
               }
           },
           [&] {
               ASSERT_EQ(made, count);
               for (auto const& values : seen)
               {
                   ASSERT_EQ(values, seen.front());
               }
           });
}

TEST_F(StressRuntime, ThreadsOwnObjectsBeginAndEndWithThem)
{
    static_cast<void>(own.text);
    auto const before = ownBegun - ownEnded;
    std::atomic<int> strangers = 0;
    Rounds([] {},
           [&](int) {
               std::thread([&] {
                   strangers += own.text == "own" ? 0 : 1;
                   own.text = std::to_string(GetCurrentThreadId());
                   std::this_thread::yield();
                   strangers += own.text == std::to_string(GetCurrentThreadId()) ? 0 : 1;
               }).join();
           },
           [&] {
               ASSERT_EQ(strangers, 0);
               ASSERT_EQ(ownBegun - ownEnded, before);
           });
}

TEST_F(StressRuntime, FutureHearsOfItsPromise)
{
    std::unique_ptr<std::promise<int>> promise;
    std::shared_future<int> future;
    std::atomic<int> heard = 0;
    Rounds(
        [&] {
            promise = std::make_unique<std::promise<int>>();
            future = promise->get_future().share();
            heard = 0;
        },
        [&](int thread) {
            if (thread == 0)
            {
                promise->set_value(steps);
            }
            else
            {
                auto const mine = future;
                heard += IsReady(mine, patience) ? mine.get() : 0;
            }
        },
        [&] { ASSERT_EQ(heard, (threads - 1) * steps); });
}

TEST_F(StressRuntime, ExceptionsReachTheirOwnThreads)
{
    std::atomic<int> wrong = 0;
    Rounds([] {},
           [&](int thread) {
               for (int step = 0; step < steps; ++step)
               {
                   auto const text = std::to_string(thread * steps + step);
                   try
                   {
                       try
                       {
                           throw std::runtime_error(text);
                       }
                       catch (std::runtime_error const&)
                       {
                           std::this_thread::yield();
                           throw;
                       }
                   }
                   catch (std::exception const& error)
                   {
                       wrong += error.what() == text ? 0 : 1;
                   }
               }
           },
           [&] { ASSERT_EQ(wrong, 0); });
}
