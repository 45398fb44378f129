// The page that describes scenarios, against the keys that the reader asks for.
#include "simulator/scenario/KeyNote.h"
#include "simulator/scenario/Scenario.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <set>
#include <sstream>

using namespace simulator;

namespace
{
    struct Row
    {
        std::string takes;
        std::string meaning;
        std::string otherwise;
        std::string section; // the whole text, where the names are
    };

    using Rows = std::map<std::pair<std::string, std::string>, Row>; // by table and key

    // Every table, and no key that has a default. (What a device says for one protocol alone begins from what it says
    // for both.)
    constexpr auto everyTable = R"(
[adapter]
[radio]
[listing]
[platform]
[[device]]
address = "00:00:00:00:00:01"
protocols = ["classic", "le"]
[device.pairing]
[device.unpairing]
[device.properties]
[[device.change]]
at-ms = 0
property = "System.ItemNameDisplay"
value = "Radio"
[device.classic.pairing]
[device.classic.unpairing]
[device.classic.properties]
[device.le.pairing]
[device.le.unpairing]
[device.le.properties]
)";

    std::string Text(std::filesystem::path const& file)
    {
        std::ifstream stream(file, std::ios::binary);
        EXPECT_TRUE(stream) << file;
        std::ostringstream text;
        text << stream.rdbuf();
        return text.str();
    }

    std::string Between(std::string const& text, std::string_view begin, char end)
    {
        auto const at = text.find(begin);
        return at == std::string::npos
                   ? std::string()
                   : text.substr(at + begin.size(), text.find(end, at + begin.size()) - at - begin.size());
    }

    std::vector<std::string> Cells(std::string line)
    {
        std::vector<std::string> cells;
        for (auto bar = line.find(" | "); bar != std::string::npos; bar = line.find(" | "))
        {
            cells.push_back(line.substr(0, bar));
            line.erase(0, bar + 3);
        }
        cells.push_back(line.substr(0, line.rfind(" |")));
        return cells;
    }

    // The tables whose first column is headed "key".
    Rows RowsOfThePage()
    {
        Rows rows;
        std::istringstream page(Text(std::filesystem::path(VORLINK_DOCS) / "scenario.md"));
        std::string table;
        std::string section;
        bool inTable = false;
        auto const endSection = [&] {
            for (auto& [key, row] : rows)
            {
                row.section = row.section.empty() ? section : row.section;
            }
            section.clear();
        };
        for (std::string line; std::getline(page, line);)
        {
            if (line.starts_with("##"))
            {
                endSection();
                table = Between(line, "`[", ']');
                table.erase(0, table.find_first_not_of('['));
            }
            section += line + "\n";
            if (line.starts_with("| key"))
            {
                inTable = true;
                table = line.starts_with("| key of") ? Between(line, "`[", ']') : table;
            }
            else if (!line.starts_with("| "))
            {
                inTable = false;
            }
            else if (inTable && line.starts_with("| `"))
            {
                auto const cells = Cells(line);
                auto key = Between(cells[0], "`", '`');
                std::erase_if(key, [](char character) { return character == '[' || character == ']'; });
                if (cells.size() != 4)
                {
                    ADD_FAILURE() << line;
                    continue;
                }
                EXPECT_FALSE(rows.contains({table, key})) << line;
                rows[{table, key}] = {cells[1], cells[2], cells.back(), ""};
            }
        }
        endSection();
        return rows;
    }

    // A protocol's own table reads what the device's own does, but for one key.
    std::vector<KeyNote> Keys()
    {
        std::vector<KeyNote> notes;
        ParseScenario("", "nothing", &notes);
        ParseScenario(everyTable, "everything", &notes);
        return notes;
    }

    bool IsOfOneProtocol(KeyNote const& note)
    {
        return note.table.starts_with("device.classic") || note.table.starts_with("device.le");
    }

    // What follows from another key, and what takes a value of another's kind.
    bool IsDerived(KeyNote const& note)
    {
        return (note.table == "device" && note.key == "adapter") ||
               (note.table == "device.change" && note.key != "unset");
    }

    void ExpectDescribed(KeyNote const& note, Row const& row)
    {
        auto const name = note.table + "." + note.key;
        if (name != "device.change.value")
        {
            EXPECT_EQ(row.takes, note.takes) << name;
        }
        auto const given = row.otherwise.starts_with('`') ? Between(row.otherwise, "`", '`') : std::string();
        auto const otherwise = note.takes == "names" ? "[" + note.otherwise + "]" : note.otherwise;
        EXPECT_EQ(given, IsDerived(note) ? "" : otherwise) << name;
        for (auto const each : note.names)
        {
            auto const quoted = "`" + std::string(each) + "`";
            auto const asToml = "\"" + std::string(each) + "\"";
            bool const areElsewhere =
                row.meaning.find("`[device.pairing]`") != std::string::npos || note.key == "fault";
            EXPECT_TRUE(areElsewhere || row.section.find(quoted) != std::string::npos ||
                        row.section.find(asToml) != std::string::npos)
                << name << ": " << each;
        }
    }
} // namespace

