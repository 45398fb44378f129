// Every status that the platform may answer an unpairing with, for either endpoint: what the host hears, what the
// log holds then, and what comes behind. And errors, which are no statuses.
#include "tests/library/FailFast.h"
#include "tests/library/UnpairHost.h"
#include "tests/support/ProcessEnd.h"
#include "tests/support/Trace.h"

#include <gmock/gmock.h>

#include <winrt/base.h>

#include <windows.h>

using namespace test;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

namespace
{
    constexpr auto code = static_cast<std::int32_t>(0x80070490);
    std::string const known = "Tag=" + std::string(tagAt) + "\n";

    struct Status
    {
        int number;
        char const* name;
    };

    void PrintTo(Status const& status, std::ostream* stream)
    {
        *stream << status.name;
    }

    std::string NameOf(testing::TestParamInfo<Status> const& test)
    {
        return test.param.name;
    }

    // 5 is one that the platform does not define.
    constexpr Status statuses[] = {
        {0, "Unpaired"},     {1, "AlreadyUnpaired"}, {2, "OperationAlreadyInProgress"},
        {3, "AccessDenied"}, {4, "Failed"},          {5, "Unknown"},
    };

    std::string With(char const* protocol, int status, char const* duration)
    {
        return PairedTag("'classic', 'le'", std::string("[device.") + protocol + ".unpairing]\nstatus = " +
                                                std::to_string(status) + "\nduration-ms = " + duration + "\n");
    }

    class ClassicStatus : public testing::TestWithParam<Status>
    {
    };

    class LeStatus : public testing::TestWithParam<Status>
    {
    };

    std::vector<std::string> ClassicRecords(bool unpaired)
    {
        std::vector<std::string> records = {Record(1145, classicUnpairing, "Entery unpaired  name-> Tag")};
        if (unpaired)
        {
            records.push_back(Record(1174, classicUnpairing,
                                     "unpaired Classic Blueth,start unpaired ble device " + std::string(tagAt)));
            records.push_back(Record(1177, classicUnpairing, "device Id -> "));
            records.push_back(Record(1180, classicUnpairing, "ble data is bad "));
        }
        return records;
    }

    void ExpectClassicOutcome(bool unpaired)
    {
        ASSERT_TRUE(UnpairHost::WaitFor(1));
        auto const call = UnpairHost::At(0);
        EXPECT_EQ(call.success, unpaired);
        EXPECT_EQ(call.reserved, 0);
        EXPECT_EQ(LogOf(classicUnpairing, call.log), ClassicRecords(unpaired));
        EXPECT_TRUE(UnpairHost::StaysAt(1));
        EXPECT_EQ(LogOf(classicUnpairing), ClassicRecords(unpaired));
        EXPECT_THAT(LogOf(leUnpairing), IsEmpty());
    }

    // The success is recorded behind the callback, the failure before it.
    void ExpectLeOutcome(bool unpaired)
    {
        ASSERT_TRUE(UnpairHost::WaitFor(1));
        auto const call = UnpairHost::At(0);
        EXPECT_EQ(call.success, unpaired);
        EXPECT_EQ(call.reserved, 0);
        auto const begin = Record(1066, leUnpairing, "ble   destStr is " + std::string(tagAt) + " ");
        auto const end = unpaired ? Record(1083, leUnpairing, "unpaired device success")
                                  : Record(1089, leUnpairing, "unpaired device failed");
        EXPECT_THAT(LogOf(leUnpairing, call.log), SizeIs(unpaired ? 1u : 2u)) << "at the callback";
        ASSERT_TRUE(WaitForRecords(leUnpairing, 2));
        EXPECT_TRUE(UnpairHost::StaysAt(1));
        EXPECT_THAT(LogOf(leUnpairing), ElementsAre(begin, end));
    }

    // Ends the process with a code of its own if an outcome gets out.
    void MustNotReport(bool, int)
    {
        TerminateProcess(GetCurrentProcess(), 5);
    }

    void BeginUnpairing(std::filesystem::path const& directory, std::string const& scenario,
                        char const* failing = nullptr)
    {
        std::filesystem::current_path(directory);
        Load(scenario);
        auto const vorlink = MakeLoggingVorlink();
        if (failing)
        {
            SimulateFailure(failing, code);
        }
        vorlink->UnpairedCurrent("Tag", MustNotReport);
    }

    class UnpairFailFast : public testing::TestWithParam<char const*>
    {
    };

