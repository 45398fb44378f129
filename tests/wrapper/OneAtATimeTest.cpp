// What lasts refuses others; what is forgotten, or closed, neither refuses nor calls back any more.
#include "tests/support/Trace.h"
#include "tests/wrapper/CHost.h"

#include <gmock/gmock.h>

#include <atomic>
#include <thread>

using namespace test;

namespace
{
    PairInbox pairs;
    PairInbox laterPairs;
    UnpairInbox unpairs;
    UnpairInbox laterUnpairs;

    constexpr std::int32_t inProgress = 15; // the platform's OperationAlreadyInProgress

    void ExpectBusy(vorlink_t* vorlink)
    {
        EXPECT_EQ(vorlink_pair(vorlink, "Tag", OnPaired, &laterPairs), VORLINK_BUSY);
        EXPECT_EQ(vorlink_pair_phone(vorlink, "Tag", OnPaired, &laterPairs), VORLINK_BUSY);
        EXPECT_EQ(vorlink_unpair(vorlink, "Tag", OnUnpaired, &laterUnpairs), VORLINK_BUSY);
        EXPECT_STREQ(vorlink_last_error(), vorlink_error_text(VORLINK_BUSY));
    }

    // The watcher has seen nobody, so the pairing ends inside the call.
    void ExpectFree(vorlink_t* vorlink)
    {
        PairInbox nobody;
        EXPECT_EQ(vorlink_pair_phone(vorlink, "Nobody", OnPaired, &nobody), VORLINK_OK) << vorlink_last_error();
        EXPECT_EQ(nobody.Count(), 1u);
    }

    vorlink_t* BeginPairing()
    {
        Load(prompt + slowTag);
        auto* const vorlink = Open();
        EXPECT_EQ(vorlink_pair(vorlink, "Tag", OnPaired, &pairs), VORLINK_OK) << vorlink_last_error();
        EXPECT_TRUE(WaitForCall("Accept("));
        return vorlink;
    }

    std::string PairedDevice(std::string const& name, char const* address)
    {
        return Device(name, address, "is-paired = true\n[device.unpairing]\nduration-ms = 'never'");
    }

    vorlink_t* BeginUnpairing()
    {
        Load(prompt + PairedDevice("First", firstAddress) + PairedDevice("Second", secondAddress));
        auto* const vorlink = Open();
        EXPECT_EQ(vorlink_unpair(vorlink, "First", OnUnpaired, &unpairs), VORLINK_OK) << vorlink_last_error();
        return vorlink;
    }

    void CompleteUnpairing(char const* address, std::int32_t status)
    {
        ASSERT_TRUE(SimulateUnpairingCompletes(ClassicId(address).c_str(), status)) << SimulatorLastError();
        ASSERT_TRUE(WaitIdle());
    }

    struct Forgetting
    {
        vorlink_t* vorlink;
        std::int32_t operation;
        std::atomic<std::int32_t> code = -1;
    };

    void VORLINK_C_CALL ForgetInside(void* context, vorlink_pair_report const*)
    {
        auto& forgetting = *static_cast<Forgetting*>(context);
        forgetting.code = vorlink_forget(forgetting.vorlink, forgetting.operation);
    }

    struct Searching
    {
        vorlink_t* vorlink;
        std::thread thread;
    };

    void VORLINK_C_CALL SearchElsewhere(void* context, vorlink_pair_report const*)
    {
        auto& searching = *static_cast<Searching*>(context);
        searching.thread =
            std::thread([&] { EXPECT_EQ(vorlink_pair(searching.vorlink, "Tag", OnPaired, &pairs), VORLINK_OK); });
        EXPECT_TRUE(WaitForCall("DeviceWatcher.Start("));
    }

    void VORLINK_C_CALL CloseInside(void* context, vorlink_pair_report const*)
    {
        auto& forgetting = *static_cast<Forgetting*>(context);
        forgetting.code = vorlink_close(forgetting.vorlink);
    }
} // namespace

TEST(OneAtATime, APairingRefusesOthersUntilItsReport)
{
    auto* const vorlink = BeginPairing();
    ExpectBusy(vorlink);
    ExpectBusy(Open());
    CompletePairing(1);
    ASSERT_TRUE(pairs.WaitFor(1));
    ExpectFree(vorlink);
    EXPECT_EQ(pairs.Count(), 1u);
    EXPECT_EQ(laterPairs.Count() + laterUnpairs.Count(), 0u);
}

