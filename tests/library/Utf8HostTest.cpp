// Names outside ASCII, for a host in the UTF-8 code page: the requested bytes and the device's are UTF-8 then, and the
// length that decides how they are compared is counted in them, not in characters. This program's manifest asks for
// that page, as vorlinkctl's does.
#include "tests/support/Host.h"
#include "tests/support/LogFile.h"
#include "tests/support/Neighbourhood.h"

#include <gmock/gmock.h>

using namespace test;
using testing::ElementsAre;

namespace
{
    constexpr char address[] = "a4:c1:38:5e:22:0f";

    std::string const fourteenBytes = "Zo\xc3\xab's Speaker"; // 13 characters
    std::string const thirteenBytes = "Zo\xc3\xab's Camera";  // 12 characters

    // With the log on.
    bool Finds(std::string const& device, std::string const& name)
    {
        EXPECT_EQ(GetOEMCP(), static_cast<UINT>(CP_UTF8));
        Load(prompt + Device(device, address, pairsAtOnce));
        auto const vorlink = MakeLoggingVorlink();
        vorlink->PairedDevice(name, Host::Callback);
        EXPECT_EQ(Host::Count(), 1u);
        EXPECT_EQ(Text(Host::At(0).name), name);
        return Host::At(0).paired == 1;
    }

    // All of a lookup's records when the device is found, by the lines of the last two.
    void ExpectRecords(std::string const& device, std::string const& name, int names, int state)
    {
        EXPECT_THAT(LogOf(lookup), ElementsAre(Record(399, lookup, name), Record(416, lookup, device),
                                               Record(names, lookup, "tname  is " + device + " ,name is " + name + " "),
                                               Record(state, lookup,
                                                      "CLassic id is: " + ClassicId(address) +
                                                          "  ,pair status : 1 , isPaired is:  0")));
    }
} // namespace

TEST(Utf8Host, NameOfFourteenBytesAndFewerCharactersIsFoundInALongerOne)
{
    ASSERT_EQ(fourteenBytes.size(), 14u);
    EXPECT_TRUE(Finds("My " + fourteenBytes + " 2", fourteenBytes));
    ExpectRecords("My " + fourteenBytes + " 2", fourteenBytes, 444, 446);
}

TEST(Utf8Host, NameOfThirteenBytesIsNotFoundInALongerOne)
{
    ASSERT_EQ(thirteenBytes.size(), 13u);
    EXPECT_FALSE(Finds("My " + thirteenBytes + " 2", thirteenBytes));
    EXPECT_THAT(LogOf(lookup),
                ElementsAre(Record(399, lookup, thirteenBytes), Record(416, lookup, "My " + thirteenBytes + " 2")));
}

TEST(Utf8Host, NameOfThirteenBytesMustBeEqual)
{
    EXPECT_TRUE(Finds(thirteenBytes, thirteenBytes));
    ExpectRecords(thirteenBytes, thirteenBytes, 435, 437);
}
