// The address in an endpoint's identifier.
#include "pairing/EndpointAddress.h"

#include <gtest/gtest.h>

using vorlink::AddressOf;

TEST(EndpointAddress, IsTheSecondPieceWithoutColons)
{
    auto const address = AddressOf("Bluetooth#Bluetooth00:1a:7d:da:71:13-a4:c1:38:5e:22:0f");
    EXPECT_EQ(address.text, "a4c1385e220f");
    EXPECT_EQ(address.number, 181149781336591u);
}

TEST(EndpointAddress, KeepsTheLetterCase)
{
    EXPECT_EQ(AddressOf("x-A4:c1:38:5E:22:0f").text, "A4c1385E220f");
}

TEST(EndpointAddress, SecondPieceWithoutColonsIsUsedWhole)
{
    auto const address = AddressOf("x-a4c1385e220f");
    EXPECT_EQ(address.text, "a4c1385e220f");
    EXPECT_EQ(address.number, 0xa4c1385e220fu);
}

TEST(EndpointAddress, PiecesBehindTheSecondAreIgnored)
{
    EXPECT_EQ(AddressOf("x-00:11-22:33").text, "0011");
}

TEST(EndpointAddress, IdentifierWithoutDashHasNone)
{
    auto const address = AddressOf("Bluetooth#Bluetooth00:1a:7d:da:71:13");
    EXPECT_EQ(address.text, "");
    EXPECT_EQ(address.number, 0u);
}

TEST(EndpointAddress, EmptyIdentifierHasNone)
{
    EXPECT_EQ(AddressOf("").text, "");
}

TEST(EndpointAddress, NumberEndsAtTheFirstOtherCharacter)
{
    auto const address = AddressOf("x-12:zz:34");
    EXPECT_EQ(address.text, "12zz34");
    EXPECT_EQ(address.number, 0x12u);
}

TEST(EndpointAddress, NoDigitsIsZero)
{
    auto const address = AddressOf("x-pad");
    EXPECT_EQ(address.text, "pad");
    EXPECT_EQ(address.number, 0u);
}
