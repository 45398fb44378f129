// The LE data store is the library's, not the object's. What it holds, an unpairing tells by its record of the piece.
#include "tests/library/UnpairHost.h"

#include <gmock/gmock.h>

using namespace test;
using testing::Contains;

namespace
{
    // Through this object the store knows "Tag" by this piece; it does not know it when the piece is empty.
    void ExpectPiece(Vorlink& vorlink, std::string const& piece)
    {
        Load(PairedTag("'classic'"));
        vorlink.SetLogEnabled(true);
        vorlink.UnpairedCurrent("Tag", UnpairHost::Callback);
        ASSERT_TRUE(UnpairHost::WaitFor(1));
        EXPECT_THAT(LogOf(classicUnpairing), Contains(Record(1177, classicUnpairing, "device Id -> " + piece)));
    }
} // namespace

TEST(DataStore, IsEmptyToBeginWith)
{
    ExpectPiece(*MakeVorlink(), "");
}

TEST(DataStore, IsSharedByTheObjects)
{
    auto const first = MakeVorlink();
    auto const second = MakeVorlink();
    KnowLe(*first, knownTag);
    ExpectPiece(*second, tagAddress);
}

TEST(DataStore, IsSharedWithAnObjectMadeLater)
{
    auto const first = MakeVorlink();
    KnowLe(*first, knownTag);
    ExpectPiece(*MakeVorlink(), tagAddress);
}

TEST(DataStore, StaysWhenTheObjectThatLoadedItIsReleased)
{
    auto first = MakeVorlink();
    auto const second = MakeVorlink();
    KnowLe(*first, knownTag);
    first.reset();
    ExpectPiece(*second, tagAddress);
}

TEST(DataStore, IsEmptiedForTheOneThatLoadedItByTheOther)
{
    auto const first = MakeVorlink();
    auto const second = MakeVorlink();
    KnowLe(*first, knownTag);
    EXPECT_TRUE(second->Uninitialize());
    ExpectPiece(*first, "");
}

TEST(DataStore, IsEmptiedForTheOtherByTheOneThatLoadedIt)
{
    auto const first = MakeVorlink();
    auto const second = MakeVorlink();
    KnowLe(*first, knownTag);
    EXPECT_TRUE(first->Uninitialize());
    ExpectPiece(*second, "");
}
