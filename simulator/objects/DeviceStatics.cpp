#include "simulator/objects/DeviceStatics.h"

#include "simulator/neighbourhood/Neighbourhood.h"
#include "simulator/objects/DeviceLookup.h"
#include "simulator/objects/DeviceSearch.h"
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

        // `make` gives the object and its name in the trace.
        template <typename Interface, typename MakeObject>
        HRESULT Give(Method method, std::string const& arguments, HRESULT refusal, Interface** object, MakeObject make)
        {
            return Call(method, arguments, [&](std::string& result) {
                if (!object)
                {
                    return E_POINTER;
                }
                *object = nullptr;
                if (IsFirstScenarioFaulty())
                {
                    return E_INVALIDARG;
                }
                if (FAILED(refusal))
                {
                    return refusal;
                }
                try
                {
                    auto [name, made] = make();
                    result = name;
                    *object = made.Detach();
                    return S_OK;
                }
                catch (QueryError const&)
                {
                    return E_INVALIDARG;
                }
            });
        }

        // What an overload without a kind looks for. The platform counts its types of device objects as it does kinds.
        DeviceInformationKind KindFor(Query const& query)
        {
            return static_cast<DeviceInformationKind>(
                query.Kind().value_or(static_cast<std::int64_t>(DeviceInformationKind::DeviceInterface)));
        }

        HRESULT MakeWatcher(Method method, std::string const& arguments, std::string const& filter,
                            RequestedNames const& requested, std::optional<DeviceInformationKind> kind,
                            platform::IDeviceWatcher** watcher)
        {
            return Give(method, arguments, requested.code, watcher, [&] {
                auto const query = Query::Parse(filter);
                auto made = Make<DeviceWatcher>(query, requested.names, kind.value_or(KindFor(query)));
                return std::pair(made->Name(), std::move(made));
            });
        }

        // By the platform's numbers of its device classes. The first is all of them, which need no filter.
        constexpr std::string_view interfaceClasses[] = {
            "",
            "{2EEF81BE-33FA-4800-9670-1CD474972C3F}", // audio capture
            "{E6327CAD-DCEC-4949-AE8A-991E976A79D2}", // audio render
            "{6AC27878-A6FA-4155-BA85-F98F491D4F33}", // portable storage
            "{E5323777-F976-4F5B-9B55-B94699C46E44}", // video capture
            "{6BDD1FC6-810F-11D0-BEC7-08002BE2092F}", // image scanner
            "{BFA794E4-F964-4FDB-90F6-51056BFE4B44}", // location
        };

        std::string FilterOf(std::string_view interfaceClass)
        {
            return interfaceClass.empty()
                       ? std::string()
                       : "System.Devices.InterfaceClassGuid:=\"" + std::string(interfaceClass) +
                             "\" AND System.Devices.InterfaceEnabled:=System.StructuredQueryType.Boolean#True";
        }

        struct ClassFilter
        {
            RequestedNames requested; // none, and whether there is such a class
            std::string text;
        };

        ClassFilter FilterFor(INT32 deviceClass)
        {
            auto const known = deviceClass >= 0 && deviceClass < std::ssize(interfaceClasses);
            return {{known ? S_OK : E_INVALIDARG, {}}, known ? FilterOf(interfaceClasses[deviceClass]) : std::string()};
        }

        HRESULT BeginLookup(Method method, std::string const& arguments, std::string const& id,
                            RequestedNames const& requested, DeviceInformationKind kind,
                            platform::DeviceOperation** operation)
        {
            return Give(method, arguments, id.empty() ? E_INVALIDARG : requested.code, operation,
                        [&] { return std::pair(std::string(), LookUp(id, requested.names, kind)); });
        }

        // A search starts at once, so that a blank filter fails at once.
        HRESULT BeginSearch(Method method, std::string const& arguments, std::string const& filter,
                            RequestedNames const& requested, std::optional<DeviceInformationKind> kind,
                            platform::DevicesOperation** operation)
        {
            return Give(method, arguments, requested.code, operation, [&] {
                auto const query = Query::Parse(filter);
                if (query.IsBlank())
                {
                    throw QueryError("the query is blank");
                }
                return FindAll(query, requested.names, kind.value_or(KindFor(query)));
            });
        }
    } // namespace

    HRESULT DeviceInformationFactory::ActivateInstance(::IInspectable** instance)
    {
        return Outside("DeviceInformation.ActivateInstance", {}, instance);
    }

    HRESULT DeviceInformationFactory::CreateFromIdAsync(HSTRING id, platform::DeviceOperation** operation)
    {
        auto const text = FromHstring(id);
        return BeginLookup("DeviceInformation.CreateFromIdAsync", Quoted(text), text, {}, Kind::Unknown, operation);
    }

    HRESULT DeviceInformationFactory::CreateFromIdAsyncAdditionalProperties(HSTRING id, Names* properties,
                                                                            platform::DeviceOperation** operation)
    {
        auto const text = FromHstring(id);
        auto const requested = ReadNames(properties);
        return BeginLookup("DeviceInformation.CreateFromIdAsyncAdditionalProperties",
                           Quoted(text) + ", " + ListText(properties, requested), text, requested, Kind::Unknown,
                           operation);
    }

    HRESULT DeviceInformationFactory::FindAllAsync(platform::DevicesOperation** operation)
    {
        return BeginSearch("DeviceInformation.FindAllAsync", {}, {}, {}, std::nullopt, operation);
    }

    HRESULT DeviceInformationFactory::FindAllAsyncDeviceClass(INT32 deviceClass, platform::DevicesOperation** operation)
    {
        auto const filter = FilterFor(deviceClass);
        return BeginSearch("DeviceInformation.FindAllAsyncDeviceClass", Text(deviceClass), filter.text,
                           filter.requested, std::nullopt, operation);
    }

    HRESULT DeviceInformationFactory::FindAllAsyncAqsFilter(HSTRING filter, platform::DevicesOperation** operation)
    {
        auto const text = FromHstring(filter);
        return BeginSearch("DeviceInformation.FindAllAsyncAqsFilter", Quoted(text), text, {}, std::nullopt, operation);
    }

    HRESULT DeviceInformationFactory::FindAllAsyncAqsFilterAndAdditionalProperties(
        HSTRING filter, Names* properties, platform::DevicesOperation** operation)
    {
        auto const text = FromHstring(filter);
        auto const requested = ReadNames(properties);
        return BeginSearch("DeviceInformation.FindAllAsyncAqsFilterAndAdditionalProperties",
                           Quoted(text) + ", " + ListText(properties, requested), text, requested, std::nullopt,
                           operation);
    }

    HRESULT DeviceInformationFactory::CreateWatcher(platform::IDeviceWatcher** watcher)
    {
        return MakeWatcher("DeviceInformation.CreateWatcher", {}, {}, {}, std::nullopt, watcher);
    }

    HRESULT DeviceInformationFactory::CreateWatcherDeviceClass(INT32 deviceClass, platform::IDeviceWatcher** watcher)
    {
        auto const filter = FilterFor(deviceClass);
        return MakeWatcher("DeviceInformation.CreateWatcherDeviceClass", Text(deviceClass), filter.text,
                           filter.requested, std::nullopt, watcher);
    }

    HRESULT DeviceInformationFactory::CreateWatcherAqsFilter(HSTRING filter, platform::IDeviceWatcher** watcher)
    {
        auto const text = FromHstring(filter);
        return MakeWatcher("DeviceInformation.CreateWatcherAqsFilter", Quoted(text), text, {}, std::nullopt, watcher);
    }

    HRESULT DeviceInformationFactory::CreateWatcherAqsFilterAndAdditionalProperties(HSTRING filter, Names* properties,
                                                                                    platform::IDeviceWatcher** watcher)
    {
        auto const text = FromHstring(filter);
        auto const requested = ReadNames(properties);
        return MakeWatcher("DeviceInformation.CreateWatcherAqsFilterAndAdditionalProperties",
                           Quoted(text) + ", " + ListText(properties, requested), text, requested, std::nullopt,
                           watcher);
    }

    HRESULT DeviceInformationFactory::GetAqsFilterFromDeviceClass(INT32 deviceClass, HSTRING* filter)
    {
        return Call("DeviceInformation.GetAqsFilterFromDeviceClass", Text(deviceClass), [&](std::string& result) {
            if (!filter)
            {
                return E_POINTER;
            }
            *filter = nullptr;
            auto const found = FilterFor(deviceClass);
            if (FAILED(found.requested.code))
            {
                return found.requested.code;
            }
            result = Quoted(found.text);
            return MakeHstring(found.text, filter);
        });
    }

    HRESULT DeviceInformationFactory::CreateFromIdAsyncWithKindAndAdditionalProperties(
        HSTRING id, Names* properties, Kind kind, platform::DeviceOperation** operation)
    {
        auto const text = FromHstring(id);
        auto const requested = ReadNames(properties);
        return BeginLookup("DeviceInformation.CreateFromIdAsyncWithKindAndAdditionalProperties",
                           Quoted(text) + ", " + ListText(properties, requested) + ", " + Text(kind), text, requested,
                           kind, operation);
    }

    HRESULT DeviceInformationFactory::FindAllAsyncWithKindAqsFilterAndAdditionalProperties(
        HSTRING filter, Names* properties, Kind kind, platform::DevicesOperation** operation)
    {
        auto const text = FromHstring(filter);
        auto const requested = ReadNames(properties);
        return BeginSearch("DeviceInformation.FindAllAsyncWithKindAqsFilterAndAdditionalProperties",
                           Quoted(text) + ", " + ListText(properties, requested) + ", " + Text(kind), text, requested,
                           kind, operation);
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
