// A program that takes its time to answer a pairing request.
#include "tests/simulator/CeremonyClient.h"
#include "tests/support/Patience.h"

#include <roapi.h>

#include <future>
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

TEST_F(PairingDeferral, CompletedInASingleThreadedApartmentIsLost)
{
    LoadPairing("duration-ms = 0");
    Com<IDeferral> deferral;
    Pairer pairer(speaker, [&](auto* request) {
        request->GetDeferral(deferral.Put());
        request->Accept();
    });
    auto const operation = pairer.Begin();
    ASSERT_TRUE(WaitIdle());
    std::thread([&] {
        ASSERT_HRESULT_SUCCEEDED(RoInitialize(RO_INIT_SINGLETHREADED));
        EXPECT_EQ(deferral->Complete(), S_OK);
        EXPECT_EQ(deferral->Complete(), illegalMethodCall);
        RoUninitialize();
    }).join();
    ASSERT_TRUE(WaitIdle());
    EXPECT_EQ(StatusOf(operation), AsyncStatus::Started);
    ASSERT_EQ(SimulatePairingCompletes(speaker, 0), 1);
    EXPECT_EQ(Pairer::Outcome(operation), Number(Status::Paired));
}

TEST_F(PairingDeferral, CompletedInASingleThreadedApartmentMayBeKept)
{
    Load(Room("[device.pairing]\nduration-ms = 0\n", {},
              "enumeration-completes-ms = 0\n[platform]\nsta-deferrals-hang = false"));
    Com<IDeferral> deferral;
    Pairer pairer(speaker, [&](auto* request) {
        request->GetDeferral(deferral.Put());
        request->Accept();
    });
    auto const operation = pairer.Begin();
    ASSERT_TRUE(WaitIdle());
    std::thread([&] {
        ASSERT_HRESULT_SUCCEEDED(RoInitialize(RO_INIT_SINGLETHREADED));
        EXPECT_EQ(deferral->Complete(), S_OK);
        RoUninitialize();
    }).join();
    EXPECT_EQ(Pairer::Outcome(operation), Number(Status::Paired));
}

TEST_F(PairingDeferral, IsNotNeededByAHandlerThatWaitsForTheCaller)
{
    LoadPairing("duration-ms = 0");
    std::promise<void> begun;
    Pairer pairer(speaker, [&](auto* request) {
        EXPECT_EQ(begun.get_future().wait_for(patience), std::future_status::ready);
        request->Accept();
    });
    auto const operation = pairer.Begin();
    begun.set_value();
    EXPECT_EQ(Pairer::Outcome(operation), Number(Status::Paired));
}
