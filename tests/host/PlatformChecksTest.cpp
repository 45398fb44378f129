// What vorlinkctl doctor finds about the platform, one check at a time.
#include "host/doctor/PlatformChecks.h"
#include "platform/abi/Bluetooth.h"
#include "tests/support/FakeObject.h"
#include "tests/support/Neighbourhood.h"
#include "tests/support/ProcessEnd.h"
#include "tests/support/ReplacedImport.h"
#include "tests/support/Trace.h"

#include <gmock/gmock.h>

#include <roapi.h>

using namespace test;
using namespace host;
using platform::AsyncStatus;
using platform::RadioState;
using testing::HasSubstr;
using testing::StartsWith;

namespace
{
    using Activate = HRESULT WINAPI(HSTRING, GUID const&, void**);

    void ReplaceActivation(Activate* replacement)
    {
        ReplaceImport(GetModuleHandleW(nullptr), "RoGetActivationFactory", replacement);
    }

    // An operation that has ended, or never does.
    template <typename T>
    struct FakeAsync : FakeObject<platform::IAsyncOperation<T*>, platform::IAsyncInfo>
    {
        T* result = nullptr;
        AsyncStatus status = AsyncStatus::Completed;
        HRESULT code = S_OK;

        HRESULT STDMETHODCALLTYPE put_Completed(platform::AsyncOperationCompletedHandler<T*>*) override
        {
            return E_NOTIMPL;
        }
        HRESULT STDMETHODCALLTYPE get_Completed(platform::AsyncOperationCompletedHandler<T*>**) override
        {
            return E_NOTIMPL;
        }
        HRESULT STDMETHODCALLTYPE GetResults(T** results) override
        {
            *results = result;
            if (result)
            {
                result->AddRef();
            }
            return code;
        }
        HRESULT STDMETHODCALLTYPE get_Id(UINT32*) override
        {
            return E_NOTIMPL;
        }
        HRESULT STDMETHODCALLTYPE get_Status(AsyncStatus* value) override
        {
            *value = status;
            return S_OK;
        }
        HRESULT STDMETHODCALLTYPE get_ErrorCode(HRESULT*) override
        {
            return E_NOTIMPL;
        }
        HRESULT STDMETHODCALLTYPE Cancel() override
        {
            return E_NOTIMPL;
        }
        HRESULT STDMETHODCALLTYPE Close() override
        {
            return E_NOTIMPL;
        }
    };

    struct FakeRadio : FakeObject<platform::IRadio>
    {
        RadioState state = RadioState::On;

        HRESULT STDMETHODCALLTYPE SetStateAsync(RadioState,
                                                platform::IAsyncOperation<platform::RadioAccessStatus>**) override
        {
            return E_NOTIMPL;
        }
        HRESULT STDMETHODCALLTYPE add_StateChanged(platform::RadioHandler*, EventRegistrationToken*) override
        {
            return E_NOTIMPL;
        }
        HRESULT STDMETHODCALLTYPE remove_StateChanged(EventRegistrationToken) override
        {
            return E_NOTIMPL;
        }
        HRESULT STDMETHODCALLTYPE get_State(RadioState* value) override
        {
            *value = state;
            return S_OK;
        }
        HRESULT STDMETHODCALLTYPE get_Name(HSTRING*) override
        {
            return E_NOTIMPL;
        }
        HRESULT STDMETHODCALLTYPE get_Kind(platform::RadioKind*) override
        {
            return E_NOTIMPL;
        }
    };

    FakeRadio radio;
    FakeAsync<platform::IRadio> radioOperation;

    struct FakeAdapter : FakeObject<platform::IBluetoothAdapter>
    {
        bool classic = true;
        bool le = true;

        HRESULT STDMETHODCALLTYPE get_DeviceId(HSTRING*) override
        {
            return E_NOTIMPL;
        }
        HRESULT STDMETHODCALLTYPE get_BluetoothAddress(UINT64* value) override
        {
            *value = 0x001A7DDA7113;
            return S_OK;
        }
        HRESULT STDMETHODCALLTYPE get_IsClassicSupported(boolean* value) override
        {
            *value = classic;
            return S_OK;
        }
        HRESULT STDMETHODCALLTYPE get_IsLowEnergySupported(boolean* value) override
        {
            *value = le;
            return S_OK;
        }
        HRESULT STDMETHODCALLTYPE get_IsPeripheralRoleSupported(boolean*) override
        {
            return E_NOTIMPL;
        }
        HRESULT STDMETHODCALLTYPE get_IsCentralRoleSupported(boolean*) override
        {
            return E_NOTIMPL;
        }
        HRESULT STDMETHODCALLTYPE get_IsAdvertisementOffloadSupported(boolean*) override
        {
            return E_NOTIMPL;
        }
        HRESULT STDMETHODCALLTYPE GetRadioAsync(platform::IAsyncOperation<platform::IRadio*>** operation) override
        {
            radioOperation.AddRef();
            *operation = &radioOperation;
            return S_OK;
        }
    };

