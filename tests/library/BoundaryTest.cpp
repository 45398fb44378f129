// The library's whole surface, and what creating, switching and releasing do.
#include "tests/library/UnpairHost.h"
#include "tests/support/CapturedOutput.h"
#include "tests/support/Host.h"
#include "tests/support/LogFile.h"
#include "tests/support/Neighbourhood.h"
#include "tests/support/ReplacedImport.h"
#include "tests/support/StandIns.h"
#include "tests/support/Trace.h"

#include <gmock/gmock.h>

#include <windows.h>

#include <atomic>
#include <filesystem>
#include <memory>

using namespace test;
using testing::Contains;
using testing::IsEmpty;
using testing::SizeIs;

namespace
{
    void Nobody(wchar_t const*, std::uint32_t) {}

    void NobodyUnpaired(bool, int) {}

    std::atomic<void*> storage = nullptr;
    std::atomic<bool> isFreed = false;

    // Frees nothing: the process can do without.
    void NoteFree(void* memory)
    {
        if (memory == storage)
        {
            isFreed = true;
        }
    }
} // namespace

TEST(Boundary, TheFactoryDoesNothingElse)
{
    Load(prompt);
    SimulatorClearTrace();
    auto const vorlink = MakeVorlink();
    EXPECT_TRUE(vorlink);
    EXPECT_THAT(Trace(), IsEmpty());
    EXPECT_TRUE(std::filesystem::is_empty(std::filesystem::current_path()));
}

TEST(Boundary, TheFactoryDoesNothingElseAlsoWithTheLogOnAndADataFileThere)
{
    Load(PairedTag("'classic'"));
    std::ofstream("MyLEData", std::ios::binary) << "Tag=" << tagAddress << "\n";
    MakeVorlink()->SetLogEnabled(true);
    ReplaceImport(LibraryModule(), "CreateThread", CountThread);
    std::unique_ptr<Vorlink> vorlink;
    EXPECT_EQ(OutputOf([&] { vorlink = MakeVorlink(); }), "");
    EXPECT_THAT(Trace({""}), IsEmpty()) << "not even an activation";
    EXPECT_FALSE(LogExists());
    EXPECT_EQ(threadsStarted, 0);
    // The file was not loaded.
    vorlink->UnpairedCurrent("Tag", UnpairHost::Callback);
    ASSERT_TRUE(UnpairHost::WaitFor(1));
    EXPECT_THAT(LogOf(classicUnpairing), Contains(Record(1177, classicUnpairing, "device Id -> ")));
}

TEST(Boundary, EveryCallMakesAnObjectOfItsOwn)
{
    auto const first = MakeVorlink();
    auto const second = MakeVorlink();
    EXPECT_NE(first.get(), second.get());
}

TEST(Boundary, WithTheLogNeverSwitchedOnNoOperationCreatesIt)
{
    Load(prompt + Device("Headset", "a4:c1:38:5e:22:0f", pairsAtOnce));
    auto const vorlink = MakeVorlink();
    vorlink->Initialize();
    vorlink->PairedDevice("Headset", Host::Callback);
    vorlink->PairedDevice("Nobody", Host::Callback);
    vorlink->UnpairedCurrent("Nobody", NobodyUnpaired);
    vorlink->StartIosWatcher(Nobody);
    vorlink->IosPairedDevicce("Nobody", Host::Callback);
    vorlink->Uninitialize();
    EXPECT_FALSE(LogExists());
}

TEST(Boundary, SwitchingTheLogOffStopsRecordsAtOnceAndKeepsThoseWritten)
{
    Load(prompt);
    auto const vorlink = MakeLoggingVorlink();
    vorlink->PairedDevice("Nobody", Host::Callback);
    std::string const written = ReadFile("log.log");
    EXPECT_FALSE(written.empty());
    vorlink->SetLogEnabled(false);
    vorlink->PairedDevice("Nobody", Host::Callback);
    EXPECT_EQ(ReadFile("log.log"), written);
}

TEST(Boundary, ObjectsShareTheLogSwitch)
{
    Load(prompt);
    MakeVorlink()->SetLogEnabled(true);
    MakeVorlink()->PairedDevice("Nobody", Host::Callback);
    EXPECT_TRUE(LogExists());
}

TEST(Boundary, ReleasingTheObjectCallsNothingAndLeavesTheWatcherRunning)
{
    Load(prompt + generous + Device("Held back", "11:22:33:44:55:66", "appears-ms = 'never'"));
    auto vorlink = MakeVorlink();
    vorlink->PairedDevice("Nobody", Host::Callback);
    ASSERT_TRUE(WaitIdle());
    auto const objects = SimulatorLiveObjects();
    SimulatorClearTrace();
    vorlink.reset();
    EXPECT_THAT(Trace(), IsEmpty());
    EXPECT_EQ(SimulatorLiveObjects(), objects);
    // The run's watcher still reports to the queue: the next lookup takes the device first.
    ASSERT_TRUE(SimulateDeviceAppears(ClassicId("11:22:33:44:55:66").c_str()));
    EXPECT_TRUE(WaitForCall("! DeviceWatcher.Added(#1"));
}

TEST(Boundary, ReleasingTheObjectFreesItsStorage)
{
    auto vorlink = MakeVorlink();
    storage = vorlink.get();
    ReplaceImport(GetModuleHandleW(nullptr), "free", NoteFree);
    EXPECT_FALSE(isFreed);
    vorlink.reset();
    EXPECT_TRUE(isFreed);
}

TEST(Boundary, UnloadingRevokesTheRegistrationsStillHeld)
{
    Load(prompt);
    HMODULE const module = LoadLibraryW(L"vorlink.dll");
    ASSERT_TRUE(module);
    {
        auto const vorlink = MakeVorlink(module);
        vorlink->PairedDevice("Nobody", Host::Callback);
    }
    ASSERT_TRUE(WaitIdle());
    SimulatorClearTrace();
    ASSERT_TRUE(FreeLibrary(module));
    EXPECT_FALSE(GetModuleHandleW(L"vorlink.dll"));
    auto const removals = Trace({"DeviceWatcher.remove_"});
    ASSERT_THAT(removals, SizeIs(3));
    EXPECT_TRUE(removals[0].starts_with("DeviceWatcher.remove_EnumerationCompleted(#1"));
    EXPECT_TRUE(removals[1].starts_with("DeviceWatcher.remove_Updated(#1"));
    EXPECT_TRUE(removals[2].starts_with("DeviceWatcher.remove_Added(#1"));
}
