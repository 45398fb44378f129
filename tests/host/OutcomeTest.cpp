#include "host/Outcome.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cstring>

using namespace host;
using testing::HasSubstr;
using testing::StartsWith;

namespace
{
    PairReport Report(std::uint64_t address, bool paired, std::string const& name, std::string const& addressText)
    {
        PairReport report{};
        report.address = address;
        report.paired = paired ? 1 : 0;
        std::memcpy(report.name, name.data(), std::min(name.size(), sizeof report.name));
        if (name.size() > sizeof report.name)
        {
            std::memcpy(report.addressText, name.data() + sizeof report.name, name.size() - sizeof report.name);
        }
        std::memcpy(report.addressText, addressText.data(), addressText.size());
        return report;
    }

    constexpr std::uint64_t address = 0xa4c1385e220f;
} // namespace

TEST(Outcome, PairedPrintsTheNumberAsAnAddress)
{
    auto const outcome = DescribeReport(Report(0x0000385e220f, true, "Speaker", ""), "Speaker");
    EXPECT_EQ(outcome.code, ExitCode::Done);
    EXPECT_EQ(outcome.text, "Paired \"Speaker\" (00:00:38:5e:22:0f).");
}

TEST(Outcome, NotPairedPrintsTheAddressAsThePlatformWroteIt)
{
    auto const outcome = DescribeReport(Report(address, false, "Speaker", "A4C1385E220F"), "Speaker");
    EXPECT_EQ(outcome.code, ExitCode::Refused);
    EXPECT_THAT(outcome.text, HasSubstr("\"Speaker\" (A4:C1:38:5E:22:0F)"));
}

TEST(Outcome, ADeviceWithoutAnAddressThatReadsIsStillFound)
{
    auto const outcome = DescribeReport(Report(0, false, "Speaker", "xyz"), "Speaker");
    EXPECT_EQ(outcome.code, ExitCode::Refused);
    EXPECT_THAT(outcome.text, HasSubstr("\"Speaker\" (xyz)"));
}

TEST(Outcome, NothingFoundNamesWhatWasAskedFor)
{
    auto const outcome = DescribeReport(Report(0, false, "Speaker", ""), "Speaker");
    EXPECT_EQ(outcome.code, ExitCode::NotFound);
    EXPECT_THAT(outcome.text, StartsWith("Not found: no Bluetooth device named \"Speaker\"."));
}

TEST(Outcome, ANameThatRunsOnIntoTheAddressTextIsNoAddress)
{
    std::string const name(150, 'n');
    EXPECT_EQ(DescribeReport(Report(0, false, name, ""), name).code, ExitCode::NotFound);
    EXPECT_THAT(DescribeReport(Report(address, true, name, ""), name).text, HasSubstr("(a4:c1:38:5e:22:0f)"));
    EXPECT_THAT(DescribeReport(Report(address, false, name, "a4c1385e220f"), name).text,
                HasSubstr("(a4:c1:38:5e:22:0f)"));
}

TEST(Outcome, NoAnswerSaysWhatWasPending)
{
    EXPECT_THAT(DescribeNoAnswer("Speaker", 60, nullptr).text, HasSubstr("the search for \"Speaker\""));
    EXPECT_THAT(DescribeNoAnswer("Speaker", 60, "pairing").text, HasSubstr("the pairing of \"Speaker\""));
    EXPECT_EQ(DescribeNoAnswer("Speaker", 60, "pairing").code, ExitCode::NoAnswer);
}

TEST(Outcome, AListIsCounted)
{
    EXPECT_EQ(DescribeList(1, true).text, "1 device found.");
    EXPECT_EQ(DescribeList(2, true).text, "2 devices found.");
    EXPECT_EQ(DescribeList(2, false).text, "2 devices found so far; the search was ended early.");
    EXPECT_EQ(DescribeList(2, false).code, ExitCode::Done);
}

TEST(Outcome, AnEmptyListIsNothingFound)
{
    EXPECT_THAT(DescribeList(0, true).text, StartsWith("No device found.\n"));
    EXPECT_EQ(DescribeList(0, true).code, ExitCode::NotFound);
    EXPECT_EQ(DescribeList(0, false).code, ExitCode::NotFound);
}

TEST(Outcome, AnInterruptedSearchIsNoAnswer)
{
    EXPECT_EQ(DescribeInterruption("Speaker").code, ExitCode::NoAnswer);
    EXPECT_EQ(DescribeInterruption("Speaker").text, "Interrupted: \"Speaker\" was not paired.");
}
