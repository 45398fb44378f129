// A client of Windows.Devices.Bluetooth and Windows.Devices.Radios.
#pragma once

#include "platform/abi/Bluetooth.h"
#include "tests/simulator/Client.h"

namespace test
{
    inline constexpr auto objectClosed = Code(0x80000013);

    inline constexpr auto adapterClass = "Windows.Devices.Bluetooth.BluetoothAdapter";
    inline constexpr auto classOfDeviceClass = "Windows.Devices.Bluetooth.BluetoothClassOfDevice";
    inline constexpr auto deviceClass = "Windows.Devices.Bluetooth.BluetoothDevice";
    inline constexpr auto leDeviceClass = "Windows.Devices.Bluetooth.BluetoothLEDevice";
    inline constexpr auto deviceIdClass = "Windows.Devices.Bluetooth.BluetoothDeviceId";
    inline constexpr auto appearanceClass = "Windows.Devices.Bluetooth.BluetoothLEAppearance";
    inline constexpr auto radioClass = "Windows.Devices.Radios.Radio";

    template <typename T>
    Com<T> StaticsOf(char const* className)
    {
        Com<T> statics;
        EXPECT_HRESULT_SUCCEEDED(Activate(className, iid_of<T>, reinterpret_cast<void**>(statics.Put())));
        return statics;
    }

    // What an operation of `begin` gives in the end.
    template <typename T, typename Begin>
    Com<T> ObjectOf(Begin begin)
    {
        Com<IAsyncOperation<T*>> operation;
        EXPECT_EQ(begin(operation.Put()), S_OK);
        EXPECT_TRUE(WaitIdle());
        EXPECT_EQ(StatusOf(operation), platform::AsyncStatus::Completed);
        Com<T> result;
        EXPECT_EQ(operation->GetResults(result.Put()), S_OK);
        return result;
    }

    template <typename T, typename Begin>
    T ValueOf(Begin begin)
    {
        Com<IAsyncOperation<T>> operation;
        EXPECT_EQ(begin(operation.Put()), S_OK);
        EXPECT_TRUE(WaitIdle());
        T result{};
        EXPECT_EQ(operation->GetResults(&result), S_OK);
        return result;
    }

    // What a getter gives, which succeeds and refuses a null pointer.
    template <typename Interface, typename T>
    T Read(Com<Interface> const& object, HRESULT (STDMETHODCALLTYPE Interface::*getter)(T*))
    {
        T value{};
        EXPECT_EQ((object.Get()->*getter)(nullptr), E_POINTER);
        EXPECT_EQ((object.Get()->*getter)(&value), S_OK);
        return value;
    }

    template <typename Interface>
    std::string ReadText(Com<Interface> const& object, HRESULT (STDMETHODCALLTYPE Interface::*getter)(HSTRING*))
    {
        String text;
        EXPECT_EQ((object.Get()->*getter)(nullptr), E_POINTER);
        EXPECT_EQ((object.Get()->*getter)(text.Put()), S_OK);
        return text.Utf8();
    }

    inline Com<platform::IBluetoothAdapter> DefaultAdapter()
    {
        auto const statics = StaticsOf<IBluetoothAdapterStatics>(adapterClass);
        return ObjectOf<platform::IBluetoothAdapter>([&](auto** to) { return statics->GetDefaultAsync(to); });
    }

    inline Com<platform::IRadio> RadioOf(Com<platform::IBluetoothAdapter> const& owner)
    {
        return ObjectOf<platform::IRadio>([&](auto** to) { return owner->GetRadioAsync(to); });
    }

    inline Com<platform::IBluetoothDevice> ClassicDevice(std::string const& id)
    {
        auto const statics = StaticsOf<IBluetoothDeviceStatics>(deviceClass);
        return ObjectOf<platform::IBluetoothDevice>(
            [&](auto** to) { return statics->FromIdAsync(String(id).Get(), to); });
    }

    inline Com<platform::IBluetoothLEDevice> LeDevice(std::string const& id)
    {
        auto const statics = StaticsOf<IBluetoothLEDeviceStatics>(leDeviceClass);
        return ObjectOf<platform::IBluetoothLEDevice>(
            [&](auto** to) { return statics->FromIdAsync(String(id).Get(), to); });
    }
} // namespace test
