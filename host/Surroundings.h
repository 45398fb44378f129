// A look at the Bluetooth devices around by the platform itself, beside the library.
#pragma once

#include "host/Seen.h"

#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace host
{
    enum class Among
    {
        All,
        Pairable, // those that can be paired, and those that are
        Paired,
    };

    struct Selector
    {
        Protocol protocol = Protocol::Classic;
        Among among = Among::All;
    };

    // A pairing that the platform was asked for.
    class PendingPairing
    {
    public:
        PendingPairing() = default;
        virtual ~PendingPairing() = default;
        PendingPairing(PendingPairing const&) = delete;
        PendingPairing& operator=(PendingPairing const&) = delete;

        // The platform's number, when it has answered.
        virtual std::optional<int> Status() const = 0;
    };

    // Watches for as long as it lives. For one thread: a platform call that fails throws its winrt::hresult_error
    // there.
    class Surroundings
    {
    public:
        explicit Surroundings(std::vector<Selector> const& selectors);
        ~Surroundings();
        Surroundings(Surroundings const&) = delete;
        Surroundings& operator=(Surroundings const&) = delete;

        // What has changed since the last time, in the order that the platform reports it. Where there is nothing,
        // waits for as long as `patience`; a search that completes ends the wait too. Throws a std::runtime_error when
        // the platform has stopped a search, as it does when Bluetooth is switched off.
        std::vector<Sighting> Take(std::chrono::milliseconds patience);

        // What is there after all that has been taken, in no order that tells anything.
        std::vector<Seen> All() const;

        // All searches are complete, and what they have found has been taken. Changes may still come.
        bool IsComplete() const;

        // Of a device that was taken: asks the platform to pair it as the library does, by confirmation alone, with
        // encryption and authentication.
        std::unique_ptr<PendingPairing> BeginPairing(std::string const& id) const;

    private:
        class Searches;
        std::unique_ptr<Searches> const m_searches;
    };

    // By the library's rule: a name of 14 bytes or more also names a device whose name contains it.
    bool IsNamed(std::string const& deviceName, std::string const& name);
} // namespace host
