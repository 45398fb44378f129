// A client at the binary interface itself, so that nothing stands between a test and the simulated platform.
#pragma once

#include "platform/abi/Enumeration.h"
#include "simulator/VorlinkSimulator.h"
#include "tests/simulator/Delegate.h"
#include "tests/support/Codes.h"
#include "tests/support/Neighbourhood.h"
#include "tests/support/Trace.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace test
{
    inline constexpr auto illegalStateChange = Code(0x8000000D);
    inline constexpr auto illegalDelegateAssignment = Code(0x80000018);
    inline constexpr auto elementNotFound = Code(0x8002802B);
    inline constexpr auto typeMismatch = Code(0x80028CA0);
    inline constexpr auto disconnected = Code(0x80010108);
    inline constexpr auto notInitialized = Code(0x800401F0);

    // A text for the boundary.
    class String
    {
    public:
        String() = default;
        explicit String(std::string const& utf8);
        String(String const&) = delete;
        String& operator=(String const&) = delete;
        ~String();

        HSTRING Get() const
        {
            return m_text;
        }

        HSTRING* Put()
        {
            return &m_text;
        }

        std::string Utf8() const;

    private:
        HSTRING m_text = nullptr;
    };

    inline constexpr auto speaker = "Bluetooth#Bluetooth00:1a:7d:da:71:13-a4:c1:38:5e:22:0f";
    inline constexpr auto mouse = "BluetoothLE#BluetoothLE00:1a:7d:da:71:13-e8:47:3a:15:b0:c2";
    inline constexpr auto lamp = "BluetoothLE#BluetoothLE00:1a:7d:da:71:13-cc:50:e3:18:f6:9d";

    // A speaker that can be paired, a mouse that is, a lamp that is held back.
    std::string Room(std::string const& speakerDetails = {}, std::string const& mouseDetails = {},
                     std::string const& top = "enumeration-completes-ms = 0");

    // A test in an apartment, with Room() around it.
    class SimulatorTest : public testing::Test
    {
    protected:
        void SetUp() override;
    };

    inline constexpr auto deviceInformation = "Windows.Devices.Enumeration.DeviceInformation";
    inline constexpr auto pairedOnly = "System.Devices.Aep.IsPaired:=System.StructuredQueryType.Boolean#True";
    inline constexpr auto leOnly = "System.Devices.Aep.ProtocolId:=\"{bb7bb05e-5972-42b5-94fc-76eaa7084d49}\"";

    HRESULT Activate(char const* className, GUID const& id, void** factory);

    // Whether the system gives out the class's statics now.
    HRESULT ActivateOnce();

    Com<IDeviceInformationStatics> Statics();
    Com<IDeviceInformationStatics2> Statics2();
    Com<IDeviceWatcher> MakeWatcher(std::string const& filter = {}, std::vector<std::string> properties = {});
    HRESULT TryMakeWatcher(std::string const& filter, std::vector<std::string> properties, Com<IDeviceWatcher>& watcher,
                           DeviceInformationKind kind = DeviceInformationKind::AssociationEndpoint);
    // Empty handlers of Added, Updated and Removed: what comes after the enumeration is for those who hear of all
    // three.
    void HearAll(Com<IDeviceWatcher> const& watcher);
    DeviceWatcherStatus StatusOf(Com<IDeviceWatcher> const& watcher);
    HRESULT TryFindAll(std::string const& filter, std::vector<std::string> properties, Com<DevicesOperation>& operation,
                       DeviceInformationKind kind = DeviceInformationKind::AssociationEndpoint);
    Com<DevicesOperation> FindAll(std::string const& filter = {}, std::vector<std::string> properties = {},
                                  DeviceInformationKind kind = DeviceInformationKind::AssociationEndpoint);

    HRESULT TryLookUp(std::string const& id, std::vector<std::string> properties, Com<DeviceOperation>& operation,
                      DeviceInformationKind kind = DeviceInformationKind::AssociationEndpoint);

    // Null for what is not there.
    Com<IDeviceInformation> LookUp(std::string const& id,
                                   DeviceInformationKind kind = DeviceInformationKind::AssociationEndpoint);

    // Once the operation has completed.
    Com<DeviceCollection> DevicesOf(Com<DevicesOperation> const& operation);
    Com<IDeviceInformation> DeviceAt(Com<DeviceCollection> const& devices, UINT32 index);
    std::vector<std::string> IdsOf(Com<DevicesOperation> const& operation);

    // The device with an identifier, as a fresh watcher reports it.
    Com<IDeviceInformation> FindDevice(std::string const& id, std::vector<std::string> properties = {});
    Com<IDeviceInformationPairing> PairingOf(Com<IDeviceInformation> const& device);
    Com<IDeviceInformationCustomPairing> CustomOf(Com<IDeviceInformation> const& device);
    bool IsPaired(Com<IDeviceInformation> const& device);
    std::string NameOf(Com<IDeviceInformation> const& device);

    template <typename T>
    std::string IdOf(T* object)
    {
        String id;
        EXPECT_HRESULT_SUCCEEDED(object->get_Id(id.Put()));
        return id.Utf8();
    }

    template <typename T>
    std::vector<std::string> KeysOf(T* object);

    template <typename T>
    AsyncStatus StatusOf(Com<IAsyncOperation<T>> const& operation)
    {
        AsyncStatus status{};
        EXPECT_HRESULT_SUCCEEDED(operation.template As<IAsyncInfo>()->get_Status(&status));
        return status;
    }

    std::string ClassNameOf(::IInspectable* object);

    // The lines of the trace that hold the text.
    std::vector<std::string> TraceWith(std::string const& part);
} // namespace test
