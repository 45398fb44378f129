#include "host/log/LogSteps.h"

#include "host/Meanings.h"
#include "host/Text.h"

#include <algorithm>
#include <deque>
#include <iterator>
#include <optional>

namespace host
{
    namespace
    {
        using Texts = std::vector<std::string_view>;
        using enum LogFlow;
        using enum LogPart;

        constexpr char pairByName[] = "SubVorlink::PairedDevice";
        constexpr char pairPhone[] = "SubVorlink::IosPairedDevicce";
        constexpr char ceremony[] = "SubVorlink::PairingDevice";
        constexpr char lookup[] = "SubVorlink::GetDeviceforName";
        constexpr char unpair[] = "SubVorlink::UnpairedCurrent";
        constexpr char unpairLe[] = "SubVorlink::UnpairBleDevice";
        constexpr char learn[] = "ReadLine";

        // The first that fits counts.
        constexpr LogStep steps[] = {
            {pairByName, "Call  Pair entry name ->*", Pair, Begins, R"(the host asks to pair "{1}")", nullptr, 1},
            {pairByName, "Not Found dest  device", Pair, Fails, "no device has that name", "Not found"},
            {pairPhone, "tname is * param name is *", Pair, BeginsRow,
             R"(of the phones seen, "{1}" is compared with "{2}")", nullptr, 2},
            {pairPhone, "find device ", Pair, Goes, "that is the one"},
            {pairPhone, "Not Found dest  device", Pair, Fails, "no phone seen has that name", "Not found"},
            {lookup, "*", Search, Joins, R"(the search for "{1}" begins)", nullptr, 0, 399},
            {lookup, "*", Search, Joins, R"(a device is looked at: "{1}")", nullptr, 0, 416},
            {lookup, "tname  is * ,name is * ", Search, Joins, R"(the search matched "{1}" for "{2}")"},
            {lookup, "* id is: *  ,pair status : 1 , isPaired is:  0", Search, Joins,
             "it can be paired, and is not paired"},
            {lookup, "* id is: *  ,pair status : 1 , isPaired is:  1", Search, Joins,
             "it can be paired, and is paired already"},
            {lookup, "* id is: *  ,pair status : 0 , isPaired is:  0", Search, Joins,
             "it cannot be paired, and is not paired"},
            {lookup, "* id is: *  ,pair status : 0 , isPaired is:  1", Search, Joins,
             "it cannot be paired anew, and is paired"},
            {ceremony, "*     paired success*", Pair, Goes,
             "no success: the device was paired before; its address as a decimal number"},
            {unpair, "Entery unpaired  name-> *", Unpair, Begins, R"(the host asks to unpair "{1}")", nullptr, 1},
            {unpair, "unpaired Classic Blueth,start unpaired ble device *", Unpair, Goes,
             "the Classic side, {1}, is unpaired; now the LE side"},
            {unpair, "device Id -> ", Unpair, Goes, "no LE address was learnt under that name"},
            {unpair, "device Id -> *", Unpair, Goes, "the LE address learnt under that name: {1}"},
            {unpair, "ble data is bad ", Unpair, Succeeds, "no LE side is known of it",
             "Unpaired; no LE side is known"},
            {unpairLe, "ble   destStr is * ", Unpair, Goes, "looks for an LE device with {1} in its identifier"},
            {unpairLe, "unpaired device failed", Unpair, Succeeds,
             R"(no such LE device is there, which the host hears as "unpaired")", "Unpaired; the LE side was not found",
             0, 1071},
            {unpairLe, "unpaired device success", Unpair, Succeeds, "the LE side is unpaired",
             "Unpaired, LE side included"},
            {unpairLe, "unpaired device failed", Unpair, Fails, "Windows did not unpair the LE side",
             "LE side not unpaired"},
            {unpairLe, "exception -> *", Unpair, Fails, "the platform failed, and the host hears nothing",
             "The platform failed"},
            {"OnDeviceAdded", "OnDeviceAdded    name = * ", Phones, Goes,
             R"(a device that can be paired is seen: "{1}")"},
            {"ThreadEndWatcher", "Exit ,call StopIosWatcher", Phones, Joins,
             "25 s are over: a search that is on is ended"},
            {"StopIosWatcher", "entry StopIosWatcher  * ", Phones, Succeeds,
             "the search is over; devices in its list: {1}", "Over; devices seen: {1}"},
            {learn, "Readline entry", Learn, Begins, "lets 3 s pass, then has the system list its devices"},
            {learn, "file exist", Learn, Settles, "the listing is there", "Nothing new"},
            {learn, "find instance ID  is: *", Learn, Goes, "the listing has an LE device"},
            {learn, "find instance vectors[2]  is: *", Learn, Goes, "its address: {1}"},
            {learn, "add new succes  *", Learn, Settles, "the address is new, and is kept under the device's name",
             "Learnt {1}"},
        };

