#include "tests/faults/Rounds.h"

#include "tests/library/PhoneHost.h"
#include "tests/library/UnpairHost.h"
#include "tests/support/Trace.h"

#include <windows.h>

#include <atomic>
#include <filesystem>
#include <fstream>
#include <mutex>
#include <set>
#include <thread>

namespace test
{
    namespace
    {
        constexpr char thing[] = "Second";
        constexpr char unseenAddress[] = "00:00:00:00:00:03";
        constexpr char reportFile[] = "reports";

        bool isUsed = false; // the library is: in a process's first round it is not
        std::atomic<int> successes{0};
        std::mutex reportMutex;

        // One for all rounds: its host releases the storage alone, so another would find what it holds still alive.
        Vorlink& Library()
        {
            static auto& library = *[] {
                auto* const made = MakeVorlink().release();
                made->SetLogEnabled(true);
                return made;
            }();
            return library;
        }

        // In a file: what a process has had that ended on the way counts too.
        void Count(bool success)
        {
            std::lock_guard const lock(reportMutex);
            std::ofstream(reportFile, std::ios::app) << ".";
            successes += success ? 1 : 0;
        }

        void OnPaired(PairReport report)
        {
            Count(report.paired != 0);
        }

        void OnUnpaired(bool success, int)
        {
            Count(success);
        }

        void OnPhone(wchar_t const*, std::uint32_t)
        {
            Count(true);
        }

        std::string Pairable()
        {
            std::string const pairing = "[device.pairing]\nduration-ms = 20";
            return Device("First", firstAddress, pairing) + Device(thing, secondAddress, pairing);
        }

        std::string const secondId = ClassicId(secondAddress);
        std::string const unseenId = ClassicId(unseenAddress);

