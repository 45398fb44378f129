// A host rehearses its failures: each test plays a neighbourhood, lets happen in it what does not happen on a desk, and
// looks at what the host makes of it. A test waits for the trace, never for a guessed time.
#include "PairingDesk.h"

#include <gtest/gtest.h>
#include <vorlink/VorlinkSimulator.h>

#include <future>

using namespace std::chrono_literals;

namespace
{
    // A headset that pairs when a test says so. Each watcher's search goes on until then, or until a test ends it.
    constexpr char headset[] = R"toml(
enumeration-completes-ms = "never"
[[device]]
name = "Headset"
address = "5c:f3:70:8b:41:d6"
[device.pairing]
duration-ms = "never"
)toml";
    constexpr char id[] = "Bluetooth#Bluetooth00:1a:7d:da:71:13-5c:f3:70:8b:41:d6";

    // Platform's numbers.
    constexpr std::int32_t paired = 0;
    constexpr std::int32_t authenticationFailure = 9;
    constexpr auto accessDenied = static_cast<std::int32_t>(0x80070005);

    constexpr std::uint32_t patienceMs = 20000;
    constexpr std::chrono::milliseconds patience(patienceMs);

    std::future<Outcome> BeginPairing(char const* name)
    {
        return std::async(std::launch::async, PairDevice, name, patience);
    }

    bool WaitFor(char const* call)
    {
        return SimulatorWaitForTrace(call, 1, patienceMs) == 1;
    }

    class Rehearsal : public testing::Test
    {
    protected:
        void SetUp() override
        {
            ASSERT_TRUE(SimulateScenario(headset)) << SimulatorLastError();
        }
    };
} // namespace

TEST_F(Rehearsal, DeviceThatAgreesIsPaired)
{
    auto outcome = BeginPairing("Headset");
    ASSERT_TRUE(WaitFor("Accept("));
    ASSERT_TRUE(SimulatePairingCompletes(id, paired)) << SimulatorLastError();
    EXPECT_EQ(outcome.get(), Outcome::Paired);
}

TEST_F(Rehearsal, DeviceThatRefusesIsToldFromOneThatIsNotThere)
{
    auto refused = BeginPairing("Headset");
    ASSERT_TRUE(WaitFor("Accept("));
    ASSERT_TRUE(SimulatePairingCompletes(id, authenticationFailure)) << SimulatorLastError();
    EXPECT_EQ(refused.get(), Outcome::Refused);

    SimulatorClearTrace();
    auto missing = BeginPairing("Speaker");
    ASSERT_TRUE(WaitFor("DeviceWatcher.Start("));
    SimulateEnumerationCompletes();
    EXPECT_EQ(missing.get(), Outcome::NotFound);
}

TEST_F(Rehearsal, DeviceThatComesDuringTheSearchIsFound)
{
    ASSERT_TRUE(SimulateDeviceLeaves(id)) << SimulatorLastError();
    auto outcome = BeginPairing("Headset");
    ASSERT_TRUE(WaitFor("DeviceWatcher.Start("));
    ASSERT_TRUE(SimulateDeviceAppears(id)) << SimulatorLastError();
    ASSERT_TRUE(WaitFor("Accept("));
    ASSERT_TRUE(SimulatePairingCompletes(id, paired)) << SimulatorLastError();
    EXPECT_EQ(outcome.get(), Outcome::Paired);
}

TEST_F(Rehearsal, NoSecondPairingBeginsWhileTheFirstLasts)
{
    EXPECT_EQ(PairDevice("Headset", 0ms), Outcome::NoAnswer);
    EXPECT_EQ(PairDevice("Headset", 0ms), Outcome::Busy);

    ASSERT_TRUE(WaitFor("Accept("));
    ASSERT_TRUE(SimulatePairingCompletes(id, authenticationFailure)) << SimulatorLastError();
    SimulatorClearTrace();
    auto next = BeginPairing("Headset");
    ASSERT_TRUE(WaitFor("Accept("));
    ASSERT_TRUE(SimulatePairingCompletes(id, paired)) << SimulatorLastError();
    EXPECT_EQ(next.get(), Outcome::Paired);
}

TEST_F(Rehearsal, PairingIsPossibleAgainAfterThePlatformHasRefusedOne)
{
    ASSERT_TRUE(SimulateFailure("DeviceWatcher.Start", accessDenied)) << SimulatorLastError();
    EXPECT_EQ(PairDevice("Headset", patience), Outcome::Failed);

    auto outcome = BeginPairing("Headset");
    ASSERT_TRUE(WaitFor("Accept("));
    ASSERT_TRUE(SimulatePairingCompletes(id, paired)) << SimulatorLastError();
    EXPECT_EQ(outcome.get(), Outcome::Paired);
}
