// The PC's radio, its switch, and who hears of it.
#include "tests/simulator/BluetoothClient.h"

#include <windows.h>

#include <atomic>

using namespace test;

namespace
{
    using Radio = SimulatorTest;
    using List = IVectorView<platform::IRadio*>;

    Com<List> Radios()
    {
        auto const statics = StaticsOf<IRadioStatics>(radioClass);
        return ObjectOf<List>([&](auto** to) { return statics->GetRadiosAsync(to); });
    }

    RadioAccessStatus Switch(Com<platform::IRadio> const& radio, RadioState state)
    {
        return ValueOf<RadioAccessStatus>([&](auto** to) { return radio->SetStateAsync(state, to); });
    }

    RadioState StateOf(Com<platform::IRadio> const& radio)
    {
        return Read(radio, &platform::IRadio::get_State);
    }
} // namespace

TEST_F(Radio, IsTheScenarios)
{
    Load("[radio]\nstate = 'Off'\nname = 'Blue'");
    auto const radio = RadioOf(DefaultAdapter());
    EXPECT_EQ(ClassNameOf(radio.Get()), radioClass);
    EXPECT_EQ(StateOf(radio), RadioState::Off);
    EXPECT_EQ(ReadText(radio, &platform::IRadio::get_Name), "Blue");
    EXPECT_EQ(Read(radio, &platform::IRadio::get_Kind), RadioKind::Bluetooth);
}

TEST_F(Radio, IsListed)
{
    auto const radios = Radios();
    EXPECT_EQ(ClassNameOf(radios.Get()), "Windows.Foundation.Collections.IVectorView`1<Windows.Devices.Radios.Radio>");
    EXPECT_EQ(Read(radios, &List::get_Size), 1u);
    Com<platform::IRadio> radio;
    EXPECT_EQ(radios->GetAt(0, radio.Put()), S_OK);
    UINT32 index = 7;
    boolean found = false;
    EXPECT_EQ(radios->IndexOf(radio.Get(), &index, &found), S_OK);
    EXPECT_TRUE(found);
    EXPECT_EQ(index, 0u);
    EXPECT_EQ(radios->IndexOf(nullptr, &index, &found), S_OK);
    EXPECT_FALSE(found);
    EXPECT_EQ(radios->GetAt(1, radio.Put()), outOfBounds);
    EXPECT_FALSE(radio);
    UINT32 copied = 0;
    EXPECT_EQ(radios->GetMany(0, 1, radio.Put(), &copied), S_OK);
    EXPECT_EQ(copied, 1u);
    EXPECT_EQ(radios->GetMany(2, 1, radio.Put(), &copied), outOfBounds);
}

TEST_F(Radio, IsIterated)
{
    Com<IIterator<platform::IRadio*>> iterator;
    EXPECT_EQ(Radios().As<IIterable<platform::IRadio*>>()->First(iterator.Put()), S_OK);
    boolean more = false;
    EXPECT_EQ(iterator->get_HasCurrent(&more), S_OK);
    EXPECT_TRUE(more);
    Com<platform::IRadio> radio;
    EXPECT_EQ(iterator->get_Current(radio.Put()), S_OK);
    EXPECT_EQ(StateOf(radio), RadioState::On);
    EXPECT_EQ(iterator->MoveNext(&more), S_OK);
    EXPECT_FALSE(more);
    EXPECT_EQ(iterator->get_Current(radio.Put()), outOfBounds);
}

TEST_F(Radio, IsNotListedWithoutAnAdapter)
{
    Load("[adapter]\npresent = false");
    EXPECT_EQ(Read(Radios(), &List::get_Size), 0u);
}

TEST_F(Radio, TellsOfItsSwitchOnAThreadOfTheSimulator)
{
    auto const radio = RadioOf(DefaultAdapter());
    std::atomic<int> told = 0;
    std::atomic<DWORD> thread = 0;
    std::atomic<bool> isSender = false;
    EventRegistrationToken token{};
    ASSERT_EQ(radio->add_StateChanged(On<RadioHandler>([&](platform::IRadio* sender, ::IInspectable* nothing) {
                                          isSender = sender == radio.Get() && !nothing;
                                          thread = GetCurrentThreadId();
                                          ++told;
                                          return S_OK;
                                      }).Get(),
                                      &token),
              S_OK);
    EXPECT_EQ(radio->add_StateChanged(nullptr, &token), E_INVALIDARG);
    EXPECT_EQ(Switch(radio, RadioState::Off), RadioAccessStatus::Allowed);
    EXPECT_EQ(StateOf(radio), RadioState::Off);
    EXPECT_EQ(told, 1);
    EXPECT_TRUE(isSender);
    EXPECT_NE(thread, GetCurrentThreadId());
    EXPECT_EQ(Switch(radio, RadioState::Off), RadioAccessStatus::Allowed);
    EXPECT_EQ(told, 1) << "nothing has changed";
    EXPECT_EQ(SimulateRadioState(1), 1);
    EXPECT_TRUE(WaitIdle());
    EXPECT_EQ(told, 2);
    EXPECT_EQ(radio->remove_StateChanged(token), S_OK);
    EXPECT_EQ(SimulateRadioState(2), 1);
    EXPECT_TRUE(WaitIdle());
    EXPECT_EQ(told, 2);
}

