#include "host/Evidence.h"

#include "host/Meanings.h"

#include <algorithm>
#include <cctype>
#include <iterator>

namespace host
{
    namespace
    {
        constexpr std::string_view lookup = "SubVorlink::GetDeviceforName";
        constexpr std::string_view ceremony = "SubVorlink::PairingDevice";
        constexpr std::string_view unpairing = "SubVorlink::UnpairedCurrent";
        constexpr std::string_view leUnpairing = "SubVorlink::UnpairBleDevice";
        constexpr std::string_view reader = "ReadLine";

        constexpr int candidateLine = 416;

        bool Is(Record const& record, std::string_view function, int line)
        {
            return record.function == function && record.line == line;
        }

        bool IsMatchLine(int line)
        {
            return line == 437 || line == 446;
        }

        bool IsNamesLine(int line)
        {
            return line == 435 || line == 444;
        }

        // What stands between the two, where the text has both.
        std::optional<std::string_view> Between(std::string_view text, std::string_view before, std::string_view after)
        {
            if (text.size() < before.size() + after.size() || !text.starts_with(before) || !text.ends_with(after))
            {
                return std::nullopt;
            }
            text.remove_prefix(before.size());
            text.remove_suffix(after.size());
            return text;
        }

        bool IsAscii(std::string_view text)
        {
            return std::ranges::all_of(text, [](char byte) { return static_cast<unsigned char>(byte) < 0x80; });
        }

        // The three records that end a search which has found something: the candidate, the names, the state.
        std::optional<Match> ReadMatch(Record const& candidate, Record const& names, Record const& state,
                                       std::string_view asked)
        {
            if (candidate.line != candidateLine || !IsNamesLine(names.line) || state.line != names.line + 2)
            {
                return std::nullopt;
            }
            auto const name = Between(names.message, "tname  is ", " ,name is " + std::string(asked) + " ");
            // Outside ASCII the two may differ: each is in a code page of its own.
            if (!name || (IsAscii(*name) && candidate.message != *name))
            {
                return std::nullopt;
            }
            for (auto const* const end :
                 {"  ,pair status : 0 , isPaired is:  0", "  ,pair status : 1 , isPaired is:  0",
                  "  ,pair status : 0 , isPaired is:  1", "  ,pair status : 1 , isPaired is:  1"})
            {
                if (auto const id = Between(state.message, "CLassic id is: ", end))
                {
                    return Match{std::string(*name), AddressInId(*id), std::string_view(end).ends_with('1')};
                }
            }
            return std::nullopt;
        }

        std::vector<Record const*> LookupRecords(RecordSpan records)
        {
            std::vector<Record const*> found;
            for (auto const& record : records)
            {
                if (record.function == lookup)
                {
                    found.push_back(&record);
                }
            }
            return found;
        }

        struct FoundMatch
        {
            Match match;
            Record const* last; // of its three records
        };

        // The latest, for an earlier one may stand in a device's name. The LE side's search has lines of its own.
        std::optional<FoundMatch> FindMatch(RecordSpan records, std::string_view asked)
        {
            auto const found = LookupRecords(records);
            for (auto index = found.size(); index >= 3; --index)
            {
                if (auto match = ReadMatch(*found[index - 3], *found[index - 2], *found[index - 1], asked))
                {
                    return FoundMatch{std::move(*match), found[index - 1]};
                }
            }
            return std::nullopt;
        }

        std::string Digits(std::string_view text)
        {
            std::string digits;
            for (auto const byte : text)
            {
                if (std::isxdigit(static_cast<unsigned char>(byte)))
                {
                    digits += static_cast<char>(std::tolower(static_cast<unsigned char>(byte)));
                }
            }
            return digits;
        }

        // The records behind the last one of the search: no name is logged there any more.
        RecordSpan AfterSearch(RecordSpan records)
        {
            auto const last = std::find_if(records.rbegin(), records.rend(), [](Record const& record) {
                return record.function == lookup || Is(record, "SubVorlink::IosPairedDevicce", 1225);
            });
            return records.subspan(static_cast<std::size_t>(records.rend() - last));
        }
    } // namespace

