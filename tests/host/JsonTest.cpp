// What vorlinkctl prints with --json, against the schema that the documentation gives.
#include "tests/host/ChildProcess.h"
#include "tests/host/Neighbourhood.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <set>
#include <sstream>
#include <string>
#include <valijson/adapters/nlohmann_json_adapter.hpp>
#include <valijson/schema.hpp>
#include <valijson/schema_parser.hpp>
#include <valijson/validator.hpp>

using namespace test;
using nlohmann::json;
using testing::Contains;

namespace
{
    using valijson::adapters::NlohmannJsonAdapter;

    bool IsOfSchema(json const& object)
    {
        static json const text = json::parse(std::ifstream(VORLINKCTL_SCHEMA));
        static valijson::Schema schema;
        static bool const parsed = [] {
            valijson::SchemaParser(valijson::SchemaParser::kDraft7).populateSchema(NlohmannJsonAdapter(text), schema);
            return true;
        }();
        valijson::Validator validator;
        return parsed && validator.validate(schema, NlohmannJsonAdapter(object), nullptr);
    }

    // The events, each line of the output being one object of the schema.
    std::multiset<std::string> EventsOf(Arguments arguments)
    {
        arguments.emplace_back("--json");
        SCOPED_TRACE(testing::PrintToString(arguments));
        auto const result = RunVorlinkctl(arguments);
        std::multiset<std::string> events;
        std::istringstream lines(result.output);
        json last;
        for (std::string line; std::getline(lines, line);)
        {
            last = json::parse(line, nullptr, false);
            EXPECT_TRUE(IsOfSchema(last)) << line;
            events.insert(last.value("event", ""));
            if (last.value("event", "") == "outcome")
            {
                EXPECT_EQ(last.value("exit_code", 99u), result.exitCode);
            }
        }
        return events;
    }
} // namespace

TEST(Json, TheSchemaRefusesWhatIsNone)
{
    EXPECT_TRUE(IsOfSchema({{"event", "device"}, {"name", "Tag"}}));
    for (auto const& wrong :
         {json{{"event", "device"}}, json{{"event", "dance"}, {"name", "Tag"}}, json("text"),
          json{{"event", "device"}, {"name", "Tag"}, {"more", 1}}, json{{"event", "device"}, {"name", 1}}})
    {
        EXPECT_FALSE(IsOfSchema(wrong)) << wrong;
    }
}

TEST(Json, IsTheSameForEachSubcommand)
{
    EXPECT_THAT(EventsOf({"pair", "Kitchen Speaker", "--no-learn", "--log"}),
                testing::IsSupersetOf({"outcome", "record"}));
    EXPECT_THAT(EventsOf({"pair", "--address", "a4:c1:38:5e:22:0f"}), Contains("outcome"));
    EXPECT_THAT(EventsOf({"pair", "Living Room TV", "--exact"}), Contains("outcome"));
    EXPECT_THAT(EventsOf({"pair", "Nobody"}), Contains("outcome"));
    EXPECT_THAT(EventsOf({"unpair", "Car Radio"}), Contains("outcome"));
    EXPECT_THAT(EventsOf({"unpair", "Nobody", "--log"}), Contains("outcome"));
    EXPECT_THAT(EventsOf({"phones"}), testing::IsSupersetOf({"device", "device", "outcome"}));
    EXPECT_THAT(EventsOf({"pair-phone", "Zoë's Phone", "--no-learn"}), Contains("outcome"));
    EXPECT_THAT(EventsOf({"list"}), testing::IsSupersetOf({"device", "device", "outcome"}));
    EXPECT_THAT(EventsOf({"list", "--watch", "--timeout", "1"}), testing::IsSupersetOf({"added", "added", "outcome"}));
    EXPECT_THAT(EventsOf({"explain"}), Contains("meaning").Times(testing::Gt(25)));
    EXPECT_THAT(EventsOf({"doctor"}), testing::IsSupersetOf({"check", "check", "outcome"}));
    EXPECT_THAT(EventsOf({"log"}), testing::IsSupersetOf({"record", "record"}));
}

TEST(Json, OfATraceIsALineOfItOrARecord)
{
    SetEnvironmentVariableW(L"VORLINK_SIMULATOR_TRACE", (std::filesystem::current_path() / "trace.jsonl").c_str());
    RunVorlinkctl({"pair", "Kitchen Speaker", "--no-learn", "--log"});
    SetEnvironmentVariableW(L"VORLINK_SIMULATOR_TRACE", nullptr);
    EXPECT_THAT(EventsOf({"trace", "trace.jsonl"}), testing::IsSupersetOf({"trace", "trace", "record", "record"}));
}

TEST(Json, OfAScenarioIsAFaultALine)
{
    std::ofstream("faulty.toml") << "[[device]]\nadress = 1\n";
    EXPECT_THAT(EventsOf({"scenario", "check", "faulty.toml"}), testing::IsSupersetOf({"fault", "outcome"}));
    std::ofstream("sound.toml") << "[[device]]\naddress = 'a4:c1:38:5e:22:0f'\n";
    EXPECT_THAT(EventsOf({"scenario", "check", "sound.toml"}), testing::ElementsAre("outcome"));
}

TEST(Json, OfAFailureIsOfTheSchemaToo)
{
    UseScenario("[[device]]\naddress = 12\n");
    EXPECT_THAT(EventsOf({"pair", "Nobody"}), Contains("outcome"));
    EXPECT_THAT(EventsOf({"phones"}), Contains("outcome"));
    EXPECT_THAT(EventsOf({"list"}), Contains("outcome"));
    EXPECT_THAT(EventsOf({"doctor"}), Contains("outcome"));
}

TEST(Json, OfAFileThatIsNotThere)
{
    EXPECT_THAT(EventsOf({"scenario", "check", "missing.toml"}), testing::ElementsAre("outcome"));
}

TEST(Json, OfAnUnpairingThatIsDeclined)
{
    std::ofstream("MyLEData") << "Car Radio=c1:d2:e3:f4:a5:ff\n";
    EXPECT_THAT(EventsOf({"unpair", "Car Radio"}), testing::ElementsAre("outcome"));
}

TEST(SlowJson, OfALearning)
{
    EXPECT_THAT(EventsOf({"pair", "Kitchen Speaker"}), testing::ElementsAre("learnt", "outcome"));
}
