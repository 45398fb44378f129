// Registrations that end by themselves.
#include "pairing/Enumeration.h"
#include "tests/support/Endpoints.h"
#include "tests/support/Neighbourhood.h"
#include "tests/support/Trace.h"

#include <gmock/gmock.h>

using namespace test;
using testing::IsEmpty;
using testing::SizeIs;

TEST(WinrtRevoker, HoldsItsSourceWeakly)
{
    Load(patient);
    enumeration::DeviceWatcher::Added_revoker revoker;
    auto const before = SimulatorLiveObjects();
    {
        Watcher watcher;
        revoker = watcher.Sender().Added(winrt::auto_revoke, [](auto&&, auto&&) {});
        EXPECT_TRUE(revoker);
    }
    EXPECT_TRUE(WaitIdle());
    EXPECT_LE(SimulatorLiveObjects(), before + 1) << "at most the weak reference is left";
    SimulatorClearTrace();
    revoker.revoke();
    EXPECT_THAT(Trace({"DeviceWatcher.remove_"}), IsEmpty());
    EXPECT_FALSE(revoker);
}

TEST(WinrtRevoker, RevokesOnceWhenToldAndNotAgainAtItsEnd)
{
    Load(patient);
    Watcher watcher;
    SimulatorClearTrace();
    {
        auto revoker = watcher.Sender().Added(winrt::auto_revoke, [](auto&&, auto&&) {});
        revoker.revoke();
        EXPECT_THAT(Trace({"DeviceWatcher.remove_Added"}), SizeIs(1));
    }
    EXPECT_THAT(Trace({"DeviceWatcher.remove_Added"}), SizeIs(1));
}

TEST(WinrtRevoker, NewRegistrationInTheSlotRevokesTheOldOne)
{
    Load(patient);
    Watcher watcher;
    SimulatorClearTrace();
    auto revoker = watcher.Sender().Added(winrt::auto_revoke, [](auto&&, auto&&) {});
    revoker = watcher.Sender().Added(winrt::auto_revoke, [](auto&&, auto&&) {});
    EXPECT_THAT(Trace({"DeviceWatcher.remove_Added"}), SizeIs(1));
    EXPECT_TRUE(revoker);
}
