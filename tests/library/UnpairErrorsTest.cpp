// Errors of the platform during an unpairing: on the Classic side they end the process, on the LE side they are
// recorded.
#include "tests/library/FailFast.h"
#include "tests/library/UnpairHost.h"
#include "tests/support/Codes.h"
#include "tests/support/ProcessEnd.h"
#include "tests/support/Trace.h"

#include <gmock/gmock.h>

#include <windows.h>

using namespace test;
using testing::ElementsAre;

namespace
{
    void BeginUnpairing(std::filesystem::path const& directory, std::string const& scenario,
                        char const* failing = nullptr)
    {
        std::filesystem::current_path(directory);
        Load(scenario);
        auto const vorlink = MakeLoggingVorlink();
        if (failing)
        {
            SimulateFailure(failing, platformCode);
        }
        vorlink->UnpairedCurrent("Tag", MustNotReport);
    }

    using UnpairFailFast = testing::TestWithParam<char const*>;
    using LeError = testing::TestWithParam<char const*>;

    // As the system itself words it, in UTF-8.
    std::string MessageOf(std::int32_t error)
    {
        wchar_t text[512]{};
        FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, static_cast<DWORD>(error),
                       0, text, static_cast<DWORD>(std::size(text)), nullptr);
        auto const utf8 = std::filesystem::path(text).u8string();
        std::string const message(utf8.begin(), utf8.end());
        return message.substr(0, message.find_last_not_of("\r\n ") + 1);
    }

    // On the LE side: nobody hears of the error, and the process goes on.
    void ExpectExceptionRecorded(std::int32_t error = platformCode)
    {
        auto const message = MessageOf(error);
        ASSERT_NE(message, "") << "a code without a text shows nothing";
        auto const record = Record(1101, leUnpairing, "exception -> " + message);
        ASSERT_TRUE(WaitUntil([&] {
            auto const log = LogOf(leUnpairing);
            return !log.empty() && log.back() == record;
        })) << "no record of the exception";
        EXPECT_TRUE(UnpairHost::StaysAt(0));
        EXPECT_EQ(LogOf(leUnpairing).back(), record);
    }
} // namespace

TEST_P(UnpairFailFast, EndsTheProcessAlsoOnTheHostsThread)
{
    auto const directory = DirectoryOfTheTest();
    ExpectFailFast(platformCode, [&] { BeginUnpairing(directory, TagUnpairing("classic", 0, "0"), GetParam()); });
    EXPECT_THAT(LogOf(classicUnpairing), ElementsAre(ClassicRecords(true).at(0)));
}

INSTANTIATE_TEST_SUITE_P(Classic, UnpairFailFast,
                         testing::Values(createWatcher, "DeviceWatcher.Start", "DeviceInformation.get_Name",
                                         "DeviceInformationPairing.get_IsPaired",
                                         "DeviceInformationPairing.UnpairAsync", "AsyncOperation.GetResults",
                                         "DeviceUnpairingResult.get_Status"),
                         MethodName);

TEST(UnpairFailFastOperation, ThatEndsInErrorEndsTheProcess)
{
    auto const directory = DirectoryOfTheTest();
    ExpectFailFast(platformCode, [&] {
        BeginUnpairing(directory, TagUnpairing("classic", 0, "'never'"));
        SimulateUnpairingFails(ClassicId(tagAddress).c_str(), platformCode);
    });
    EXPECT_THAT(LogOf(classicUnpairing), ElementsAre(ClassicRecords(true).at(0)));
}

TEST(UnpairFailFastOperation, ThatEndsForLackOfMemoryEndsTheProcess)
{
    auto const directory = DirectoryOfTheTest();
    ExpectFailFast(E_OUTOFMEMORY, [&] {
        BeginUnpairing(directory, TagUnpairing("classic", 0, "'never'"));
        SimulateUnpairingFails(ClassicId(tagAddress).c_str(), E_OUTOFMEMORY);
    });
    EXPECT_THAT(LogOf(classicUnpairing), ElementsAre(ClassicRecords(true).at(0)));
}

// Set while the Classic side waits for its answer, the failure meets the LE side's first call of the method.
TEST_P(LeError, IsRecordedAndNotReported)
{
    // The second is raised as the language's own exception.
    for (auto const error : {platformCode, static_cast<std::int32_t>(E_OUTOFMEMORY)})
    {
        Load(TagUnpairing("classic", 0, "'never'"));
        auto const vorlink = MakeLoggingVorlink();
        KnowLe(*vorlink, knownTag);
        vorlink->UnpairedCurrent("Tag", UnpairHost::Callback);
        ASSERT_TRUE(WaitIdle());
        ASSERT_TRUE(SimulateFailure(GetParam(), error)) << SimulatorLastError();
        ASSERT_TRUE(SimulateUnpairingCompletes(ClassicId(tagAddress).c_str(), 0)) << SimulatorLastError();
        ExpectExceptionRecorded(error);
    }
}

INSTANTIATE_TEST_SUITE_P(Le, LeError,
                         testing::Values(createWatcher, "DeviceWatcher.Start", "DeviceInformation.get_Pairing",
                                         "DeviceInformationPairing.get_IsPaired",
                                         "DeviceInformationPairing.UnpairAsync"),
                         MethodName);

TEST(LeErrorOperation, ThatEndsInErrorIsRecordedAndNotReported)
{
    Load(TagUnpairing("le", 0, "'never'"));
    auto const vorlink = MakeLoggingVorlink();
    KnowLe(*vorlink, knownTag);
    vorlink->UnpairedCurrent("Tag", UnpairHost::Callback);
    ASSERT_TRUE(WaitForCall("UnpairAsync(" + LeId(tagAddress)));
    ASSERT_TRUE(SimulateUnpairingFails(LeId(tagAddress).c_str(), platformCode)) << SimulatorLastError();
    ExpectExceptionRecorded();
}

TEST(LeErrorOperation, WhoseStatusFailsIsRecordedAndNotReported)
{
    Load(TagUnpairing("le", 0, "'never'"));
    auto const vorlink = MakeLoggingVorlink();
    KnowLe(*vorlink, knownTag);
    vorlink->UnpairedCurrent("Tag", UnpairHost::Callback);
    ASSERT_TRUE(WaitForCall("UnpairAsync(" + LeId(tagAddress)));
    ASSERT_TRUE(SimulateFailure("DeviceUnpairingResult.get_Status", platformCode)) << SimulatorLastError();
    ASSERT_TRUE(SimulateUnpairingCompletes(LeId(tagAddress).c_str(), 0)) << SimulatorLastError();
    ExpectExceptionRecorded();
}
