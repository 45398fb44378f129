// Threads that meet inside the library, each pair brought together on purpose. Where the moment cannot be chosen see
// the Stress suites; two ends of the phone watcher one after the other are in PhoneWatcherTest.cpp and
// PhoneEndTest.cpp, pairings that overlap in PairByNamePendingTest.cpp.
#include "tests/library/EndThreads.h"
#include "tests/library/PhoneHost.h"
#include "tests/library/UnpairHost.h"
#include "tests/support/ReplacedMethod.h"
#include "tests/support/StandIns.h"

#include <winrt/Windows.Devices.Enumeration.h>

#include <chrono>
#include <future>
#include <thread>

using namespace test;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

namespace
{
    namespace enumeration = winrt::Windows::Devices::Enumeration;

    // Where the one who comes first stays until the test opens; whoever comes later passes.
    class Door
    {
    public:
        static void Pass()
        {
            if (!isTaken.exchange(true))
            {
                reached.set_value();
                EXPECT_TRUE(IsReady(opened.get_future(), patience)) << "the door stays shut";
            }
        }

        static bool IsReached()
        {
            return IsReady(reached.get_future(), patience);
        }

        static void Open()
        {
            opened.set_value();
        }

    private:
        static inline std::atomic<bool> isTaken = false;
        static inline std::promise<void> reached;
        static inline std::promise<void> opened;
    };

    // The slots of a watcher's methods in its interface.
    constexpr std::size_t startSlot = 17;
    constexpr std::size_t stopSlot = 18;

    using WatcherMethod = std::int32_t WINAPI(void* watcher);

    WatcherMethod* platformsOwn = nullptr;

    std::int32_t WINAPI PassTheDoorThenStop(void* watcher)
    {
        Door::Pass();
        return platformsOwn(watcher);
    }

    std::int32_t WINAPI StartThenPassTheDoor(void* watcher)
    {
        auto const result = platformsOwn(watcher);
        Door::Pass();
        return result;
    }

    // For the watchers of all, the library's among them.
    void ReplaceWatcherMethod(std::size_t slot, WatcherMethod* method)
    {
        auto const watcher = enumeration::DeviceInformation::CreateWatcher(
            L"", nullptr, enumeration::DeviceInformationKind::AssociationEndpoint);
        platformsOwn = ReplaceMethod(winrt::get_abi(watcher), slot, method);
        SimulatorClearTrace();
    }

    std::vector<std::string> Stops()
    {
        return Trace({"DeviceWatcher.Stop("});
    }

    bool StartOrStop(Vorlink& vorlink)
    {
        return vorlink.StartIosWatcher(Phones::Callback);
    }

    void HoldCompletion()
    {
        SimulatorHoldEvents();
        SimulateEnumerationCompletes();
        ASSERT_TRUE(WaitForCall("! DeviceWatcher.EnumerationCompleted("));
    }

    // A phone watcher that the host stops on a thread of its own, which is inside the platform's Stop.
    class RaceWithAStop : public testing::Test
    {
    protected:
        std::unique_ptr<Vorlink> vorlink;
        std::future<bool> stop;

        void SetUp() override
        {
            Load(patient + Device("Ana", addressA) + Device("Ben", addressB, "appears-ms = 'never'"));
            ReplaceWatcherMethod(stopSlot, PassTheDoorThenStop);
            EndThreads::Hold();
            LibraryThreads::Watch();
            vorlink = MakeVorlink();
            ASSERT_TRUE(StartOrStop(*vorlink));
            ASSERT_TRUE(WaitIdle());
            SimulatorClearTrace();
        }

        void BeginStop()
        {
            stop = std::async(std::launch::async, [this] { return StartOrStop(*vorlink); });
            ASSERT_TRUE(Door::IsReached());
        }

        void TearDown() override
        {
            EXPECT_FALSE(StartOrStop(*vorlink)) << "another is at it";
            EXPECT_THAT(Stops(), IsEmpty());
            Door::Open();
            EXPECT_FALSE(stop.get());
            EXPECT_THAT(Stops(), SizeIs(1));
            EXPECT_TRUE(StartOrStop(*vorlink)) << "it is idle again";
            EXPECT_FALSE(StartOrStop(*vorlink));
            EXPECT_TRUE(EndThreads::LetAllGo());
        }
    };

    using RaceWithAStart = testing::Test;

    // A host that is inside the platform's Start, of a watcher that runs already.
    std::future<bool> BeginStart(Vorlink& vorlink, std::string const& scenario)
    {
        Load(scenario);
        ReplaceWatcherMethod(startSlot, StartThenPassTheDoor);
        auto start = std::async(std::launch::async, [&] { return StartOrStop(vorlink); });
        EXPECT_TRUE(Door::IsReached());
        return start;
    }

    void PassTheDoorThenReport(PairReport report)
    {
        Door::Pass();
        Host::Callback(report);
    }

