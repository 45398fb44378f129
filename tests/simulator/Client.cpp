#include "tests/simulator/Client.h"

#include <windows.h>
#include <roapi.h>
#include <winstring.h>

#include <algorithm>
#include <condition_variable>
#include <cstddef>
#include <mutex>
#include <sstream>

namespace test
{
    namespace
    {
        // A list of names, as far as a provider reads one.
        class Names final : public IIterable<HSTRING>, public IIterator<HSTRING>
        {
        public:
            explicit Names(std::vector<std::string> names)
                : m_names(std::move(names))
            {
            }

            HRESULT STDMETHODCALLTYPE QueryInterface(REFIID, void** object) override
            {
                *object = nullptr;
                return E_NOINTERFACE;
            }

            // Lives on the stack of the one call that it is for.
            ULONG STDMETHODCALLTYPE AddRef() override
            {
                return 2;
            }

            ULONG STDMETHODCALLTYPE Release() override
            {
                return 1;
            }

            HRESULT STDMETHODCALLTYPE GetIids(ULONG*, IID**) override
            {
                return E_NOTIMPL;
            }

            HRESULT STDMETHODCALLTYPE GetRuntimeClassName(HSTRING*) override
            {
                return E_NOTIMPL;
            }

            HRESULT STDMETHODCALLTYPE GetTrustLevel(TrustLevel*) override
            {
                return E_NOTIMPL;
            }

            HRESULT STDMETHODCALLTYPE First(IIterator<HSTRING>** iterator) override
            {
                *iterator = this;
                return S_OK;
            }

            HRESULT STDMETHODCALLTYPE get_Current(HSTRING* value) override
            {
                if (m_next == m_names.size())
                {
                    return outOfBounds;
                }
                String const text(m_names[m_next]);
                return WindowsDuplicateString(text.Get(), value);
            }

            HRESULT STDMETHODCALLTYPE get_HasCurrent(boolean* value) override
            {
                *value = m_next < m_names.size();
                return S_OK;
            }

            HRESULT STDMETHODCALLTYPE MoveNext(boolean* value) override
            {
                ++m_next;
                return get_HasCurrent(value);
            }

            HRESULT STDMETHODCALLTYPE GetMany(UINT32, HSTRING*, UINT32*) override
            {
                return E_NOTIMPL;
            }

        private:
            std::vector<std::string> m_names;
            std::size_t m_next = 0;
        };
    } // namespace

    String::String(std::string const& utf8)
    {
        int const size = MultiByteToWideChar(CP_UTF8, 0, utf8.data(), static_cast<int>(utf8.size()), nullptr, 0);
        std::wstring wide(static_cast<std::size_t>(size), L'\0');
        MultiByteToWideChar(CP_UTF8, 0, utf8.data(), static_cast<int>(utf8.size()), wide.data(), size);
        WindowsCreateString(wide.data(), static_cast<UINT32>(size), &m_text);
    }

    String::~String()
    {
        WindowsDeleteString(m_text);
    }

    std::string String::Utf8() const
    {
        UINT32 size = 0;
        auto const* const wide = WindowsGetStringRawBuffer(m_text, &size);
        int const needed = WideCharToMultiByte(CP_UTF8, 0, wide, static_cast<int>(size), nullptr, 0, nullptr, nullptr);
        std::string utf8(static_cast<std::size_t>(needed), '\0');
        WideCharToMultiByte(CP_UTF8, 0, wide, static_cast<int>(size), utf8.data(), needed, nullptr, nullptr);
        return utf8;
    }

    std::string Room(std::string const& speakerDetails, std::string const& mouseDetails, std::string const& top)
    {
        return top + R"(
[[device]]
name = "Kitchen Speaker"
address = "a4:c1:38:5e:22:0f"
)" + speakerDetails +
               R"(
[[device]]
name = "Travel Mouse"
address = "e8:47:3a:15:b0:c2"
protocols = ["le"]
is-paired = true
)" + mouseDetails +
               R"(
