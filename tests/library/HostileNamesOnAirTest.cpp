// Names that strangers' devices have and hosts' users ask for: found, paired, learnt under and unpaired.
#include "platform/abi/Enumeration.h"
#include "tests/library/HostileNames.h"
#include "tests/library/PhoneSearch.h"
#include "tests/library/UnpairHost.h"
#include "tests/support/CapturedOutput.h"
#include "tests/support/CodePages.h"
#include "tests/support/Endpoints.h"
#include "tests/support/Listing.h"
#include "tests/support/ReplacedImport.h"
#include "tests/support/ReplacedMethod.h"
#include "tests/support/StandIns.h"

#include <gmock/gmock.h>

#include <atomic>
#include <utility>

using namespace test;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

namespace
{
    std::wstring nameOnAir;

    HRESULT STDMETHODCALLTYPE GetNameOnAir(platform::IDeviceInformation*, HSTRING* value)
    {
        winrt::hstring name(nameOnAir);
        *value = static_cast<HSTRING>(winrt::detach_abi(name));
        return S_OK;
    }

    // From now on every device has this name. A scenario is UTF-8, which is not all that the platform's texts can be.
    void NameDevices(std::wstring name)
    {
        constexpr std::size_t getName = 7;
        nameOnAir = std::move(name);
        Load(TwoDevices());
        Watcher watcher;
        ReplaceMethod(winrt::get_abi(watcher.Devices().at(0)), getName, GetNameOnAir);
    }

    std::atomic<bool> listed = false;

    UINT WINAPI ListAtOnce(char const*, UINT)
    {
        std::ofstream("ble.jpg", std::ios::binary) << R"(BTHLE\Dev_x\8&1a&0&)" << tagAddress << "\n?? LE ??\n";
        listed = true;
        return 33;
    }

    // Whether a line of the store's file has room for it.
    bool ComesBackFromTheFile(std::string const& name)
    {
        return !name.empty() && name.find_first_of("=\n") == std::string::npos;
    }

    class HostileDevice : public testing::TestWithParam<HostileName>
    {
    protected:
        HostileDevice()
        {
            NameDevices(name);
        }

        std::wstring const name =
            GetParam().units.empty() ? Wide(CP_UTF8, TextOf(GetParam())) : std::wstring(GetParam().units);
        std::string const oem = In(CP_OEMCP, name);
        std::string const utf8 = In(CP_UTF8, name);
    };
} // namespace

TEST_P(HostileDevice, IsPairedByItsName)
{
    Load(prompt + Device("", addressA, pairsAtOnce));
    ReplaceImport(LibraryModule(), "CreateThread", PretendThread); // nothing is learnt
    MakeLoggingVorlink()->PairedDevice(oem, Host::Callback);
    ASSERT_EQ(Host::Count(), 1u);
    ExpectReport(Host::At(0), 0xa4c13800000a, true, oem);
    bool const isShort = oem.size() < 14;
    ExpectLog({Record(1253, pairByName, "Call  Pair entry name ->" + Shown(oem)),
               Record(399, lookup, Shown(Printed(oem))), Record(416, lookup, Shown(In(CP_ACP, name))),
               Record(isShort ? 435 : 444, lookup, "tname  is " + Shown(oem) + " ,name is " + Shown(oem) + " "),
               Record(isShort ? 437 : 446, lookup, "CLassic id is: " + idA + "  ,pair status : 1 , isPaired is:  0"),
               Record(796, ceremony, "DevicePairingResultStatus::Paired")});
}

TEST_P(HostileDevice, IsToldAndPairedAsAPhone)
{
    auto const vorlink = Watching(Device("", addressA, pairsAtOnce));
    std::vector<std::string> log;
    if (name.empty())
    {
        EXPECT_THAT(Phones::Names(), IsEmpty());
    }
    else
    {
        ASSERT_TRUE(Phones::WaitFor(1));
        EXPECT_TRUE(Phones::At(0).name == name.substr(0, name.find(L'\0')));
        EXPECT_EQ(Phones::At(0).length, name.size());
        log.push_back(AddedRecord(Shown(utf8)));
    }
    ReplaceImport(LibraryModule(), "CreateThread", PretendThread); // nothing is learnt
    vorlink->IosPairedDevicce(utf8, Host::Callback);
    ASSERT_EQ(Host::Count(), 1u);
    ExpectReport(Host::At(0), 0xa4c13800000a, true, utf8);
    log.push_back(Visited(Shown(utf8), Shown(utf8)));
    log.push_back(found);
    log.push_back(Record(796, ceremony, "DevicePairingResultStatus::Paired"));
    ExpectLog(log);
}

TEST_P(HostileDevice, IsLearntUnderItsNameAndUnpairedByIt)
{
    Load(prompt + Device("", tagAddress,
                         "protocols = ['classic', 'le']\n[device.pairing]\nduration-ms = 0\n"
                         "[device.unpairing]\nduration-ms = 0\n[device.le]\nis-paired = true"));
    ReplaceImport(LibraryModule(), "Sleep", SleepShortly);
    ReplaceImport(LibraryModule(), "WinExec", ListAtOnce);
    auto const vorlink = MakeLoggingVorlink();
    OutputOf([&] {
        vorlink->PairedDevice(oem, Host::Callback);
        EXPECT_TRUE(WaitUntil([] { return listed && !ListingExists(); }));
    });
    ExpectSame(ReadFile("MyLEData"), oem.empty() ? "" : oem + "=" + tagAddress + "\n");
    OutputOf([&] {
        vorlink->Uninitialize();
        vorlink->Initialize();
    });
    vorlink->UnpairedCurrent(oem, UnpairHost::Callback);
    ASSERT_TRUE(UnpairHost::WaitFor(1));
    EXPECT_TRUE(UnpairHost::At(0).success);
    EXPECT_THAT(LogOf(classicUnpairing),
                Contains(Record(1177, classicUnpairing,
                                "device Id -> " + std::string(ComesBackFromTheFile(oem) ? tagAddress : ""))));
}

INSTANTIATE_TEST_SUITE_P(HostileNames, HostileDevice, testing::ValuesIn(HostileNamesOnAir()), labelOfName);