        void Settle()
        {
            ASSERT_TRUE(SimulatorWaitIdle(20'000)) << SimulatorLastError();
        }

        void Unpaired(std::string const& id)
        {
            ASSERT_TRUE(SimulateDeviceChanges(id.c_str(), "System.Devices.Aep.IsPaired", "false"))
                << SimulatorLastError();
        }

        // Stops the phone watcher where it runs. One that Windows has refused to start can never be stopped.
        void Idle()
        {
            Load(patient);
            try
            {
                Library().StartIosWatcher(OnPhone) && Library().StartIosWatcher(OnPhone);
            }
            catch (winrt::hresult_error const&)
            {
            }
        }

        void Watch()
        {
            ASSERT_TRUE(Library().StartIosWatcher(OnPhone));
            Settle();
        }

        // Until the log holds the record that comes last, or that of an error of the LE side. The thread that goes on
        // behind an operation may be one that the neighbourhood does not know of.
        void Await(std::string const& last)
        {
            auto const end = std::chrono::steady_clock::now() + patience;
            auto const ended = [&] {
                auto const log = ReadFile("log.log");
                return log.find(last) != std::string::npos || log.find("exception -> ") != std::string::npos;
            };
            while (!ended() && std::chrono::steady_clock::now() < end)
            {
                Sleep(5);
            }
        }

        void Change(std::string const& id)
        {
            static int changes = 0;
            auto const name = "\"Name " + std::to_string(++changes) + "\"";
            ASSERT_TRUE(SimulateDeviceChanges(id.c_str(), "System.ItemNameDisplay", name.c_str()))
                << SimulatorLastError();
            Settle();
        }
    } // namespace

    void Arrange(Flow flow)
    {
        if (std::exchange(isUsed, true))
        {
            Idle();
        }
        switch (flow)
        {
        case Flow::PairByName:
            Load(prompt + Pairable());
            break;
        case Flow::PairPhone:
            Load(patient + Pairable());
            Watch();
            break;
        case Flow::Unpair:
            Load(prompt +
                 Device("Tag", tagAddress,
                        "protocols = ['classic', 'le']\nis-paired = true\n[device.unpairing]\nduration-ms = 20"));
            KnowLe(Library(), "Tag=" + std::string(tagAddress) + "\n");
            break;
        case Flow::StartPhones:
            Load(patient);
            break;
        case Flow::StopPhones:
        case Flow::CompletePhones:
            Load(patient);
            Watch();
            break;
        case Flow::AddPhone:
        case Flow::UpdatePhone:
        case Flow::RemovePhone:
            Load(patient + Device("First", firstAddress) + Device("Unseen", unseenAddress, "appears-ms = 'never'"));
            Watch();
            if (flow != Flow::AddPhone)
            {
                SimulateDeviceAppears(unseenId.c_str());
                Settle();
            }
            break;
        case Flow::UpdateQueued:
            Load(prompt + generous + Device("Unseen", unseenAddress, "appears-ms = 'never'"));
            Library().PairedDevice("Nobody", [](PairReport) {});
            Settle();
            SimulateDeviceAppears(unseenId.c_str()); // nobody takes it any more
            Settle();
            break;
        }
        ForgetReportsAndRecords();
        SimulatorClearTrace();
    }

    void Act(Flow flow)
    {
        switch (flow)
        {
        case Flow::PairByName:
            Library().PairedDevice(thing, OnPaired);
            Await("DevicePairingResultStatus::");
            break;
        case Flow::PairPhone:
            Library().IosPairedDevicce(thing, OnPaired);
            Await("DevicePairingResultStatus::");
            break;
        case Flow::Unpair:
            Library().UnpairedCurrent("Tag", OnUnpaired);
            Await("unpaired device success");
            break;
        case Flow::StartPhones:
        case Flow::StopPhones:
            Library().StartIosWatcher(OnPhone);
            break;
        case Flow::CompletePhones:
            SimulateEnumerationCompletes();
            break;
        case Flow::AddPhone:
            SimulateDeviceAppears(unseenId.c_str());
            break;
        case Flow::UpdatePhone:
        case Flow::UpdateQueued:
            Change(unseenId);
            break;
        case Flow::RemovePhone:
            SimulateDeviceLeaves(unseenId.c_str());
            break;
        }
        Settle();
    }

    void Rearrange(Flow flow)
    {
        switch (flow)
        {
        case Flow::PairByName:
        case Flow::PairPhone:
            Unpaired(secondId);
            break;
        case Flow::Unpair:
            for (auto const& id : {ClassicId(tagAddress), LeId(tagAddress)})
            {
                SimulateDeviceChanges(id.c_str(), "System.Devices.Aep.IsPaired", "true");
            }
            break;
        case Flow::StartPhones:
            Library().StartIosWatcher(OnPhone); // stops it
            break;
        case Flow::StopPhones:
        case Flow::CompletePhones:
            Library().StartIosWatcher(OnPhone);
            break;
        case Flow::AddPhone:
            SimulateDeviceLeaves(unseenId.c_str());
            break;
        case Flow::UpdatePhone:
        case Flow::UpdateQueued:
            break;
        case Flow::RemovePhone:
            SimulateDeviceAppears(unseenId.c_str());
            break;
        }
        Settle();
        ForgetReportsAndRecords();
    }

    bool HasWorked(Flow flow)
    {
        switch (flow)
        {
        case Flow::PairByName:
        case Flow::PairPhone:
        case Flow::Unpair:
        case Flow::AddPhone:
            return successes == 1 && ReportCount() == 1;
        case Flow::StartPhones:
            return !Library().StartIosWatcher(OnPhone); // it runs, and this stops it
        case Flow::StopPhones:
        case Flow::CompletePhones:
            return Library().StartIosWatcher(OnPhone); // it was idle
        case Flow::UpdatePhone:
        case Flow::RemovePhone:
        case Flow::UpdateQueued:
            return ReportCount() == 0;
        }
        return false;
    }

    bool GoesOn()
    {
        Idle();
        isUsed = true;
        Library().Uninitialize(); // lets go of the phones
        Load(prompt + Device("After", firstAddress, "[device.pairing]\nduration-ms = 0"));
        // On another thread: a lock that was kept would hang it. Once more where a timer of an unpairing ends the
        // search.
        std::thread([] {
            ForgetReportsAndRecords();
            for (int attempt = 0; attempt < 5 && successes == 0; ++attempt)
            {
                Library().PairedDevice("After", OnPaired);
            }
            Library().PairedDevice("Nobody", [](PairReport) {}); // leaves nothing in the queue
        }).join();
        Settle();
        return successes == 1;
    }

    std::size_t ReportCount()
    {
        return ReadFile(reportFile).size();
    }

    std::size_t RecordCount()
    {
        auto const records = Log(); // read once: the reader may be writing
        return records.size() - LogOf("ReadLine", records).size();
    }

    void ForgetReportsAndRecords()
    {
        successes = 0;
        std::filesystem::remove(reportFile);
        std::ofstream("log.log", std::ios::trunc);
    }

    std::vector<std::string> CallsOf(Flow flow)
    {
        std::set<std::string> calls;
        Arrange(flow);
        for (int round = 0; round < 2; ++round)
        {
            SimulatorClearTrace();
            Act(flow);
            for (auto const& line :
                 Trace({"DeviceInformation", "DeviceWatcher", "DevicePairing", "DeviceUnpairing", "AsyncOperation"}))
            {
                calls.insert(line.substr(0, line.find('(')));
            }
            Rearrange(flow);
        }
        return {calls.begin(), calls.end()};
    }
} // namespace test
