// An asynchronous pairing operation whose end the test decides, at the binary level.
#pragma once

#include "pairing/Enumeration.h"
#include "platform/abi/Enumeration.h"
#include "tests/support/FakeObject.h"

#include <atomic>

namespace test
{
    class FakeOperation final : public FakeObject<platform::PairingOperation, platform::IAsyncInfo>
    {
    public:
        // What a client awaits; the test keeps the raw pointer to complete it.
        winrt::Windows::Foundation::IAsyncOperation<vorlink::enumeration::DevicePairingResult> Projected()
        {
            AddRef();
            return {static_cast<platform::PairingOperation*>(this), winrt::take_ownership_from_abi};
        }

        void Complete(platform::AsyncStatus end = platform::AsyncStatus::Completed)
        {
            status = end;
            if (auto* const receiver = m_handler.exchange(nullptr))
            {
                receiver->Invoke(this, end);
                receiver->Release();
            }
        }

        // Lets go of the handler without ever calling it.
        void Drop()
        {
            if (auto* const receiver = m_handler.exchange(nullptr))
            {
                receiver->Release();
            }
        }

        bool IsAwaited() const
        {
            return m_handler.load() != nullptr;
        }

        std::atomic<platform::AsyncStatus> status = platform::AsyncStatus::Started;
        std::atomic<HRESULT> results = S_OK;
        std::atomic<int> resultsTaken = 0;
        bool completeInsidePut = false;

        HRESULT STDMETHODCALLTYPE put_Completed(platform::PairingCompletedHandler* value) override
        {
            value->AddRef();
            m_handler = value;
            if (completeInsidePut || status != platform::AsyncStatus::Started)
            {
                Complete(completeInsidePut ? platform::AsyncStatus::Completed : status.load());
            }
            return S_OK;
        }

        HRESULT STDMETHODCALLTYPE get_Completed(platform::PairingCompletedHandler** value) override
        {
            *value = nullptr;
            return S_OK;
        }

        HRESULT STDMETHODCALLTYPE GetResults(platform::IDevicePairingResult** value) override
        {
            ++resultsTaken;
            *value = nullptr;
            return results;
        }

        HRESULT STDMETHODCALLTYPE get_Id(UINT32* value) override
        {
            *value = 1;
            return S_OK;
        }
        HRESULT STDMETHODCALLTYPE get_Status(platform::AsyncStatus* value) override
        {
            *value = status;
            return S_OK;
        }
        HRESULT STDMETHODCALLTYPE get_ErrorCode(HRESULT* value) override
        {
            *value = S_OK;
            return S_OK;
        }
        HRESULT STDMETHODCALLTYPE Cancel() override
        {
            return S_OK;
        }
        HRESULT STDMETHODCALLTYPE Close() override
        {
            return S_OK;
        }

    private:
        std::atomic<platform::PairingCompletedHandler*> m_handler = nullptr;
    };
} // namespace test
