// A simulated neighbourhood: which endpoints there are, when they come and go, how they answer.
#pragma once

#include "simulator/properties/Property.h"

#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace simulator
{
    enum class Protocol
    {
        Classic,
        Le,
    };

    inline constexpr std::int32_t never = -1; // for every time, all of which are in milliseconds

    enum class UnpairEffect
    {
        Updated, // watchers hear that IsPaired changed
        Removed, // watchers lose the endpoint
    };

    // Numbers of the platform's enumerations are kept as numbers: a scenario may rehearse unknown ones.
    struct Ceremony
    {
        std::uint32_t kind;  // DevicePairingKinds
        std::int32_t status; // DevicePairingResultStatus
        std::int32_t durationMs;
        std::string pin;
        std::int32_t maxProtection;          // DevicePairingProtectionLevel
        std::int32_t failure = 0;            // an HRESULT with which the operation fails in place of the status
        std::int32_t answerWithinMs = never; // the program, from when it is asked
        bool promptOpen = false;             // the system's own, which keeps programs out
        bool radioOff = false;               // it goes off once the program has agreed
        bool operator==(Ceremony const&) const = default;
    };

    struct Unpairing
    {
        std::int32_t status; // DeviceUnpairingResultStatus
        std::int32_t durationMs;
        UnpairEffect effect;
        std::int32_t staleMs = 0; // for how long the endpoint still counts as paired after it
        bool operator==(Unpairing const&) const = default;
    };

    struct TimedChange
    {
        std::int32_t atMs;
        std::string property;
        Value value;
        bool operator==(TimedChange const&) const = default;
    };

    struct Endpoint
    {
        std::string id;
        Protocol protocol;
        std::string adapter; // addresses are lower-case, with colons
        std::string address;
        bool canPair; // while it is not paired
        Properties properties;
        std::int32_t appearsAtMs;
        std::int32_t leavesAtMs;
        std::int32_t repeatsAtMs;         // it is reported as added once more, without having left
        bool unfiltered;                  // watchers report it whether it matches or not
        std::vector<TimedChange> changes; // in order of time
        Ceremony pairing;
        Unpairing unpairing;
        std::optional<bool> listed; // by the plug-and-play tool; otherwise what is paired to begin with
        std::string description;    // there
        bool operator==(Endpoint const&) const = default;
    };

    enum class ListingLanguage
    {
        English,
        German,
        Chinese,
    };

    // What the plug-and-play tool prints.
    struct Listing
    {
        ListingLanguage language = ListingLanguage::English;
        std::int32_t unrelatedDevices = 4;
        std::int32_t durationMs = 0;
        bool missing = false; // as if there were no such tool
        bool operator==(Listing const&) const = default;
    };

    enum class EarlyClose
    {
        Refused,   // E_ILLEGAL_STATE_CHANGE, and nothing changes
        Abandoned, // accepted: what is under way goes on, and its caller hears no more of it
    };

    // Where the platform's documentation is silent.
    struct Choices
    {
        std::int32_t outOfRangeStatus = 19; // DevicePairingResultStatus: Failed
        std::int32_t wrongPinStatus = 9;    // AuthenticationFailure
        bool pairedCanPair = true;
        bool pairedOutOfRange = false; // watchers report what is paired wherever it is, and say whether it is present
        bool staDeferralsHang = true;  // completed on a thread of a single-threaded apartment
        bool stoppedAfterAbort = true;
        bool lateEventsToAll = false; // also to those who hear of one or two of Added, Updated and Removed alone
        bool silentAfterEnumeration = false;
        std::int32_t eventDelayMs = 0;               // from the snapshot of an event's handlers to their call
        EarlyClose earlyClose = EarlyClose::Refused; // of an operation that is under way
        bool operator==(Choices const&) const = default;
    };

    // The PC's Bluetooth adapter.
    struct Adapter
    {
        bool present = true;
        std::string address = "00:1a:7d:da:71:13";
        bool classic = true;
        bool le = true;
        bool centralRole = true;
        bool peripheralRole = true;
        bool advertisementOffload = false;
        bool secureConnections = true;
        bool extendedAdvertising = false;
        std::int32_t maxAdvertisementLength = 31; // bytes
        bool operator==(Adapter const&) const = default;
    };

    // The adapter's radio, and what becomes of others when it is switched off.
    struct Radio
    {
        std::int32_t state = 1; // RadioState
        std::string name = "Bluetooth";
        std::int32_t access = 1;         // RadioAccessStatus
        bool offAborts = true;           // started watchers; otherwise they fall silent
        std::int32_t offPairing = 19;    // DevicePairingResultStatus
        std::int32_t offAfterMs = never; // from each watcher's start
        bool operator==(Radio const&) const = default;
    };

    struct Scenario
    {
        std::int32_t enumerationCompletesAtMs;
        bool appearAfterCompletion; // whether a watcher reports what appears once its enumeration is complete
        std::int32_t eventThreads;  // how many raise the events of one watcher
        std::vector<Endpoint> endpoints;
        Listing listing;
        Choices choices{};
        Adapter adapter{};
        Radio radio{};
        bool operator==(Scenario const&) const = default;
    };

    // The values that say whether an endpoint is paired.
    std::vector<std::pair<std::string, Value>> PairingValues(Endpoint const& endpoint, Choices const& choices,
                                                             bool paired);

    // what(): "source:line: reason" for each fault, one a line; of many the first hundred, and how many more there are.
    class ScenarioError : public std::runtime_error
    {
    public:
        using std::runtime_error::runtime_error;
    };

    struct KeyNote;

    // Reads the format that docs/scenario.md describes, and notes the keys that it might have. Throws ScenarioError.
    Scenario ParseScenario(std::string_view toml, std::string_view sourceName, std::vector<KeyNote>* notes = nullptr);

    // Reads a TOML value for a property; empty text is no value. Throws ScenarioError, the property its source.
    Value ParseValue(std::string_view property, std::string_view toml);
} // namespace simulator