    class LeError : public testing::TestWithParam<char const*>
    {
    };

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
    void ExpectExceptionRecorded(std::int32_t error = code)
    {
        auto const message = MessageOf(error);
        ASSERT_NE(message, "") << "a code without a text shows nothing";
        auto const record = Record(1101, leUnpairing, "exception -> " + message);
        auto const end = std::chrono::steady_clock::now() + patience;
        while (LogOf(leUnpairing).empty() || LogOf(leUnpairing).back() != record)
        {
            ASSERT_LT(std::chrono::steady_clock::now(), end) << "no record of the exception";
            Sleep(5);
        }
        EXPECT_TRUE(UnpairHost::StaysAt(0));
        EXPECT_EQ(LogOf(leUnpairing).back(), record);
    }

    std::string MethodName(testing::TestParamInfo<char const*> const& test)
    {
        std::string const method = test.param;
        return method.substr(method.rfind('.') + 1);
    }
} // namespace

TEST_P(ClassicStatus, IsReportedWhenItComesAtOnce)
{
    Load(With("classic", GetParam().number, "0"));
    auto const vorlink = MakeLoggingVorlink();
    vorlink->UnpairedCurrent("Tag", UnpairHost::Callback);
    EXPECT_EQ(UnpairHost::Count(), 1u);
    ExpectClassicOutcome(GetParam().number == 0);
    EXPECT_EQ(UnpairHost::At(0).thread, GetCurrentThreadId());
}

TEST_P(ClassicStatus, IsReportedWhenItComesLater)
{
    Load(With("classic", 0, "'never'"));
    auto const vorlink = MakeLoggingVorlink();
    vorlink->UnpairedCurrent("Tag", UnpairHost::Callback);
    ASSERT_TRUE(SimulateUnpairingCompletes(ClassicId(tagAt).c_str(), GetParam().number)) << SimulatorLastError();
    ExpectClassicOutcome(GetParam().number == 0);
    EXPECT_NE(UnpairHost::At(0).thread, GetCurrentThreadId());
}

INSTANTIATE_TEST_SUITE_P(Unpair, ClassicStatus, testing::ValuesIn(statuses), NameOf);

TEST_P(LeStatus, IsReportedWhenItComesAtOnce)
{
    Load(With("le", GetParam().number, "0"));
    auto const vorlink = MakeLoggingVorlink();
    KnowLe(*vorlink, known);
    vorlink->UnpairedCurrent("Tag", UnpairHost::Callback);
    ExpectLeOutcome(GetParam().number == 0);
}

TEST_P(LeStatus, IsReportedWhenItComesLater)
{
    Load(With("le", 0, "'never'"));
    auto const vorlink = MakeLoggingVorlink();
    KnowLe(*vorlink, known);
    vorlink->UnpairedCurrent("Tag", UnpairHost::Callback);
    ASSERT_TRUE(WaitForCall(("UnpairAsync(" + LeId(tagAt)).c_str()));
    ASSERT_TRUE(SimulateUnpairingCompletes(LeId(tagAt).c_str(), GetParam().number)) << SimulatorLastError();
    ExpectLeOutcome(GetParam().number == 0);
}

INSTANTIATE_TEST_SUITE_P(Unpair, LeStatus, testing::ValuesIn(statuses), NameOf);

TEST(UnpairOutcome, OfAnLeEndpointThatIsNotPairedIsFailure)
{
    Load(PairedTag("'classic', 'le'", "[device.le]\nis-paired = false\n"));
    auto const vorlink = MakeLoggingVorlink();
    KnowLe(*vorlink, known);
    vorlink->UnpairedCurrent("Tag", UnpairHost::Callback);
    ExpectLeOutcome(false);
    EXPECT_TRUE(WaitForCall("-> AlreadyUnpaired"));
}

TEST(UnpairOutcome, OfASecondCallBesideTheFirstIsFailure)
{
    Load(With("classic", 0, "'never'"));
    auto const vorlink = MakeLoggingVorlink();
    vorlink->UnpairedCurrent("Tag", UnpairHost::Callback);
    vorlink->UnpairedCurrent("Tag", UnpairHost::Callback);
    ASSERT_TRUE(UnpairHost::WaitFor(1));
    EXPECT_FALSE(UnpairHost::At(0).success);
    ASSERT_TRUE(SimulateUnpairingCompletes(ClassicId(tagAt).c_str(), 0)) << SimulatorLastError();
    ASSERT_TRUE(UnpairHost::WaitFor(2));
    EXPECT_TRUE(UnpairHost::At(1).success);
}