    Search ReadSearch(RecordSpan records, std::string_view asked)
    {
        if (auto found = FindMatch(records, asked))
        {
            return {SearchState::Found, std::move(found->match)};
        }
        auto const looked = LookupRecords(records);
        bool const seemsFound =
            std::ranges::any_of(looked, [](auto const* record) { return IsMatchLine(record->line); });
        return {looked.empty() || seemsFound ? SearchState::Unclear : SearchState::Nothing, {}};
    }

    std::vector<std::string> SeenNames(RecordSpan records, std::string_view asked)
    {
        std::vector<std::string> names;
        auto const match = FindMatch(records, asked);
        for (auto const* const record : LookupRecords(records))
        {
            if (record->line == candidateLine)
            {
                names.push_back(record->message);
            }
            if (match && record == match->last)
            {
                break;
            }
        }
        return names;
    }

    std::optional<std::string> PairingStatus(RecordSpan records)
    {
        for (auto const& record : AfterSearch(records))
        {
            auto const name = Between(record.message, "DevicePairingResultStatus::", "");
            if (record.function == ceremony && name && FindMeaning(Family::Pairing, *name))
            {
                return std::string(*name);
            }
        }
        return std::nullopt;
    }

    LeUnpairing ReadLeUnpairing(RecordSpan records, std::string_view asked)
    {
        LeUnpairing read;
        auto const match = FindMatch(records, asked);
        if (!match)
        {
            return read;
        }
        // Before it the names of devices stand, and behind it none.
        for (auto const& record : records.subspan(static_cast<std::size_t>(match->last - records.data()) + 1))
        {
            if (Is(record, unpairing, 1177))
            {
                read = {LeSide::Pending, std::string(Between(record.message, "device Id -> ", "").value_or(""))};
            }
            else if (Is(record, unpairing, 1180))
            {
                read = {LeSide::NotKnown, {}};
            }
            else if (read.side != LeSide::Pending)
            {
                continue;
            }
            else if (Is(record, leUnpairing, 1071))
            {
                read.side = LeSide::NotFound;
            }
            else if (Is(record, leUnpairing, 1083))
            {
                read.side = LeSide::Unpaired;
            }
            else if (Is(record, leUnpairing, 1089))
            {
                read.side = LeSide::Refused;
            }
            else if (Is(record, leUnpairing, 1101))
            {
                read = {LeSide::Failed, std::string(Between(record.message, "exception -> ", "").value_or(""))};
            }
        }
        return read;
    }

    Learning ReadLearning(RecordSpan records)
    {
        Learning learning;
        for (auto const& record : AfterSearch(records))
        {
            learning.begun = learning.begun || Is(record, reader, 488);
            if (Is(record, reader, 503))
            {
                learning = {true, true, {}, {}};
            }
            if (auto const piece = Between(record.message, "find instance vectors[2]  is: ", "");
                piece && Is(record, reader, 524))
            {
                learning.listed.emplace_back(*piece);
            }
            if (auto const piece = Between(record.message, "add new succes  ", ""); piece && Is(record, reader, 527))
            {
                learning.taken.emplace_back(*piece);
            }
        }
        return learning;
    }

    bool HasPhoneSearchEnded(RecordSpan records)
    {
        return std::ranges::any_of(records, [](Record const& record) {
            return Is(record, "StopIosWatcher", 87) && record.message.starts_with("entry StopIosWatcher  ");
        });
    }

    bool ImitatesRecords(std::string_view name)
    {
        return name.find("[File:SubVorlink][Line:") != std::string_view::npos;
    }

    std::string AddressInId(std::string_view id)
    {
        auto const dash = id.find('-');
        auto const address = dash == std::string_view::npos ? "" : id.substr(dash + 1);
        return std::string(address.substr(0, address.find('-')));
    }

    bool IsAddress(std::string_view text)
    {
        std::string shape;
        for (auto const byte : text)
        {
            shape += std::isxdigit(static_cast<unsigned char>(byte)) ? 'x' : byte;
        }
        return shape == "xx:xx:xx:xx:xx:xx" || shape == "xx-xx-xx-xx-xx-xx" || shape == "xxxxxxxxxxxx";
    }

    bool IsSameAddress(std::string_view one, std::string_view other)
    {
        return !Digits(one).empty() && Digits(one) == Digits(other);
    }
} // namespace host
