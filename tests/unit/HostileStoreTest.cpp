// What the store makes of a file of any text.
#include "tests/unit/HostileFiles.h"

#include <gmock/gmock.h>

#include <string>
#include <string_view>

using namespace test;
using namespace vorlink;
using namespace std::string_view_literals;
using testing::ElementsAre;

namespace
{
    struct HostileStore
    {
        char const* label;
        std::string (*text)();
        LeData (*entries)();
    };

    std::string ManyEntries()
    {
        std::string text;
        for (int index = 0; index < many; ++index)
        {
            text += "Device " + Number(index) + "=Piece " + Number(index) + "\n";
        }
        return text;
    }

    LeData ManyEntriesRead()
    {
        LeData entries;
        for (int index = 0; index < many; ++index)
        {
            entries["Device " + Number(index)] = "Piece " + Number(index);
        }
        return entries;
    }

    LeData NoEntries()
    {
        return {};
    }

    constexpr HostileStore stores[] = {
        {"Empty", Nothing, NoEntries},
        {"WithoutALineEnd", [] { return std::string("AA=BB\nCC=DD"); },
         [] {
             return LeData{{"AA", "BB"}, {"CC", "DD"}};
         }},
        {"OneHugeLine", [] { return Repeated("", 'x'); }, NoEntries},
        {"OneHugeKey", [] { return Repeated("", 'x', "=B"); },
         [] {
             return LeData{{Repeated("", 'x'), "B"}};
         }},
        {"OneHugeValue", [] { return Repeated("A=", 'x'); },
         [] {
             return LeData{{"A", Repeated("", 'x')}};
         }},
        {"EqualsSignsAlone", [] { return Repeated("", '='); }, NoEntries},
        {"LineFeedsAlone", [] { return Repeated("", '\n', "AA=BB"); },
         [] {
             return LeData{{"AA", "BB"}};
         }},
        {"ZeroBytes", [] { return std::string("A\0A=B\0B\n\0\n\0=\0\nCC=DD"sv); },
         [] {
             return LeData{{std::string("A\0A"sv), std::string("B\0B"sv)},
                           {std::string("\0"sv), std::string("\0"sv)},
                           {"CC", "DD"}};
         }},
        {"Utf16",
         [] {
             return std::string("\xff\xfe"
                                "A\0=\0B\0\n\0"sv);
         },
         [] {
             return LeData{{std::string("\xff\xfe"
                                        "A\0"sv),
                            std::string("\0B\0"sv)}};
         }},
        {"ManyEntries", ManyEntries, ManyEntriesRead},
    };

    void PrintTo(HostileStore const& file, std::ostream* stream)
    {
        *stream << file.label;
    }

    using HostileStoreFile = testing::TestWithParam<HostileStore>;
} // namespace

TEST_P(HostileStoreFile, GivesItsEntriesAndKeepsThem)
{
    WriteFile(leDataFile, GetParam().text());
    auto const entries = GetParam().entries();
    Load();
    EXPECT_TRUE(Store() == entries) << Store().size() << " entries";
    Save();
    ClearLeData();
    Load();
    EXPECT_TRUE(Store() == entries) << Store().size() << " entries";
    EXPECT_THAT(Names(), ElementsAre(leDataFile));
}

INSTANTIATE_TEST_SUITE_P(HostileFiles, HostileStoreFile, testing::ValuesIn(stores), labelOfFile);
