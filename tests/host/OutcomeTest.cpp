#include "host/Meanings.h"
#include "host/Outcome.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cstring>
#include <map>
#include <optional>
#include <set>

using namespace host;
using std::nullopt;
using testing::HasSubstr;
using testing::IsEmpty;
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
    auto const outcome = DescribePairing(Report(0x0000385e220f, true, "Speaker", ""), "Speaker", nullopt, nullopt);
    EXPECT_EQ(outcome.code, ExitCode::Done);
    EXPECT_EQ(outcome.text, "Paired \"Speaker\" (00:00:38:5e:22:0f).");
    EXPECT_THAT(outcome.warnings, IsEmpty());
}

TEST(Outcome, NotPairedPrintsTheAddressAsThePlatformWroteIt)
{
    auto const outcome =
        DescribePairing(Report(address, false, "Speaker", "A4C1385E220F"), "Speaker", nullopt, "Failed");
    EXPECT_EQ(outcome.code, ExitCode::Refused);
    EXPECT_THAT(outcome.text, HasSubstr("\"Speaker\" (A4:C1:38:5E:22:0F)"));
}

TEST(Outcome, ADeviceWithoutAnAddressThatReadsIsStillFound)
{
    auto const outcome = DescribePairing(Report(0, false, "Speaker", "xyz"), "Speaker", nullopt, nullopt);
    EXPECT_EQ(outcome.code, ExitCode::Refused);
    EXPECT_THAT(outcome.text, HasSubstr("\"Speaker\" (xyz)"));
}

TEST(Outcome, NothingFoundNamesWhatWasAskedFor)
{
    auto const outcome = DescribePairing(Report(0, false, "Speaker", ""), "Speaker", nullopt, nullopt);
    EXPECT_EQ(outcome.code, ExitCode::NotFound);
    EXPECT_EQ(outcome.text, "Not found: no Bluetooth device named \"Speaker\".");
}

TEST(Outcome, ANameThatRunsOnIntoTheAddressTextIsNoAddress)
{
    std::string const name(150, 'n');
    auto const describe = [&](std::uint64_t number, bool paired, std::string const& text) {
        return DescribePairing(Report(number, paired, name, text), name, nullopt, "Failed");
    };
    EXPECT_EQ(describe(0, false, "").code, ExitCode::NotFound);
    EXPECT_THAT(describe(address, true, "").text, HasSubstr("(a4:c1:38:5e:22:0f)"));
    EXPECT_THAT(describe(address, false, "a4c1385e220f").text, HasSubstr("(a4:c1:38:5e:22:0f)"));
}

TEST(Outcome, EachStatusIsSaidByItsNameAndMeaning)
{
    for (auto const& meaning : Meanings())
    {
        if (meaning.family != Family::Pairing || meaning.name == "Paired")
        {
            continue;
        }
        auto const outcome = DescribePairing(Report(address, false, "Speaker", "a4c1385e220f"), "Speaker", nullopt,
                                             std::string(meaning.name));
        EXPECT_EQ(outcome.name, meaning.name);
        EXPECT_EQ(outcome.code, meaning.code);
        EXPECT_EQ(outcome.next, meaning.next);
        EXPECT_THAT(outcome.text, HasSubstr(std::string(meaning.meaning)));
    }
}

TEST(Outcome, ALogThatSaysPairedDoesNotOutdoTheReport)
{
    auto const outcome =
        DescribePairing(Report(address, false, "Speaker", "a4c1385e220f"), "Speaker", nullopt, "Paired");
    EXPECT_EQ(outcome.name, "Unknown");
    EXPECT_EQ(outcome.code, ExitCode::Refused);
}

TEST(Outcome, AlreadyPairedIsSaidAsWhatItIs)
{
    auto const outcome =
        DescribePairing(Report(address, false, "Speaker", "a4c1385e220f"), "Speaker", nullopt, "AlreadyPaired");
    EXPECT_THAT(outcome.text, StartsWith("Already paired: \"Speaker\" (a4:c1:38:5e:22:0f); "));
    EXPECT_EQ(outcome.code, ExitCode::Refused);
}