    std::unique_ptr<Vorlink> WithTwoCeremonies(PairResultCallback callback)
    {
        Load(prompt + Device("First", firstAddress, pairsOnDemand) + Device("Second", secondAddress, pairsOnDemand));
        auto vorlink = MakeVorlink();
        vorlink->PairedDevice("First", callback);
        vorlink->PairedDevice("Second", callback);
        EXPECT_TRUE(WaitForCall("Accept(", 2));
        return vorlink;
    }

    void CompletePairing(char const* address, std::int32_t status)
    {
        ASSERT_TRUE(SimulatePairingCompletes(ClassicId(address).c_str(), status)) << SimulatorLastError();
    }

    constexpr std::int32_t paired = 0;
    constexpr std::int32_t failed = 19;

    // "Tag", whose LE side the platform is at.
    std::unique_ptr<Vorlink> UnpairingTheLeSide(std::string const& others)
    {
        auto vorlink = UnpairTag(TagUnpairing("le", 0, "'never'") + others);
        EXPECT_TRUE(WaitForCall("UnpairAsync(" + LeId(tagAddress)));
        return vorlink;
    }
} // namespace

TEST_F(RaceWithAStop, ACompletionLeavesItToTheStop)
{
    HoldCompletion();
    BeginStop();
    SimulatorReleaseEvents();
    EXPECT_TRUE(WaitIdle()) << "the completion waits for the stop";
}

TEST_F(RaceWithAStop, TheThreadsEndLeavesItToTheStop)
{
    ASSERT_TRUE(EndThreads::WaitForOne());
    BeginStop();
    EXPECT_TRUE(EndThreads::LetAllGo()) << "the thread waits for the stop";
}

TEST_F(RaceWithAStop, AnArrivalIsReportedAndKept)
{
    SimulatorHoldEvents();
    ASSERT_TRUE(SimulateDeviceAppears(idB.c_str())) << SimulatorLastError();
    ASSERT_TRUE(WaitForCall("! DeviceWatcher.Added(", 1));
    BeginStop();
    SimulatorReleaseEvents();
    ASSERT_TRUE(Phones::WaitFor(2));
    ASSERT_TRUE(WaitIdle());
    vorlink->SetLogEnabled(true);
    EXPECT_THAT(Kept(*vorlink), ElementsAre("Ana", "Ben"));
}

TEST_F(RaceWithAStart, ACompletionEndsTheWatcherBehindTheStartersBack)
{
    auto const vorlink = MakeVorlink();
    auto start = BeginStart(*vorlink, prompt);
    ASSERT_TRUE(WaitForCall("DeviceWatcher.Stop("));
    ASSERT_TRUE(WaitIdle());
    Door::Open();
    EXPECT_TRUE(start.get());
    EXPECT_THAT(Stops(), SizeIs(1));
    EXPECT_TRUE(StartOrStop(*vorlink)) << "it is idle again";
}

TEST_F(RaceWithAStart, AStopIsDoneByTheStart)
{
    auto const vorlink = MakeVorlink();
    auto start = BeginStart(*vorlink, patient);
    EXPECT_FALSE(StartOrStop(*vorlink));
    EXPECT_THAT(Stops(), IsEmpty());
    Door::Open();
    EXPECT_TRUE(start.get());
    EXPECT_THAT(Stops(), SizeIs(1));
    EXPECT_TRUE(StartOrStop(*vorlink)) << "it is idle again";
}

TEST(LateEvent, ChangeInFlightWhenTheWatcherStopsIsStillTaken)
{
    auto const vorlink = Watching(twoPhones);
    SimulatorHoldEvents();
    ASSERT_TRUE(SimulateDeviceChanges(idA.c_str(), "System.ItemNameDisplay", "\"Anna\""));
    ASSERT_TRUE(WaitForCall("! DeviceWatcher.Updated(#1"));
    EXPECT_FALSE(StartOrStop(*vorlink));
    SimulatorReleaseEvents();
    ASSERT_TRUE(WaitIdle());
    EXPECT_THAT(Kept(*vorlink), ElementsAre("Anna", "Ben"));
}

TEST(LateEvent, CompletionInFlightWhenTheWatcherStopsStopsNothingMore)
{
    auto const vorlink = Watching("");
    HoldCompletion();
    EXPECT_FALSE(StartOrStop(*vorlink));
    SimulatorReleaseEvents();
    ASSERT_TRUE(WaitIdle());
    EXPECT_THAT(Stops(), ElementsAre("DeviceWatcher.Stop(#1)"));
    EXPECT_TRUE(StartOrStop(*vorlink));
}

TEST(LateEvent, ArrivalInFlightOfAnEarlierRunIsFoundByTheNext)
{
    Load(patient + generous + Device("Late", addressA, "appears-ms = 'never'\n" + std::string(pairsAtOnce)));
    auto const vorlink = MakeVorlink();
    std::thread first([&] { vorlink->PairedDevice("Nobody", Host::Callback); });
    EXPECT_TRUE(WaitForCall("DeviceWatcher.Start(#1)"));
    SimulateEnumerationCompletes();
    first.join();
    HoldArrival(idA);
    ASSERT_TRUE(SimulateDeviceLeaves(idA.c_str())) << "the next run's watcher is not to see it";
    std::thread next([&] { vorlink->PairedDevice("Late", Host::Callback); });
    EXPECT_TRUE(WaitForCall("DeviceWatcher.Start(#2)"));
    SimulatorReleaseEvents();
    next.join();
    EXPECT_THAT(Trace({"! DeviceWatcher.Added"}), ElementsAre("! DeviceWatcher.Added(#1, " + idA + ")"));
    ASSERT_TRUE(Host::WaitFor(2));
    EXPECT_EQ(Host::At(1).address, 0xa4c13800000au);
}

