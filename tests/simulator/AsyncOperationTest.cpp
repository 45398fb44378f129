// The contract of asynchronous operations.
#include "tests/simulator/CeremonyClient.h"

#include <windows.h>

#include <memory>

using namespace test;

namespace
{
    class AsyncOperation : public SimulatorTest
    {
    protected:
        void SetUp() override
        {
            SimulatorTest::SetUp();
            LoadPairing("duration-ms = 'never'");
            pairer = std::make_unique<Pairer>(speaker);
            operation = pairer->Begin();
            info = operation.As<IAsyncInfo>();
            ASSERT_TRUE(WaitIdle());
        }

        void Complete()
        {
            ASSERT_EQ(SimulatePairingCompletes(speaker, 0), 1);
            ASSERT_TRUE(WaitIdle());
        }

        Com<PairingCompletedHandler> Counting()
        {
            return On<PairingCompletedHandler>([this](PairingOperation* sender, AsyncStatus status) {
                ++calls;
                thread = GetCurrentThreadId();
                last = status;
                EXPECT_EQ(sender, operation.Get());
                return S_OK;
            });
        }

        std::unique_ptr<Pairer> pairer;
        Com<PairingOperation> operation;
        Com<IAsyncInfo> info;
        std::atomic<int> calls = 0;
        std::atomic<DWORD> thread = 0;
        std::atomic<AsyncStatus> last = AsyncStatus::Started;
    };
} // namespace

TEST_F(AsyncOperation, IsStartedAtFirst)
{
    EXPECT_EQ(StatusOf(operation), AsyncStatus::Started);
    UINT32 id = 0;
    EXPECT_EQ(info->get_Id(&id), S_OK);
    EXPECT_EQ(id, 1u);
    HRESULT code = E_FAIL;
    EXPECT_EQ(info->get_ErrorCode(&code), S_OK);
    EXPECT_EQ(code, S_OK);
    Com<IDevicePairingResult> result;
    EXPECT_EQ(operation->GetResults(result.Put()), illegalMethodCall);
    EXPECT_EQ(info->Close(), illegalStateChange);
}

TEST_F(AsyncOperation, CallsTheHandlerOnAnotherThread)
{
    EXPECT_EQ(operation->put_Completed(Counting().Get()), S_OK);
    EXPECT_EQ(calls, 0);
    Complete();
    EXPECT_EQ(calls, 1);
    EXPECT_EQ(last, AsyncStatus::Completed);
    EXPECT_NE(thread, GetCurrentThreadId());
}

TEST_F(AsyncOperation, ACallIsWaitedForUntilItHasReturned)
{
    Complete();
    constexpr auto call = "AsyncOperation.put_Completed(";
    auto const handler = On<PairingCompletedHandler>([](PairingOperation*, AsyncStatus) {
        EXPECT_EQ(SimulatorWaitForTrace(call, 1, 0), 0) << "it is under way";
        return S_OK;
    });
    EXPECT_EQ(operation->put_Completed(handler.Get()), S_OK);
    EXPECT_EQ(SimulatorWaitForTrace(call, 1, 0), 1);
}

TEST_F(AsyncOperation, CallsAHandlerThatComesLaterAtOnceOnItsThread)
{
    Complete();
    EXPECT_EQ(operation->put_Completed(Counting().Get()), S_OK);
    EXPECT_EQ(calls, 1);
    EXPECT_EQ(last, AsyncStatus::Completed);
    EXPECT_EQ(thread, GetCurrentThreadId());
}

TEST_F(AsyncOperation, TakesOneHandlerOnly)
{
    EXPECT_EQ(operation->put_Completed(Counting().Get()), S_OK);
    EXPECT_EQ(operation->put_Completed(Counting().Get()), illegalDelegateAssignment);
    Complete();
    EXPECT_EQ(operation->put_Completed(Counting().Get()), illegalDelegateAssignment);
    EXPECT_EQ(calls, 1);
}

TEST_F(AsyncOperation, ShowsItsHandlerWhileItWaits)
{
    auto const handler = Counting();
    Com<PairingCompletedHandler> got;
    EXPECT_EQ(operation->get_Completed(got.Put()), S_OK);
    EXPECT_FALSE(got);
    operation->put_Completed(handler.Get());
    EXPECT_EQ(operation->get_Completed(got.Put()), S_OK);
    EXPECT_EQ(got.Get(), handler.Get());
}

