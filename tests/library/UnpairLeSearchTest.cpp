// Which endpoint the LE side of an unpairing finds, and how long it looks.
#include "tests/library/UnpairHost.h"
#include "tests/support/Trace.h"

#include <gmock/gmock.h>

#include <chrono>

using namespace test;
using testing::Contains;
using testing::ElementsAre;
using testing::SizeIs;

TEST(UnpairLe, FindsTheEndpointByAnyPartOfItsIdentifier)
{
    auto const vorlink = UnpairTag(PairedTag("'classic', 'le'"), "Tag=f4:a5\n");
    ASSERT_TRUE(UnpairHost::WaitFor(1));
    EXPECT_TRUE(UnpairHost::At(0).success);
    EXPECT_THAT(Trace({"DeviceInformationPairing.UnpairAsync("}), SizeIs(2));
}

TEST(UnpairLe, FindsAnIdentifierWithTheListingsPiece)
{
    auto const vorlink =
        UnpairTag(PairedTag("'classic', 'le'", "[device.le]\nid = 'BluetoothLE#BluetoothLE-C1D2E3F4A5B6'\n"),
                  "Tag=C1D2E3F4A5B6\n");
    ASSERT_TRUE(UnpairHost::WaitFor(1));
    EXPECT_THAT(Trace({"DeviceInformationPairing.UnpairAsync("}), SizeIs(2));
}

TEST(UnpairLe, StoresPieceIsTheOneUnderTheRequestedNameNotTheDevices)
{
    Load(prompt + Device("Kitchen Speaker 2 (left)", tagAddress,
                         "protocols = ['classic', 'le']\nis-paired = true\n[device.unpairing]\nduration-ms = 0"));
    auto const vorlink = MakeLoggingVorlink();
    KnowLe(*vorlink, "Kitchen Speaker 2=" + std::string(tagAddress) + "\nKitchen Speaker 2 (left)=nowhere\n");
    vorlink->UnpairedCurrent("Kitchen Speaker 2", UnpairHost::Callback);
    ASSERT_TRUE(UnpairHost::WaitFor(1));
    EXPECT_THAT(LogOf(classicUnpairing),
                Contains(Record(1177, classicUnpairing, "device Id -> " + std::string(tagAddress))));
    EXPECT_THAT(Trace({"DeviceInformationPairing.UnpairAsync("}),
                ElementsAre("DeviceInformationPairing.UnpairAsync(" + ClassicId(tagAddress) + ")",
                            "DeviceInformationPairing.UnpairAsync(" + LeId(tagAddress) + ")"));
}

TEST(UnpairLe, EndpointThatIsNotThereCountsAsSuccess)
{
    auto const vorlink = UnpairTag(PairedTag("'classic'"));
    ASSERT_TRUE(UnpairHost::WaitFor(1));
    auto const call = UnpairHost::At(0);
    EXPECT_TRUE(call.success);
    EXPECT_EQ(call.reserved, 0);
    std::vector<std::string> const records = {
        Record(1066, leUnpairing, "ble   destStr is " + std::string(tagAddress) + " "),
        Record(1071, leUnpairing, "unpaired device failed")};
    EXPECT_EQ(LogOf(leUnpairing, call.log), records);
    EXPECT_TRUE(UnpairHost::StaysAt(1));
    EXPECT_EQ(LogOf(leUnpairing), records);
}

TEST(UnpairLe, PieceOfAListingIsNoPartOfTheUsualIdentifier)
{
    auto const vorlink = UnpairTag(PairedTag("'classic', 'le'"), "Tag=C1D2E3F4A5B6\n");
    ASSERT_TRUE(UnpairHost::WaitFor(1));
    EXPECT_TRUE(UnpairHost::At(0).success);
    EXPECT_THAT(Trace({"DeviceInformationPairing.UnpairAsync("}),
                ElementsAre("DeviceInformationPairing.UnpairAsync(" + ClassicId(tagAddress) + ")"));
}

TEST(UnpairLe, IdentifierThatIsNotLeIsPassedOver)
{
    auto const vorlink =
        UnpairTag(PairedTag("'classic', 'le'", "[device.le]\nid = 'Bluetooth#odd-" + std::string(tagAddress) + "'\n"));
    ASSERT_TRUE(UnpairHost::WaitFor(1));
    EXPECT_TRUE(UnpairHost::At(0).success);
    EXPECT_THAT(Trace({"DeviceInformationPairing.UnpairAsync("}), SizeIs(1));
}

TEST(SlowUnpairLe, LookupEndsAtTheLatestThreeSecondsAfterTheClassicRunBegan)
{
    auto const start = std::chrono::steady_clock::now();
    auto const vorlink = UnpairTag(PairedTag("'classic'", "", patient));
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(2000)) << "the host is not held up";
    ASSERT_TRUE(UnpairHost::WaitFor(1));
    auto const duration = std::chrono::steady_clock::now() - start;
    EXPECT_GE(duration, std::chrono::milliseconds(2990));
    EXPECT_LT(duration, std::chrono::milliseconds(5000));
    EXPECT_TRUE(UnpairHost::At(0).success);
}