    FakeAdapter pcAdapter;
    FakeAsync<platform::IBluetoothAdapter> adapterOperation;

    struct FakeStatics : FakeObject<platform::IBluetoothAdapterStatics>
    {
        HRESULT STDMETHODCALLTYPE GetDeviceSelector(HSTRING*) override
        {
            return E_NOTIMPL;
        }
        HRESULT STDMETHODCALLTYPE FromIdAsync(HSTRING,
                                              platform::IAsyncOperation<platform::IBluetoothAdapter*>**) override
        {
            return E_NOTIMPL;
        }
        HRESULT STDMETHODCALLTYPE
        GetDefaultAsync(platform::IAsyncOperation<platform::IBluetoothAdapter*>** operation) override
        {
            adapterOperation.AddRef();
            *operation = &adapterOperation;
            return S_OK;
        }
    };

    FakeStatics statics;

    HRESULT WINAPI GiveStatics(HSTRING, GUID const& id, void** factory)
    {
        return statics.QueryInterface(id, factory);
    }

    // A PC with an adapter and a radio that is on.
    void UsePcWithAdapter()
    {
        radioOperation.result = &radio;
        adapterOperation.result = &pcAdapter;
        ReplaceActivation(GiveStatics);
    }
} // namespace

TEST(PlatformCheck, NamesTheSimulator)
{
    auto const [finding, answering] = CheckPlatform();
    EXPECT_EQ(answering, Answering::Simulator);
    EXPECT_EQ(finding.verdict, Verdict::Ok);
    EXPECT_THAT(finding.text, HasSubstr("vorlink_simulator.dll"));
}

TEST(PlatformCheck, DoesWithoutAnApartment)
{
    // The simulator refuses a thread without one, as Windows does.
    EXPECT_EQ(CheckPlatform().answering, Answering::Simulator);
    EXPECT_EQ(Trace({"DeviceInformation.GetActivationFactory"}).size(), 2u);
}

TEST(PlatformCheck, TellsWhyNobodyAnswers)
{
    struct Case
    {
        Activate* activation;
        char const* text;
        char const* hint;
    };
    constexpr Case cases[] = {
        {[](HSTRING, GUID const&, void**) -> HRESULT { return REGDB_E_CLASSNOTREG; },
         "0x80040154, the class is not registered", "It comes with Windows 10."},
        {[](HSTRING, GUID const&, void**) -> HRESULT { return E_NOINTERFACE; },
         "0x80004002, the class lacks the interface", "This Windows is too old"},
        {[](HSTRING, GUID const&, void**) -> HRESULT { return platformCode; }, "0x80070490", "Try again"},
    };
    for (auto const& each : cases)
    {
        ReplaceActivation(each.activation);
        auto const [finding, answering] = CheckPlatform();
        EXPECT_EQ(answering, Answering::Nobody);
        EXPECT_EQ(finding.verdict, Verdict::Problem);
        EXPECT_THAT(finding.text, HasSubstr(each.text));
        EXPECT_THAT(finding.hint, StartsWith(each.hint));
    }
}

TEST(PlatformCheck, OfAnotherModuleIsWinesOwn)
{
    if (!IsWine())
    {
        GTEST_SKIP() << "on Windows another module is the real one";
    }
    ReplaceActivation([](HSTRING, GUID const&, void** factory) -> HRESULT {
        return statics.QueryInterface(platform::iid_of<::IInspectable>, factory);
    });
    auto const [finding, answering] = CheckPlatform();
    EXPECT_EQ(answering, Answering::Wine);
    EXPECT_EQ(finding.verdict, Verdict::Problem);
    EXPECT_THAT(finding.text, HasSubstr("host_platform_tests.exe"));
}

TEST(SearchCheck, CountsTheEndpointsOfEachProtocol)
{
    Load(prompt + Device("A", "00:00:00:00:00:01", "protocols = ['classic', 'le']\n") +
         Device("B", "00:00:00:00:00:02", "protocols = ['le']\n"));
    auto const findings = CheckSearch();
    ASSERT_EQ(findings.size(), 2u);
    EXPECT_EQ(findings[0].verdict, Verdict::Ok);
    EXPECT_EQ(findings[1].verdict, Verdict::Ok);
    EXPECT_EQ(findings[1].text, "Classic: 1, LE: 2");
}

