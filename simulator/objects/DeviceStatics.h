// The statics of DeviceInformation: watchers, searches, single devices, filters.
#pragma once

#include "platform/abi/Enumeration.h"
#include "simulator/com/Object.h"

namespace simulator
{
    class DeviceInformationFactory final
        : public Object<::IActivationFactory, platform::IDeviceInformationStatics, platform::IDeviceInformationStatics2>
    {
        using Names = platform::IIterable<HSTRING>;
        using Kind = platform::DeviceInformationKind;

    public:
        HRESULT STDMETHODCALLTYPE ActivateInstance(::IInspectable** instance) override;
        HRESULT STDMETHODCALLTYPE CreateFromIdAsync(HSTRING id, platform::DeviceOperation** operation) override;
        HRESULT STDMETHODCALLTYPE CreateFromIdAsyncAdditionalProperties(HSTRING id, Names* properties,
                                                                        platform::DeviceOperation** operation) override;
        HRESULT STDMETHODCALLTYPE FindAllAsync(platform::DevicesOperation** operation) override;
        HRESULT STDMETHODCALLTYPE FindAllAsyncDeviceClass(INT32 deviceClass,
                                                          platform::DevicesOperation** operation) override;
        HRESULT STDMETHODCALLTYPE FindAllAsyncAqsFilter(HSTRING filter,
                                                        platform::DevicesOperation** operation) override;
        HRESULT STDMETHODCALLTYPE FindAllAsyncAqsFilterAndAdditionalProperties(
            HSTRING filter, Names* properties, platform::DevicesOperation** operation) override;
        HRESULT STDMETHODCALLTYPE CreateWatcher(platform::IDeviceWatcher** watcher) override;
        HRESULT STDMETHODCALLTYPE CreateWatcherDeviceClass(INT32 deviceClass,
                                                           platform::IDeviceWatcher** watcher) override;
        HRESULT STDMETHODCALLTYPE CreateWatcherAqsFilter(HSTRING filter, platform::IDeviceWatcher** watcher) override;
        HRESULT STDMETHODCALLTYPE CreateWatcherAqsFilterAndAdditionalProperties(
            HSTRING filter, Names* properties, platform::IDeviceWatcher** watcher) override;

        HRESULT STDMETHODCALLTYPE GetAqsFilterFromDeviceClass(INT32 deviceClass, HSTRING* filter) override;
        HRESULT STDMETHODCALLTYPE CreateFromIdAsyncWithKindAndAdditionalProperties(
            HSTRING id, Names* properties, Kind kind, platform::DeviceOperation** operation) override;
        HRESULT STDMETHODCALLTYPE FindAllAsyncWithKindAqsFilterAndAdditionalProperties(
            HSTRING filter, Names* properties, Kind kind, platform::DevicesOperation** operation) override;
        HRESULT STDMETHODCALLTYPE CreateWatcherWithKindAqsFilterAndAdditionalProperties(
            HSTRING filter, Names* properties, Kind kind, platform::IDeviceWatcher** watcher) override;

    private:
        char const* ClassName() const noexcept override;
        bool IsAgile() const noexcept override;
    };
} // namespace simulator
