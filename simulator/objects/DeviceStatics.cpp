#include "simulator/objects/DeviceStatics.h"

#include "simulator/neighbourhood/Neighbourhood.h"
#include "simulator/objects/DeviceWatcher.h"
#include "simulator/properties/RequestedNames.h"
#include "simulator/trace/Call.h"

namespace simulator
{
    namespace
    {
        using platform::DeviceInformationKind;
        using Names = platform::IIterable<HSTRING>;

        // A faulty scenario file must not be mistaken for an empty neighbourhood. Activation still succeeds: a
        // client whose activation fails may go and look for the class elsewhere.
        bool IsFirstScenarioFaulty()
        {
            auto& neighbourhood = TheNeighbourhood();
            std::lock_guard const lock(neighbourhood.mutex);
            return !neighbourhood.fault.empty();
        }

        std::string ListText(Names* names, RequestedNames const& requested)
        {
            return names ? QuotedList(requested.names) : "null";
        }

        HRESULT MakeWatcher(Method method, std::string const& arguments, std::string const& filter,
                            RequestedNames const& requested, DeviceInformationKind kind,
                            platform::IDeviceWatcher** watcher)
        {
            return Call(method, arguments, [&](std::string& result) {
                if (!watcher)
                {
                    return E_POINTER;
                }
                *watcher = nullptr;
                if (IsFirstScenarioFaulty())
                {
                    return E_INVALIDARG;
                }
                if (FAILED(requested.code))
                {
                    return requested.code;
                }
                try
                {
                    auto made = Make<DeviceWatcher>(Query::Parse(filter), requested.names, kind);
                    result = made->Name();
                    *watcher = made.Detach();
                    return S_OK;
                }
                catch (QueryError const&)
                {
                    return E_INVALIDARG;
                }
            });
        }
    } // namespace

    HRESULT DeviceInformationFactory::ActivateInstance(::IInspectable** instance)
    {
        return Outside("DeviceInformation.ActivateInstance", {}, instance);
    }

    HRESULT DeviceInformationFactory::CreateFromIdAsync(HSTRING id, void** operation)
    {
        return Outside("DeviceInformation.CreateFromIdAsync", Quoted(FromHstring(id)), operation);
    }

    HRESULT DeviceInformationFactory::CreateFromIdAsyncAdditionalProperties(HSTRING id, Names* properties,
                                                                            void** operation)
    {
        return Outside("DeviceInformation.CreateFromIdAsyncAdditionalProperties",
                       Quoted(FromHstring(id)) + ", " + ListText(properties, ReadNames(properties)), operation);
    }

    HRESULT DeviceInformationFactory::FindAllAsync(void** operation)
    {
        return Outside("DeviceInformation.FindAllAsync", {}, operation);
    }

    HRESULT DeviceInformationFactory::FindAllAsyncDeviceClass(INT32 deviceClass, void** operation)
    {
        return Outside("DeviceInformation.FindAllAsyncDeviceClass", Text(deviceClass), operation);
    }

    HRESULT DeviceInformationFactory::FindAllAsyncAqsFilter(HSTRING filter, void** operation)
    {
        return Outside("DeviceInformation.FindAllAsyncAqsFilter", Quoted(FromHstring(filter)), operation);
    }

    HRESULT DeviceInformationFactory::FindAllAsyncAqsFilterAndAdditionalProperties(HSTRING filter, Names* properties,
                                                                                   void** operation)
    {
        return Outside("DeviceInformation.FindAllAsyncAqsFilterAndAdditionalProperties",
                       Quoted(FromHstring(filter)) + ", " + ListText(properties, ReadNames(properties)), operation);
    }

    HRESULT DeviceInformationFactory::CreateWatcher(platform::IDeviceWatcher** watcher)
    {
        return MakeWatcher("DeviceInformation.CreateWatcher", {}, {}, {}, DeviceInformationKind::DeviceInterface,
                           watcher);
    }

    HRESULT DeviceInformationFactory::CreateWatcherDeviceClass(INT32 deviceClass, platform::IDeviceWatcher** watcher)
    {
        return MakeWatcher("DeviceInformation.CreateWatcherDeviceClass", Text(deviceClass), {}, {},
                           DeviceInformationKind::DeviceInterface, watcher);
    }

    HRESULT DeviceInformationFactory::CreateWatcherAqsFilter(HSTRING filter, platform::IDeviceWatcher** watcher)
    {
        auto const text = FromHstring(filter);
        return MakeWatcher("DeviceInformation.CreateWatcherAqsFilter", Quoted(text), text, {},
                           DeviceInformationKind::DeviceInterface, watcher);
    }

    HRESULT DeviceInformationFactory::CreateWatcherAqsFilterAndAdditionalProperties(HSTRING filter, Names* properties,
                                                                                    platform::IDeviceWatcher** watcher)
    {
        auto const text = FromHstring(filter);
        auto const requested = ReadNames(properties);
        return MakeWatcher("DeviceInformation.CreateWatcherAqsFilterAndAdditionalProperties",
                           Quoted(text) + ", " + ListText(properties, requested), text, requested,
                           DeviceInformationKind::DeviceInterface, watcher);
    }

    HRESULT DeviceInformationFactory::GetAqsFilterFromDeviceClass(INT32 deviceClass, HSTRING* filter)
    {
        return Outside("DeviceInformation.GetAqsFilterFromDeviceClass", Text(deviceClass), filter);
    }

    HRESULT DeviceInformationFactory::CreateFromIdAsyncWithKindAndAdditionalProperties(HSTRING id, Names* properties,
                                                                                       Kind kind, void** operation)
    {
        return Outside("DeviceInformation.CreateFromIdAsyncWithKindAndAdditionalProperties",
                       Quoted(FromHstring(id)) + ", " + ListText(properties, ReadNames(properties)) + ", " + Text(kind),
                       operation);
    }

    HRESULT DeviceInformationFactory::FindAllAsyncWithKindAqsFilterAndAdditionalProperties(HSTRING filter,
                                                                                           Names* properties, Kind kind,
                                                                                           void** operation)
    {
        return Outside("DeviceInformation.FindAllAsyncWithKindAqsFilterAndAdditionalProperties",
                       Quoted(FromHstring(filter)) + ", " + ListText(properties, ReadNames(properties)) + ", " +
                           Text(kind),
                       operation);
    }

    HRESULT DeviceInformationFactory::CreateWatcherWithKindAqsFilterAndAdditionalProperties(
        HSTRING filter, Names* properties, Kind kind, platform::IDeviceWatcher** watcher)
    {
        auto const text = FromHstring(filter);
        auto const requested = ReadNames(properties);
        return MakeWatcher("DeviceInformation.CreateWatcherWithKindAqsFilterAndAdditionalProperties",
                           Quoted(text) + ", " + ListText(properties, requested) + ", " + Text(kind), text, requested,
                           kind, watcher);
    }

    char const* DeviceInformationFactory::ClassName() const noexcept
    {
        return nullptr;
    }

    bool DeviceInformationFactory::IsAgile() const noexcept
    {
        return false;
    }
} // namespace simulator
