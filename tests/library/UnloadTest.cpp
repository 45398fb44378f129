// A host that unloads the library while something is under way: what a thread of the library's own still keeps loaded
// goes on. For the reader behind a pairing see SlowReaderTest.cpp, for a phone watcher to its end PhoneEndTest.cpp, for
// what is held when no thread is there BoundaryTest.cpp.
#include "tests/library/EndThreads.h"
#include "tests/library/PhoneHost.h"
#include "tests/library/UnpairHost.h"
#include "tests/support/LiveObjects.h"

using namespace test;
using testing::SizeIs;

namespace
{
    bool IsLoaded()
    {
        return GetModuleHandleW(L"vorlink.dll") != nullptr;
    }

    void Unload()
    {
        ASSERT_TRUE(FreeLibrary(LibraryModule()));
        ASSERT_TRUE(IsLoaded()) << "a thread of its own is under way";
    }

    bool IsUnloadedSoon()
    {
        return WaitUntil([] { return !IsLoaded(); });
    }

    void UnloadThenHear(wchar_t const* name, std::uint32_t length)
    {
        Unload();
        Phones::Callback(name, length);
    }

    // Its end is held, so the library stays until the test lets go.
    class UnloadBesideAWatcher : public testing::Test
    {
    protected:
        static void Watch(std::string const& devices, IosDeviceCallback callback = Phones::Callback)
        {
            Load(patient + devices);
            EndThreads::Hold();
            LibraryThreads::Watch();
            EXPECT_TRUE(MakeVorlink()->StartIosWatcher(callback));
            EXPECT_TRUE(WaitIdle());
            EXPECT_TRUE(EndThreads::WaitForOne());
        }

        void TearDown() override
        {
            ASSERT_TRUE(WaitIdle());
            EXPECT_TRUE(IsLoaded());
            EXPECT_TRUE(EndThreads::LetAllGo());
            EXPECT_TRUE(IsUnloadedSoon());
            EXPECT_THAT(Trace({"DeviceWatcher.Stop("}), SizeIs(1));
            EXPECT_TRUE(LiveObjectsFallTo(0));
        }
    };
} // namespace

TEST_F(UnloadBesideAWatcher, AnArrivalInFlightIsReported)
{
    Watch(Device("Ana", addressA, "appears-ms = 'never'"));
    HoldArrival(idA);
    Unload();
    SimulatorReleaseEvents();
    EXPECT_TRUE(Phones::WaitFor(1));
}

TEST_F(UnloadBesideAWatcher, ACompletionInFlightEndsIt)
{
    Watch("");
    SimulatorHoldEvents();
    SimulateEnumerationCompletes();
    ASSERT_TRUE(WaitForCall("! DeviceWatcher.EnumerationCompleted("));
    Unload();
    SimulatorReleaseEvents();
    EXPECT_TRUE(WaitForCall("DeviceWatcher.Stop("));
}

TEST_F(UnloadBesideAWatcher, TheCallbackThatUnloadsReturns)
{
    Watch(Device("Ana", addressA, "appears-ms = 'never'"), UnloadThenHear);
    ASSERT_TRUE(SimulateDeviceAppears(idA.c_str())) << SimulatorLastError();
    EXPECT_TRUE(Phones::WaitFor(1));
}

TEST_F(UnloadBesideAWatcher, TwoPendingPairingsAreReported)
{
    Watch(Device("Ana", addressA, pairsOnDemand) + Device("Ben", addressB, pairsOnDemand));
    MakeVorlink()->IosPairedDevicce("Ana", Host::Callback);
    MakeVorlink()->IosPairedDevicce("Ben", Host::Callback);
    ASSERT_TRUE(WaitForCall("Accept(", 2));
    Unload();
    constexpr int failed = 19;
    ASSERT_TRUE(SimulatePairingCompletes(idB.c_str(), failed)) << SimulatorLastError();
    ASSERT_TRUE(Host::WaitFor(1));
    ASSERT_TRUE(SimulatePairingCompletes(idA.c_str(), failed)) << SimulatorLastError();
    ASSERT_TRUE(Host::WaitFor(2));
    EXPECT_EQ(Text(Host::At(1).addressText), "a4c13800000a");
}

TEST(SlowUnload, BesideTheTimerOfAnUnpairingLetsTheClassicSideEnd)
{
    UnpairTag(TagUnpairing("classic", 0, "'never'"), "");
    Unload();
    ASSERT_TRUE(SimulateUnpairingCompletes(ClassicId(tagAddress).c_str(), 0)) << SimulatorLastError();
    ASSERT_TRUE(UnpairHost::WaitFor(1));
    EXPECT_TRUE(UnpairHost::At(0).success);
    EXPECT_TRUE(IsUnloadedSoon());
}

TEST(SlowUnload, BesideTheTimersOfAnUnpairingLetsTheLeSideEnd)
{
    auto const vorlink = UnpairTag(TagUnpairing("le", 0, "'never'"));
    EXPECT_TRUE(WaitForCall("UnpairAsync(" + LeId(tagAddress)));
    Unload();
    ASSERT_TRUE(SimulateUnpairingCompletes(LeId(tagAddress).c_str(), 0)) << SimulatorLastError();
    ASSERT_TRUE(UnpairHost::WaitFor(1));
    EXPECT_TRUE(UnpairHost::At(0).success);
    EXPECT_TRUE(IsUnloadedSoon());
}
