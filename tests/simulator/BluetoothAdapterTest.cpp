// The PC's adapter, and the factories of the classes around it.
#include "tests/simulator/BluetoothClient.h"
#include "tests/simulator/Recorder.h"

using namespace test;
using testing::Values;

namespace
{
    using Adapter = SimulatorTest;

    struct BluetoothFactory : SimulatorTest, testing::WithParamInterface<char const*>
    {
    };
} // namespace

TEST_P(BluetoothFactory, IsLikeEveryFactory)
{
    auto const factory = StaticsOf<::IActivationFactory>(GetParam());
    String name;
    EXPECT_EQ(factory->GetRuntimeClassName(name.Put()), illegalMethodCall);
    Com<::IInspectable> instance;
    EXPECT_EQ(factory->ActivateInstance(instance.Put()), E_NOTIMPL);
    EXPECT_EQ(factory->ActivateInstance(nullptr), E_POINTER);
    EXPECT_FALSE(factory.Answers<platform::IAgileObject>());
    EXPECT_FALSE(factory.Answers<::IMarshal>());
    EXPECT_FALSE(factory.Answers<IWeakReferenceSource>());
}

INSTANTIATE_TEST_SUITE_P(Classes, BluetoothFactory,
                         Values(adapterClass, classOfDeviceClass, deviceIdClass, appearanceClass, radioClass,
                                deviceClass, leDeviceClass));

TEST_F(Adapter, IsTheScenarios)
{
    Load("[adapter]\naddress = '00:00:00:00:01:02'\nle = false\nadvertisement-offload = true\n"
         "max-advertisement-bytes = 254");
    auto const found = DefaultAdapter();
    ASSERT_TRUE(found);
    using I = platform::IBluetoothAdapter;
    EXPECT_EQ(ClassNameOf(found.Get()), adapterClass);
    EXPECT_TRUE(found.Answers<platform::IAgileObject>());
    EXPECT_EQ(Read(found, &I::get_BluetoothAddress), 0x0102u);
    EXPECT_TRUE(Read(found, &I::get_IsClassicSupported));
    EXPECT_FALSE(Read(found, &I::get_IsLowEnergySupported));
    EXPECT_TRUE(Read(found, &I::get_IsCentralRoleSupported));
    EXPECT_TRUE(Read(found, &I::get_IsPeripheralRoleSupported));
    EXPECT_TRUE(Read(found, &I::get_IsAdvertisementOffloadSupported));
    auto const adapter2 = found.As<IBluetoothAdapter2>();
    EXPECT_TRUE(Read(adapter2, &IBluetoothAdapter2::get_AreClassicSecureConnectionsSupported));
    EXPECT_TRUE(Read(adapter2, &IBluetoothAdapter2::get_AreLowEnergySecureConnectionsSupported));
    auto const adapter3 = found.As<IBluetoothAdapter3>();
    EXPECT_FALSE(Read(adapter3, &IBluetoothAdapter3::get_IsExtendedAdvertisingSupported));
    EXPECT_EQ(Read(adapter3, &IBluetoothAdapter3::get_MaxAdvertisementDataLength), 254u);
}

TEST_F(Adapter, OperationBearsTheNameOfItsClass)
{
    Com<IAsyncOperation<platform::IBluetoothAdapter*>> operation;
    ASSERT_EQ(StaticsOf<IBluetoothAdapterStatics>(adapterClass)->GetDefaultAsync(operation.Put()), S_OK);
    EXPECT_EQ(ClassNameOf(operation.Get()),
              "Windows.Foundation.IAsyncOperation`1<Windows.Devices.Bluetooth.BluetoothAdapter>");
    EXPECT_TRUE(WaitIdle());
}

TEST_F(Adapter, IsFoundByItsOwnIdentifierAlone)
{
    auto const statics = StaticsOf<IBluetoothAdapterStatics>(adapterClass);
    auto const find = [&](std::string const& id) {
        return ObjectOf<platform::IBluetoothAdapter>(
            [&](auto** to) { return statics->FromIdAsync(String(id).Get(), to); });
    };
    auto const id = ReadText(DefaultAdapter(), &platform::IBluetoothAdapter::get_DeviceId);
    EXPECT_TRUE(find(id));
    EXPECT_FALSE(find(id + "x"));
    Com<IAsyncOperation<platform::IBluetoothAdapter*>> operation;
    EXPECT_EQ(statics->FromIdAsync(nullptr, operation.Put()), E_INVALIDARG);
    EXPECT_EQ(statics->FromIdAsync(nullptr, nullptr), E_POINTER);
    EXPECT_EQ(statics->GetDefaultAsync(nullptr), E_POINTER);
}

TEST_F(Adapter, SelectorMakesAWatcher)
{
    auto const selector =
        ReadText(StaticsOf<IBluetoothAdapterStatics>(adapterClass), &IBluetoothAdapterStatics::GetDeviceSelector);
    EXPECT_THAT(HeardBy(MakeWatcher(selector)), testing::ElementsAre(completed));
}

TEST_F(Adapter, IsNullWhereThereIsNone)
{
    auto const before = DefaultAdapter();
    Load("[adapter]\npresent = false");
    EXPECT_FALSE(DefaultAdapter());
    EXPECT_FALSE(RadioOf(before));
}
