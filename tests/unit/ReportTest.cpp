// A pairing's report, byte for byte.
#include "pairing/Report.h"
#include "tests/support/HostileNames.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <new>
#include <string>

using vorlink::MakeReport;

namespace
{
    // The bytes of the two text fields, which lie one behind the other.
    std::string Texts(PairReport const& report)
    {
        auto const* const bytes = reinterpret_cast<char const*>(&report);
        return {bytes + offsetof(PairReport, name), bytes + offsetof(PairReport, addressText) + 256};
    }

    std::string Padded(std::string text, std::size_t size)
    {
        text.resize(size, '\0');
        return text;
    }

    using HostileReport = testing::TestWithParam<test::HostileName>;
} // namespace

TEST(Report, TextsAreZeroFilledToTheEndOfTheirFields)
{
    auto const report = MakeReport(7, true, "Headset", "a4c1");
    EXPECT_EQ(report.address, 7u);
    EXPECT_EQ(report.paired, 1);
    EXPECT_EQ(Texts(report), Padded("Headset", 128) + Padded("a4c1", 256));
}

TEST(Report, NotPairedIsZero)
{
    EXPECT_EQ(MakeReport(0, false, "", "").paired, 0);
}

TEST(Report, TextsWithoutDataAreEmpty)
{
    EXPECT_EQ(Texts(MakeReport(0, false, {}, {})), std::string(384, '\0'));
}

TEST(Report, NameOf127BytesEndsInItsField)
{
    EXPECT_EQ(Texts(MakeReport(0, false, std::string(127, 'n'), "a")),
              Padded(std::string(127, 'n'), 128) + Padded("a", 256));
}

TEST(Report, LongNameRunsOnIntoTheAddressTextWhichIsWrittenOverItsTail)
{
    EXPECT_EQ(Texts(MakeReport(0, false, std::string(200, 'n'), "abc")),
              Padded(std::string(128, 'n') + "abc" + std::string(69, 'n'), 384));
}

TEST(Report, NameOf384BytesFillsBothFields)
{
    EXPECT_EQ(Texts(MakeReport(0, false, std::string(384, 'n'), "")), std::string(384, 'n'));
}

TEST(Report, LongerNameIsCutAtTheEndOfTheFields)
{
    EXPECT_EQ(Texts(MakeReport(0, false, std::string(384, 'n') + "x", "")), std::string(384, 'n'));
}

TEST(Report, AddressTextOf256BytesFillsItsField)
{
    EXPECT_EQ(Texts(MakeReport(0, false, "", std::string(256, 'a'))), std::string(128, '\0') + std::string(256, 'a'));
}

TEST(Report, LongerAddressTextIsCutAtTheEndOfItsField)
{
    EXPECT_EQ(Texts(MakeReport(0, false, "n", std::string(300, 'a'))), Padded("n", 128) + std::string(256, 'a'));
}

TEST_P(HostileReport, HoldsTheFirst384BytesOfTheNameAndNothingBehindThem)
{
    constexpr std::size_t guard = 4096;
    alignas(PairReport) char storage[sizeof(PairReport) + guard];
    std::memset(storage, '!', sizeof storage);
    std::string const name = TextOf(GetParam());
    new (storage) PairReport(MakeReport(7, true, name, ""));
    std::string const texts(storage + offsetof(PairReport, name), storage + sizeof storage);
    constexpr std::size_t padding = 7;
    EXPECT_EQ(texts, Padded(Padded(name, 384), 384 + padding) + std::string(guard, '!'));
}

INSTANTIATE_TEST_SUITE_P(Report, HostileReport, testing::ValuesIn(test::hostileNames), test::labelOfName);
