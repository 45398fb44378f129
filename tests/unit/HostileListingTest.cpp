// What the lookup makes of a listing of any text, and of one that is none.
#include "tests/unit/HostileFiles.h"

#include <gmock/gmock.h>

#include <string>
#include <string_view>

using namespace test;
using namespace vorlink;
using namespace std::string_view_literals;
using testing::ElementsAre;
using testing::Pair;
using testing::UnorderedElementsAre;

namespace
{
    struct HostileListing
    {
        char const* label;
        std::string (*text)();
        std::string (*piece)(); // that is learnt; none when it is empty
    };

    std::string ManyDevices()
    {
        std::string text;
        for (int index = 0; index < many; ++index)
        {
            text += "BTHLE\\Dev_a&b&c&" + Number(index) + "\r\n?? LE ??\r\n\r\n";
        }
        return text;
    }

    constexpr HostileListing listings[] = {
        {"Empty", Nothing, Nothing},
        {"WithoutALineEnd", [] { return std::string("BTHLE\\Dev_a&b&c&C1\n?? LE ??"); },
         [] { return std::string("C1"); }},
        {"EndingBehindTheIdentifier", [] { return std::string("BTHLE\\Dev_a&b&c&C1"); }, Nothing},
        {"OneHugeLine", [] { return Repeated("", 'x'); }, Nothing},
        {"OneHugeIdentifier", [] { return Repeated("BTHLE\\Dev_a&b&c&", 'C', "\n?? LE ??\n"); },
         [] { return Repeated("", 'C'); }},
        {"OneHugeDescription", [] { return Repeated("BTHLE\\Dev_a&b&c&C1\n", 'x', "?? LE ??\n"); },
         [] { return std::string("C1"); }},
        {"ManyPieces", [] { return "BTHLE\\Dev_a&b&c&C1" + std::string(many, '&') + "\n?? LE ??\n"; },
         [] { return std::string("C1"); }},
        {"ZeroBytes",
         [] {
             return std::string("\0\nBTHLE\\Dev_a\0&b&c&C\0"
                                "1\n\0?? LE ??\0\n"sv);
         },
         [] {
             return std::string("C\0"
                                "1"sv);
         }},
        {"ManyDevices", ManyDevices, [] { return Number(many - 1); }},
    };

    void PrintTo(HostileListing const& file, std::ostream* stream)
    {
        *stream << file.label;
    }

    using HostileListingFile = testing::TestWithParam<HostileListing>;
} // namespace

TEST_P(HostileListingFile, TeachesItsLastPiece)
{
    LookAt(GetParam().text());
    auto const piece = GetParam().piece();
    auto const expected = piece.empty() ? LeData() : LeData{{"Tag", piece}};
    EXPECT_TRUE(Store() == expected) << GetLeData("Tag").substr(0, 40);
    EXPECT_TRUE(ReadFile(leDataFile) == (piece.empty() ? "" : "Tag=" + piece + "\n"));
    EXPECT_THAT(Names(), ElementsAre(leDataFile));
}

INSTANTIATE_TEST_SUITE_P(HostileFiles, HostileListingFile, testing::ValuesIn(listings), labelOfFile);

TEST(HostileFiles, FolderInTheListingsPlaceTeachesNothing)
{
    std::filesystem::create_directory(listingFile);
    Store() = {{"AA", "BB"}};
    Look(RunNothing);
    EXPECT_THAT(Store(), ElementsAre(Pair("AA", "BB")));
    EXPECT_THAT(Names(), ElementsAre(listingFile)) << "nothing is saved either";
}

TEST(HostileFiles, ReadOnlyListingIsReadAndLeft)
{
    WriteFile(listingFile, oneDevice);
    MakeReadOnly(listingFile);
    Look(RunNothing);
    EXPECT_THAT(Store(), ElementsAre(Pair("Tag", "C1")));
    EXPECT_THAT(Names(), UnorderedElementsAre(leDataFile, listingFile));
}
