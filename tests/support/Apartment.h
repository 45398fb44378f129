// A single-threaded apartment as a host has it: what is called into it runs on its thread, when that pumps messages.
#pragma once

#include "platform/abi/Foundation.h"
#include "tests/support/Patience.h"
#include "tests/support/ReplacedImport.h"

#include <windows.h>
#include <objbase.h>

#include <atomic>
#include <stdexcept>

namespace test
{
    // The way into an apartment for a system that has none: a call waits for the apartment's thread to pump messages.
    class PlayedContext final : public platform::IContextCallback
    {
    public:
        PlayedContext()
            : m_window(CreateWindowExW(0, L"STATIC", L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr))
        {
            if (!m_window)
            {
                throw std::runtime_error("no window");
            }
            SetWindowLongPtrW(m_window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&PlayedContext::Receive));
        }

        PlayedContext(PlayedContext const&) = delete;
        PlayedContext& operator=(PlayedContext const&) = delete;

        HRESULT STDMETHODCALLTYPE ContextCallback(HRESULT(STDMETHODCALLTYPE* callback)(CallData*), CallData* data,
                                                  GUID const&, int, ::IUnknown*) override
        {
            Entry entry{callback, data, RPC_E_DISCONNECTED};
            SendMessageW(m_window, enter, 0, reinterpret_cast<LPARAM>(&entry));
            return entry.result;
        }

        HRESULT STDMETHODCALLTYPE QueryInterface(GUID const& id, void** object) override
        {
            bool const known = id == iid || id == platform::iid_of<::IUnknown>;
            *object = known ? this : nullptr;
            return known ? (AddRef(), S_OK) : E_NOINTERFACE;
        }

        ULONG STDMETHODCALLTYPE AddRef() override
        {
            return ++m_references;
        }

        ULONG STDMETHODCALLTYPE Release() override
        {
            return --m_references;
        }

    private:
        struct Entry
        {
            HRESULT(STDMETHODCALLTYPE* callback)(CallData*);
            CallData* data;
            HRESULT result;
        };

        static constexpr UINT enter = WM_APP;

        static LRESULT CALLBACK Receive(HWND window, UINT message, WPARAM wide, LPARAM address)
        {
            if (message != enter)
            {
                return DefWindowProcW(window, message, wide, address);
            }
            auto& entry = *reinterpret_cast<Entry*>(address);
            entry.result = entry.callback(entry.data);
            return 0;
        }

        HWND m_window; // goes with the thread
        std::atomic<ULONG> m_references = 1;
    };

    // The calling thread's, once it has joined one. A process has one of these at most.
    class Apartment
    {
    public:
        // `module` is who finds its way back into the apartment by the system, or by the played one where the
        // system's does not lead there (Wine's).
        explicit Apartment(HMODULE module)
        {
            // Its own import may be the one that is replaced.
            auto const address = GetProcAddress(GetModuleHandleW(L"ole32.dll"), "CoGetObjectContext");
            systems = reinterpret_cast<GetContext*>(reinterpret_cast<void*>(address));
            if (!SystemEnters())
            {
                static PlayedContext context; // its callers may let go of it later than the test
                played = &context;
                thread = GetCurrentThreadId();
                ReplaceImport(module, "CoGetObjectContext", ContextOfThread);
            }
        }

        Apartment(Apartment const&) = delete;
        Apartment& operator=(Apartment const&) = delete;

        // Until a call into the apartment waits for the thread to pump.
        bool WaitForEntry() const
        {
            auto const limit = std::chrono::duration_cast<std::chrono::milliseconds>(patience).count();
            return MsgWaitForMultipleObjectsEx(0, nullptr, static_cast<DWORD>(limit), QS_ALLINPUT,
                                               MWMO_INPUTAVAILABLE) == WAIT_OBJECT_0;
        }

        template <typename Condition>
        bool PumpUntil(Condition condition) const
        {
            while (!condition())
            {
                if (!WaitForEntry())
                {
                    return false;
                }
                for (MSG message; PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE);)
                {
                    DispatchMessageW(&message);
                }
            }
            return true;
        }

    private:
        using GetContext = HRESULT WINAPI(REFIID, void**);

        static HRESULT WINAPI ContextOfThread(REFIID id, void** object)
        {
            return GetCurrentThreadId() == thread ? played->QueryInterface(id, object) : systems(id, object);
        }

        // Whether the system can call into the apartment, tried from within.
        static bool SystemEnters()
        {
            platform::IContextCallback* context = nullptr;
            if (systems(platform::IContextCallback::iid, reinterpret_cast<void**>(&context)) < 0)
            {
                return false;
            }
            constexpr GUID anyInterface{0x0A299774, 0x3E4E, 0xFC42, {0x1D, 0x9D, 0x72, 0xCE, 0xE1, 0x05, 0xCA, 0x57}};
            platform::IContextCallback::CallData data{};
            HRESULT const result = context->ContextCallback(
                [](platform::IContextCallback::CallData*) -> HRESULT { return S_OK; }, &data, anyInterface, 5, nullptr);
            context->Release();
            return result >= 0;
        }

        static inline GetContext* systems = nullptr;
        static inline PlayedContext* played = nullptr;
        static inline DWORD thread = 0;
    };
} // namespace test
