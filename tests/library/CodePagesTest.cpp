// Which text of a match is written, and compared, in which code page.
#include "tests/support/CodePages.h"
#include "tests/support/Host.h"
#include "tests/support/LogFile.h"
#include "tests/support/Neighbourhood.h"

#include <gmock/gmock.h>

#include <windows.h>

using namespace test;
using testing::ElementsAre;

namespace
{
    constexpr wchar_t name[] = L"K\u00fcche";
    constexpr wchar_t identifier[] = L"Bluetooth#Bluetooth\u00fc-a4:c1:38:5e:22:0f";

    // Pairs with the device of the name above, asked for by `requested`.
    PairReport Pair(std::string const& requested)
    {
        Load(prompt +
             Device(In(CP_UTF8, name), "a4:c1:38:5e:22:0f",
                    "[device.pairing]\nduration-ms = 0\n[device.classic]\nid = '" + In(CP_UTF8, identifier) + "'"));
        auto const vorlink = MakeLoggingVorlink();
        vorlink->PairedDevice(requested, Host::Callback);
        EXPECT_EQ(Host::Count(), 1u);
        return Host::At(0);
    }
} // namespace

TEST(CodePages, RequestedNameMatchesInTheOemPage)
{
    auto const requested = In(CP_OEMCP, name);
    EXPECT_EQ(Pair(requested).paired, 1);
    EXPECT_EQ(Text(Host::At(0).name), requested);
}

TEST(CodePages, RequestedNameInUtf8DoesNotMatchWhereThatIsNotTheOemPage)
{
    if (GetOEMCP() == CP_UTF8)
    {
        GTEST_SKIP() << "UTF-8 is the OEM code page here";
    }
    EXPECT_EQ(Pair(In(CP_UTF8, name)).paired, 0);
}

TEST(CodePages, RequestedNameInTheAnsiPageDoesNotMatchWhereThatDiffersFromTheOemPage)
{
    if (In(CP_ACP, name) == In(CP_OEMCP, name))
    {
        GTEST_SKIP() << "the two pages write this name alike here";
    }
    EXPECT_EQ(Pair(In(CP_ACP, name)).paired, 0);
}

TEST(CodePages, CandidateIsRecordedInTheAnsiPageItsMatchInTheOemPageItsIdentifierInUtf8)
{
    auto const oem = In(CP_OEMCP, name);
    Pair(oem);
    EXPECT_THAT(LogOf(lookup), ElementsAre(Record(399, lookup, oem), Record(416, lookup, In(CP_ACP, name)),
                                           Record(435, lookup, "tname  is " + oem + " ,name is " + oem + " "),
                                           Record(437, lookup,
                                                  "CLassic id is: " + In(CP_UTF8, identifier) +
                                                      "  ,pair status : 1 , isPaired is:  0")));
}
