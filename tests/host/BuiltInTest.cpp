// The built-in neighbourhood has for each of vorlinkctl's commands a device that lets it succeed and one that does not.
#include "tests/host/ChildProcess.h"
#include "tests/support/LogFile.h"

#include <gmock/gmock.h>

#include <windows.h>

#include <filesystem>

using namespace test;
using testing::HasSubstr;
using testing::Not;

namespace
{
    void KeepState()
    {
        auto const path = std::filesystem::current_path() / "state.txt";
        SetEnvironmentVariableW(L"VORLINK_SIMULATOR_STATE", path.c_str());
    }

    constexpr DWORD succeeded = 0;
    constexpr DWORD notFound = 3;
    constexpr DWORD refused = 4;

    DWORD Pair(std::string const& name)
    {
        return RunVorlinkctl({"pair", name, "--no-learn"}).exitCode;
    }

    DWORD Unpair(std::string const& name)
    {
        return RunVorlinkctl({"unpair", name}).exitCode;
    }
} // namespace

TEST(BuiltIn, DevicesPairOrRefuse)
{
    EXPECT_EQ(Pair("Kitchen Speaker"), succeeded);
    EXPECT_EQ(Pair("Baby Monitor"), refused);
    EXPECT_EQ(Pair("Desk Keyboard"), refused) << "it wants a PIN typed";
    EXPECT_EQ(Pair("Trail Headset"), refused) << "it shows one";
    EXPECT_EQ(Pair("Car Radio"), refused) << "it is paired already";
}

TEST(BuiltIn, LongNameFindsWhatContainsIt)
{
    EXPECT_THAT(RunVorlinkctl({"pair", "Living Room TV", "--no-learn"}).output,
                testing::StartsWith("Paired \"Living Room TV Soundbar\" (38:8b:59:0c:e4:71).\nWarning: "));
    EXPECT_EQ(RunVorlinkctl({"pair-phone", "Living Room TV", "--no-learn"}).output,
              "Paired \"Living Room TV\" (64:1c:ae:93:5d:08).\n");
}

TEST(BuiltIn, PairedDevicesUnpairOrRefuse)
{
    KeepState();
    EXPECT_EQ(Unpair("Car Radio"), succeeded);
    EXPECT_EQ(Unpair("Car Radio"), refused) << "it is unpaired already";
    EXPECT_EQ(Unpair("Door Lock"), refused);
    EXPECT_EQ(Unpair("Trail Headset"), refused);
}

TEST(BuiltIn, PhonesAreListedAndPairOrRefuse)
{
    auto const phones = RunVorlinkctl({"phones"});
    EXPECT_EQ(phones.exitCode, succeeded);
    EXPECT_THAT(phones.output, HasSubstr("Zoë's Phone\n"));
    EXPECT_THAT(phones.output, Not(HasSubstr("Car Radio")));
    auto const paired = RunVorlinkctl({"pair-phone", "Zoë's Phone", "--no-learn"});
    EXPECT_EQ(paired.exitCode, succeeded);
    EXPECT_EQ(paired.output, "Paired \"Zoë's Phone\" (f4:0f:24:6d:a9:31).\n");
    EXPECT_EQ(RunVorlinkctl({"pair-phone", "Baby Monitor", "--no-learn"}).exitCode, refused);
    EXPECT_EQ(RunVorlinkctl({"pair-phone", "Zoë", "--no-learn"}).exitCode, notFound);
}

TEST(SlowBuiltIn, SpeakerIsLearntAndUnpairsOnBothSides)
{
    KeepState();
    // Under load the listing may come too late for the library.
    for (int attempt = 0; attempt < 4 && ReadFile("MyLEData").empty(); ++attempt)
    {
        std::filesystem::remove("state.txt");
        EXPECT_EQ(RunVorlinkctl({"pair", "Kitchen Speaker"}).exitCode, succeeded);
    }
    EXPECT_EQ(ReadFile("MyLEData"), "Kitchen Speaker=a4:c1:38:5e:22:0f\n");
    EXPECT_THAT(ReadFile("state.txt"),
                HasSubstr("\npaired BluetoothLE#BluetoothLE00:1a:7d:da:71:13-a4:c1:38:5e:22:0f\n"));
    EXPECT_EQ(Unpair("Kitchen Speaker"), succeeded);
    EXPECT_THAT(ReadFile("state.txt"), HasSubstr("unpaired Bluetooth#Bluetooth00:1a:7d:da:71:13-a4:c1:38:5e:22:0f\n"));
    EXPECT_THAT(ReadFile("state.txt"),
                HasSubstr("unpaired BluetoothLE#BluetoothLE00:1a:7d:da:71:13-a4:c1:38:5e:22:0f\n"));
}
