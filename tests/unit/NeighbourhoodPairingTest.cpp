// What becomes of a pairing and an unpairing in the neighbourhood.
#include "tests/unit/NeighbourhoodListener.h"

#include <gtest/gtest.h>

#include <list>

using namespace simulator;
using namespace test;
using platform::DevicePairingKinds;
using platform::DevicePairingProtectionLevel;
using platform::DevicePairingResultStatus;
using platform::DeviceUnpairingResultStatus;

namespace
{
    constexpr auto any = DevicePairingProtectionLevel::Default;

    constexpr char needsPin[] = "[device.pairing]\nkind = 'ProvidePin'\npin = '4711'\nduration-ms = 0";
    constexpr char instant[] = "[device.pairing]\nduration-ms = 0";
    constexpr char endless[] = "[device.pairing]\nduration-ms = 'never'\n[device.unpairing]\nduration-ms = 'never'";

    // A pairing or an unpairing, and what it has told.
    struct Attempt
    {
        std::shared_ptr<Operation> operation;
        std::mutex mutex{};
        std::condition_variable told{};
        std::optional<Outcome> outcome{};
        DevicePairingProtectionLevel used{};
        std::string shownPin{};
        bool cancelled = false;

        OperationListener Listener()
        {
            return {[this] {
                        std::lock_guard const lock(mutex);
                        cancelled = true;
                    },
                    [this](Outcome const& end, DevicePairingProtectionLevel level) {
                        std::lock_guard const lock(mutex);
                        outcome = end;
                        used = level;
                        told.notify_all();
                    }};
        }

        Outcome End()
        {
            std::unique_lock lock(mutex);
            EXPECT_TRUE(told.wait_for(lock, patience, [&] { return outcome.has_value(); }));
            return outcome.value_or(Outcome{.status = -1});
        }

        bool EndsWith(DevicePairingResultStatus status)
        {
            return Succeeded(End(), static_cast<std::int32_t>(status));
        }

        bool EndsWith(DeviceUnpairingResultStatus status)
        {
            return Succeeded(End(), static_cast<std::int32_t>(status));
        }
    };

    struct NeighbourhoodPairing : testing::Test
    {
        ~NeighbourhoodPairing() override
        {
            Live();       // ends what is under way
            ExpectIdle(); // and nothing tells an attempt any more: it is about to go
        }

        // The system asks its user, who agrees.
        Attempt& PairBySystem(char const* id, DevicePairingProtectionLevel least = any)
        {
            auto& attempt = attempts.emplace_back(MakePairing(id));
            StartPairing(attempt.operation, {least}, attempt.Listener());
            return attempt;
        }

        // The program asks; `answer` is what its handler does.
        template <typename Answer>
        Attempt& PairByProgram(DevicePairingKinds offered, Answer answer)
        {
            auto& attempt = attempts.emplace_back(MakePairing(speaker));
            auto listener = attempt.Listener();
            listener.ask = [&attempt, answer](DevicePairingKinds, std::string const& pin) {
                attempt.shownPin = pin;
                answer(*attempt.operation);
            };
            StartPairing(attempt.operation, {any, offered}, std::move(listener));
            return attempt;
        }

        Attempt& Unpair()
        {
            auto& attempt = attempts.emplace_back(MakeUnpairing(speaker));
            StartUnpairing(attempt.operation, attempt.Listener());
            return attempt;
        }

        std::list<Attempt> attempts{};
    };

    void Agree(Operation& operation)
    {
        Accept(operation, {});
    }

    void SayNothing(Operation&) {}
} // namespace

TEST_F(NeighbourhoodPairing, PairsTheDeviceBeforeItTells)
{
    Live(std::string(instant) + "\nmax-protection = 'EncryptionAndAuthentication'");
    auto& attempt = PairBySystem(speaker);
    EXPECT_TRUE(attempt.outcome.has_value()) << "a device that answers at once has answered by now";
    EXPECT_TRUE(attempt.EndsWith(DevicePairingResultStatus::Paired));
    EXPECT_EQ(attempt.used, DevicePairingProtectionLevel::EncryptionAndAuthentication);
    EXPECT_TRUE(IsPaired(speaker));
}

TEST_F(NeighbourhoodPairing, IsRefusedForADeviceThatNobodyKnows)
{
    Live();
    EXPECT_TRUE(PairBySystem(phone).EndsWith(DevicePairingResultStatus::Failed));
}

TEST_F(NeighbourhoodPairing, IsRefusedForADeviceThatIsPaired)
{
    Live("is-paired = true");
    EXPECT_TRUE(PairBySystem(speaker).EndsWith(DevicePairingResultStatus::AlreadyPaired));
}

TEST_F(NeighbourhoodPairing, IsRefusedForADeviceThatCannotPair)
{
    Live("can-pair = false");
    EXPECT_TRUE(PairBySystem(speaker).EndsWith(DevicePairingResultStatus::NotReadyToPair));
    EXPECT_FALSE(IsPaired(speaker));
}

TEST_F(NeighbourhoodPairing, IsRefusedBySystemForARequestThatTheProgramWouldHaveToAnswer)
{
    Live(needsPin);
    EXPECT_TRUE(PairBySystem(speaker).EndsWith(DevicePairingResultStatus::RequiredHandlerNotRegistered));
}