TEST(ScenarioReference, DescribesEveryKeyAsItIsRead)
{
    auto const rows = RowsOfThePage();
    std::set<std::pair<std::string, std::string>> read;
    for (auto const& note : Keys())
    {
        bool const isFirst = read.emplace(note.table, note.key).second;
        bool const isTable = note.takes == "table" || note.takes == "tables";
        if (IsOfOneProtocol(note) || !isFirst || (isTable && !note.table.empty()))
        {
            continue;
        }
        auto const row = rows.find({note.table, note.key});
        if (row == rows.end())
        {
            ADD_FAILURE() << note.table << "." << note.key << " is not described";
            continue;
        }
        ExpectDescribed(note, row->second);
    }
    for (auto const& [key, row] : rows)
    {
        EXPECT_TRUE(read.contains(key)) << key.first << "." << key.second << " is described, and never read";
    }
}

TEST(ScenarioReference, GivesEachProtocolsTableTheKeysOfADevice)
{
    std::set<std::pair<std::string, std::string>> ofDevice;
    std::map<std::string, std::set<std::pair<std::string, std::string>>> ofProtocols;
    for (auto const& note : Keys())
    {
        if (IsOfOneProtocol(note))
        {
            auto const end = note.table.find('.', std::string_view("device.").size());
            ofProtocols[note.table.substr(0, end)].emplace(end == std::string::npos ? "" : note.table.substr(end + 1),
                                                           note.key);
        }
        else if (note.table.starts_with("device") && note.table != "device.change")
        {
            auto const end = note.table.find('.');
            ofDevice.emplace(end == std::string::npos ? "" : note.table.substr(end + 1), note.key);
        }
    }
    for (auto const* const key : {"protocols", "fault", "classic", "le"})
    {
        EXPECT_EQ(ofDevice.erase({"", key}), 1u) << key;
    }
    ofDevice.emplace("", "id");
    EXPECT_EQ(ofProtocols["device.classic"], ofDevice);
    EXPECT_EQ(ofProtocols["device.le"], ofDevice);
}

TEST(ScenarioReference, ShowsNoFaultyScenario)
{
    int shown = 0;
    for (auto const& entry : std::filesystem::directory_iterator(VORLINK_DOCS))
    {
        if (entry.path().extension() != ".md")
        {
            continue;
        }
        auto const page = Text(entry.path());
        constexpr std::string_view fence = "```toml\n";
        for (auto at = page.find(fence); at != std::string::npos; at = page.find(fence, at))
        {
            at += fence.size();
            auto const example = page.substr(at, page.find("```", at) - at);
            EXPECT_NO_THROW(ParseScenario(example, entry.path().string())) << example;
            ++shown;
        }
    }
    EXPECT_GE(shown, 4);
}

TEST(ScenarioReference, HasEveryPropertyInTheRowOfItsKind)
{
    // A name that begins with a dot continues one that stands before it.
    std::map<std::string, PropertyKind> const kinds = {
        {"Boolean", PropertyKind::Boolean},
        {"number", PropertyKind::Int32},
        {"byte", PropertyKind::UInt8},
        {"short number", PropertyKind::UInt16},
        {"natural number", PropertyKind::UInt32},
        {"text", PropertyKind::String},
        {"GUID", PropertyKind::Guid},
        {"time", PropertyKind::DateTime},
        {"texts", PropertyKind::StringArray},
        {"GUIDs", PropertyKind::GuidArray},
        {"bytes", PropertyKind::ByteArray},
    };
    std::set<std::string> described;
    std::istringstream page(Text(std::filesystem::path(VORLINK_DOCS) / "scenario.md"));
    for (std::string line; std::getline(page, line);)
    {
        auto const cells = Cells(line);
        auto const kind = kinds.find(cells[0].substr(std::min<std::size_t>(2, cells[0].size())));
        if (cells.size() != 3 || kind == kinds.end())
        {
            continue;
        }
        std::string before;
        auto rest = cells[2];
        for (auto name = Between(rest, "`", '`'); !name.empty(); name = Between(rest, "`", '`'))
        {
            rest.erase(0, rest.find('`') + name.size() + 2);
            if (name.starts_with('.'))
            {
                auto prefix = before;
                do
                {
                    prefix.resize(std::min(prefix.size(), prefix.rfind('.')));
                } while (prefix.find('.') != std::string::npos && !IsPropertyName(prefix + name));
                name = prefix + name;
            }
            else if (!name.starts_with("System."))
            {
                continue; // a value
            }
            EXPECT_EQ(KindOfProperty(name), kind->second) << name;
            EXPECT_TRUE(described.insert(name).second) << name;
            before = name;
        }
    }
    // These follow from the device's other keys.
    for (auto const* const derived :
         {"System.ItemNameDisplay", "System.Devices.Aep.AepId", "System.Devices.Aep.CanPair",
          "System.Devices.Aep.IsPaired", "System.Devices.Aep.DeviceAddress", "System.Devices.Aep.ProtocolId"})
    {
        EXPECT_TRUE(described.insert(derived).second) << derived;
    }
    auto const& names = PropertyNames();
    EXPECT_EQ(described, std::set<std::string>(names.begin(), names.end()));
}
