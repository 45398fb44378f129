// The selectors of discovery runs, character by character.
#include "pairing/Selector.h"

#include <gtest/gtest.h>

#include <string>

using vorlink::Selector;

TEST(Selector, ClassicProtocolOnlyEndsInABlank)
{
    std::wstring const text = Selector(false, true);
    EXPECT_EQ(text, L"(System.Devices.Aep.ProtocolId:= \"{e0cbf06c-cd8b-4647-bb8a-263b43f0f974}\") ");
    EXPECT_EQ(text.size(), 75u);
}

TEST(Selector, ClassicPairableOrPaired)
{
    std::wstring const text = Selector(false, false);
    EXPECT_EQ(text, L"(System.Devices.Aep.ProtocolId:= \"{e0cbf06c-cd8b-4647-bb8a-263b43f0f974}\") "
                    L"AND(System.Devices.Aep.CanPair:= System.StructuredQueryType.Boolean#True OR "
                    L"System.Devices.Aep.IsPaired:=System.StructuredQueryType.Boolean#True)");
    EXPECT_EQ(text.size(), 220u);
}

TEST(Selector, LeProtocolOnlyEndsInABlank)
{
    std::wstring const text = Selector(true, true);
    EXPECT_EQ(text, L"(System.Devices.Aep.ProtocolId:=\"{bb7bb05e-5972-42b5-94fc-76eaa7084d49}\") ");
    EXPECT_EQ(text.size(), 74u);
}

TEST(Selector, LePairableOrPaired)
{
    std::wstring const text = Selector(true, false);
    EXPECT_EQ(text, L"(System.Devices.Aep.ProtocolId:=\"{bb7bb05e-5972-42b5-94fc-76eaa7084d49}\") "
                    L"AND (System.Devices.Aep.CanPair:=System.StructuredQueryType.Boolean#True OR "
                    L"System.Devices.Aep.IsPaired:=System.StructuredQueryType.Boolean#True)");
    EXPECT_EQ(text.size(), 219u);
}
