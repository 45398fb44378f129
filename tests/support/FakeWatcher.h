// A watcher of the platform whose moments the test decides: what happens inside a registration, Start and Stop.
#pragma once

#include "pairing/Enumeration.h"
#include "platform/abi/Enumeration.h"
#include "tests/support/FakeObject.h"

#include <gtest/gtest.h>

#include <functional>
#include <mutex>
#include <string>
#include <vector>

namespace test
{
    class FakeWatcher final : public FakeObject<platform::IDeviceWatcher, platform::IWeakReferenceSource>
    {
    public:
        std::function<HRESULT()> onStart = [] { return S_OK; };
        std::function<HRESULT()> onStop = [] { return S_OK; };
        std::function<void()> onAddStopped = [] {};

        vorlink::enumeration::DeviceWatcher Projected()
        {
            AddRef();
            return {static_cast<platform::IDeviceWatcher*>(this), winrt::take_ownership_from_abi};
        }

        // The calls so far, in order ("add_Added", "Start").
        std::vector<std::string> Calls()
        {
            std::lock_guard const lock(m_mutex);
            return m_calls;
        }

        // Raises the event to whoever was registered for it, also after that was revoked.
        void Complete()
        {
            ASSERT_TRUE(m_completed);
            EXPECT_EQ(m_completed->Invoke(this, nullptr), S_OK);
        }

        HRESULT STDMETHODCALLTYPE add_Added(platform::AddedHandler*, EventRegistrationToken* token) override
        {
            return Register("add_Added", token);
        }
        HRESULT STDMETHODCALLTYPE remove_Added(EventRegistrationToken) override
        {
            return Note("remove_Added");
        }
        HRESULT STDMETHODCALLTYPE add_Updated(platform::UpdateHandler*, EventRegistrationToken* token) override
        {
            return Register("add_Updated", token);
        }
        HRESULT STDMETHODCALLTYPE remove_Updated(EventRegistrationToken) override
        {
            return Note("remove_Updated");
        }
        HRESULT STDMETHODCALLTYPE add_Removed(platform::UpdateHandler*, EventRegistrationToken* token) override
        {
            return Register("add_Removed", token);
        }
        HRESULT STDMETHODCALLTYPE remove_Removed(EventRegistrationToken) override
        {
            return Note("remove_Removed");
        }
        HRESULT STDMETHODCALLTYPE add_EnumerationCompleted(platform::WatcherHandler* handler,
                                                           EventRegistrationToken* token) override
        {
            handler->AddRef();
            m_completed.attach(handler);
            return Register("add_EnumerationCompleted", token);
        }
        HRESULT STDMETHODCALLTYPE remove_EnumerationCompleted(EventRegistrationToken) override
        {
            return Note("remove_EnumerationCompleted");
        }
        HRESULT STDMETHODCALLTYPE add_Stopped(platform::WatcherHandler*, EventRegistrationToken* token) override
        {
            onAddStopped();
            return Register("add_Stopped", token);
        }
        HRESULT STDMETHODCALLTYPE remove_Stopped(EventRegistrationToken) override
        {
            return Note("remove_Stopped");
        }
        HRESULT STDMETHODCALLTYPE get_Status(platform::DeviceWatcherStatus*) override
        {
            return E_NOTIMPL;
        }
        HRESULT STDMETHODCALLTYPE Start() override
        {
            Note("Start");
            return onStart();
        }
        HRESULT STDMETHODCALLTYPE Stop() override
        {
            Note("Stop");
            return onStop();
        }

        HRESULT STDMETHODCALLTYPE GetWeakReference(platform::IWeakReference** reference) override
        {
            m_weak.watcher = this;
            *reference = &m_weak;
            return S_OK;
        }

    private:
        // Always resolves: a watcher of a test outlives what the library holds of it.
        struct Weak final : platform::IWeakReference
        {
            FakeWatcher* watcher = nullptr;

            HRESULT STDMETHODCALLTYPE QueryInterface(GUID const&, void** object) override
            {
                *object = nullptr;
                return E_NOINTERFACE;
            }
            ULONG STDMETHODCALLTYPE AddRef() override
            {
                return 2;
            }
            ULONG STDMETHODCALLTYPE Release() override
            {
                return 1;
            }
            HRESULT STDMETHODCALLTYPE Resolve(GUID const& id, void** object) override
            {
                return watcher->QueryInterface(id, object);
            }
        };

        HRESULT Note(char const* call)
        {
            std::lock_guard const lock(m_mutex);
            m_calls.emplace_back(call);
            return S_OK;
        }

        HRESULT Register(char const* call, EventRegistrationToken* token)
        {
            token->value = 1;
            return Note(call);
        }

        std::mutex m_mutex;
        std::vector<std::string> m_calls;
        winrt::com_ptr<platform::WatcherHandler> m_completed;
        Weak m_weak;
    };

    // Gives out the one watcher.
    class FakeStatics final : public FakeObject<platform::IDeviceInformationStatics2>
    {
    public:
        explicit FakeStatics(FakeWatcher& watcher)
            : m_watcher(watcher)
        {
        }

        HRESULT STDMETHODCALLTYPE GetAqsFilterFromDeviceClass(INT32, HSTRING*) override
        {
            return E_NOTIMPL;
        }
        HRESULT STDMETHODCALLTYPE CreateFromIdAsyncWithKindAndAdditionalProperties(HSTRING,
                                                                                   platform::IIterable<HSTRING>*,
                                                                                   platform::DeviceInformationKind,
                                                                                   platform::DeviceOperation**) override
        {
            return E_NOTIMPL;
        }
        HRESULT STDMETHODCALLTYPE FindAllAsyncWithKindAqsFilterAndAdditionalProperties(
            HSTRING, platform::IIterable<HSTRING>*, platform::DeviceInformationKind,
            platform::DevicesOperation**) override
        {
            return E_NOTIMPL;
        }
        HRESULT STDMETHODCALLTYPE CreateWatcherWithKindAqsFilterAndAdditionalProperties(
            HSTRING, platform::IIterable<HSTRING>*, platform::DeviceInformationKind,
            platform::IDeviceWatcher** watcher) override
        {
            m_watcher.AddRef();
            *watcher = &m_watcher;
            return S_OK;
        }

    private:
        FakeWatcher& m_watcher;
    };
} // namespace test
