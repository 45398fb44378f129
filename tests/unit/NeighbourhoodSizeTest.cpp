// What happens to each endpoint of a neighbourhood takes the same effort however many there are.
#include "tests/unit/NeighbourhoodListener.h"

#include <ctime>

using namespace simulator;
using namespace test;

namespace
{
    constexpr int few = 2'000;
    constexpr int many = 20'000;

    // Twice and a half what ten times as many should take. Where every event looks at every endpoint it is far more.
    constexpr double most = 25;

    // As many endpoints that differ in their identifier alone.
    std::vector<std::string> LiveAmong(int count, std::string const& keys)
    {
        auto scenario =
            ParseScenario("enumeration-completes-ms = 0\n[[device]]\naddress = '00:00:00:00:00:01'\n" + keys, "test");
        scenario.endpoints.resize(static_cast<std::size_t>(count), scenario.endpoints.front());
        std::vector<std::string> ids;
        for (auto& endpoint : scenario.endpoints)
        {
            endpoint.id += std::to_string(ids.size());
            ids.push_back(endpoint.id);
        }
        Restart(std::move(scenario));
        return ids;
    }

    struct Effort
    {
        double toAppear;
        double toChange;
    };

    double ProcessorTime()
    {
        return static_cast<double>(std::clock());
    }

    Effort Watch(int count, Happening happening, std::string const& keys)
    {
        auto const ids = LiveAmong(count, keys);
        auto const watching = std::make_shared<Watching>(
            Watching{Query::Parse(""), std::make_shared<std::vector<std::string>>(),
                     platform::DeviceInformationKind::AssociationEndpoint, [](std::uint64_t, Report const&) {}});
        Enter(*watching);
        auto const begun = ProcessorTime();
        EXPECT_EQ(Start(watching), WatchAnswer::Done);
        ExpectIdle();
        auto const appeared = ProcessorTime();
        for (auto const& id : ids)
        {
            happening.id = id;
            Happens(happening);
        }
        ExpectIdle();
        auto const changed = ProcessorTime();
        Leave(*watching);
        ExpectIdle();
        return {appeared - begun, changed - appeared};
    }

    void ExpectLinear(Happening const& happening, std::string const& keys = "")
    {
        auto const small = Watch(few, happening, keys);
        auto const large = Watch(many, happening, keys);
        EXPECT_LT(large.toAppear, most * small.toAppear);
        EXPECT_LT(large.toChange, most * small.toChange);
    }
} // namespace

TEST(NeighbourhoodSize, MakesNoChangeDearer)
{
    ExpectLinear({{}, std::nullopt, {{"System.ItemNameDisplay", "Radio"}}});
}

TEST(NeighbourhoodSize, MakesNoPairingDearer)
{
    ExpectLinear({{}, std::nullopt, {{std::string(isPairedProperty), true}}});
}

TEST(NeighbourhoodSize, MakesNoLeavingDearer)
{
    ExpectLinear({{}, false});
}

TEST(NeighbourhoodSize, MakesNoLeavingAheadOfItsTimeDearer)
{
    ExpectLinear({{}, false}, "leaves-ms = 3600000");
}
