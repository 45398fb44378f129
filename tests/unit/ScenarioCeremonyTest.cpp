// What a scenario says of a device's ceremonies.
#include "tests/unit/ScenarioText.h"

#include <cstdint>

using namespace simulator;
using namespace test;

TEST(Scenario, CeremonyTakesNamesAndNumbers)
{
    auto const named = OnlyEndpoint("[device.pairing]\nkind = \"ConfirmPinMatch\"\npin = \"000042\"\n"
                                    "status = \"RemoteDeviceHasAssociation\"\nduration-ms = \"never\"\n"
                                    "max-protection = \"Encryption\"\n");
    EXPECT_EQ(named.pairing.kind, 8u);
    EXPECT_EQ(named.pairing.pin, "000042");
    EXPECT_EQ(named.pairing.status, 18);
    EXPECT_EQ(named.pairing.durationMs, never);
    EXPECT_EQ(named.pairing.maxProtection, 2);

    auto const numbered = OnlyEndpoint("[device.pairing]\nkind = 4294967295\nstatus = -7\nduration-ms = 0\n"
                                       "max-protection = 9\n[device.unpairing]\nstatus = 77\nduration-ms = 1\n");
    EXPECT_EQ(numbered.pairing.kind, 4294967295u);
    EXPECT_EQ(numbered.pairing.status, -7);
    EXPECT_EQ(numbered.pairing.durationMs, 0);
    EXPECT_EQ(numbered.pairing.maxProtection, 9);
    EXPECT_EQ(numbered.unpairing.status, 77);
    EXPECT_EQ(numbered.unpairing.durationMs, 1);
}

TEST(Scenario, KindsWithAPinHaveADefaultOne)
{
    auto const pin = [](std::string_view kind) {
        return OnlyEndpoint("[device.pairing]\nkind = \"" + std::string(kind) + "\"\n").pairing.pin;
    };
    EXPECT_EQ(pin("ConfirmOnly"), "");
    EXPECT_EQ(pin("DisplayPin"), "123456");
    EXPECT_EQ(pin("ProvidePin"), "123456");
    EXPECT_EQ(pin("ConfirmPinMatch"), "123456");
    EXPECT_EQ(pin("ProvidePasswordCredential"), "");
}

TEST(Scenario, EveryNameHasItsNumber)
{
    auto const read = [](std::string_view table, std::string_view key, std::string_view name) {
        return OnlyEndpoint("[device." + std::string(table) + "]\n" + std::string(key) + " = \"" + std::string(name) +
                            "\"\n");
    };
    std::uint32_t kind = 1;
    for (auto const* const name :
         {"ConfirmOnly", "DisplayPin", "ProvidePin", "ConfirmPinMatch", "ProvidePasswordCredential", "ProvideAddress"})
    {
        EXPECT_EQ(read("pairing", "kind", name).pairing.kind, kind);
        kind *= 2;
    }
    std::int32_t number = 0;
    for (auto const* const name : {"Paired",
                                   "NotReadyToPair",
                                   "NotPaired",
                                   "AlreadyPaired",
                                   "ConnectionRejected",
                                   "TooManyConnections",
                                   "HardwareFailure",
                                   "AuthenticationTimeout",
                                   "AuthenticationNotAllowed",
                                   "AuthenticationFailure",
                                   "NoSupportedProfiles",
                                   "ProtectionLevelCouldNotBeMet",
                                   "AccessDenied",
                                   "InvalidCeremonyData",
                                   "PairingCanceled",
                                   "OperationAlreadyInProgress",
                                   "RequiredHandlerNotRegistered",
                                   "RejectedByHandler",
                                   "RemoteDeviceHasAssociation",
                                   "Failed"})
    {
        EXPECT_EQ(read("pairing", "status", name).pairing.status, number++);
    }
    number = 0;
    for (auto const* const name :
         {"Unpaired", "AlreadyUnpaired", "OperationAlreadyInProgress", "AccessDenied", "Failed"})
    {
        EXPECT_EQ(read("unpairing", "status", name).unpairing.status, number++);
    }
    number = 0;
    for (auto const* const name : {"Default", "None", "Encryption", "EncryptionAndAuthentication"})
    {
        EXPECT_EQ(read("pairing", "max-protection", name).pairing.maxProtection, number++);
    }
}