TEST_F(Radio, IsSwitchedOnAndOffOnly)
{
    auto const radio = RadioOf(DefaultAdapter());
    Com<IAsyncOperation<RadioAccessStatus>> operation;
    EXPECT_EQ(radio->SetStateAsync(RadioState::Disabled, operation.Put()), E_INVALIDARG);
    EXPECT_EQ(radio->SetStateAsync(RadioState::Unknown, operation.Put()), E_INVALIDARG);
    EXPECT_EQ(radio->SetStateAsync(RadioState::On, nullptr), E_POINTER);
}

TEST_F(Radio, IsNotSwitchedWithoutAccess)
{
    Load("[radio]\naccess = 'DeniedByUser'");
    auto const statics = StaticsOf<IRadioStatics>(radioClass);
    EXPECT_EQ(ValueOf<RadioAccessStatus>([&](auto** to) { return statics->RequestAccessAsync(to); }),
              RadioAccessStatus::DeniedByUser);
    auto const radio = RadioOf(DefaultAdapter());
    EXPECT_EQ(Switch(radio, RadioState::Off), RadioAccessStatus::DeniedByUser);
    EXPECT_EQ(StateOf(radio), RadioState::On);
}

TEST_F(Radio, IsNotSwitchedByProgramsWhereTheSystemHasDisabledIt)
{
    Load("[radio]\nstate = 'Disabled'");
    auto const radio = RadioOf(DefaultAdapter());
    EXPECT_EQ(Switch(radio, RadioState::On), RadioAccessStatus::DeniedBySystem);
    EXPECT_EQ(StateOf(radio), RadioState::Disabled);
}

TEST_F(Radio, IsFoundByItsIdentifierAlone)
{
    auto const statics = StaticsOf<IRadioStatics>(radioClass);
    auto const find = [&](std::string const& id) {
        return ObjectOf<platform::IRadio>([&](auto** to) { return statics->FromIdAsync(String(id).Get(), to); });
    };
    EXPECT_TRUE(find(R"(\\?\usb#VID_0A12&PID_0001#001a7dda7113#{A8804298-2d5f-42e3-9531-9c8c39eb29ce})"));
    EXPECT_FALSE(find("x"));
    Com<IAsyncOperation<platform::IRadio*>> operation;
    EXPECT_EQ(statics->FromIdAsync(nullptr, operation.Put()), E_INVALIDARG);
    String selector;
    EXPECT_EQ(statics->GetDeviceSelector(selector.Put()), S_OK);
    EXPECT_EQ(selector.Utf8(), "System.Devices.InterfaceClassGuid:=\"{a8804298-2d5f-42e3-9531-9c8c39eb29ce}\" AND "
                               "System.Devices.InterfaceEnabled:=System.StructuredQueryType.Boolean#True");
}

TEST_F(Radio, LeavesNothingBehind)
{
    auto const before = SimulatorLiveObjects();
    {
        auto const radio = RadioOf(DefaultAdapter());
        Radios();
        EXPECT_GT(SimulatorLiveObjects(), before);
    }
    EXPECT_EQ(SimulatorLiveObjects(), before);
}

TEST_F(Radio, OffLeavesWatchersOfTheDeviceTreeAlone)
{
    Com<IDeviceWatcher> watcher;
    ASSERT_EQ(TryMakeWatcher({}, {}, watcher, DeviceInformationKind::Device), S_OK);
    auto const endpoints = MakeWatcher();
    watcher->Start();
    endpoints->Start();
    ASSERT_TRUE(WaitIdle());
    ASSERT_EQ(SimulateRadioState(2), 1);
    ASSERT_TRUE(WaitIdle());
    EXPECT_EQ(StatusOf(watcher), DeviceWatcherStatus::EnumerationCompleted);
    EXPECT_EQ(StatusOf(endpoints), DeviceWatcherStatus::Aborted);
}