TEST(TwoCeremonies, TheLaterOneMayEndFirst)
{
    auto const vorlink = WithTwoCeremonies(Host::Callback);
    CompletePairing(secondAddress, failed);
    ASSERT_TRUE(Host::WaitFor(1));
    CompletePairing(firstAddress, paired);
    ASSERT_TRUE(Host::WaitFor(2));
    EXPECT_EQ(Host::At(0).address, 2u);
    EXPECT_EQ(Host::At(0).paired, 0);
    EXPECT_EQ(Host::At(1).address, 1u);
    EXPECT_EQ(Host::At(1).paired, 1);
    EXPECT_EQ(Text(Host::At(1).name), "Second") << "the latest call's";
}

TEST(TwoCeremonies, TheReportOfTheOneDoesNotWaitForTheOthers)
{
    auto const vorlink = WithTwoCeremonies(PassTheDoorThenReport);
    CompletePairing(firstAddress, paired);
    ASSERT_TRUE(Door::IsReached());
    CompletePairing(secondAddress, failed);
    ASSERT_TRUE(Host::WaitFor(1)) << "the first one's callback has not returned";
    EXPECT_EQ(Host::At(0).address, 2u);
    Door::Open();
    ASSERT_TRUE(Host::WaitFor(2));
    EXPECT_EQ(Host::At(1).address, 1u);
    EXPECT_TRUE(WaitIdle());
}

// The enumeration of the later search never completes.
TEST(SlowTimer, OfAnUnpairingEndsTheSearchOfALaterPairing)
{
    Load(PairedTag("'classic'", "", patient));
    auto const vorlink = MakeVorlink();
    auto const begin = std::chrono::steady_clock::now();
    vorlink->UnpairedCurrent("Tag", UnpairHost::Callback);
    ASSERT_EQ(UnpairHost::Count(), 1u);
    std::this_thread::sleep_for(std::chrono::seconds(2)); // so that no timer of the search's own can be meant
    auto const search = std::chrono::steady_clock::now();
    vorlink->PairedDevice("Nobody", Host::Callback);
    auto const end = std::chrono::steady_clock::now();
    EXPECT_GE(end - begin, std::chrono::seconds(3));
    EXPECT_LT(end - search, std::chrono::seconds(3));
    ASSERT_EQ(Host::Count(), 1u);
    EXPECT_EQ(Host::At(0).address, 0u);
}

TEST(LeSide, PendingLetsTheHostDoAllThatIsNoPairing)
{
    auto const vorlink = UnpairingTheLeSide(Device("Ana", addressA));
    vorlink->SetLogEnabled(false);
    vorlink->SetLogEnabled(true);
    EXPECT_TRUE(vorlink->Uninitialize());
    vorlink->Initialize();
    ReplaceImport(LibraryModule(), "CreateThread", PretendThread); // the process may end before one begins
    EXPECT_TRUE(StartOrStop(*vorlink));
    ASSERT_TRUE(Phones::WaitFor(1));
    EXPECT_EQ(UnpairHost::Count(), 0u);
    ASSERT_TRUE(SimulateUnpairingCompletes(LeId(tagAddress).c_str(), 0)) << SimulatorLastError();
    ASSERT_TRUE(UnpairHost::WaitFor(1));
    EXPECT_TRUE(UnpairHost::At(0).success);
}

TEST(LeSide, ThatMetAnErrorLetsTheHostPair)
{
    auto const vorlink = UnpairingTheLeSide(Device("Ana", addressA, pairsAtOnce));
    ASSERT_TRUE(SimulateUnpairingFails(LeId(tagAddress).c_str(), platformCode)) << SimulatorLastError();
    EXPECT_TRUE(WaitForRecords(leUnpairing, 2));
    vorlink->PairedDevice("Ana", Host::Callback);
    ASSERT_EQ(Host::Count(), 1u);
    EXPECT_EQ(Host::At(0).paired, 1);
    EXPECT_EQ(UnpairHost::Count(), 0u);
}

TEST(LeSide, IsNotKnownAnyMoreWhenTheHostHasUninitialized)
{
    auto const vorlink = UnpairTag(TagUnpairing("classic", 0, "'never'"));
    EXPECT_TRUE(vorlink->Uninitialize());
    ASSERT_TRUE(SimulateUnpairingCompletes(ClassicId(tagAddress).c_str(), 0)) << SimulatorLastError();
    ASSERT_TRUE(UnpairHost::WaitFor(1));
    EXPECT_TRUE(UnpairHost::At(0).success);
    EXPECT_THAT(Trace({"DeviceInformation.CreateWatcher"}), SizeIs(1)) << "no search for an LE endpoint";
}