TEST(Outcome, TheDevicesOwnNameIsPrintedAndADifferenceIsAWarning)
{
    auto const outcome = DescribePairing(Report(address, true, "Living Room TV", ""), "Living Room TV",
                                         Match{"Living Room TV Soundbar", "a4:c1:38:5e:22:0f", false}, nullopt);
    EXPECT_EQ(outcome.text, "Paired \"Living Room TV Soundbar\" (a4:c1:38:5e:22:0f).");
    ASSERT_EQ(outcome.warnings.size(), 1u);
    EXPECT_THAT(outcome.warnings[0], HasSubstr("\"Living Room TV Soundbar\", not \"Living Room TV\""));
    EXPECT_EQ(outcome.facts["asked"], "Living Room TV");
    EXPECT_EQ(outcome.facts["name"], "Living Room TV Soundbar");
}

TEST(Outcome, AStatusOfALaterPlatformIsNotGuessed)
{
    auto const outcome = DescribeOwnPairing("Speaker", "a4:c1:38:5e:22:0f", 20);
    EXPECT_EQ(outcome.name, "Unknown");
    EXPECT_EQ(outcome.code, ExitCode::Refused);
}

TEST(Outcome, AnUnpairingSaysWhatBecameOfEachSide)
{
    Match const tag{"Tag", "c1:d2:e3:f4:a5:b6", true};
    auto const text = [&](bool success, LeUnpairing const& le) { return DescribeUnpairing(success, "Tag", tag, le); };
    EXPECT_EQ(text(true, {LeSide::NotKnown, ""}).text, "Unpaired \"Tag\" (c1:d2:e3:f4:a5:b6): its Classic side.");
    EXPECT_EQ(text(true, {LeSide::Unpaired, "C1"}).text,
              "Unpaired \"Tag\" (c1:d2:e3:f4:a5:b6): its Classic side and its LE side, C1.");
    EXPECT_EQ(text(true, {LeSide::NotFound, "C1"}).warnings.size(), 1u);
    EXPECT_EQ(text(false, {LeSide::Refused, "C1"}).name, "LeRefused");
    EXPECT_EQ(text(false, {}).name, "Refused");
    EXPECT_EQ(DescribeUnpairing(false, "Tag", Match{"Tag", "", false}, {}).name, "AlreadyUnpaired");
}

TEST(Outcome, NoAnswerSaysWhatWasPending)
{
    auto const outcome =
        DescribeSilence("PairingPending", "Speaker", nullopt, "the pairing of \"Speaker\" did not end.");
    EXPECT_EQ(outcome.text, "No answer: the pairing of \"Speaker\" did not end.");
    EXPECT_THAT(outcome.next, StartsWith("The device was found and asked"));
    EXPECT_EQ(outcome.code, ExitCode::NoAnswer);
}

TEST(Outcome, AFailureOfTheSimulatorPointsToItsScenario)
{
    EXPECT_THAT(DescribeFailure("0x80070057", true).next, HasSubstr("scenario check"));
    EXPECT_THAT(DescribeFailure("0x80070057", false).next, HasSubstr("Bluetooth is switched on"));
}

TEST(Outcome, AMissingPlatformIsSaidInWords)
{
    EXPECT_THAT(DescribeFailure("0x80040154", false).next, HasSubstr("lacks Windows.Devices.Enumeration"));
    EXPECT_THAT(DescribeFailure("0x80004002: No such interface", false).next, HasSubstr("not the real platform"));
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
    EXPECT_EQ(DescribeList(0, true).text, "No device found.");
    EXPECT_EQ(DescribeList(0, true).code, ExitCode::NotFound);
    EXPECT_EQ(DescribeList(0, false).code, ExitCode::NotFound);
}

TEST(Meanings, HaveTheTwentyAndTheFiveOfThePlatform)
{
    std::map<Family, std::set<int>> values;
    for (auto const& meaning : Meanings())
    {
        if (meaning.family != Family::Silence)
        {
            EXPECT_TRUE(values[meaning.family].insert(meaning.value).second) << meaning.name;
        }
        EXPECT_FALSE(meaning.meaning.empty() || meaning.next.empty()) << meaning.name;
    }
    EXPECT_EQ(values[Family::Pairing].size(), 20u);
    EXPECT_EQ(*values[Family::Pairing].rbegin(), 19);
    EXPECT_EQ(values[Family::Unpairing].size(), 5u);
    EXPECT_EQ(*values[Family::Unpairing].rbegin(), 4);
}
