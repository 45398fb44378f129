// A host that calls the library back from inside a callback: each operation from each kind of callback.
#include "tests/library/PhoneHost.h"
#include "tests/library/UnpairHost.h"

#include <gtest/gtest.h>

#include <windows.h>

#include <atomic>
#include <memory>
#include <string>
#include <thread>
#include <tuple>

using namespace test;

namespace
{
    void IgnorePhone(wchar_t const*, std::uint32_t) {}

    std::string Spoken(bool yes)
    {
        return yes ? "yes" : "no";
    }

    // What has been reported by the time that the operation returns.
    std::string Reported()
    {
        return OtherHost::Count() != 1 ? "nothing"
                                       : Text(OtherHost::At(0).name) + ": " + Spoken(OtherHost::At(0).paired != 0);
    }

    std::atomic<int> unpaired = 0;

    struct Operation
    {
        char const* name;
        std::string (*call)(Vorlink& vorlink);
        char const* answer;
        char const* answerAtAPhone; // while the watcher runs that has found it
    };

    constexpr Operation operations[] = {
        {"Initialize", [](Vorlink& vorlink) { return Spoken(vorlink.Initialize()); }, "yes", "yes"},
        {"Uninitialize", [](Vorlink& vorlink) { return Spoken(vorlink.Uninitialize()); }, "yes", "yes"},
        {"SetLogEnabled",
         [](Vorlink& vorlink) {
             vorlink.SetLogEnabled(true);
             vorlink.IosPairedDevicce("Nobody", OtherHost::Callback);
             return Spoken(LogExists());
         },
         "yes", "yes"},
        {"PairedDevice",
         [](Vorlink& vorlink) {
             vorlink.PairedDevice("Other", OtherHost::Callback);
             return Reported();
         },
         "Other: yes", "Other: yes"},
        {"UnpairedCurrent",
         [](Vorlink& vorlink) {
             vorlink.UnpairedCurrent("Bonded", [](bool success, int) { unpaired += success ? 1 : 0; });
             return Spoken(unpaired == 1);
         },
         "yes", "yes"},
        {"StartIosWatcher", [](Vorlink& vorlink) { return Spoken(vorlink.StartIosWatcher(IgnorePhone)); }, "yes", "no"},
        {"IosPairedDevicce",
         [](Vorlink& vorlink) {
             vorlink.IosPairedDevicce("Ana", OtherHost::Callback);
             return Reported();
         },
         "Ana: yes", "Ana: no"}, // it is kept when the callback has returned
    };

    std::unique_ptr<Vorlink> vorlink;
    Operation const* operation = nullptr;
    std::string answer;
    std::atomic<int> callbacks = 0;
    std::atomic<bool> isOver = false;
    DWORD callbackThread = 0;

    // The callback's body. The first one's alone: what the operation brings about has callbacks of its own.
    void CallBack()
    {
        if (callbacks++ == 0)
        {
            callbackThread = GetCurrentThreadId();
            answer = operation->call(*vorlink);
            isOver = true;
        }
    }

    void OnPaired(PairReport)
    {
        CallBack();
    }

    void OnUnpaired(bool, int)
    {
        CallBack();
    }

    void OnPhone(wchar_t const*, std::uint32_t)
    {
        CallBack();
    }

    struct Place
    {
        char const* name;
        void (*come)(); // brings the callback about
        bool onHostsThread;
        bool atAPhone;
    };

    // Of the pending pairing, or of the pending unpairing.
    void CompleteLater(std::string const& call, int (*complete)(char const*, std::int32_t), std::string const& id)
    {
        ASSERT_TRUE(WaitForCall(call));
        ASSERT_TRUE(complete(id.c_str(), 0)) << SimulatorLastError();
    }

    constexpr char later[] = "a4:c1:38:00:00:0d";

    constexpr Place places[] = {
        {"NothingFound", [] { vorlink->PairedDevice("Nobody", OnPaired); }, true, false},
        {"PairingDoneAtOnce", [] { vorlink->PairedDevice("Prompt", OnPaired); }, true, false},
        {"PairingDoneLater",
         [] {
             vorlink->PairedDevice("Later", OnPaired);
             CompleteLater("Accept(", SimulatePairingCompletes, ClassicId(later));
         },
         false, false},
        {"UnpairingDoneAtOnce", [] { vorlink->UnpairedCurrent("Tag", OnUnpaired); }, true, false},
        {"UnpairingDoneLater",
         [] {
             vorlink->UnpairedCurrent("Slow", OnUnpaired);
             CompleteLater("UnpairAsync(", SimulateUnpairingCompletes, ClassicId(firstAddress));
         },
         false, false},
        {"UnpairingOfTheLeSide",
         [] {
             KnowLe(*vorlink, knownTag);
             vorlink->UnpairedCurrent("Tag", OnUnpaired);
         },
         false, false},
        {"Phone", [] { vorlink->StartIosWatcher(OnPhone); }, false, true},
    };

    std::string Neighbours()
    {
        std::string const bond = "is-paired = true\n[device.unpairing]\nduration-ms = ";
        return prompt + Device("Ana", addressA, pairsAtOnce) + Device("Other", addressB, pairsAtOnce) +
               Device("Prompt", addressC, pairsAtOnce) + Device("Later", later, pairsOnDemand) +
               Device("Tag", tagAddress, "protocols = ['classic', 'le']\n" + bond + "0") +
               Device("Slow", firstAddress, bond + "'never'") + Device("Bonded", secondAddress, bond + "0") +
               Device("Last", "00:00:00:00:00:03", pairsAtOnce);
    }

    // Another pairing, on another thread, which a lock left behind would hang; again where a timer of an unpairing has
    // ended the search.
    bool GoesOn()
    {
        std::thread([] {
            for (int attempt = 0; attempt < 5 && Host::Count() == 0; ++attempt)
            {
                vorlink->PairedDevice("Last", [](PairReport report) {
                    if (report.paired)
                    {
                        Host::Callback(report);
                    }
                });
            }
        }).join();
        return Host::Count() == 1;
    }

    using CallInsideACallback = testing::TestWithParam<std::tuple<Place, Operation>>;

    std::string CaseName(testing::TestParamInfo<std::tuple<Place, Operation>> const& test)
    {
        return std::string(std::get<1>(test.param).name) + "_" + std::get<0>(test.param).name;
    }

    void PrintTo(Place const& place, std::ostream* stream)
    {
        *stream << place.name;
    }

    void PrintTo(Operation const& one, std::ostream* stream)
    {
        *stream << one.name;
    }
} // namespace

TEST_P(CallInsideACallback, AnswersAsOutsideAndReturns)
{
    auto const& [place, called] = GetParam();
    operation = &called;
    Load(Neighbours());
    vorlink = MakeVorlink();
    if (!place.atAPhone)
    {
        ASSERT_TRUE(vorlink->StartIosWatcher(IgnorePhone));
        ASSERT_TRUE(WaitIdle());
    }
    SimulatorClearTrace();
    place.come();
    ASSERT_TRUE(WaitUntil([] { return isOver.load(); })) << "the operation does not return";
    EXPECT_EQ(answer, place.atAPhone ? called.answerAtAPhone : called.answer);
    EXPECT_EQ(callbackThread == GetCurrentThreadId(), place.onHostsThread);
    EXPECT_TRUE(WaitIdle());
    EXPECT_TRUE(GoesOn());
}

INSTANTIATE_TEST_SUITE_P(CallbackCalls, CallInsideACallback,
                         testing::Combine(testing::ValuesIn(places), testing::ValuesIn(operations)), CaseName);
