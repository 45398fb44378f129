// Faults by name, each as the library's host meets it.
#include "tests/library/FailFast.h"
#include "tests/library/PhoneSearch.h"
#include "tests/library/UnpairHost.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <chrono>
#include <functional>
#include <future>
#include <thread>

using namespace test;
using testing::ElementsAre;
using testing::IsEmpty;

namespace
{
    std::string Fault(std::string const& name)
    {
        return "fault = '" + name + "'\n";
    }

    std::string Ana(std::string const& fault, std::string const& rest = pairsAtOnce)
    {
        return Device("Ana", addressA, Fault(fault) + rest);
    }

    // Of the first pairing by this name.
    PairReport PairAna(Vorlink& vorlink)
    {
        auto const before = Host::Count();
        vorlink.PairedDevice("Ana", Host::Callback);
        EXPECT_TRUE(Host::WaitFor(before + 1));
        return Host::At(before);
    }

    void ExpectRefused(PairReport const& report, int line, std::string const& status)
    {
        EXPECT_EQ(report.paired, 0);
        EXPECT_EQ(report.address, 0xa4c13800000au);
        EXPECT_TRUE(WaitUntil([&] { // the record is behind the report
            auto const records = LogOf(ceremony);
            return std::ranges::find(records, Record(line, ceremony, "DevicePairingResultStatus::" + status)) !=
                   records.end();
        })) << status;
    }

    // Its end, of which the process need not hear.
    std::future<void> InBackground(std::function<void(Vorlink&)> call)
    {
        std::packaged_task<void()> task([call = std::move(call)] { call(*MakeVorlink().release()); });
        auto end = task.get_future();
        (void)new std::thread(std::move(task)); // not detached: the runtime may lose a thread that begins meanwhile
        return end;
    }
} // namespace

TEST(FaultStory, SilentAfterEnumeration)
{
    Load(Fault("silent-after-enumeration") + prompt + generous + Device("Ana", addressA, "appears-ms = 'never'"));
    auto const vorlink = MakeVorlink();
    ExpectNothingFound(PairAna(*vorlink), "Ana");
    ASSERT_TRUE(SimulateDeviceAppears(idA.c_str()));
    ASSERT_TRUE(WaitIdle());
    ASSERT_TRUE(SimulateDeviceLeaves(idA.c_str()));
    ExpectNothingFound(PairAna(*vorlink), "Ana"); // or the first search had left it to this one
}

TEST(FaultStory, EndlessEnumeration)
{
    Load(Fault("endless-enumeration"));
    auto const end = InBackground([](Vorlink& vorlink) { vorlink.PairedDevice("Nobody", Host::Callback); });
    EXPECT_FALSE(IsReady(end, 2 * moment));
    EXPECT_EQ(Host::Count(), 0u);
    SimulateEnumerationCompletes();
    ASSERT_TRUE(IsReady(end, patience));
    ExpectNothingFound(Host::At(0), "Nobody");
}

TEST(FaultStory, LateEvent)
{
    Load(Fault("late-event") + patient + Device("Ana", addressA, "appears-ms = 'never'"));
    auto const vorlink = MakeVorlink();
    EXPECT_TRUE(vorlink->StartIosWatcher(Phones::Callback));
    auto const begin = std::chrono::steady_clock::now();
    ASSERT_TRUE(SimulateDeviceAppears(idA.c_str()));
    ASSERT_TRUE(WaitForCall("! DeviceWatcher.Added(#1, " + idA));
    EXPECT_FALSE(vorlink->StartIosWatcher(OtherPhones::Callback)) << "stopped";
    ASSERT_TRUE(OtherPhones::WaitFor(1));
    EXPECT_GE(std::chrono::steady_clock::now() - begin, std::chrono::milliseconds(200));
    EXPECT_THAT(Phones::Names(), IsEmpty());
}

TEST(FaultStory, RadioOffWhileAWatcherRuns)
{
    Load(Fault("radio-off"));
    auto const end = InBackground([](Vorlink& vorlink) { vorlink.PairedDevice("Nobody", Host::Callback); });
    EXPECT_FALSE(IsReady(end, 3 * moment)) << "an aborted search has no end";
    EXPECT_EQ(Host::Count(), 0u);
}

TEST(FaultStory, RadioOffWhileADevicePairs)
{
    Load(prompt + Ana("radio-off"));
    auto const vorlink = MakeLoggingVorlink();
    ExpectRefused(PairAna(*vorlink), 890, "Failed");
}

TEST(FaultStory, NoAdapter)
{
    Load(Fault("no-adapter") + prompt + Device("Ana", addressA));
    ExpectNothingFound(PairAna(*MakeVorlink()), "Ana");
}

TEST(FaultStory, LateName)
{
    Load(prompt + Ana("late-name"));
    ExpectNothingFound(PairAna(*MakeVorlink()), "Ana");
}

TEST(FaultStory, LateNameOfAPhone)
{
    Load(patient + Ana("late-name"));
    auto const vorlink = MakeVorlink();
    EXPECT_TRUE(vorlink->StartIosWatcher(Phones::Callback));
    ASSERT_TRUE(WaitForCall("! DeviceWatcher.Updated(#1, " + idA));
    ASSERT_TRUE(WaitIdle());
    EXPECT_THAT(Phones::Names(), IsEmpty());
    vorlink->IosPairedDevicce("Ana", Host::Callback);
    ASSERT_TRUE(Host::WaitFor(1));
    EXPECT_EQ(Host::At(0).paired, 1) << "it is kept, and has its name now";
}