TEST(OneAtATime, AnUnpairingRefusesOthersUntilItsReport)
{
    auto* const vorlink = BeginUnpairing();
    ExpectBusy(vorlink);
    ExpectBusy(Open());
    CompleteUnpairing(firstAddress, 0);
    ASSERT_TRUE(unpairs.WaitFor(1));
    EXPECT_EQ(unpairs.At(0), 1);
    ExpectFree(vorlink);
}

TEST(OneAtATime, AFailedUnpairingReportsZero)
{
    BeginUnpairing();
    CompleteUnpairing(firstAddress, 4);
    ASSERT_TRUE(unpairs.WaitFor(1));
    EXPECT_EQ(unpairs.At(0), 0);
}

TEST(OneAtATime, ASearchRefusesOthers)
{
    Load(patient);
    auto* const vorlink = Open();
    std::thread search([&] { EXPECT_EQ(vorlink_pair(vorlink, "Tag", OnPaired, &pairs), VORLINK_OK); });
    EXPECT_TRUE(WaitForCall("DeviceWatcher.Start("));
    ExpectBusy(vorlink);
    SimulateEnumerationCompletes();
    search.join();
    EXPECT_EQ(pairs.Count(), 1u);
}

TEST(Forget, DropsTheLateReportOfAPairing)
{
    auto* const vorlink = BeginPairing();
    EXPECT_EQ(vorlink_forget(vorlink, VORLINK_PAIRING), VORLINK_OK);
    ExpectFree(vorlink);
    CompletePairing(1);
    EXPECT_EQ(pairs.Count(), 0u);
}

TEST(Forget, LetsAPairingEndThatNeverReports)
{
    auto* const vorlink = BeginPairing();
    CompletePairing(inProgress);
    EXPECT_EQ(pairs.Count(), 0u);
    ExpectBusy(vorlink);
    EXPECT_EQ(vorlink_forget(vorlink, VORLINK_PAIRING), VORLINK_OK);
    ExpectFree(vorlink);
}

TEST(Forget, LetsAnUnpairingEndThatNeverReports)
{
    Load(prompt);
    auto* const vorlink = Open();
    ASSERT_EQ(vorlink_unpair(vorlink, "Nobody", OnUnpaired, &unpairs), VORLINK_OK);
    ExpectBusy(vorlink);
    EXPECT_EQ(vorlink_forget(vorlink, VORLINK_PAIRING), VORLINK_OK);
    ExpectFree(vorlink);
    EXPECT_EQ(unpairs.Count(), 0u);
}

TEST(Forget, LeavesWhatAnotherHandleHasBegun)
{
    auto* const vorlink = BeginPairing();
    auto* const other = Open();
    EXPECT_EQ(vorlink_forget(other, VORLINK_PAIRING), VORLINK_OK);
    EXPECT_EQ(vorlink_forget(vorlink, VORLINK_PHONE_WATCHER), VORLINK_OK) << "another kind";
    EXPECT_EQ(vorlink_close(other), VORLINK_OK);
    ExpectBusy(vorlink);
    CompletePairing(1);
    EXPECT_TRUE(pairs.WaitFor(1));
}

TEST(Forget, WaitsForNoSearchButKeepsOthersOutOfIt)
{
    Load(patient);
    auto* const vorlink = Open();
    std::thread search([&] { EXPECT_EQ(vorlink_pair(vorlink, "Tag", OnPaired, &pairs), VORLINK_OK); });
    EXPECT_TRUE(WaitForCall("DeviceWatcher.Start("));
    EXPECT_EQ(vorlink_forget(vorlink, VORLINK_PAIRING), VORLINK_STILL_RUNNING);
    ExpectBusy(vorlink);
    SimulateEnumerationCompletes();
    search.join();
    EXPECT_EQ(pairs.Count(), 0u);
    EXPECT_EQ(vorlink_forget(vorlink, VORLINK_PAIRING), VORLINK_OK);
    ExpectFree(vorlink);
}

