// What a device may ask of its user, kind by kind: the library offers a confirmation alone, and answers by itself.
#include "platform/abi/Enumeration.h"
#include "tests/support/Endpoints.h"
#include "tests/support/Host.h"
#include "tests/support/LogFile.h"
#include "tests/support/Neighbourhood.h"
#include "tests/support/ReplacedMethod.h"
#include "tests/support/Trace.h"

#include <gmock/gmock.h>

using namespace test;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

namespace
{
    constexpr char address[] = "a4:c1:38:5e:22:0f";

    using platform::DevicePairingKinds;
    using PairMethod = HRESULT STDMETHODCALLTYPE(platform::IDeviceInformationCustomPairing*, DevicePairingKinds,
                                                 platform::DevicePairingProtectionLevel, platform::PairingOperation**);

    PairMethod* platformsOwn = nullptr;

    HRESULT STDMETHODCALLTYPE PairAsIfAllWereOffered(platform::IDeviceInformationCustomPairing* custom,
                                                     DevicePairingKinds kinds,
                                                     platform::DevicePairingProtectionLevel level,
                                                     platform::PairingOperation** operation)
    {
        EXPECT_EQ(kinds, DevicePairingKinds::ConfirmOnly);
        return platformsOwn(custom, static_cast<DevicePairingKinds>(63), level, operation);
    }

    // The platform refuses a device whose kind is not offered. From now on it raises the request all the same.
    void RaiseWhatIsNotOffered()
    {
        constexpr std::size_t pairWithProtectionLevelAsync = 7;
        Load(TwoDevices());
        Watcher watcher;
        auto const custom = watcher.Devices().at(0).Pairing().Custom();
        platformsOwn = ReplaceMethod(winrt::get_abi(custom), pairWithProtectionLevelAsync, PairAsIfAllWereOffered);
    }

    // Pairs with a device of this kind, which agrees at once; the calls of its request.
    std::vector<std::string> PairWithKind(std::string const& kind)
    {
        Load(prompt + Device("Headset", address, "[device.pairing]\nduration-ms = 0\nkind = '" + kind + "'"));
        auto const vorlink = MakeLoggingVorlink();
        vorlink->PairedDevice("Headset", Host::Callback);
        EXPECT_EQ(Host::Count(), 1u);
        EXPECT_TRUE(WaitIdle());
        return Trace({"DevicePairingRequestedEventArgs."});
    }

    void ExpectNotPaired(std::string const& status, int line)
    {
        auto const report = Host::At(0);
        EXPECT_EQ(report.paired, 0);
        EXPECT_EQ(report.address, 0xa4c1385e220fu);
        EXPECT_EQ(Text(report.addressText), "a4c1385e220f");
        EXPECT_THAT(LogOf(ceremony), ElementsAre(Record(line, ceremony, "DevicePairingResultStatus::" + status)));
        EXPECT_THAT(Trace(), Contains("DevicePairingResult.get_Status(" + ClassicId(address) + ") -> " + status));
    }

    std::string KindRead(std::string const& kind)
    {
        return "DevicePairingRequestedEventArgs.get_PairingKind(" + ClassicId(address) + ") -> " + kind;
    }

    using KindNotOffered = testing::TestWithParam<char const*>;
    using KindForAUser = testing::TestWithParam<char const*>;

    std::string Kind(testing::TestParamInfo<char const*> const& test)
    {
        return test.param;
    }
} // namespace

TEST_P(KindNotOffered, IsRefusedByThePlatformWithoutARequest)
{
    EXPECT_THAT(PairWithKind(GetParam()), IsEmpty());
    EXPECT_THAT(Trace({"! DeviceInformationCustomPairing.PairingRequested"}), IsEmpty());
    ExpectNotPaired("RequiredHandlerNotRegistered", 1023);
}

INSTANTIATE_TEST_SUITE_P(Ceremony, KindNotOffered,
                         testing::Values("DisplayPin", "ProvidePin", "ConfirmPinMatch", "ProvidePasswordCredential",
                                         "ProvideAddress"),
                         Kind);

TEST(CeremonyKinds, ShownPinIsAcceptedWithoutBeingReadShouldItBeRaised)
{
    RaiseWhatIsNotOffered();
    EXPECT_THAT(
        PairWithKind("DisplayPin"),
        ElementsAre(KindRead("DisplayPin"), "DevicePairingRequestedEventArgs.Accept(" + ClassicId(address) + ")"));
    EXPECT_EQ(Host::At(0).paired, 1);
    EXPECT_EQ(Text(Host::At(0).name), "Headset");
    EXPECT_EQ(Text(Host::At(0).addressText), "");
    EXPECT_THAT(LogOf(ceremony), ElementsAre(Record(796, ceremony, "DevicePairingResultStatus::Paired")));
}

TEST_P(KindForAUser, IsLeftUnansweredShouldItBeRaised)
{
    RaiseWhatIsNotOffered();
    EXPECT_THAT(PairWithKind(GetParam()), ElementsAre(KindRead(GetParam())));
    ExpectNotPaired("RejectedByHandler", 996);
}

INSTANTIATE_TEST_SUITE_P(Ceremony, KindForAUser,
                         testing::Values("ProvidePin", "ConfirmPinMatch", "ProvidePasswordCredential",
                                         "ProvideAddress"),
                         Kind);
