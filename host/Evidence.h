// What the library's log tells of an operation that its callbacks do not. A device's name is logged as it is and may
// imitate anything; what a name could have written is not believed.
#pragma once

#include "host/Records.h"

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace host
{
    using RecordSpan = std::span<Record const>;

    // The device that a search by name has found.
    struct Match
    {
        std::string name; // its own, in which the one asked for may only be contained
        std::string address;
        bool isPaired = false;
    };

    enum class SearchState
    {
        Nothing, // no device of the name was taken
        Found,
        Unclear, // the log is missing, or a name imitates it
    };

    struct Search
    {
        SearchState state = SearchState::Unclear;
        Match match; // when found
    };

    // Of a pairing or an unpairing by name that has returned.
    Search ReadSearch(RecordSpan records, std::string_view asked);

    // The names that the search has looked at, in the order of the platform's reports.
    std::vector<std::string> SeenNames(RecordSpan records, std::string_view asked);

    // The name of the platform's status, which the library logs after it has reported the outcome.
    std::optional<std::string> PairingStatus(RecordSpan records);

    enum class LeSide
    {
        Unknown,  // the library has not come to it
        NotKnown, // the data store has no LE side for this name
        Pending,
        Unpaired,
        NotFound, // reported as unpaired all the same
        Refused,
        Failed, // the platform's error ended it, without a report
    };

    struct LeUnpairing
    {
        LeSide side = LeSide::Unknown;
        std::string text; // what the data store had, or the error's text
    };

    LeUnpairing ReadLeUnpairing(RecordSpan records, std::string_view asked);

    // What the library has learnt of a paired device's LE side from the system's listing.
    struct Learning
    {
        bool begun = false;
        bool listingRead = false;
        std::vector<std::string> listed; // the LE devices of the listing
        std::vector<std::string> taken;  // those that were new; the last one is kept
    };

    Learning ReadLearning(RecordSpan records);

    // The library has ended a search for phones.
    bool HasPhoneSearchEnded(RecordSpan records);

    // Whether a device of this name makes the log seem to hold records that it does not.
    bool ImitatesRecords(std::string_view name);

    // The device's address in an identifier like Bluetooth#Bluetooth00:1a:7d:da:71:13-a4:c1:38:5e:22:0f; empty where
    // there is none.
    std::string AddressInId(std::string_view id);

    // Six pairs of hexadecimal digits, with colons or hyphens or nothing between them.
    bool IsAddress(std::string_view text);

    // Whether two writings are of one address: "C1D2E3F4A5B6" and "c1:d2:e3:f4:a5:b6" are.
    bool IsSameAddress(std::string_view one, std::string_view other);
} // namespace host