        // A row for each status that the platform documents, in the words of their one table.
        std::vector<LogStep> const& StatusSteps()
        {
            static std::deque<std::string> patterns;
            static std::vector<LogStep> const rows = [] {
                std::vector<LogStep> made;
                for (auto const& meaning : Meanings())
                {
                    if (meaning.family == Family::Pairing)
                    {
                        patterns.push_back("DevicePairingResultStatus::" + std::string(meaning.name));
                        // Both texts are literals.
                        made.push_back({ceremony, patterns.back().c_str(), Pair, meaning.value == 0 ? Succeeds : Fails,
                                        meaning.meaning.data(), meaning.name.data()});
                    }
                }
                return made;
            }();
            return rows;
        }

        std::optional<Texts> Match(std::string_view pattern, std::string_view text)
        {
            auto const first = pattern.find('*');
            auto const head = pattern.substr(0, first);
            if (first == std::string_view::npos)
            {
                return text == pattern ? std::optional(Texts()) : std::nullopt;
            }
            if (!text.starts_with(head))
            {
                return std::nullopt;
            }
            text.remove_prefix(head.size());
            pattern.remove_prefix(first + 1);
            Texts texts;
            for (auto star = pattern.find('*'); star != std::string_view::npos; star = pattern.find('*'))
            {
                auto const end = text.find(pattern.substr(0, star));
                if (end == std::string_view::npos)
                {
                    return std::nullopt;
                }
                texts.push_back(text.substr(0, end));
                text.remove_prefix(end + star);
                pattern.remove_prefix(star + 1);
            }
            if (!text.ends_with(pattern))
            {
                return std::nullopt;
            }
            texts.push_back(text.substr(0, text.size() - pattern.size()));
            return texts;
        }

        // In a damaged log, lines of something else may have come to belong to the message.
        std::optional<Texts> MatchMessage(std::string_view pattern, std::string_view message)
        {
            auto texts = Match(pattern, message);
            return texts ? texts : Match(pattern, message.substr(0, message.find('\n')));
        }

        // A device's name has 248 bytes at most, but a damaged log can take all of itself for one.
        std::string Shown(std::string_view text)
        {
            constexpr std::size_t most = 1024;
            return Harmless(text.substr(0, most)) + (text.size() > most ? "…" : "");
        }
    } // namespace

    LogStep const* FindLogStep(Record const& record)
    {
        auto const fits = [&](LogStep const& step) {
            return record.function == step.function && (step.line == 0 || record.line == step.line) &&
                   MatchMessage(step.pattern, record.message);
        };
        if (auto const* const found = std::ranges::find_if(steps, fits); found != std::end(steps))
        {
            return found;
        }
        auto const status = std::ranges::find_if(StatusSteps(), fits);
        return status == StatusSteps().end() ? nullptr : &*status;
    }

    std::vector<std::string_view> LogTexts(LogStep const& step, std::string_view message)
    {
        return MatchMessage(step.pattern, message).value_or(Texts());
    }

    std::string FillIn(std::string_view text, std::vector<std::string_view> const& texts)
    {
        std::string filled;
        for (auto brace = text.find('{'); brace != std::string_view::npos; brace = text.find('{'))
        {
            auto const number = static_cast<std::size_t>(text[brace + 1] - '0');
            filled += text.substr(0, brace);
            filled += number <= texts.size() ? Shown(texts[number - 1]) : "";
            text.remove_prefix(brace + 3);
        }
        return filled.append(text);
    }
} // namespace host
