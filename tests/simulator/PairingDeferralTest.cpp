// A program that takes its time to answer a pairing request.
#include "tests/simulator/CeremonyClient.h"

#include <thread>

using namespace test;

namespace
{
    using Status = DevicePairingResultStatus;

    using PairingDeferral = SimulatorTest;
} // namespace

TEST_F(PairingDeferral, MissingMakesALateAcceptanceChangeNothing)
{
    Com<IDevicePairingRequestedEventArgs> kept;
    Pairer pairer(speaker, [&](auto* request) { kept = Com<IDevicePairingRequestedEventArgs>(request); });
    auto const operation = pairer.Begin();
    ASSERT_TRUE(WaitIdle());
    EXPECT_EQ(kept->Accept(), S_OK);
    EXPECT_EQ(Pairer::Outcome(operation), Number(Status::RejectedByHandler));
    Com<IDeferral> deferral;
    EXPECT_EQ(kept->GetDeferral(deferral.Put()), illegalMethodCall);
}

TEST_F(PairingDeferral, KeepsTheAnswerOpen)
{
    LoadPairing("duration-ms = 1");
    Com<IDeferral> deferral;
    Com<IDevicePairingRequestedEventArgs> kept;
    Pairer pairer(speaker, [&](auto* request) {
        kept = Com<IDevicePairingRequestedEventArgs>(request);
        request->GetDeferral(deferral.Put());
    });
    auto const operation = pairer.Begin();
    ASSERT_TRUE(WaitIdle());
    EXPECT_EQ(StatusOf(operation), AsyncStatus::Started);
    EXPECT_EQ(ClassNameOf(deferral.Get()), "Windows.Foundation.Deferral");
    EXPECT_EQ(kept->Accept(), S_OK);
    ASSERT_TRUE(WaitIdle());
    EXPECT_EQ(StatusOf(operation), AsyncStatus::Started); // only completing the deferral moves on
    EXPECT_EQ(deferral->Complete(), S_OK);
    ASSERT_TRUE(WaitIdle());
    while (StatusOf(operation) == AsyncStatus::Started)
    {
        std::this_thread::yield(); // its last millisecond
    }
    EXPECT_EQ(Pairer::Outcome(operation), Number(Status::Paired));
}

TEST_F(PairingDeferral, CompletedWithoutAcceptanceRejects)
{
    Com<IDeferral> deferral;
    Pairer pairer(speaker, [&](auto* request) { request->GetDeferral(deferral.Put()); });
    auto const operation = pairer.Begin();
    ASSERT_TRUE(WaitIdle());
    EXPECT_EQ(deferral->Complete(), S_OK);
    EXPECT_EQ(Pairer::Outcome(operation), Number(Status::RejectedByHandler));
}

TEST_F(PairingDeferral, CompletesOnceAndClosesAnyNumberOfTimes)
{
    Com<IDeferral> deferral;
    Pairer pairer(speaker, [&](auto* request) { request->GetDeferral(deferral.Put()); });
    pairer.Begin();
    ASSERT_TRUE(WaitIdle());
    EXPECT_EQ(deferral->Complete(), S_OK);
    EXPECT_EQ(deferral->Complete(), illegalMethodCall);
    EXPECT_EQ(deferral.As<IClosable>()->Close(), S_OK);
    EXPECT_EQ(deferral.As<IClosable>()->Close(), S_OK);
}

TEST_F(PairingDeferral, ClosedIsCompleted)
{
    Com<IDeferral> deferral;
    Pairer pairer(speaker, [&](auto* request) { request->GetDeferral(deferral.Put()); });
    auto const operation = pairer.Begin();
    ASSERT_TRUE(WaitIdle());
    EXPECT_EQ(deferral.As<IClosable>()->Close(), S_OK);
    EXPECT_EQ(Pairer::Outcome(operation), Number(Status::RejectedByHandler));
}

TEST_F(PairingDeferral, OfTwoEachMustComplete)
{
    LoadPairing("duration-ms = 'never'");
    Com<IDeferral> one;
    Com<IDeferral> two;
    Pairer pairer(speaker, [&](auto* request) {
        request->GetDeferral(one.Put());
        request->GetDeferral(two.Put());
        request->Accept();
    });
    auto const operation = pairer.Begin();
    ASSERT_TRUE(WaitIdle());
    one->Complete();
    ASSERT_TRUE(WaitIdle());
    EXPECT_EQ(StatusOf(operation), AsyncStatus::Started);
    two->Complete();
    ASSERT_TRUE(WaitIdle());
    ASSERT_EQ(SimulatePairingCompletes(speaker, 0), 1);
    EXPECT_EQ(Pairer::Outcome(operation), Number(Status::Paired));
}

TEST_F(PairingDeferral, DoesNotKeepTheDeviceFromGivingUp)
{
    Com<IDeferral> deferral;
    Pairer pairer(speaker, [&](auto* request) { request->GetDeferral(deferral.Put()); });
    auto const operation = pairer.Begin();
    ASSERT_TRUE(WaitIdle());
    ASSERT_EQ(SimulatePairingCompletes(speaker, Number(Status::AuthenticationTimeout)), 1);
    EXPECT_EQ(Pairer::Outcome(operation), Number(Status::AuthenticationTimeout));
    EXPECT_EQ(deferral->Complete(), S_OK);
    ASSERT_TRUE(WaitIdle());
}
