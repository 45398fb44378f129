// What becomes of a call that fails: the table that the tests go by and that docs/faults.md is printed from.
#pragma once

#include <span>
#include <string_view>

namespace test
{
    // What the host or the platform does.
    enum class Flow
    {
        PairByName,     // PairedDevice of the second of two devices
        PairPhone,      // IosPairedDevicce of the second of two that the watcher has seen
        Unpair,         // UnpairedCurrent of a device with a known LE side
        StartPhones,    // StartIosWatcher
        StopPhones,     // StartIosWatcher while the watcher runs
        CompletePhones, // the platform ends the enumeration
        AddPhone,       // a device comes
        UpdatePhone,    // one changes
        RemovePhone,    // one leaves
        UpdateQueued,   // one changes that a search has queued and nobody has taken
    };

    enum class Learns
    {
        Host,     // by an exception that leaves the operation
        FailFast, // nobody: the process ends through the platform's fail-fast, with the error's code
        Platform, // by the code that the handler returns
        Log,      // by a record "exception -> ..."
        Nobody,   // the failure changes nothing
    };

    // The round that the call fails in: the first of the process, and one after a round that went well.
    enum class When
    {
        Both,
        FirstAlone, // a later round does not make the call
        LaterAlone, // the first one does not
    };

    struct Fault
    {
        Flow flow;
        std::string_view call;
        unsigned passes; // this many calls of it in the same round go through first
        Learns learns;
        unsigned records; // that the round writes
        unsigned reports; // that it makes to the host
        When when = When::Both;
        unsigned kept = 0; // platform objects that the library holds on to, above what it holds after a good round
    };

    std::span<Fault const> Faults();

    // What is not in the table.
    struct LeftOut
    {
        Flow flow;
        std::string_view call;
        std::string_view reason;
    };

    std::span<LeftOut const> LeftOutFaults();

    std::string_view Name(Flow flow);
    std::string_view Name(Learns learns);
    std::string_view Meaning(Flow flow);
    std::string_view Meaning(Learns learns);
} // namespace test
