// Hosts of every apartment: pairing runs for each, and continues where it was begun.
#include "tests/library/UnpairHost.h"
#include "tests/support/Apartment.h"
#include "tests/support/Host.h"
#include "tests/support/LogFile.h"
#include "tests/support/Neighbourhood.h"
#include "tests/support/Trace.h"

#include <gmock/gmock.h>

#include <windows.h>
#include <objbase.h>

#include <thread>

using namespace test;
using testing::ElementsAre;
using testing::IsEmpty;

namespace
{
    constexpr char address[] = "a4:c1:38:5e:22:0f";

    std::string Immediate()
    {
        return prompt + Device("Headset", address, pairsAtOnce);
    }

    std::string Later()
    {
        return prompt + Device("Headset", address, pairsOnDemand);
    }

    // Runs a host on a thread of its own, which joins COM as `coinit` says; `none`: not at all.
    constexpr int none = -1;

    template <typename Body>
    void OnThread(int coinit, Body body)
    {
        std::thread([&] {
            if (coinit != none)
            {
                ASSERT_EQ(CoInitializeEx(nullptr, static_cast<DWORD>(coinit)), S_OK);
            }
            body();
            if (coinit != none)
            {
                CoUninitialize();
            }
        }).join();
    }

    void ExpectCompletePairing(int coinit)
    {
        Load(Immediate());
        OnThread(coinit, [] {
            MakeVorlink()->PairedDevice("Headset", Host::Callback);
            ASSERT_EQ(Host::Count(), 1u);
            EXPECT_EQ(Host::ThreadOf(0), GetCurrentThreadId());
        });
        ASSERT_EQ(Host::Count(), 1u);
        EXPECT_EQ(Host::At(0).paired, 1);
    }

    void ExpectLaterPairing(int coinit)
    {
        Load(Later());
        OnThread(coinit, [] {
            MakeVorlink()->PairedDevice("Headset", Host::Callback);
            EXPECT_EQ(Host::Count(), 0u);
            ASSERT_TRUE(WaitForCall("Accept("));
            ASSERT_TRUE(SimulatePairingCompletes(ClassicId(address).c_str(), 0)) << SimulatorLastError();
            ASSERT_TRUE(Host::WaitFor(1));
            EXPECT_NE(Host::ThreadOf(0), GetCurrentThreadId());
        });
        EXPECT_EQ(Host::At(0).paired, 1);
    }

    // What the ceremony asks of the platform from where it goes on; the thread of each.
    std::vector<DWORD> ThreadsOfContinuation()
    {
        std::vector<DWORD> threads;
        for (auto const& line : TraceLines())
        {
            for (auto const* const call :
                 {"AsyncOperation.GetResults", "DeviceInformationCustomPairing.remove_", "DevicePairingResult."})
            {
                if (line.text.starts_with(call))
                {
                    threads.push_back(line.thread);
                }
            }
        }
        return threads;
    }
} // namespace

TEST(Apartments, HostWithoutComCompletesAnImmediatePairing)
{
    ExpectCompletePairing(none);
}

TEST(Apartments, MultithreadedHostCompletesAnImmediatePairing)
{
    ExpectCompletePairing(COINIT_MULTITHREADED);
}

TEST(Apartments, SingleThreadedHostCompletesAnImmediatePairing)
{
    ExpectCompletePairing(COINIT_APARTMENTTHREADED);
}

TEST(Apartments, HostWithoutComCompletesALaterPairing)
{
    ExpectLaterPairing(none);
}

TEST(Apartments, MultithreadedHostCompletesALaterPairing)
{
    ExpectLaterPairing(COINIT_MULTITHREADED);
}

TEST(Apartments, SingleThreadedHostHearsOfALaterUnpairingWithoutPumping)
{
    Load(PairedTag("'classic', 'le'", "[device.classic.unpairing]\nduration-ms = 'never'\n"));
    OnThread(COINIT_APARTMENTTHREADED, [] {
        auto const vorlink = MakeVorlink();
        KnowLe(*vorlink, knownTag);
        vorlink->UnpairedCurrent("Tag", UnpairHost::Callback);
        EXPECT_EQ(UnpairHost::Count(), 0u);
        ASSERT_TRUE(SimulateUnpairingCompletes(ClassicId(tagAddress).c_str(), 0)) << SimulatorLastError();
        ASSERT_TRUE(UnpairHost::WaitFor(1));
        EXPECT_NE(UnpairHost::At(0).thread, GetCurrentThreadId());
    });
    EXPECT_TRUE(UnpairHost::At(0).success);
    EXPECT_TRUE(WaitForCall("UnpairAsync(" + LeId(tagAddress)));
}

TEST(Apartments, SingleThreadedHostCompletesALaterPairingWhenItPumps)
{
    Load(Later());
    OnThread(COINIT_APARTMENTTHREADED, [] {
        Apartment const apartment(LibraryModule());
        auto const vorlink = MakeLoggingVorlink();
        vorlink->PairedDevice("Headset", Host::Callback);
        ASSERT_TRUE(WaitForCall("Accept("));
        ASSERT_TRUE(SimulatePairingCompletes(ClassicId(address).c_str(), 0)) << SimulatorLastError();
        ASSERT_TRUE(apartment.WaitForEntry());
        EXPECT_EQ(Host::Count(), 0u);
        EXPECT_THAT(LogOf(ceremony), IsEmpty());
        EXPECT_THAT(ThreadsOfContinuation(), IsEmpty());

        ASSERT_TRUE(apartment.PumpUntil([] { return Host::Count() > 0; }));
        auto const here = GetCurrentThreadId();
        EXPECT_EQ(Host::ThreadOf(0), here);
        EXPECT_THAT(LogOf(ceremony), ElementsAre(Record(796, ceremony, "DevicePairingResultStatus::Paired")));
        EXPECT_THAT(ThreadsOfContinuation(), ElementsAre(here, here, here));
    });
    ASSERT_EQ(Host::Count(), 1u);
    EXPECT_EQ(Host::At(0).paired, 1);
}

TEST(Apartments, HostWithoutComJoinsTheMultithreadedApartment)
{
    Load(Immediate());
    OnThread(none, [] {
        APTTYPE type{};
        APTTYPEQUALIFIER qualifier{};
        EXPECT_EQ(CoGetApartmentType(&type, &qualifier), CO_E_NOTINITIALIZED);
        MakeVorlink()->PairedDevice("Headset", Host::Callback);
        ASSERT_EQ(CoGetApartmentType(&type, &qualifier), S_OK);
        EXPECT_EQ(type, APTTYPE_MTA);
        EXPECT_EQ(qualifier, APTTYPEQUALIFIER_IMPLICIT_MTA);
    });
}

TEST(Apartments, TheProviderMetIsTheSimulator)
{
    Load(prompt);
    EXPECT_THAT(Trace(), IsEmpty());
    MakeVorlink()->PairedDevice("Nobody", Host::Callback);
    EXPECT_TRUE(WaitForCall("DeviceWatcher.Start(#1)"));
}
