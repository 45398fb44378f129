// Prints the table as the page that docs/faults.md holds.
#include "tests/faults/Faults.h"

#include <cstddef>
#include <cstdio>
#include <string>

using namespace test;

namespace
{
    constexpr char head[] = R"(# When a call fails

Each row is a call that the library makes, failing: who learns it, how many records the log has of the round by then, how
many reports the host. The tests take their cases from the table that this page is printed from (`tests/faults`): each
row with `E_OUTOFMEMORY` and `E_ACCESSDENIED`, in the first round of a process and in one that follows a good one. An
operating system's own function fails as it does for want of resources; the host's exception is then the standard
library's `std::system_error`. Behind each failure that the process outlives, another pairing in another neighbourhood
has to succeed, from another thread, and the platform's objects that the library then holds are counted: they are those
that it holds after rounds in which nothing fails, unless the last column says otherwise. A test looks at each flow's
calls and fails on one without a row.

)";

    constexpr char elsewhere[] = R"(
## Not in the table

| what | why, and where it is tested |
| --- | --- |
| the phone list (`Size`, `GetAt`, `Append`, `RemoveAt`, `Clear`) | an object of the process itself, which fails by its bounds and for want of memory alone; made to fail in `tests/unit` by a list of the tests' own (`tests/support/FakeList.h`) |
| the reader behind a pairing (`WinExec`, the listing, `MyLEData`) | takes four seconds a case; `tests/library/ReadLineTest.cpp`, `tests/unit/ReadLineTest.cpp`, `FileReplacementTest.cpp`, `LeStoreTest.cpp` |
| the threads that end a search or the phone watcher | wait out their seconds; `tests/library/PhoneEndTest.cpp` |
| `calloc`, for a record of the log | `tests/unit/WriteLogTest.cpp` |

## What else a stranger can bring

Measured once on two cores of a busy machine; the short forms run with the tests.

| look | how long | what was found |
| --- | --- | --- |
| hostile names (`HostileNames*Test`) | 34 names, from the host and from the air, in every flow | a line feed in a name begins what looks like a record of the log |
| hostile files (`Hostile*Test`) | store and listing without an end, with one line of 50 MB, with zeros, with 100,000 entries; a folder, read-only, a full disk, two processes at once | two processes could read a store that the other was replacing as empty: both try again for a fifth of a second now |
| fuzzing (`fuzz/`, six readers) | 16.0 million executions | a byte before a record's buffer where that is shorter than any head, which the library's never is; a refused query's text ended at its first zero |
| a long life (`StressSoak`) | 1,770 rounds in 300 s, after as long a warm-up | nothing that stays: no handle, thread or platform object; 97 bytes in two blocks of the heap, 156 KiB of private memory |
| races (`Races`, `Unload`, `CallbackCalls`) | each pair of threads that may meet, on purpose; each operation in each callback; unloading at each moment | a callback that unloads the library on a thread of the platform has nothing to return to: the header says so |
| coverage (`scripts/coverage`) | 1,520 of the library's 1,543 lines, 1,523 of 2,248 branches | the lines left are the state's end, what ends the process, and what the optimiser has merged |
)";

    std::string Shown(std::string_view text)
    {
        return std::string(text);
    }

    char const* Text(When when)
    {
        constexpr char const* texts[] = {"", " (first round)", " (later round)"};
        return texts[static_cast<std::size_t>(when)];
    }

    // "2nd": which of the round's calls.
    std::string Ordinal(unsigned passes)
    {
        constexpr char const* ends[] = {"1st", "2nd", "3rd"};
        return passes < std::size(ends) ? ends[passes] : std::to_string(passes + 1) + "th";
    }

    void PrintFlow(Flow flow)
    {
        std::printf("\n## %s\n\n%s.\n\n", Shown(Name(flow)).c_str(), Shown(Meaning(flow)).c_str());
        std::printf(
            "| call | which | who learns it | records | reports | kept |\n| --- | --- | --- | --- | --- | --- |\n");
        for (auto const& fault : Faults())
        {
            if (fault.flow == flow)
            {
                std::printf("| `%s` | %s%s | %s | %u | %u | %u |\n", Shown(fault.call).c_str(),
                            Ordinal(fault.passes).c_str(), Text(fault.when), Shown(Name(fault.learns)).c_str(),
                            fault.records, fault.reports, fault.kept);
            }
        }
        for (auto const& row : LeftOutFaults())
        {
            if (row.flow == flow)
            {
                std::printf("| `%s` | | left out: %s | | | |\n", Shown(row.call).c_str(), Shown(row.reason).c_str());
            }
        }
    }
} // namespace

int main()
{
    std::fputs(head, stdout);
    std::printf("| who | that is |\n| --- | --- |\n");
    for (auto const learns : {Learns::Host, Learns::FailFast, Learns::Platform, Learns::Log, Learns::Nobody})
    {
        std::printf("| %s | %s |\n", Shown(Name(learns)).c_str(), Shown(Meaning(learns)).c_str());
    }
    for (auto const flow :
         {Flow::PairByName, Flow::PairPhone, Flow::Unpair, Flow::StartPhones, Flow::StopPhones, Flow::CompletePhones,
          Flow::AddPhone, Flow::UpdatePhone, Flow::RemovePhone, Flow::UpdateQueued})
    {
        PrintFlow(flow);
    }
    std::fputs(elsewhere, stdout);
}
