// The answer to a device's pairing request, kind by kind.
#include "pairing/Ceremony.h"
#include "tests/support/FakePairingRequest.h"

#include <gmock/gmock.h>

using testing::ElementsAre;

namespace
{
    // Runs the handler on a request of one kind; every call that it makes of the request, in order.
    std::vector<std::string> CallsOnRequest(int kind)
    {
        test::FakePairingRequest request(static_cast<platform::DevicePairingKinds>(kind));
        vorlink::OnPairingRequested(nullptr, request.Projected());
        EXPECT_EQ(request.References(), 1u) << "the request is not kept";
        return request.calls;
    }

    using AcceptedRequest = testing::TestWithParam<int>;
    using RequestForAUser = testing::TestWithParam<int>;

    std::string Kind(testing::TestParamInfo<int> const& test)
    {
        return "Kind" + std::to_string(test.param);
    }
} // namespace

TEST_P(AcceptedRequest, IsAcceptedOnceAndAtOnce)
{
    EXPECT_THAT(CallsOnRequest(GetParam()), ElementsAre("get_PairingKind", "Accept"));
}

// ConfirmOnly and DisplayPin.
INSTANTIATE_TEST_SUITE_P(All, AcceptedRequest, testing::Values(1, 2), Kind);

TEST_P(RequestForAUser, IsLeftToThePlatform)
{
    EXPECT_THAT(CallsOnRequest(GetParam()), ElementsAre("get_PairingKind"));
}

// ProvidePin, ConfirmPinMatch, ProvidePasswordCredential and ProvideAddress; none at all and one yet unknown.
INSTANTIATE_TEST_SUITE_P(All, RequestForAUser, testing::Values(4, 8, 16, 32, 0, 64), Kind);