TEST_P(UnpairFailFast, EndsTheProcessAlsoOnTheHostsThread)
{
    auto const directory = DirectoryOfTheTest();
    ExpectFailFast(code, [&] { BeginUnpairing(directory, With("classic", 0, "0"), GetParam()); });
    EXPECT_THAT(LogOf(classicUnpairing), ElementsAre(ClassicRecords(true).at(0)));
}

INSTANTIATE_TEST_SUITE_P(Classic, UnpairFailFast,
                         testing::Values("DeviceInformation.CreateWatcherWithKindAqsFilterAndAdditionalProperties",
                                         "DeviceWatcher.Start", "DeviceInformation.get_Name",
                                         "DeviceInformationPairing.get_IsPaired",
                                         "DeviceInformationPairing.UnpairAsync", "AsyncOperation.GetResults",
                                         "DeviceUnpairingResult.get_Status"),
                         MethodName);

TEST(UnpairFailFastOperation, ThatEndsInErrorEndsTheProcess)
{
    auto const directory = DirectoryOfTheTest();
    ExpectFailFast(code, [&] {
        BeginUnpairing(directory, With("classic", 0, "'never'"));
        SimulateUnpairingFails(ClassicId(tagAt).c_str(), code);
    });
    EXPECT_THAT(LogOf(classicUnpairing), ElementsAre(ClassicRecords(true).at(0)));
}

TEST(UnpairFailFastOperation, ThatEndsForLackOfMemoryEndsTheProcess)
{
    auto const directory = DirectoryOfTheTest();
    ExpectFailFast(E_OUTOFMEMORY, [&] {
        BeginUnpairing(directory, With("classic", 0, "'never'"));
        SimulateUnpairingFails(ClassicId(tagAt).c_str(), E_OUTOFMEMORY);
    });
    EXPECT_THAT(LogOf(classicUnpairing), ElementsAre(ClassicRecords(true).at(0)));
}

// Set while the Classic side waits for its answer, the failure meets the LE side's first call of the method.
TEST_P(LeError, IsRecordedAndNotReported)
{
    // The second is raised as the language's own exception.
    for (auto const error : {code, static_cast<std::int32_t>(E_OUTOFMEMORY)})
    {
        Load(With("classic", 0, "'never'"));
        auto const vorlink = MakeLoggingVorlink();
        KnowLe(*vorlink, known);
        vorlink->UnpairedCurrent("Tag", UnpairHost::Callback);
        ASSERT_TRUE(SimulatorWaitIdle(20'000));
        ASSERT_TRUE(SimulateFailure(GetParam(), error)) << SimulatorLastError();
        ASSERT_TRUE(SimulateUnpairingCompletes(ClassicId(tagAt).c_str(), 0)) << SimulatorLastError();
        ExpectExceptionRecorded(error);
    }
}

INSTANTIATE_TEST_SUITE_P(Le, LeError,
                         testing::Values("DeviceInformation.CreateWatcherWithKindAqsFilterAndAdditionalProperties",
                                         "DeviceWatcher.Start", "DeviceInformation.get_Pairing",
                                         "DeviceInformationPairing.get_IsPaired",
                                         "DeviceInformationPairing.UnpairAsync"),
                         MethodName);

TEST(LeErrorOperation, ThatEndsInErrorIsRecordedAndNotReported)
{
    Load(With("le", 0, "'never'"));
    auto const vorlink = MakeLoggingVorlink();
    KnowLe(*vorlink, known);
    vorlink->UnpairedCurrent("Tag", UnpairHost::Callback);
    ASSERT_TRUE(WaitForCall(("UnpairAsync(" + LeId(tagAt)).c_str()));
    ASSERT_TRUE(SimulateUnpairingFails(LeId(tagAt).c_str(), code)) << SimulatorLastError();
    ExpectExceptionRecorded();
}

TEST(LeErrorOperation, WhoseStatusFailsIsRecordedAndNotReported)
{
    Load(With("le", 0, "'never'"));
    auto const vorlink = MakeLoggingVorlink();
    KnowLe(*vorlink, known);
    vorlink->UnpairedCurrent("Tag", UnpairHost::Callback);
    ASSERT_TRUE(WaitForCall(("UnpairAsync(" + LeId(tagAt)).c_str()));
    ASSERT_TRUE(SimulateFailure("DeviceUnpairingResult.get_Status", code)) << SimulatorLastError();
    ASSERT_TRUE(SimulateUnpairingCompletes(LeId(tagAt).c_str(), 0)) << SimulatorLastError();
    ExpectExceptionRecorded();
}
