// The library's log for a test, record by record.
#pragma once

#include "host/Records.h"

#include <cstdio>
#include <string>

namespace test
{
    // A record so many milliseconds after ten o'clock, on one day.
    inline std::string LogLine(int ms, std::string const& function, int line, std::string const& message)
    {
        char time[64];
        std::snprintf(time, sizeof time, "2026-01-02 %02d:%02d:%02d %03d", 10 + ms / 3'600'000, ms / 60'000 % 60,
                      ms / 1000 % 60, ms % 1000);
        return std::string(time) + "[File:SubVorlink][Line:" + std::to_string(line) + "][Function:" + function + "] " +
               message + "\n";
    }

    inline host::Record LogRecord(int ms, std::string const& function, int line, std::string const& message)
    {
        auto text = LogLine(ms, function, line, message);
        text.pop_back();
        return host::ReadRecords(text).front();
    }

    inline std::string AsksToPair(int ms, std::string const& name)
    {
        return LogLine(ms, "SubVorlink::PairedDevice", 1253, "Call  Pair entry name ->" + name);
    }

    inline std::string SearchesFor(int ms, std::string const& name)
    {
        return LogLine(ms, "SubVorlink::GetDeviceforName", 399, name);
    }

    inline std::string EndsPairing(int ms, std::string const& status)
    {
        return LogLine(ms, "SubVorlink::PairingDevice", 796, "DevicePairingResultStatus::" + status);
    }

    inline std::string AsksToUnpair(int ms, std::string const& name)
    {
        return LogLine(ms, "SubVorlink::UnpairedCurrent", 1145, "Entery unpaired  name-> " + name);
    }

    inline std::string BeginsToLearn(int ms)
    {
        return LogLine(ms, "ReadLine", 488, "Readline entry");
    }

    inline std::string SeesPhone(int ms, std::string const& name)
    {
        return LogLine(ms, "OnDeviceAdded", 111, "OnDeviceAdded    name = " + name + " ");
    }

    inline std::string EndsPhones(int ms, int devices)
    {
        return LogLine(ms, "StopIosWatcher", 87, "entry StopIosWatcher  " + std::to_string(devices) + " ");
    }
} // namespace test
