// Each call that can fail, failing: who learns it, what came before, and whether the library goes on.
#include "tests/faults/Faults.h"
#include "tests/faults/Rounds.h"
#include "tests/faults/SystemCalls.h"
#include "tests/library/FailFast.h"
#include "tests/support/LiveObjects.h"
#include "tests/support/LogFile.h"
#include "tests/support/ProcessEnd.h"
#include "tests/support/Trace.h"

#include <gmock/gmock.h>

#include <winrt/base.h>

#include <algorithm>
#include <cstdio>
#include <new>
#include <thread>

using namespace test;
using testing::Contains;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;

namespace
{
    constexpr Flow flows[] = {
        Flow::PairByName,     Flow::PairPhone, Flow::Unpair,      Flow::StartPhones, Flow::StopPhones,
        Flow::CompletePhones, Flow::AddPhone,  Flow::UpdatePhone, Flow::RemovePhone, Flow::UpdateQueued,
    };

    struct Case
    {
        Fault const* fault;
        std::int32_t code;
        bool later; // after a round in which nothing failed
    };

    // What a call of the operating system's own brings with it is the standard library's error.
    std::vector<std::int32_t> CodesOf(Fault const& fault)
    {
        return IsSystemCall(fault.call) ? std::vector<std::int32_t>{E_FAIL}
                                        : std::vector<std::int32_t>{E_OUTOFMEMORY, E_ACCESSDENIED};
    }

    std::vector<Case> Cases()
    {
        std::vector<Case> cases;
        for (auto const& fault : Faults())
        {
            for (auto const code : CodesOf(fault))
            {
                for (bool const later : {false, true})
                {
                    if (fault.when == When::Both || later == (fault.when == When::LaterAlone))
                    {
                        cases.push_back({&fault, code, later});
                    }
                }
            }
        }
        return cases;
    }

    std::string CaseName(testing::TestParamInfo<Case> const& test)
    {
        auto const& [fault, code, later] = test.param;
        char text[16];
        std::snprintf(text, sizeof text, "%08X", static_cast<unsigned>(code));
        std::string name(Name(fault->flow));
        name.append("_").append(fault->call).append("_").append(std::to_string(fault->passes));
        name.append(later ? "_later_" : "_first_").append(text);
        std::ranges::replace(name, '.', '_');
        return name;
    }

    void PrintTo(Case const& one, std::ostream* stream)
    {
        *stream << one.fault->call;
    }

    // As C++/WinRT's to_hresult has it.
    template <typename Action>
    std::int32_t FailureOf(Action action)
    {
        try
        {
            action();
        }
        catch (winrt::hresult_error const& error)
        {
            return error.code();
        }
        catch (std::bad_alloc const&)
        {
            return E_OUTOFMEMORY;
        }
        catch (std::exception const&)
        {
            return E_FAIL;
        }
        return S_OK;
    }

    class FaultMatrix : public testing::TestWithParam<Case>
    {
    protected:
        Fault const& fault = *GetParam().fault;
        std::int32_t const code = GetParam().code;

        void Prepare() const
        {
            Arrange(fault.flow);
            if (GetParam().later)
            {
                Act(fault.flow);
                Rearrange(fault.flow);
            }
            SimulatorClearTrace();
            std::string const call(fault.call);
            if (IsSystemCall(call))
            {
                FailSystemCall(call, fault.passes);
            }
            else
            {
                ASSERT_TRUE(SimulateLaterFailure(call.c_str(), fault.passes, code)) << SimulatorLastError();
            }
        }

        std::string Failure() const
        {
            char text[16];
            std::snprintf(text, sizeof text, "-> 0x%08X", static_cast<unsigned>(code));
            return text;
        }

        bool HasFailed() const
        {
            return IsSystemCall(fault.call) ? HasFailedSystemCall()
                                            : !std::ranges::none_of(Trace({fault.call}), [&](std::string const& line) {
                                                  return line.ends_with(Failure());
                                              });
        }
    };

    class FaultFlow : public testing::TestWithParam<Flow>
    {
    };

    std::string FlowName(testing::TestParamInfo<Flow> const& test)
    {
        return std::string(Name(test.param));
    }

    bool IsInTheTable(Flow flow, std::string const& call)
    {
        auto const isIt = [&](auto const& row) { return row.flow == flow && row.call == call; };
        return std::ranges::any_of(Faults(), isIt) || std::ranges::any_of(LeftOutFaults(), isIt);
    }
} // namespace

TEST_P(FaultMatrix, GoesAsTheTableSays)
{
    auto const directory = DirectoryOfTheTest();
    if (fault.learns == Learns::FailFast)
    {
        ExpectFailFast(code, [&] {
            std::filesystem::current_path(directory);
            Prepare();
            Act(fault.flow);
        });
        EXPECT_EQ(RecordCount(), fault.records) << testing::PrintToString(Log());
        EXPECT_EQ(ReportCount(), fault.reports);
        return;
    }
    // What it holds is compared where it has held something before: what a first round brings up stays.
    bool const compares = GetParam().later;
    auto const held = compares && GoesOn() ? SimulatorLiveObjects() : 0;
    Prepare();
    EXPECT_EQ(FailureOf([&] { Act(fault.flow); }), fault.learns == Learns::Host ? code : S_OK);
    EXPECT_TRUE(SimulatorWaitIdle(20'000));
    EXPECT_TRUE(HasFailed());
    EXPECT_EQ(RecordCount(), fault.records) << testing::PrintToString(Log());
    EXPECT_EQ(ReportCount(), fault.reports);
    if (fault.learns == Learns::Platform)
    {
        EXPECT_THAT(Trace({"!"}), Contains(EndsWith(Failure())));
    }
    if (fault.learns == Learns::Log)
    {
        EXPECT_THAT(Log(), Contains(HasSubstr("exception -> ")));
    }
    EXPECT_TRUE(GoesOn());
    if (compares)
    {
        EXPECT_TRUE(LiveObjectsFallTo(held + fault.kept)) << SimulatorLiveObjects();
        EXPECT_EQ(SimulatorLiveObjects(), held + fault.kept);
    }
}

INSTANTIATE_TEST_SUITE_P(Fault, FaultMatrix, testing::ValuesIn(Cases()), CaseName);

TEST_P(FaultFlow, GoesWellTwiceWhereNothingFails)
{
    Arrange(GetParam());
    Act(GetParam());
    EXPECT_TRUE(HasWorked(GetParam()));
    Arrange(GetParam());
    Act(GetParam());
    Rearrange(GetParam());
    Act(GetParam());
    EXPECT_TRUE(HasWorked(GetParam()));
}

TEST_P(FaultFlow, MakesNoCallThatTheTableDoesNotHave)
{
    std::vector<std::string> missing;
    for (auto const& call : CallsOf(GetParam()))
    {
        if (!IsInTheTable(GetParam(), call))
        {
            missing.push_back(call);
        }
    }
    EXPECT_THAT(missing, IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(Fault, FaultFlow, testing::ValuesIn(flows), FlowName);
