// A ceremony that cannot begin: its device's own calls fail.
#include "pairing/LibraryState.h"
#include "pairing/SubVorlink.h"
#include "tests/support/Codes.h"
#include "tests/support/Endpoints.h"
#include "tests/support/Neighbourhood.h"
#include "tests/support/ProcessEnd.h"
#include "tests/support/Trace.h"

#include <gtest/gtest.h>

#include <windows.h>

using namespace test;

namespace
{
    void MustNotReport(PairReport)
    {
        TerminateProcess(GetCurrentProcess(), 5);
    }

    void PairFailingAt(char const* method)
    {
        Load(prompt + Device("Headset", "a4:c1:38:5e:22:0f", pairsAtOnce));
        Watcher watcher;
        auto const device = watcher.Devices().at(0);
        vorlink::Library().pairResultCallback = MustNotReport;
        SimulateFailure(method, platformCode);
        vorlink::SubVorlink().PairingDevice(device);
    }

    using PairingDevice = testing::TestWithParam<char const*>;
} // namespace

TEST_P(PairingDevice, WithAFailingDeviceEndsTheProcess)
{
    EXPECT_EXIT(PairFailingAt(GetParam()), EndedByFailFast, "");
}

INSTANTIATE_TEST_SUITE_P(All, PairingDevice,
                         testing::Values("DeviceInformation.get_Id", "DeviceInformation.get_Pairing"), MethodName);