TEST(Forget, EndsWithTheSearchAlsoWhenADeviceIsFound)
{
    Load(patient + Device("Tag", tagAddress, std::string("appears-ms = 'never'\n") + pairsOnDemand));
    auto* const vorlink = Open();
    std::thread search([&] { EXPECT_EQ(vorlink_pair(vorlink, "Tag", OnPaired, &pairs), VORLINK_OK); });
    EXPECT_TRUE(WaitForCall("DeviceWatcher.Start("));
    EXPECT_EQ(vorlink_forget(vorlink, VORLINK_PAIRING), VORLINK_STILL_RUNNING);
    EXPECT_TRUE(SimulateDeviceAppears(tagId.c_str()));
    search.join();
    ExpectFree(vorlink);
    EXPECT_TRUE(WaitForCall("Accept("));
    CompletePairing(1);
    EXPECT_EQ(pairs.Count(), 0u);
}

// The call in whose callback the search has begun returns, which is not the search's end.
TEST(Forget, KnowsASearchFromTheCallThatItBeganIn)
{
    Load(patient);
    Searching searching = {Open(), {}};
    ASSERT_EQ(vorlink_pair_phone(searching.vorlink, "Nobody", SearchElsewhere, &searching), VORLINK_OK);
    EXPECT_EQ(vorlink_forget(searching.vorlink, VORLINK_PAIRING), VORLINK_STILL_RUNNING);
    ExpectBusy(searching.vorlink);
    SimulateEnumerationCompletes();
    searching.thread.join();
    EXPECT_EQ(pairs.Count(), 0u);
}

TEST(Forget, TellsALateUnpairingFromANewerOne)
{
    auto* const vorlink = BeginUnpairing();
    ASSERT_EQ(vorlink_forget(vorlink, VORLINK_PAIRING), VORLINK_OK);
    ASSERT_EQ(vorlink_unpair(vorlink, "Second", OnUnpaired, &laterUnpairs), VORLINK_OK);
    CompleteUnpairing(firstAddress, 0);
    EXPECT_EQ(unpairs.Count() + laterUnpairs.Count(), 0u);
    CompleteUnpairing(secondAddress, 4);
    ASSERT_TRUE(laterUnpairs.WaitFor(1));
    EXPECT_EQ(laterUnpairs.At(0), 0);
    EXPECT_EQ(unpairs.Count(), 0u);
}

TEST(Forget, TellsALatePairingFromAnUnpairing)
{
    Load(prompt + PairedDevice("First", firstAddress) + slowTag);
    auto* const vorlink = Open();
    ASSERT_EQ(vorlink_pair(vorlink, "Tag", OnPaired, &pairs), VORLINK_OK);
    ASSERT_EQ(vorlink_forget(vorlink, VORLINK_PAIRING), VORLINK_OK);
    ASSERT_EQ(vorlink_unpair(vorlink, "First", OnUnpaired, &unpairs), VORLINK_OK);
    CompletePairing(1);
    EXPECT_EQ(pairs.Count() + unpairs.Count(), 0u);
    CompleteUnpairing(firstAddress, 0);
    EXPECT_TRUE(unpairs.WaitFor(1));
}

// The library knows the latest callback alone.
TEST(Forget, ALatePairingIsTakenForTheNewerOneAndItsAddressTells)
{
    Load(prompt + slowTag + Device("Second", secondAddress, pairsOnDemand));
    auto* const vorlink = Open();
    ASSERT_EQ(vorlink_pair(vorlink, "Tag", OnPaired, &pairs), VORLINK_OK);
    ASSERT_EQ(vorlink_forget(vorlink, VORLINK_PAIRING), VORLINK_OK);
    ASSERT_EQ(vorlink_pair(vorlink, "Second", OnPaired, &laterPairs), VORLINK_OK);
    CompletePairing(1);
    ASSERT_TRUE(laterPairs.WaitFor(1));
    EXPECT_EQ(laterPairs.At(0).address, 0xC1D2E3F4A5B6u);
    EXPECT_STREQ(laterPairs.At(0).name, "Second");
    EXPECT_EQ(pairs.Count(), 0u);
    ASSERT_TRUE(SimulatePairingCompletes(ClassicId(secondAddress).c_str(), 1)) << SimulatorLastError();
    ASSERT_TRUE(WaitIdle());
    EXPECT_EQ(laterPairs.Count(), 1u) << "dropped";
}

