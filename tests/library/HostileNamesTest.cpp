// Names come from hosts' users and, for devices, from strangers through the air.
#include "tests/support/Host.h"
#include "tests/support/LogFile.h"
#include "tests/support/Neighbourhood.h"
#include "tests/support/Trace.h"

#include <gmock/gmock.h>

using namespace test;
using testing::Contains;
using testing::ElementsAre;

namespace
{
    constexpr char address[] = "a4:c1:38:5e:22:0f";

    std::vector<std::string> PairLogged(std::string const& scenario, std::string const& name)
    {
        Load(scenario);
        auto const vorlink = MakeLoggingVorlink();
        vorlink->PairedDevice(name, Host::Callback);
        EXPECT_TRUE(Host::WaitFor(1));
        return Log();
    }
} // namespace

TEST(HostileNames, RequestedNameIsTheFormatOfItsRecord)
{
    auto const log = PairLogged(prompt, "100%% wool");
    EXPECT_THAT(log, ElementsAre(Record(1253, pairByName, "Call  Pair entry name ->100%% wool"),
                                 Record(399, lookup, "100% wool"), Record(1260, pairByName, "Not Found dest  device")));
    EXPECT_EQ(Text(Host::At(0).name), "100%% wool");
}

TEST(HostileNames, ConversionsInTheRequestedNameReadNoMemory)
{
    std::string const name = "%s%s%n%p%100000d%x";
    auto const log = PairLogged(prompt, name);
    EXPECT_THAT(log, ElementsAre(Record(1253, pairByName, "Call  Pair entry name ->" + name), Record(399, lookup, name),
                                 Record(1260, pairByName, "Not Found dest  device")));
}

TEST(HostileNames, CandidatesNameIsNeverInterpreted)
{
    std::string const name = "%s%n%% %p%x";
    auto const log = PairLogged(prompt + Device(name, address), "Headset");
    EXPECT_THAT(log, Contains(Record(416, lookup, name)));
}

TEST(HostileNames, DeviceWithConversionsInItsNameIsPaired)
{
    std::string const name = "%s%n%d";
    PairLogged(prompt + Device(name, address, pairsAtOnce), name);
    EXPECT_EQ(Host::At(0).paired, 1);
    EXPECT_EQ(Text(Host::At(0).name), name);
}

TEST(HostileNames, NameLongerThanTheLogsRecordIsCut)
{
    std::string const name(20'000, 'n');
    auto const log = PairLogged(prompt, name);
    ASSERT_EQ(log.size(), 3u);
    std::string const head = Record(399, lookup, "");
    constexpr std::size_t timestamp = 23;
    EXPECT_EQ(log[1].size(), 10'240 - timestamp);
    EXPECT_EQ(log[1], head.substr(0, head.size() - 1) + std::string(10'240 - timestamp - head.size(), 'n') + "\n");
}

TEST(HostileNames, NameLongerThanTheReportIsCutAtItsEnd)
{
    PairLogged(prompt, std::string(1000, 'n'));
    auto const report = Host::At(0);
    EXPECT_EQ(std::string(report.name, 128), std::string(128, 'n'));
    EXPECT_EQ(std::string(report.addressText, 256), std::string(256, 'n'));
    EXPECT_EQ(report.address, 0u);
    EXPECT_EQ(report.paired, 0);
}

TEST(HostileNames, LongNameOfAFailedPairingCarriesTheAddressTextOverItsTail)
{
    std::string const name(200, 'n');
    PairLogged(prompt + Device(name, address, "[device.pairing]\nduration-ms = 0\nstatus = 'Failed'"), name);
    auto const report = Host::At(0);
    EXPECT_EQ(std::string(report.name, 128), std::string(128, 'n'));
    EXPECT_EQ(Text(report.addressText), "a4c1385e220f" + std::string(60, 'n'));
}

TEST(HostileNames, LineFeedsInACandidatesNameStayInItsRecord)
{
    auto const log = PairLogged(prompt + "[[device]]\nname = \"a\\nb\"\naddress = '" + address + "'\n", "Headset");
    EXPECT_THAT(log, Contains(Record(416, lookup, "a\nb")));
}