[[device]]
name = "Reading Lamp"
address = "cc:50:e3:18:f6:9d"
protocols = ["le"]
appears-ms = "never"
)";
    }

    void SimulatorTest::SetUp()
    {
        ASSERT_HRESULT_SUCCEEDED(RoInitialize(RO_INIT_MULTITHREADED));
        Load(Room());
    }

    HRESULT Activate(char const* className, GUID const& id, void** factory)
    {
        return RoGetActivationFactory(String(className).Get(), id, factory);
    }

    HRESULT ActivateOnce()
    {
        Com<IDeviceInformationStatics> statics;
        return Activate(deviceInformation, iid_of<IDeviceInformationStatics>, reinterpret_cast<void**>(statics.Put()));
    }

    Com<IDeviceInformationStatics> Statics()
    {
        Com<IDeviceInformationStatics> statics;
        EXPECT_HRESULT_SUCCEEDED(
            Activate(deviceInformation, iid_of<IDeviceInformationStatics>, reinterpret_cast<void**>(statics.Put())));
        return statics;
    }

    Com<IDeviceInformationStatics2> Statics2()
    {
        return Statics().As<IDeviceInformationStatics2>();
    }

    HRESULT TryMakeWatcher(std::string const& filter, std::vector<std::string> properties, Com<IDeviceWatcher>& watcher,
                           DeviceInformationKind kind)
    {
        Names names(std::move(properties));
        String const text(filter);
        return Statics2()->CreateWatcherWithKindAqsFilterAndAdditionalProperties(text.Get(), &names, kind,
                                                                                 watcher.Put());
    }

    Com<IDeviceWatcher> MakeWatcher(std::string const& filter, std::vector<std::string> properties)
    {
        Com<IDeviceWatcher> watcher;
        EXPECT_HRESULT_SUCCEEDED(TryMakeWatcher(filter, std::move(properties), watcher));
        return watcher;
    }

    void HearAll(Com<IDeviceWatcher> const& watcher)
    {
        EventRegistrationToken token{};
        watcher->add_Added(On<AddedHandler>([](auto*, auto*) { return S_OK; }).Get(), &token);
        watcher->add_Updated(On<UpdateHandler>([](auto*, auto*) { return S_OK; }).Get(), &token);
        watcher->add_Removed(On<UpdateHandler>([](auto*, auto*) { return S_OK; }).Get(), &token);
    }

    DeviceWatcherStatus StatusOf(Com<IDeviceWatcher> const& watcher)
    {
        DeviceWatcherStatus status{};
        EXPECT_HRESULT_SUCCEEDED(watcher->get_Status(&status));
        return status;
    }

    HRESULT TryFindAll(std::string const& filter, std::vector<std::string> properties, Com<DevicesOperation>& operation,
                       DeviceInformationKind kind)
    {
        Names names(std::move(properties));
        return Statics2()->FindAllAsyncWithKindAqsFilterAndAdditionalProperties(String(filter).Get(), &names, kind,
                                                                                operation.Put());
    }

    Com<DevicesOperation> FindAll(std::string const& filter, std::vector<std::string> properties,
                                  DeviceInformationKind kind)
    {
        Com<DevicesOperation> operation;
        EXPECT_HRESULT_SUCCEEDED(TryFindAll(filter, std::move(properties), operation, kind));
        return operation;
    }

    HRESULT TryLookUp(std::string const& id, std::vector<std::string> properties, Com<DeviceOperation>& operation,
                      DeviceInformationKind kind)
    {
        Names names(std::move(properties));
        return Statics2()->CreateFromIdAsyncWithKindAndAdditionalProperties(String(id).Get(), &names, kind,
                                                                            operation.Put());
    }

    Com<IDeviceInformation> LookUp(std::string const& id, DeviceInformationKind kind)
    {
        Com<DeviceOperation> operation;
        EXPECT_HRESULT_SUCCEEDED(TryLookUp(id, {}, operation, kind));
        EXPECT_TRUE(WaitIdle());
        Com<IDeviceInformation> device;
        HRESULT const code = operation->GetResults(device.Put());
        EXPECT_EQ(code, device ? S_OK : Code(0x80070002));
        return device;
    }

    Com<DeviceCollection> DevicesOf(Com<DevicesOperation> const& operation)
    {
        EXPECT_TRUE(WaitIdle());
        Com<DeviceCollection> devices;
        EXPECT_HRESULT_SUCCEEDED(operation->GetResults(devices.Put()));
        return devices;
    }

    Com<IDeviceInformation> DeviceAt(Com<DeviceCollection> const& devices, UINT32 index)
    {
        Com<IDeviceInformation> device;
        EXPECT_HRESULT_SUCCEEDED(devices->GetAt(index, device.Put()));
        return device;
    }

    std::vector<std::string> IdsOf(Com<DevicesOperation> const& operation)
    {
        auto const devices = DevicesOf(operation);
        UINT32 size = 0;
        EXPECT_HRESULT_SUCCEEDED(devices->get_Size(&size));
        std::vector<std::string> ids;
        for (UINT32 index = 0; index < size; ++index)
        {
            ids.push_back(IdOf(DeviceAt(devices, index).Get()));
        }
        return ids;
    }

    Com<IDeviceInformation> FindDevice(std::string const& id, std::vector<std::string> properties)
    {
        auto const watcher = MakeWatcher({}, std::move(properties));
        Com<IDeviceInformation> found;
        EventRegistrationToken token{};
        watcher->add_Added(On<AddedHandler>([&](IDeviceWatcher*, IDeviceInformation* device) {
                               if (IdOf(device) == id)
                               {
                                   found = Com<IDeviceInformation>(device);
                               }
                               return S_OK;
                           }).Get(),
                           &token);
        EXPECT_HRESULT_SUCCEEDED(watcher->Start());
        EXPECT_TRUE(WaitIdle());
        EXPECT_HRESULT_SUCCEEDED(watcher->remove_Added(token));
        EXPECT_HRESULT_SUCCEEDED(watcher->Stop());
        EXPECT_TRUE(WaitIdle());
        EXPECT_TRUE(found) << id;
        return found;
    }

    Com<IDeviceInformationPairing> PairingOf(Com<IDeviceInformation> const& device)
    {
        Com<IDeviceInformationPairing> pairing;
        EXPECT_HRESULT_SUCCEEDED(device.As<IDeviceInformation2>()->get_Pairing(pairing.Put()));
        return pairing;
    }

    Com<IDeviceInformationCustomPairing> CustomOf(Com<IDeviceInformation> const& device)
    {
        Com<IDeviceInformationCustomPairing> custom;
        EXPECT_HRESULT_SUCCEEDED(PairingOf(device).As<IDeviceInformationPairing2>()->get_Custom(custom.Put()));
        return custom;
    }

    bool IsPaired(Com<IDeviceInformation> const& device)
    {
        boolean paired = false;
        EXPECT_HRESULT_SUCCEEDED(PairingOf(device)->get_IsPaired(&paired));
        return paired;
    }

    std::string NameOf(Com<IDeviceInformation> const& device)
    {
        String name;
        EXPECT_HRESULT_SUCCEEDED(device->get_Name(name.Put()));
        return name.Utf8();
    }

    template <typename T>
    std::vector<std::string> KeysOf(T* object)
    {
        using Pair = IKeyValuePair<HSTRING, ::IInspectable*>;
        Com<PropertyMap> map;
        EXPECT_HRESULT_SUCCEEDED(object->get_Properties(map.Put()));
        Com<IIterator<Pair*>> iterator;
        EXPECT_HRESULT_SUCCEEDED(map.As<IIterable<Pair*>>()->First(iterator.Put()));
        std::vector<std::string> keys;
        boolean more = false;
        iterator->get_HasCurrent(&more);
        while (more)
        {
            Com<Pair> pair;
            EXPECT_HRESULT_SUCCEEDED(iterator->get_Current(pair.Put()));
            String key;
            EXPECT_HRESULT_SUCCEEDED(pair->get_Key(key.Put()));
            keys.push_back(key.Utf8());
            iterator->MoveNext(&more);
        }
        return keys;
    }

    template std::vector<std::string> KeysOf(IDeviceInformation*);
    template std::vector<std::string> KeysOf(IDeviceInformationUpdate*);

    std::string ClassNameOf(::IInspectable* object)
    {
        String name;
        EXPECT_HRESULT_SUCCEEDED(object->GetRuntimeClassName(name.Put()));
        return name.Utf8();
    }

    std::vector<std::string> TraceWith(std::string const& part)
    {
        auto lines = Trace({""});
        std::erase_if(lines, [&](std::string const& line) { return line.find(part) == std::string::npos; });
        return lines;
    }
} // namespace test
