// Devices as other kinds than association endpoints: interfaces, devices, containers.
#include "tests/simulator/Recorder.h"

using namespace test;
using enum DeviceInformationKind;
using testing::ElementsAre;
using testing::IsEmpty;

namespace
{
    constexpr auto mouseDevice = R"(BTHLE\Dev_e8473a15b0c2\8&1a2b3c4d&0&E8473A15B0C2)";
    constexpr auto mouseInterface =
        R"(\\?\BTHLE#Dev_e8473a15b0c2#8&1a2b3c4d&0&E8473A15B0C2#{781aee18-7733-4ce4-add0-91f41c67b592})";
    constexpr auto speakerInterface =
        R"(\\?\BTHENUM#Dev_A4C1385E220F#7&2768a9f8&0&BluetoothDevice_A4C1385E220F#{00f40965-e89d-4487-9890-87c3abb211f4})";
    constexpr auto speakerContainer = "{6f9d2e3b-41c7-5a08-9b6e-a4c1385e220f}";
    constexpr auto mouseContainer = "{6f9d2e3b-41c7-5a08-9b6e-e8473a15b0c2}";

    std::vector<std::string> Found(DeviceInformationKind kind, std::string const& filter = {})
    {
        return IdsOf(FindAll(filter, {}, kind));
    }

    using DeviceKind = SimulatorTest;
} // namespace

TEST_F(DeviceKind, OfTheDeviceTreeAreThePaired)
{
    EXPECT_THAT(Found(DeviceInterface), ElementsAre(mouseInterface));
    EXPECT_THAT(Found(DeviceInformationKind::Device), ElementsAre(mouseDevice));
    EXPECT_THAT(Found(DeviceContainer), ElementsAre(mouseContainer));
    SimulateDeviceChanges(speaker, "System.Devices.Aep.IsPaired", "true");
    SimulateDeviceLeaves(mouse); // what is paired stays in the tree
    EXPECT_THAT(Found(DeviceInterface), ElementsAre(speakerInterface, mouseInterface));
}

TEST_F(DeviceKind, OfEndpointContainersAreThoseInRange)
{
    EXPECT_THAT(Found(AssociationEndpointContainer), ElementsAre(speakerContainer, mouseContainer));
}

TEST_F(DeviceKind, OfOtherThingsHasNone)
{
    for (auto const kind : {Unknown, DeviceInterfaceClass, AssociationEndpointService, DevicePanel,
                            AssociationEndpointProtocol, static_cast<DeviceInformationKind>(42)})
    {
        EXPECT_THAT(Found(kind), IsEmpty());
    }
}

TEST_F(DeviceKind, IsInterfacesWhereNoneIsNamed)
{
    Com<DevicesOperation> operation;
    ASSERT_EQ(Statics()->FindAllAsync(operation.Put()), S_OK);
    EXPECT_THAT(IdsOf(operation), ElementsAre(mouseInterface));
    Com<IDeviceWatcher> watcher;
    ASSERT_EQ(Statics()->CreateWatcher(watcher.Put()), S_OK);
    EXPECT_THAT(HeardBy(watcher), ElementsAre(std::string("Added ") + mouseInterface, completed));
}

TEST_F(DeviceKind, HasItsOwnPropertiesForFilters)
{
    EXPECT_THAT(Found(DeviceInterface, "System.Devices.InterfaceClassGuid:=\"{781AEE18-7733-4CE4-ADD0-91F41C67B592}\" "
                                       "AND System.Devices.InterfaceEnabled:=System.StructuredQueryType.Boolean#True"),
                ElementsAre(mouseInterface));
    EXPECT_THAT(Found(DeviceInterface, "System.Devices.InterfaceClassGuid:=\"{00F40965-E89D-4487-9890-87C3ABB211F4}\""),
                IsEmpty());
    EXPECT_THAT(Found(DeviceInformationKind::Device, pairedOnly), IsEmpty()); // a property of endpoints
}

TEST_F(DeviceKind, HasANameAndNoPairing)
{
    for (auto const& [kind, id] :
         {std::pair(DeviceInterface, mouseInterface), std::pair(DeviceInformationKind::Device, mouseDevice),
          std::pair(DeviceContainer, mouseContainer), std::pair(AssociationEndpointContainer, mouseContainer)})
    {
        auto const device = LookUp(id, kind);
        ASSERT_TRUE(device);
        EXPECT_EQ(IdOf(device.Get()), id);
        EXPECT_EQ(NameOf(device), "Travel Mouse");
        DeviceInformationKind got{};
        EXPECT_EQ(device.As<IDeviceInformation2>()->get_Kind(&got), S_OK);
        EXPECT_EQ(got, kind);
        EXPECT_FALSE(IsPaired(device));
        boolean canPair = true;
        EXPECT_EQ(PairingOf(device)->get_CanPair(&canPair), S_OK);
        EXPECT_FALSE(canPair);
        DevicePairingProtectionLevel level{};
        EXPECT_EQ(PairingOf(device).As<IDeviceInformationPairing2>()->get_ProtectionLevel(&level), S_OK);
        EXPECT_EQ(level, DevicePairingProtectionLevel::None);
    }
}

TEST_F(DeviceKind, FollowsPairingInAWatcher)
{
    Com<IDeviceWatcher> watcher;
    ASSERT_EQ(TryMakeWatcher({}, {}, watcher, DeviceInterface), S_OK);
    Recorder recorder(watcher);
    ASSERT_EQ(watcher->Start(), S_OK);
    EXPECT_THAT(recorder.Heard(), ElementsAre(std::string("Added ") + mouseInterface, completed));
    SimulateDeviceChanges(speaker, "System.Devices.Aep.IsPaired", "true");
    EXPECT_THAT(recorder.Heard(), ElementsAre(std::string("Added ") + speakerInterface));
    SimulateDeviceChanges(speaker, "System.ItemNameDisplay", "\"New\"");
    SimulateDeviceChanges(speaker, "System.Devices.Aep.IsConnected", "true");
    EXPECT_THAT(recorder.Heard(), ElementsAre(std::string("Updated ") + speakerInterface + " System.ItemNameDisplay"));
    SimulateDeviceChanges(speaker, "System.Devices.Aep.IsPaired", "false");
    EXPECT_THAT(recorder.Heard(), ElementsAre(std::string("Removed ") + speakerInterface));
}

TEST_F(DeviceKind, OfContainersHasOneForBothProtocols)
{
    Load(Room("protocols = [\"classic\", \"le\"]\n"));
    constexpr auto speakerLe = "BluetoothLE#BluetoothLE00:1a:7d:da:71:13-a4:c1:38:5e:22:0f";
    Com<IDeviceWatcher> watcher;
    ASSERT_EQ(TryMakeWatcher({}, {}, watcher, AssociationEndpointContainer), S_OK);
    Recorder recorder(watcher);
    ASSERT_EQ(watcher->Start(), S_OK);
    EXPECT_THAT(recorder.Heard(), ElementsAre(std::string("Added ") + speakerContainer,
                                              std::string("Added ") + mouseContainer, completed));
    SimulateDeviceLeaves(speaker);
    EXPECT_THAT(recorder.Heard(), IsEmpty());
    SimulateDeviceLeaves(speakerLe);
    EXPECT_THAT(recorder.Heard(), ElementsAre(std::string("Removed ") + speakerContainer));
}
