// A device by its identifier, without a watcher.
#include "tests/simulator/CeremonyClient.h"

using namespace test;
using testing::Contains;
using testing::ElementsAre;
using testing::EndsWith;

namespace
{
    using DeviceLookup = SimulatorTest;
} // namespace

TEST_F(DeviceLookup, FindsADeviceInRange)
{
    auto const device = LookUp(speaker);
    ASSERT_TRUE(device);
    EXPECT_EQ(IdOf(device.Get()), speaker);
    EXPECT_EQ(NameOf(device), "Kitchen Speaker");
    EXPECT_FALSE(IsPaired(device));
    DeviceInformationKind kind{};
    EXPECT_EQ(device.As<IDeviceInformation2>()->get_Kind(&kind), S_OK);
    EXPECT_EQ(kind, DeviceInformationKind::AssociationEndpoint);
}

TEST_F(DeviceLookup, TakesEveryOverload)
{
    Com<DeviceOperation> operation;
    EXPECT_EQ(Statics()->CreateFromIdAsync(String(speaker).Get(), operation.Put()), S_OK);
    ASSERT_TRUE(WaitIdle());
    Com<IDeviceInformation> device;
    EXPECT_EQ(operation->GetResults(device.Put()), S_OK);
    EXPECT_EQ(IdOf(device.Get()), speaker);
    EXPECT_EQ(Statics()->CreateFromIdAsyncAdditionalProperties(String(mouse).Get(), nullptr, operation.Put()), S_OK);
    ASSERT_TRUE(WaitIdle());
    EXPECT_EQ(operation->GetResults(device.Put()), S_OK);
    EXPECT_EQ(IdOf(device.Get()), mouse);
    EXPECT_EQ(ClassNameOf(operation.Get()),
              "Windows.Foundation.IAsyncOperation`1<Windows.Devices.Enumeration.DeviceInformation>");
}

TEST_F(DeviceLookup, RefusesNullResultsAndNoIdentifier)
{
    Com<DeviceOperation> operation;
    String const id(speaker);
    EXPECT_EQ(Statics()->CreateFromIdAsync(id.Get(), nullptr), E_POINTER);
    EXPECT_EQ(Statics()->CreateFromIdAsyncAdditionalProperties(id.Get(), nullptr, nullptr), E_POINTER);
    EXPECT_EQ(Statics2()->CreateFromIdAsyncWithKindAndAdditionalProperties(
                  id.Get(), nullptr, DeviceInformationKind::AssociationEndpoint, nullptr),
              E_POINTER);
    EXPECT_EQ(Statics()->CreateFromIdAsync(nullptr, operation.Put()), E_INVALIDARG);
    EXPECT_EQ(Statics()->CreateFromIdAsyncAdditionalProperties(nullptr, nullptr, operation.Put()), E_INVALIDARG);
    EXPECT_EQ(TryLookUp("", {}, operation), E_INVALIDARG);
    EXPECT_FALSE(operation);
}

TEST_F(DeviceLookup, GivesThePropertiesAskedFor)
{
    Com<DeviceOperation> operation;
    EXPECT_EQ(TryLookUp(speaker, {"System.Devices.Aep.NoSuch"}, operation), elementNotFound);
    EXPECT_EQ(TryLookUp(speaker, {"{not a guid} 12"}, operation), E_INVALIDARG);
    ASSERT_EQ(TryLookUp(speaker, {"System.Devices.Aep.SignalStrength"}, operation), S_OK);
    ASSERT_TRUE(WaitIdle());
    Com<IDeviceInformation> device;
    ASSERT_EQ(operation->GetResults(device.Put()), S_OK);
    EXPECT_THAT(KeysOf(device.Get()), Contains("System.Devices.Aep.SignalStrength"));
}

TEST_F(DeviceLookup, FailsForWhatIsNotThere)
{
    Com<DeviceOperation> operation;
    EXPECT_EQ(TryLookUp("Bluetooth#Bluetooth00:1a:7d:da:71:13-00:00:00:00:00:09", {}, operation), S_OK);
    ASSERT_TRUE(WaitIdle());
    EXPECT_EQ(StatusOf(operation), AsyncStatus::Error);
    HRESULT code = S_OK;
    EXPECT_EQ(operation.As<IAsyncInfo>()->get_ErrorCode(&code), S_OK);
    EXPECT_EQ(code, Code(0x80070002));
    EXPECT_FALSE(LookUp(lamp)); // never seen
    EXPECT_FALSE(LookUp(speaker, DeviceInformationKind::Device));
}

TEST_F(DeviceLookup, KnowsWhatIsPairedWhereverItIs)
{
    SimulateDeviceLeaves(speaker);
    SimulateDeviceLeaves(mouse);
    SimulateDeviceAppears(lamp);
    EXPECT_FALSE(LookUp(speaker));
    EXPECT_TRUE(LookUp(mouse));
    EXPECT_TRUE(LookUp(lamp));
}

TEST_F(DeviceLookup, DoesNotMindTheCaseOfTheIdentifier)
{
    auto const device = LookUp("BLUETOOTH#BLUETOOTH00:1A:7D:DA:71:13-A4:C1:38:5E:22:0F");
    ASSERT_TRUE(device);
    EXPECT_EQ(IdOf(device.Get()), speaker);
}

TEST_F(DeviceLookup, GivesASnapshotOfNow)
{
    LoadPairing("duration-ms = 0");
    auto const before = LookUp(speaker);
    Pairer pairer(speaker);
    Pairer::Outcome(pairer.Begin());
    EXPECT_FALSE(IsPaired(before));
    EXPECT_TRUE(IsPaired(LookUp(speaker)));
}

TEST_F(DeviceLookup, ReadsInTheTrace)
{
    Com<DeviceOperation> operation;
    SimulatorClearTrace();
    EXPECT_EQ(TryLookUp(mouse, {}, operation), S_OK);
    ASSERT_TRUE(WaitIdle());
    StatusOf(operation);
    EXPECT_THAT(TraceWith("CreateFromId"),
                ElementsAre(EndsWith("(\"" + std::string(mouse) + "\", [], AssociationEndpoint)")));
    EXPECT_THAT(TraceWith("get_Status"),
                ElementsAre("AsyncOperation.get_Status(" + std::string(mouse) + ") -> Completed"));
}

TEST_F(DeviceLookup, LeavesNothingBehind)
{
    LookUp(speaker);
    LookUp(lamp);
    EXPECT_EQ(SimulatorLiveObjects(), 0u);
}

TEST_F(DeviceLookup, FindsNothingWithoutAnAdapter)
{
    Load(Room({}, {}, "enumeration-completes-ms = 0\n[adapter]\npresent = false"));
    EXPECT_FALSE(LookUp(mouse));
}

TEST_F(DeviceLookup, RemembersWhatIsPairedWhileTheRadioIsOff)
{
    Load(Room({}, {}, "enumeration-completes-ms = 0\n[radio]\nstate = 'Off'"));
    EXPECT_FALSE(LookUp(speaker));
    auto const device = LookUp(mouse);
    ASSERT_TRUE(device);
}

TEST_F(DeviceLookup, DoesNotKnowWhatHasYetToCome)
{
    Load(Room("appears-ms = 60000\n"));
    EXPECT_FALSE(LookUp(speaker));
    ASSERT_EQ(SimulateDeviceAppears(speaker), 1);
    EXPECT_TRUE(LookUp(speaker));
}
