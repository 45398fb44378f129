// A host that watches for phones.
#pragma once

#include "tests/support/CodeOf.h"
#include "tests/support/Host.h"
#include "tests/support/LogFile.h"
#include "tests/support/Neighbourhood.h"
#include "tests/support/Phones.h"
#include "tests/support/Trace.h"

#include <gmock/gmock.h>

#include <string>
#include <vector>

namespace test
{
    inline constexpr char addressA[] = "a4:c1:38:00:00:0a";
    inline constexpr char addressB[] = "a4:c1:38:00:00:0b";
    inline constexpr char addressC[] = "a4:c1:38:00:00:0c";
    inline std::string const idA = ClassicId(addressA);
    inline std::string const idB = ClassicId(addressB);
    inline std::string const idC = ClassicId(addressC);

    inline std::string StopRecord(int size)
    {
        return Record(87, "StopIosWatcher", "entry StopIosWatcher  " + std::to_string(size) + " ");
    }

    inline std::string const exitRecord = Record(178, "ThreadEndWatcher", "Exit ,call StopIosWatcher");

    inline std::string AddedRecord(std::string const& name)
    {
        return Record(111, "OnDeviceAdded", "OnDeviceAdded    name = " + name + " ");
    }

    // A watcher that has reported all that is there, its enumeration not complete.
    inline std::unique_ptr<Vorlink> Watching(std::string const& devices)
    {
        Load(patient + devices);
        auto vorlink = MakeLoggingVorlink();
        EXPECT_TRUE(vorlink->StartIosWatcher(Phones::Callback));
        EXPECT_TRUE(WaitIdle());
        return vorlink;
    }

    // From now on events wait, the arrival of this device first.
    inline void HoldArrival(std::string const& id)
    {
        SimulatorHoldEvents();
        ASSERT_TRUE(SimulateDeviceAppears(id.c_str())) << SimulatorLastError();
        ASSERT_TRUE(WaitForCall("! DeviceWatcher.Added(#1, " + id + ")"));
    }

    // The names of the endpoints that the library keeps, in their order: those that a search for none of them visits.
    inline std::vector<std::string> Kept(Vorlink& vorlink)
    {
        std::string const begin = Record(1222, search, "tname is ");
        std::string const prefix = begin.substr(0, begin.size() - 1);
        auto const before = LogOf(search).size();
        vorlink.IosPairedDevicce("!", OtherHost::Callback);
        auto records = LogOf(search);
        std::vector<std::string> names;
        for (auto index = before; index < records.size(); ++index)
        {
            if (records[index].starts_with(prefix))
            {
                auto const end = records[index].rfind(" param name is !");
                names.push_back(records[index].substr(prefix.size(), end - prefix.size()));
            }
        }
        return names;
    }

    inline std::int32_t CodeOfStart(Vorlink& vorlink)
    {
        return CodeOf([&] { vorlink.StartIosWatcher(Phones::Callback); });
    }

    inline std::string const twoPhones = Device("Ana", addressA) + Device("Ben", addressB);

    // Another arrival of one that is there.
    inline void Repeat(std::string const& id)
    {
        ASSERT_TRUE(SimulateDeviceRepeats(id.c_str())) << SimulatorLastError();
        ASSERT_TRUE(WaitIdle());
    }
} // namespace test
