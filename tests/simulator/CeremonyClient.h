// A program that pairs: asks, answers the request, waits for the outcome.
#pragma once

#include "tests/simulator/Client.h"

#include <windows.h>

#include <mutex>

namespace test
{
    constexpr auto anyKind = static_cast<DevicePairingKinds>(63);

    // A room whose speaker pairs as the keys say.
    inline void LoadPairing(std::string const& keys)
    {
        Load(Room("[device.pairing]\n" + keys + "\n"));
    }

    constexpr int Number(DevicePairingResultStatus status)
    {
        return static_cast<int>(status);
    }

    class Pairer
    {
    public:
        using Answer = std::function<void(IDevicePairingRequestedEventArgs*)>;

        explicit Pairer(std::string const& id, Answer answer = Accept)
            : device(FindDevice(id))
            , custom(CustomOf(device))
            , m_answer(std::move(answer))
        {
            EventRegistrationToken token{};
            custom->add_PairingRequested(
                On<PairingRequestedHandler>([this](auto*, IDevicePairingRequestedEventArgs* request) {
                    ++requests;
                    thread = GetCurrentThreadId();
                    m_answer(request);
                    return S_OK;
                }).Get(),
                &token);
        }

        static void Accept(IDevicePairingRequestedEventArgs* request)
        {
            EXPECT_EQ(request->Accept(), S_OK);
        }

        Com<PairingOperation> Begin(DevicePairingKinds kinds = anyKind,
                                    DevicePairingProtectionLevel level = DevicePairingProtectionLevel::Default) const
        {
            Com<PairingOperation> operation;
            EXPECT_EQ(custom->PairWithProtectionLevelAsync(kinds, level, operation.Put()), S_OK);
            return operation;
        }

        // The status that the pairing ends with.
        int Pair(DevicePairingKinds kinds = anyKind,
                 DevicePairingProtectionLevel level = DevicePairingProtectionLevel::Default) const
        {
            return Outcome(Begin(kinds, level));
        }

        static int Outcome(Com<PairingOperation> const& operation)
        {
            EXPECT_TRUE(WaitIdle()) << TraceText();
            EXPECT_EQ(StatusOf(operation), AsyncStatus::Completed);
            Com<IDevicePairingResult> result;
            EXPECT_EQ(operation->GetResults(result.Put()), S_OK);
            if (!result)
            {
                return -1;
            }
            DevicePairingResultStatus status{};
            EXPECT_EQ(result->get_Status(&status), S_OK);
            return static_cast<int>(status);
        }

        Com<IDeviceInformation> device;
        Com<IDeviceInformationCustomPairing> custom;
        std::atomic<int> requests = 0;
        std::atomic<DWORD> thread = 0;

    private:
        Answer m_answer;
    };

    inline int UnpairOutcome(Com<UnpairingOperation> const& operation)
    {
        EXPECT_TRUE(WaitIdle()) << TraceText();
        EXPECT_EQ(StatusOf(operation), AsyncStatus::Completed);
        Com<IDeviceUnpairingResult> result;
        EXPECT_EQ(operation->GetResults(result.Put()), S_OK);
        if (!result)
        {
            return -1;
        }
        DeviceUnpairingResultStatus status{};
        EXPECT_EQ(result->get_Status(&status), S_OK);
        return static_cast<int>(status);
    }

    inline Com<UnpairingOperation> BeginUnpair(Com<IDeviceInformation> const& device)
    {
        Com<UnpairingOperation> operation;
        EXPECT_EQ(PairingOf(device).As<IDeviceInformationPairing2>()->UnpairAsync(operation.Put()), S_OK);
        return operation;
    }
} // namespace test
