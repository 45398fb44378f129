// Faults by name: what each makes of a scenario, and the page that tells of them.
#include "simulator/scenario/FaultStories.h"
#include "tests/unit/ScenarioText.h"

#include <gmock/gmock.h>

#include <fstream>

using namespace simulator;
using namespace test;
using testing::ElementsAre;
using testing::HasSubstr;

namespace
{
    std::string Fault(std::string_view names)
    {
        return "fault = " + std::string(names) + "\n";
    }

    bool IsPaired(Endpoint const& endpoint)
    {
        return IsTrue(endpoint.properties, isPairedProperty);
    }

    std::string NameOf(Endpoint const& endpoint)
    {
        auto const name = endpoint.properties.find("System.ItemNameDisplay");
        return name == endpoint.properties.end() ? "none" : std::get<std::string>(name->second);
    }

    // "address name" of each endpoint.
    std::vector<std::string> Told(std::vector<Endpoint> const& endpoints)
    {
        std::vector<std::string> told;
        for (auto const& endpoint : endpoints)
        {
            told.push_back(endpoint.address + " " + NameOf(endpoint));
        }
        return told;
    }

    std::vector<std::string> HeadingsOfThePage()
    {
        std::ifstream page(VORLINK_FIELD_FAULTS_PAGE);
        EXPECT_TRUE(page) << VORLINK_FIELD_FAULTS_PAGE;
        std::vector<std::string> headings;
        for (std::string line; std::getline(page, line);)
        {
            if (std::string_view const begin = "### `"; line.starts_with(begin))
            {
                headings.push_back(line.substr(begin.size(), line.find('`', begin.size()) - begin.size()));
            }
        }
        return headings;
    }
} // namespace

TEST(FaultStories, StandOnThePageInTheirOrder)
{
    std::vector<std::string> names;
    for (auto const& story : FaultStories())
    {
        names.emplace_back(story.name);
    }
    EXPECT_THAT(HeadingsOfThePage(), testing::ElementsAreArray(names));
}

TEST(FaultStories, OfTheWholeSetItsKeys)
{
    EXPECT_TRUE(Parse(Fault("'silent-after-enumeration'")).choices.silentAfterEnumeration);
    EXPECT_EQ(Parse(Fault("'endless-enumeration'")).enumerationCompletesAtMs, never);
    auto const late = Parse(Fault("'late-event'"));
    EXPECT_EQ(late.choices.eventDelayMs, 200);
    EXPECT_EQ(late.eventThreads, 4);
    EXPECT_EQ(Parse(Fault("'radio-off'")).radio.offAfterMs, 200);
    EXPECT_FALSE(Parse(Fault("'no-adapter'")).adapter.present);
}

