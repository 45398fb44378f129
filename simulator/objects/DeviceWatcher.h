// DeviceWatcher: the program's handle on a search.
#pragma once

#include "simulator/com/Object.h"
#include "simulator/objects/WatcherEvents.h"

namespace simulator
{
    class DeviceWatcher final : public Object<platform::IDeviceWatcher, platform::IDeviceWatcher2>
    {
    public:
        DeviceWatcher(Query filter, std::vector<std::string> const& requested, platform::DeviceInformationKind kind);
        ~DeviceWatcher() override;

        // "#1"
        std::string const& Name() const noexcept;

        HRESULT STDMETHODCALLTYPE add_Added(platform::AddedHandler* handler, EventRegistrationToken* token) override;
        HRESULT STDMETHODCALLTYPE remove_Added(EventRegistrationToken token) override;
        HRESULT STDMETHODCALLTYPE add_Updated(platform::UpdateHandler* handler, EventRegistrationToken* token) override;
        HRESULT STDMETHODCALLTYPE remove_Updated(EventRegistrationToken token) override;
        HRESULT STDMETHODCALLTYPE add_Removed(platform::UpdateHandler* handler, EventRegistrationToken* token) override;
        HRESULT STDMETHODCALLTYPE remove_Removed(EventRegistrationToken token) override;
        HRESULT STDMETHODCALLTYPE add_EnumerationCompleted(platform::WatcherHandler* handler,
                                                           EventRegistrationToken* token) override;
        HRESULT STDMETHODCALLTYPE remove_EnumerationCompleted(EventRegistrationToken token) override;
        HRESULT STDMETHODCALLTYPE add_Stopped(platform::WatcherHandler* handler,
                                              EventRegistrationToken* token) override;
        HRESULT STDMETHODCALLTYPE remove_Stopped(EventRegistrationToken token) override;
        HRESULT STDMETHODCALLTYPE get_Status(platform::DeviceWatcherStatus* status) override;
        HRESULT STDMETHODCALLTYPE Start() override;
        HRESULT STDMETHODCALLTYPE Stop() override;
        HRESULT STDMETHODCALLTYPE GetBackgroundTrigger(void* eventKinds, void** trigger) override;

    private:
        char const* ClassName() const noexcept override;

        std::shared_ptr<WatcherEvents> const m_events;
        std::shared_ptr<Watching> const m_watching;
    };
} // namespace simulator