TEST_F(NeighbourhoodPairing, IsRefusedForAKindThatTheProgramDoesNotOffer)
{
    Live(needsPin);
    EXPECT_TRUE(PairByProgram(DevicePairingKinds::ConfirmOnly, Agree)
                    .EndsWith(DevicePairingResultStatus::RequiredHandlerNotRegistered));
}

TEST_F(NeighbourhoodPairing, IsRefusedForMoreProtectionThanTheDeviceHas)
{
    Live("[device.pairing]\nmax-protection = 'Encryption'");
    EXPECT_TRUE(PairBySystem(speaker, DevicePairingProtectionLevel::EncryptionAndAuthentication)
                    .EndsWith(DevicePairingResultStatus::ProtectionLevelCouldNotBeMet));
}

TEST_F(NeighbourhoodPairing, IsRefusedWhileAnotherIsUnderWay)
{
    Live(endless);
    PairBySystem(speaker);
    EXPECT_TRUE(PairBySystem(speaker).EndsWith(DevicePairingResultStatus::OperationAlreadyInProgress));
    EXPECT_TRUE(Unpair().EndsWith(DeviceUnpairingResultStatus::OperationAlreadyInProgress));
}

TEST_F(NeighbourhoodPairing, FailsWhereTheProgramDoesNotAccept)
{
    Live(instant);
    EXPECT_TRUE(PairByProgram(DevicePairingKinds::ConfirmOnly, SayNothing)
                    .EndsWith(DevicePairingResultStatus::RejectedByHandler));
    EXPECT_FALSE(IsPaired(speaker));
}

TEST_F(NeighbourhoodPairing, TakesTheDevicesPinAndNoOther)
{
    Live(needsPin);
    auto const with = [](char const* pin) { return [pin](Operation& operation) { Accept(operation, pin); }; };
    EXPECT_TRUE(PairByProgram(DevicePairingKinds::ProvidePin, with("0815"))
                    .EndsWith(DevicePairingResultStatus::AuthenticationFailure));
    auto& right = PairByProgram(DevicePairingKinds::ProvidePin, with("4711"));
    EXPECT_TRUE(right.EndsWith(DevicePairingResultStatus::Paired));
    EXPECT_EQ(right.shownPin, "") << "it is the user who knows";
}

TEST_F(NeighbourhoodPairing, ShowsThePinWhereTheUserIsToCompareIt)
{
    Live("[device.pairing]\nkind = 'ConfirmPinMatch'\npin = '123456'\nduration-ms = 0");
    auto& attempt = PairByProgram(DevicePairingKinds::ConfirmPinMatch, Agree);
    EXPECT_TRUE(attempt.EndsWith(DevicePairingResultStatus::Paired));
    EXPECT_EQ(attempt.shownPin, "123456");
}

TEST_F(NeighbourhoodPairing, WaitsForADeferredAnswer)
{
    Live(instant);
    auto& attempt = PairByProgram(DevicePairingKinds::ConfirmOnly, [](Operation& operation) { Defer(operation); });
    ExpectIdle();
    EXPECT_FALSE(IsPaired(speaker));
    Accept(*attempt.operation, {});
    EndDeferral(*attempt.operation);
    EXPECT_TRUE(attempt.EndsWith(DevicePairingResultStatus::Paired));
    EXPECT_FALSE(Defer(*attempt.operation)) << "too late";
}

TEST_F(NeighbourhoodPairing, EndsAsAVerbSays)
{
    Live(endless);
    auto& attempt = PairBySystem(speaker);
    ASSERT_TRUE(ForceOutcome(speaker, false, {.failure = -2147467259}));
    EXPECT_EQ(attempt.End().failure, -2147467259);
    EXPECT_FALSE(IsPaired(speaker));
    ExpectIdle();
    EXPECT_FALSE(ForceOutcome(speaker, false, {})) << "nothing is under way any more";
}

TEST_F(NeighbourhoodPairing, EndsAsCancelledWhenTheProgramGivesUp)
{
    Live(endless);
    auto& attempt = PairBySystem(speaker);
    Cancel(*attempt.operation);
    EXPECT_TRUE(attempt.End().cancelled);
    EXPECT_FALSE(attempt.cancelled) << "the program knows";
}

TEST_F(NeighbourhoodPairing, IsCancelledWithItsNeighbourhood)
{
    Live(endless);
    auto& attempt = PairBySystem(speaker);
    Live(endless);
    EXPECT_TRUE(attempt.cancelled);
    EXPECT_TRUE(attempt.End().cancelled);
    EXPECT_FALSE(IsPaired(speaker));
}

TEST_F(NeighbourhoodPairing, UnpairsWhatIsPairedAndNothingElse)
{
    Live("is-paired = true\n[device.unpairing]\nduration-ms = 0");
    EXPECT_TRUE(Unpair().EndsWith(DeviceUnpairingResultStatus::Unpaired));
    EXPECT_FALSE(IsPaired(speaker));
    EXPECT_TRUE(Unpair().EndsWith(DeviceUnpairingResultStatus::AlreadyUnpaired));
}

TEST_F(NeighbourhoodPairing, TakesAnUnpairedDeviceAwayWhereTheScenarioSaysSo)
{
    Live("is-paired = true\n[device.unpairing]\nduration-ms = 0\neffect = 'Removed'");
    Watcher watcher;
    ASSERT_EQ(watcher.Start(), WatchAnswer::Done);
    watcher.ToldUpTo("completed");
    Unpair().End();
    watcher.ToldUpTo("removed " + std::string(speaker));
}
