#include "host/Nearest.h"

#include <gtest/gtest.h>

using namespace host;

TEST(Nearest, IsTheLikeliest)
{
    std::vector<std::string> const known = {"pair", "unpair", "phones", "--timeout"};
    EXPECT_EQ(Nearest("pairr", known), "pair");
    EXPECT_EQ(Nearest("PHONE", known), "phones");
    EXPECT_EQ(Nearest("--timeot", known), "--timeout");
    EXPECT_EQ(Nearest("unpari", known), "unpair");
}

TEST(Nearest, IsNothingThatIsFar)
{
    EXPECT_EQ(Nearest("dance", {"pair", "phones"}), std::nullopt);
    EXPECT_EQ(Nearest("x", {}), std::nullopt);
}