TEST(SearchCheck, WarnsWhenThereIsNothing)
{
    Load(prompt);
    auto const findings = CheckSearch();
    ASSERT_EQ(findings.size(), 2u);
    EXPECT_EQ(findings[1].verdict, Verdict::Warning);
    EXPECT_EQ(findings[1].text, "Classic: 0, LE: 0");
}

TEST(SearchCheck, TellsThePlatformsFailure)
{
    Load(prompt);
    ASSERT_TRUE(SimulateFailure("DeviceWatcher.Start", platformCode));
    auto const findings = CheckSearch();
    ASSERT_EQ(findings.size(), 1u);
    EXPECT_EQ(findings[0].verdict, Verdict::Problem);
    EXPECT_THAT(findings[0].text, HasSubstr("0x80070490"));
}

TEST(SlowSearchCheck, EndsWhenASearchDoesNot)
{
    Load(patient + Device("A", "00:00:00:00:00:01"));
    auto const findings = CheckSearch();
    ASSERT_EQ(findings.size(), 2u);
    EXPECT_EQ(findings[1].text, "Classic: 1, LE: 0");
}

TEST(AdapterCheck, TellsAddressProtocolsAndRadio)
{
    UsePcWithAdapter();
    auto const findings = CheckAdapter();
    ASSERT_EQ(findings.size(), 2u);
    EXPECT_EQ(findings[0].verdict, Verdict::Ok);
    EXPECT_EQ(findings[0].text, "00:1a:7d:da:71:13, for Classic and LE");
    EXPECT_EQ(findings[1].verdict, Verdict::Ok);
    EXPECT_EQ(findings[1].text, "on");
}

TEST(AdapterCheck, WarnsOfAMissingProtocol)
{
    UsePcWithAdapter();
    pcAdapter.le = false;
    EXPECT_EQ(CheckAdapter().at(0).verdict, Verdict::Warning);
    EXPECT_THAT(CheckAdapter().at(0).text, HasSubstr("for Classic alone"));
    pcAdapter.classic = false;
    pcAdapter.le = true;
    EXPECT_THAT(CheckAdapter().at(0).text, HasSubstr("for LE alone"));
    EXPECT_EQ(CheckAdapter().at(0).verdict, Verdict::Warning);
}

TEST(AdapterCheck, NoneIsAProblem)
{
    UsePcWithAdapter();
    adapterOperation.result = nullptr;
    auto const findings = CheckAdapter();
    ASSERT_EQ(findings.size(), 1u);
    EXPECT_EQ(findings[0].verdict, Verdict::Problem);
    EXPECT_EQ(findings[0].text, "none");
}

TEST(AdapterCheck, ARadioThatIsNotOnIsAProblem)
{
    UsePcWithAdapter();
    radio.state = RadioState::Off;
    EXPECT_EQ(CheckAdapter().at(1).text, "off");
    EXPECT_EQ(CheckAdapter().at(1).verdict, Verdict::Problem);
    radio.state = RadioState::Disabled;
    EXPECT_EQ(CheckAdapter().at(1).text, "disabled");
    EXPECT_EQ(CheckAdapter().at(1).verdict, Verdict::Problem);
    radio.state = RadioState::Unknown;
    EXPECT_EQ(CheckAdapter().at(1).verdict, Verdict::Unknown);
}

TEST(AdapterCheck, WhatThePlatformRefusesIsUnknown)
{
    UsePcWithAdapter();
    radioOperation.code = platformCode;
    auto const findings = CheckAdapter();
    ASSERT_EQ(findings.size(), 2u);
    EXPECT_EQ(findings[1].check, "radio");
    EXPECT_EQ(findings[1].verdict, Verdict::Unknown);
    EXPECT_THAT(findings[1].text, HasSubstr("0x80070490"));
    adapterOperation.code = platformCode;
    EXPECT_EQ(CheckAdapter().at(0).check, "adapter");
    EXPECT_EQ(CheckAdapter().at(0).verdict, Verdict::Unknown);
}

TEST(AdapterCheck, OfAPlatformWithoutTheClassIsUnknown)
{
    ReplaceActivation([](HSTRING, GUID const&, void**) -> HRESULT { return REGDB_E_CLASSNOTREG; });
    auto const findings = CheckAdapter();
    ASSERT_EQ(findings.size(), 1u);
    EXPECT_EQ(findings[0].verdict, Verdict::Unknown);
    EXPECT_THAT(findings[0].text, HasSubstr("nothing answers for Windows.Devices.Bluetooth"));
}

TEST(SlowAdapterCheck, DoesNotWaitForEver)
{
    UsePcWithAdapter();
    adapterOperation.status = AsyncStatus::Started;
    EXPECT_THAT(CheckAdapter().at(0).text, HasSubstr("no answer within 3 s"));
}