TEST(FaultStories, OfADeviceSetItsKeys)
{
    EXPECT_TRUE(OnlyEndpoint(Fault("'radio-off'")).pairing.radioOff);
    EXPECT_EQ(OnlyEndpoint(Fault("'slow-pairing'")).pairing.durationMs, 60'000);
    EXPECT_EQ(OnlyEndpoint(Fault("'impatient'")).pairing.answerWithinMs, 1000);
    EXPECT_TRUE(OnlyEndpoint(Fault("'system-prompt'")).pairing.promptOpen);
    EXPECT_EQ(OnlyEndpoint(Fault("'operation-error'")).pairing.failure, static_cast<std::int32_t>(0x80004005));
    EXPECT_TRUE(IsPaired(OnlyEndpoint(Fault("'already-paired'"))));
    EXPECT_TRUE(IsPaired(OnlyEndpoint(Fault("'lost-bond'"))));
    auto const refused = OnlyEndpoint(Fault("'unpairing-refused'"));
    EXPECT_TRUE(IsPaired(refused));
    EXPECT_EQ(refused.unpairing.status, 3);
    auto const stale = OnlyEndpoint(Fault("'stale-pairing'"));
    EXPECT_TRUE(IsPaired(stale));
    EXPECT_EQ(stale.unpairing.staleMs, 3000);
}

TEST(FaultStories, CountFromWhenTheDeviceComes)
{
    EXPECT_EQ(OnlyEndpoint(Fault("'seen-twice'")).repeatsAtMs, 100);
    EXPECT_EQ(OnlyEndpoint(Fault("'seen-twice'") + "appears-ms = 50\n").repeatsAtMs, 150);
    EXPECT_EQ(OnlyEndpoint(Fault("'seen-twice'") + "appears-ms = 'never'\n").repeatsAtMs, 100);
    EXPECT_EQ(OnlyEndpoint(Fault("'seen-twice'") + "appears-ms = 2147483647\n").repeatsAtMs, 2147483647);
    EXPECT_EQ(OnlyEndpoint(Fault("'seen-twice'") + "repeats-ms = 7\n").repeatsAtMs, 7);
    auto const late =
        OnlyEndpoint(Fault("'late-name'") + "name = 'Lamp'\nappears-ms = 50\n[[device.change]]\nat-ms = 251\n"
                                            "property = 'System.Devices.Aep.SignalStrength'\nvalue = 1\n");
    EXPECT_EQ(NameOf(late), "none");
    ASSERT_EQ(late.changes.size(), 2u);
    EXPECT_EQ(late.changes.at(0), (TimedChange{250, "System.ItemNameDisplay", std::string("Lamp")}));
}

TEST(FaultStories, MayBringASecondProtocol)
{
    auto const endpoints = Parse(Device(Fault("'two-protocols'"))).endpoints;
    ASSERT_EQ(endpoints.size(), 2u);
    EXPECT_EQ(endpoints.at(0).protocol, Protocol::Classic);
    EXPECT_EQ(endpoints.at(1).protocol, Protocol::Le);
}

TEST(FaultStories, MayBringASecondDevice)
{
    auto const shared = Parse(Device(Fault("'shared-name'") + "name = 'Lamp'\nappears-ms = 50\n")).endpoints;
    EXPECT_THAT(Told(shared), ElementsAre("a4:c1:38:5e:22:0f Lamp", "a4:c1:38:5e:22:10 Lamp"));
    EXPECT_EQ(shared.at(1).appearsAtMs, 70);
    EXPECT_EQ(shared.at(1).id, "Bluetooth#Bluetooth00:1a:7d:da:71:13-a4:c1:38:5e:22:10");
    EXPECT_TRUE(shared.at(1).canPair);
    EXPECT_NE(shared.at(0).properties.at("System.Devices.Aep.ContainerId"),
              shared.at(1).properties.at("System.Devices.Aep.ContainerId"));

    auto const longer = Parse(Device(Fault("'longer-name'") + "name = 'Lamp'\nappears-ms = 50\n")).endpoints;
    EXPECT_THAT(Told(longer), ElementsAre("a4:c1:38:5e:22:10 Lamp 2", "a4:c1:38:5e:22:0f Lamp"));
    EXPECT_EQ(longer.at(0).appearsAtMs, 30);
    EXPECT_EQ(Parse(Device(Fault("'longer-name'"))).endpoints.at(0).appearsAtMs, 0);
}

TEST(FaultStories, GiveASecondDeviceAnAddressThatNobodyHas)
{
    auto const endpoints = Parse("fault = 'shared-name'\n[[device]]\naddress = '00:00:00:00:00:ff'\n"
                                 "[[device]]\naddress = '00:00:00:00:01:00'\nprotocols = ['le']\n"
                                 "[[device]]\naddress = '00:00:00:00:01:02'\n[device.classic]\n"
                                 "id = 'Bluetooth#Bluetooth00:1a:7d:da:71:13-00:00:00:00:01:01'\n")
                               .endpoints;
    EXPECT_THAT(Told(endpoints),
                ElementsAre("00:00:00:00:00:ff none", "00:00:00:00:01:03 none", "00:00:00:00:01:00 none",
                            "00:00:00:00:01:04 none", "00:00:00:00:01:02 none", "00:00:00:00:01:05 none"));
    EXPECT_THAT(Told(Parse("[[device]]\nfault = 'shared-name'\naddress = 'ff:ff:ff:ff:ff:ff'\n").endpoints),
                ElementsAre("ff:ff:ff:ff:ff:ff none", "00:00:00:00:00:00 none"));
}

TEST(FaultStories, GiveWayToKeys)
{
    EXPECT_EQ(Parse(Fault("'endless-enumeration'") + "enumeration-completes-ms = 5\n").enumerationCompletesAtMs, 5);
    EXPECT_TRUE(Parse(Fault("'no-adapter'") + "[adapter]\npresent = true\n").adapter.present);
    EXPECT_EQ(Parse(Fault("'late-event'") + "[platform]\nevent-delay-ms = 5\n").choices.eventDelayMs, 5);
    EXPECT_FALSE(IsPaired(OnlyEndpoint(Fault("'already-paired'") + "is-paired = false\n")));
    EXPECT_EQ(OnlyEndpoint(Fault("'slow-pairing'") + "[device.classic.pairing]\nduration-ms = 5\n").pairing.durationMs,
              5);
    EXPECT_EQ(OnlyEndpoint(Fault("'two-protocols'") + "protocols = ['le']\n").protocol, Protocol::Le);
}

TEST(FaultStories, Combine)
{
    auto const both = Parse("fault = ['late-event', 'slow-pairing']\n" +
                            Device(Fault("['late-name', 'shared-name', 'two-protocols']") + "name = 'Lamp'\n"));
    EXPECT_EQ(both.eventThreads, 4);
    EXPECT_THAT(Told(both.endpoints), ElementsAre("a4:c1:38:5e:22:0f none", "a4:c1:38:5e:22:0f none",
                                                  "a4:c1:38:5e:22:10 Lamp", "a4:c1:38:5e:22:10 Lamp"));
    EXPECT_EQ(both.endpoints.at(0).pairing.durationMs, 60'000);
    EXPECT_FALSE(Parse("fault = 'radio-off'\n" + Device("")).endpoints.at(0).pairing.radioOff)
        << "it is the whole's story there";
}

TEST(FaultStories, HaveFaultsOfTheirOwn)
{
    EXPECT_THAT(FaultsOf("\n" + Fault("'no-adaptor'")), HasSubstr("test.toml:2: 'fault': 'no-adaptor' where a name is "
                                                                  "expected: silent-after-enumeration, "));
    EXPECT_THAT(FaultsOf(Fault("'no-adaptor'")), HasSubstr("; did you mean 'no-adapter'?"));
    EXPECT_THAT(FaultsOf(Fault("['slow-pairing', 'late_name']")), HasSubstr("; did you mean 'late-name'?"));
    EXPECT_THAT(FaultsOf(Fault("[]")), HasSubstr("where a list of names is expected"));
    EXPECT_THAT(FaultsOf(Fault("1")), HasSubstr("'fault': 1 where a name is expected"));
    EXPECT_EQ(FaultsOf(Device(Fault("'late-event'"))),
              "test.toml:3: 'fault': 'late-event' is no device's; it stands at the top");
    EXPECT_EQ(FaultsOf(Device("[device.classic]\n" + Fault("'late-name'"))), "test.toml:4: 'fault': unknown key");
}