TEST(FaultStory, SeenTwice)
{
    auto const vorlink = Watching(Ana("seen-twice"));
    ASSERT_TRUE(Phones::WaitFor(2));
    ASSERT_TRUE(WaitIdle());
    EXPECT_THAT(Kept(*vorlink), ElementsAre("Ana", "Ana"));
}

TEST(FaultStory, TwoProtocols)
{
    Load(prompt + Ana("two-protocols"));
    EXPECT_EQ(PairAna(*MakeVorlink()).paired, 1);
    EXPECT_THAT(PairingsBegun(), ElementsAre(testing::HasSubstr("(" + idA + ",")));
    EXPECT_TRUE(SimulateDeviceLeaves(LeId(addressA).c_str())) << "there is another, which stays as it was";
}

TEST(FaultStory, SharedName)
{
    auto const vorlink = Watching(Ana("shared-name"));
    ASSERT_TRUE(Phones::WaitFor(2));
    ASSERT_TRUE(WaitIdle());
    EXPECT_THAT(Kept(*vorlink), ElementsAre("Ana", "Ana"));
    vorlink->IosPairedDevicce("Ana", Host::Callback);
    ASSERT_TRUE(Host::WaitFor(1));
    EXPECT_EQ(Host::At(0).address, 0xa4c13800000au) << "the first one";
}

TEST(FaultStory, LongerName)
{
    Load(prompt + Device("Living Room TV", addressA, Fault("longer-name")));
    MakeVorlink()->PairedDevice("Living Room TV", Host::Callback);
    ASSERT_TRUE(Host::WaitFor(1));
    EXPECT_EQ(Host::At(0).paired, 1);
    EXPECT_EQ(Host::At(0).address, 0xa4c13800000bu) << "not the one that was meant";
}

TEST(FaultStory, AlreadyPaired)
{
    Load(prompt + Ana("already-paired"));
    auto const vorlink = MakeLoggingVorlink();
    ExpectRefused(PairAna(*vorlink), 825, "AlreadyPaired");
}

TEST(FaultStory, LostBond)
{
    Load(prompt + Ana("lost-bond"));
    auto const vorlink = MakeLoggingVorlink();
    ExpectRefused(PairAna(*vorlink), 825, "AlreadyPaired");
    vorlink->UnpairedCurrent("Ana", UnpairHost::Callback);
    ASSERT_TRUE(UnpairHost::WaitFor(1));
    EXPECT_TRUE(UnpairHost::At(0).success);
    EXPECT_EQ(PairAna(*vorlink).paired, 1);
}

TEST(FaultStory, SlowPairing)
{
    Load(prompt + Ana("slow-pairing", ""));
    auto const vorlink = MakeVorlink();
    vorlink->PairedDevice("Ana", Host::Callback);
    EXPECT_FALSE(WaitUntil([] { return Host::Count() > 0; }, moment));
    ASSERT_TRUE(SimulatePairingCompletes(idA.c_str(), 0)) << SimulatorLastError();
    ASSERT_TRUE(Host::WaitFor(1));
    EXPECT_EQ(Host::At(0).paired, 1);
}

TEST(FaultStory, Impatient)
{
    auto const vorlink = Watching(Ana("impatient"));
    SimulatorHoldEvents();
    vorlink->IosPairedDevicce("Ana", Host::Callback);
    ASSERT_TRUE(Host::WaitFor(1)) << "the library has not been asked yet";
    SimulatorReleaseEvents();
    ExpectRefused(Host::At(0), 864, "AuthenticationTimeout");
}

TEST(FaultStory, SystemPrompt)
{
    Load(prompt + Ana("system-prompt"));
    auto const vorlink = MakeVorlink();
    vorlink->PairedDevice("Ana", Host::Callback);
    ASSERT_TRUE(WaitForCall("DevicePairingResult.get_Status(" + idA + ") -> OperationAlreadyInProgress"));
    EXPECT_FALSE(WaitUntil([] { return Host::Count() > 0; }, moment));
    vorlink->UnpairedCurrent("Ana", UnpairHost::Callback);
    ASSERT_TRUE(UnpairHost::WaitFor(1));
    EXPECT_FALSE(UnpairHost::At(0).success);
}

TEST(FaultStory, OperationError)
{
    ExpectFailFast(E_FAIL, [] {
        Load(prompt + Ana("operation-error"));
        MakeVorlink()->PairedDevice("Ana", MustNotReport);
    });
}

TEST(FaultStory, UnpairingRefused)
{
    Load(prompt + Ana("unpairing-refused"));
    auto const vorlink = MakeLoggingVorlink();
    vorlink->UnpairedCurrent("Ana", UnpairHost::Callback);
    ASSERT_TRUE(UnpairHost::WaitFor(1));
    EXPECT_FALSE(UnpairHost::At(0).success);
    EXPECT_THAT(LogOf(classicUnpairing), ElementsAre(Record(1145, classicUnpairing, "Entery unpaired  name-> Ana")));
    ExpectRefused(PairAna(*vorlink), 825, "AlreadyPaired");
}

TEST(FaultStory, StalePairing)
{
    Load(prompt + Ana("stale-pairing"));
    auto const vorlink = MakeLoggingVorlink();
    vorlink->UnpairedCurrent("Ana", UnpairHost::Callback);
    ASSERT_TRUE(UnpairHost::WaitFor(1));
    EXPECT_TRUE(UnpairHost::At(0).success);
    ExpectRefused(PairAna(*vorlink), 825, "AlreadyPaired");
}
