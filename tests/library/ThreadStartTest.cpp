// Threads that the system does not give: inside an unpairing that ends the process through the platform's fail-fast.
// For the reader behind a pairing see ReaderTest.cpp, for the phone watcher PhoneWatcherErrorsTest.cpp.
#include "tests/library/FailFast.h"
#include "tests/library/UnpairHost.h"
#include "tests/support/ProcessEnd.h"
#include "tests/support/ReplacedImport.h"
#include "tests/support/StandIns.h"

#include <gmock/gmock.h>

using namespace test;
using testing::ElementsAre;
using testing::IsEmpty;

namespace
{
    constexpr char refusal[] = "refused";
    int available = 0;

    // Gives as many threads as there are; of the first one refused, tells in a file how many came before it.
    HANDLE WINAPI StartWhileAvailable(SECURITY_ATTRIBUTES* security, SIZE_T stack, LPTHREAD_START_ROUTINE body,
                                      void* argument, DWORD flags, DWORD* id)
    {
        if (threadsStarted < available)
        {
            return CountThread(security, stack, body, argument, flags, id);
        }
        std::ofstream(refusal) << threadsStarted;
        return RefuseThread(security, stack, body, argument, flags, id);
    }

    // Unpairs "Tag", whose LE side is known.
    void UnpairWithThreads(std::filesystem::path const& directory, int count)
    {
        std::filesystem::current_path(directory);
        Load(PairedTag("'classic', 'le'"));
        auto* const vorlink = MakeLoggingVorlink().release(); // for the LE side, to the process's end
        KnowLe(*vorlink, knownTag);
        available = count;
        ReplaceImport(LibraryModule(), "CreateThread", StartWhileAvailable);
        vorlink->UnpairedCurrent("Tag", MustNotReport);
    }

    std::string const entry = Record(1145, classicUnpairing, "Entery unpaired  name-> Tag");

    // The Classic side has done all but start the LE side.
    void ExpectClassicSideDone()
    {
        EXPECT_THAT(LogOf(classicUnpairing),
                    ElementsAre(entry,
                                Record(1174, classicUnpairing,
                                       "unpaired Classic Blueth,start unpaired ble device " + std::string(tagAddress)),
                                Record(1177, classicUnpairing, "device Id -> " + std::string(tagAddress))));
    }
} // namespace

TEST(ThreadStart, RefusedToTheTimerOfTheClassicSearchEndsTheProcess)
{
    auto const directory = DirectoryOfTheTest();
    ExpectFailFast(E_FAIL, [&] { UnpairWithThreads(directory, 0); });
    EXPECT_EQ(ReadFile(refusal), "0");
    EXPECT_THAT(Log(), ElementsAre(entry));
}

TEST(ThreadStart, RefusedToTheLeSideEndsTheProcess)
{
    auto const directory = DirectoryOfTheTest();
    ExpectFailFast(E_FAIL, [&] { UnpairWithThreads(directory, 1); });
    EXPECT_EQ(ReadFile(refusal), "1");
    ExpectClassicSideDone();
    EXPECT_THAT(LogOf(leUnpairing), IsEmpty());
}

// It is no error of the platform, which would be recorded alone.
TEST(ThreadStart, RefusedToTheTimerOfTheLeSearchEndsTheProcess)
{
    auto const directory = DirectoryOfTheTest();
    ExpectFailFast(E_FAIL, [&] { UnpairWithThreads(directory, 2); });
    EXPECT_EQ(ReadFile(refusal), "2");
    ExpectClassicSideDone();
    EXPECT_THAT(LogOf(leUnpairing), IsEmpty());
}
