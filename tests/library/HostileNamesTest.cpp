// Names that hosts' users ask for and no device has: reported and recorded, and nothing more.
#include "tests/library/HostileNames.h"
#include "tests/library/PhoneSearch.h"
#include "tests/library/UnpairHost.h"

using namespace test;

namespace
{
    class HostileRequest : public testing::TestWithParam<HostileName>
    {
    protected:
        std::string const name = TextOf(GetParam());
        std::string const shown = Shown(name);
        std::string const ana = Device("Ana", addressA, "is-paired = true");
    };
} // namespace

TEST_P(HostileRequest, OfAPairingIsNotFound)
{
    Load(prompt + ana);
    MakeLoggingVorlink()->PairedDevice(name, Host::Callback);
    ASSERT_EQ(Host::Count(), 1u);
    ExpectReport(Host::At(0), 0, false, name);
    ExpectLog({Record(1253, pairByName, "Call  Pair entry name ->" + shown), Record(399, lookup, Shown(Printed(name))),
               Record(416, lookup, "Ana"), Record(1260, pairByName, "Not Found dest  device")});
}

TEST_P(HostileRequest, OfAPhoneIsNotFound)
{
    auto const vorlink = Watching(ana);
    vorlink->IosPairedDevicce(name, Host::Callback);
    ASSERT_EQ(Host::Count(), 1u);
    ExpectReport(Host::At(0), 0, false, name);
    ExpectLog({Visited("Ana", shown), notFound});
}

TEST_P(HostileRequest, OfAnUnpairingIsNotFound)
{
    Load(prompt + ana);
    MakeLoggingVorlink()->UnpairedCurrent(name, UnpairHost::Callback);
    EXPECT_EQ(UnpairHost::Count(), 0u);
    ExpectLog({Record(1145, classicUnpairing, "Entery unpaired  name-> " + shown),
               Record(399, lookup, Shown(Printed(name))), Record(416, lookup, "Ana")});
}

INSTANTIATE_TEST_SUITE_P(HostileNames, HostileRequest, testing::ValuesIn(hostileNames), labelOfName);

TEST(HostileNames, LongNameOfAFailedPairingCarriesTheAddressTextOverItsTail)
{
    std::string const name(200, 'n');
    Load(prompt + Device(name, addressA, "[device.pairing]\nduration-ms = 0\nstatus = 'Failed'"));
    MakeVorlink()->PairedDevice(name, Host::Callback);
    ASSERT_EQ(Host::Count(), 1u);
    ExpectReport(Host::At(0), 0xa4c13800000a, false, std::string(128, 'n') + "a4c13800000a" + std::string(60, 'n'));
}