TEST(Forget, SaysInsideTheCallbackThatItRuns)
{
    Load(prompt);
    auto* const vorlink = Open();
    Forgetting forgetting = {vorlink, VORLINK_PAIRING};
    ASSERT_EQ(vorlink_pair(vorlink, "Nobody", ForgetInside, &forgetting), VORLINK_OK);
    EXPECT_EQ(forgetting.code, VORLINK_STILL_RUNNING);
    EXPECT_EQ(vorlink_forget(vorlink, VORLINK_PAIRING), VORLINK_OK);
    forgetting.operation = VORLINK_PHONE_WATCHER;
    ASSERT_EQ(vorlink_pair(vorlink, "Nobody", ForgetInside, &forgetting), VORLINK_OK);
    EXPECT_EQ(forgetting.code, VORLINK_OK) << "of the other kind none runs";
}

TEST(Close, DropsTheLateReportAndFreesTheWay)
{
    auto* const vorlink = BeginPairing();
    EXPECT_EQ(vorlink_close(vorlink), VORLINK_OK);
    auto* const other = Open();
    ExpectFree(other);
    CompletePairing(1);
    EXPECT_EQ(pairs.Count(), 0u);
}

TEST(Close, LeavesAnUnpairingItsObject)
{
    auto* const vorlink = BeginUnpairing();
    EXPECT_EQ(vorlink_close(vorlink), VORLINK_OK);
    CompleteUnpairing(firstAddress, 0);
    EXPECT_EQ(unpairs.Count(), 0u);
    ExpectFree(Open());
}

TEST(Close, WorksInsideACallback)
{
    Load(prompt);
    auto* const vorlink = Open();
    Forgetting closing = {vorlink, 0};
    ASSERT_EQ(vorlink_pair(vorlink, "Nobody", CloseInside, &closing), VORLINK_OK);
    EXPECT_EQ(closing.code, VORLINK_STILL_RUNNING);
    EXPECT_EQ(vorlink_close(vorlink), VORLINK_INVALID_ARGUMENT) << "once is enough";
}

// The older pairing's report goes to the newer one, whose search is still on: that one is not over.
TEST(Forget, LetsALateReportEndNoSearch)
{
    Load(patient + slowTag);
    auto* const vorlink = Open();
    ASSERT_EQ(vorlink_pair(vorlink, "Tag", OnPaired, &laterPairs), VORLINK_OK);
    ASSERT_TRUE(WaitForCall("Accept("));
    ASSERT_EQ(vorlink_forget(vorlink, VORLINK_PAIRING), VORLINK_OK);
    std::thread search([&] { EXPECT_EQ(vorlink_pair(vorlink, "Nobody", OnPaired, &pairs), VORLINK_OK); });
    EXPECT_TRUE(SimulatorWaitForTrace("DeviceWatcher.Start(", 2, 20'000));
    CompletePairing(19);
    EXPECT_TRUE(pairs.WaitFor(1));
    ExpectBusy(vorlink);
    EXPECT_EQ(vorlink_forget(vorlink, VORLINK_PAIRING), VORLINK_STILL_RUNNING);
    SimulateEnumerationCompletes();
    search.join();
    ExpectFree(vorlink);
}

TEST(Forget, TellsALateUnpairingApartHoweverManyPairingsCameBetween)
{
    auto* const vorlink = BeginUnpairing();
    ASSERT_EQ(vorlink_forget(vorlink, VORLINK_PAIRING), VORLINK_OK);
    for (int round = 0; round < 7; ++round)
    {
        ExpectFree(vorlink);
    }
    ASSERT_EQ(vorlink_unpair(vorlink, "Second", OnUnpaired, &laterUnpairs), VORLINK_OK);
    CompleteUnpairing(firstAddress, 4);
    EXPECT_EQ(unpairs.Count() + laterUnpairs.Count(), 0u);
    CompleteUnpairing(secondAddress, 0);
    ASSERT_TRUE(laterUnpairs.WaitFor(1));
    EXPECT_EQ(laterUnpairs.At(0), 1);
}

TEST(Close, LeavesAHandleThatNeverComesAgain)
{
    auto* const closed = Open();
    ASSERT_EQ(vorlink_close(closed), VORLINK_OK);
    auto* const vorlink = Open();
    EXPECT_EQ(vorlink_close(closed), VORLINK_INVALID_ARGUMENT);
    ExpectFree(vorlink);
}