TEST_F(AsyncOperation, GivesItsResultAnyNumberOfTimes)
{
    Complete();
    for (int time = 0; time < 2; ++time)
    {
        Com<IDevicePairingResult> result;
        EXPECT_EQ(operation->GetResults(result.Put()), S_OK);
        EXPECT_TRUE(result);
    }
}

TEST_F(AsyncOperation, IsCanceledOnDemand)
{
    operation->put_Completed(Counting().Get());
    EXPECT_EQ(info->Cancel(), S_OK);
    EXPECT_EQ(StatusOf(operation), AsyncStatus::Canceled);
    ASSERT_TRUE(WaitIdle());
    EXPECT_EQ(calls, 1);
    EXPECT_EQ(last, AsyncStatus::Canceled);
    EXPECT_NE(thread, GetCurrentThreadId());
    Com<IDevicePairingResult> result;
    EXPECT_EQ(operation->GetResults(result.Put()), illegalMethodCall);
    EXPECT_EQ(info->Cancel(), S_OK);
    EXPECT_FALSE(IsPaired(FindDevice(speaker)));
    EXPECT_EQ(SimulatePairingCompletes(speaker, 0), 0);
}

TEST_F(AsyncOperation, IgnoresACancellationThatComesTooLate)
{
    Complete();
    EXPECT_EQ(info->Cancel(), S_OK);
    EXPECT_EQ(StatusOf(operation), AsyncStatus::Completed);
}

TEST_F(AsyncOperation, AnswersNothingOnceClosed)
{
    Complete();
    EXPECT_EQ(info->Close(), S_OK);
    EXPECT_EQ(info->Close(), S_OK);
    UINT32 id = 0;
    AsyncStatus status{};
    HRESULT code = S_OK;
    Com<IDevicePairingResult> result;
    EXPECT_EQ(info->get_Id(&id), illegalMethodCall);
    EXPECT_EQ(info->get_Status(&status), illegalMethodCall);
    EXPECT_EQ(info->get_ErrorCode(&code), illegalMethodCall);
    EXPECT_EQ(operation->GetResults(result.Put()), illegalMethodCall);
    EXPECT_EQ(operation->put_Completed(Counting().Get()), illegalMethodCall);
    EXPECT_EQ(info->Cancel(), illegalMethodCall);
    EXPECT_EQ(calls, 0);
}

TEST_F(AsyncOperation, FailsWithItsCode)
{
    operation->put_Completed(Counting().Get());
    ASSERT_EQ(SimulatePairingFails(speaker, E_OUTOFMEMORY), 1);
    ASSERT_TRUE(WaitIdle());
    EXPECT_EQ(last, AsyncStatus::Error);
    HRESULT code = S_OK;
    EXPECT_EQ(info->get_ErrorCode(&code), S_OK);
    EXPECT_EQ(code, E_OUTOFMEMORY);
    Com<IDevicePairingResult> result;
    EXPECT_EQ(operation->GetResults(result.Put()), E_OUTOFMEMORY);
    EXPECT_EQ(info->Close(), S_OK);
}

TEST_F(AsyncOperation, RefusesNullResults)
{
    EXPECT_EQ(info->get_Id(nullptr), E_POINTER);
    EXPECT_EQ(info->get_Status(nullptr), E_POINTER);
    EXPECT_EQ(info->get_ErrorCode(nullptr), E_POINTER);
    EXPECT_EQ(operation->GetResults(nullptr), E_POINTER);
    EXPECT_EQ(operation->get_Completed(nullptr), E_POINTER);
}

TEST_F(AsyncOperation, IsAgileAndNamed)
{
    EXPECT_EQ(ClassNameOf(operation.Get()),
              "Windows.Foundation.IAsyncOperation`1<Windows.Devices.Enumeration.DevicePairingResult>");
    EXPECT_TRUE(operation.Answers<platform::IAgileObject>());
    EXPECT_TRUE(operation.Answers<::IMarshal>());
    EXPECT_FALSE(operation.Answers<UnpairingOperation>());
}

TEST_F(AsyncOperation, MayBeForgottenWhileItRuns)
{
    operation->put_Completed(Counting().Get());
    info.Reset();
    auto* const expected = operation.Get();
    EXPECT_EQ(SimulatePairingCompletes(speaker, 0), 1);
    ASSERT_TRUE(WaitIdle());
    EXPECT_EQ(expected, operation.Get());
    operation.Reset();
    EXPECT_EQ(calls, 1);
}
