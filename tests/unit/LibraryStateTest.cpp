// What becomes of the library's state when the process ends.
#include "pairing/LibraryState.h"
#include "tests/support/Endpoints.h"
#include "tests/support/Neighbourhood.h"

#include <gtest/gtest.h>

#include <windows.h>

#include <cstdlib>
#include <memory>
#include <utility>

using namespace test;
using testing::ExitedWithCode;

namespace
{
    constexpr int exited = 7;
    constexpr int destroyed = 9;

    // Ends the process with a registration in the state, whose removal would end it otherwise.
    [[noreturn]] void Exit(bool keepsState)
    {
        Load(patient);
        auto const& watcher = *new Watcher; // outlives the state
        std::shared_ptr<void> removal(nullptr, [](void*) { TerminateProcess(GetCurrentProcess(), destroyed); });
        vorlink::Library().enumerationAdded =
            watcher.Sender().Added(winrt::auto_revoke, [removal = std::move(removal)](auto&&...) {});
        if (keepsState)
        {
            vorlink::KeepLibraryState();
        }
        std::exit(exited);
    }
} // namespace

TEST(LibraryState, IsDestroyedWithItsRegistrations)
{
    EXPECT_EXIT(Exit(false), ExitedWithCode(destroyed), "");
}

TEST(LibraryState, IsLeftAloneOnceItIsToBeKept)
{
    EXPECT_EXIT(Exit(true), ExitedWithCode(exited), "");
}
