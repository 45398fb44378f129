// Nulls, handles that are not open and names that are no UTF-8: each refused by its code, and nothing begun.
#include "tests/support/Trace.h"
#include "tests/wrapper/CHost.h"

#include <gmock/gmock.h>

#include <functional>

using namespace test;
using testing::HasSubstr;
using testing::IsEmpty;

namespace
{
    PairInbox pairs;
    std::int32_t answer = 0;

    struct WrongCall
    {
        char const* name;
        std::function<std::int32_t(vorlink_t*)> call; // given a handle that is open
        char const* sentence;
    };

    using H = vorlink_t*;

    WrongCall const wrongCalls[] = {
        {"OpenNull", [](H) { return vorlink_open(nullptr); }, "The place for the handle is null."},
        {"CloseNull", [](H) { return vorlink_close(nullptr); }, "The handle is null."},
        {"ForgetNull", [](H) { return vorlink_forget(nullptr, VORLINK_PAIRING); }, "The handle is null."},
        {"ForgetNothing", [](H h) { return vorlink_forget(h, 0); }, "0 is no operation to forget."},
        {"ForgetUnknown", [](H h) { return vorlink_forget(h, 3); }, "3 is no operation to forget."},
        {"InitializeNull", [](H) { return vorlink_initialize(nullptr, &answer); }, "The handle is null."},
        {"UninitializeNull", [](H) { return vorlink_uninitialize(nullptr); }, "The handle is null."},
        {"LogNull", [](H) { return vorlink_set_log_enabled(nullptr, 1); }, "The handle is null."},
        {"PairNull", [](H) { return vorlink_pair(nullptr, "Tag", OnPaired, &pairs); }, "The handle is null."},
        {"PairNoName", [](H h) { return vorlink_pair(h, nullptr, OnPaired, &pairs); }, "The name is null."},
        {"PairNoCallback", [](H h) { return vorlink_pair(h, "Tag", nullptr, &pairs); }, "The callback is null."},
        {"PairLatin1", [](H h) { return vorlink_pair(h, "Zo\xEB", OnPaired, &pairs); }, "The name is not UTF-8."},
        {"UnpairNull", [](H) { return vorlink_unpair(nullptr, "Tag", OnUnpaired, &pairs); }, "The handle is null."},
        {"UnpairNoName", [](H h) { return vorlink_unpair(h, nullptr, OnUnpaired, &pairs); }, "The name is null."},
        {"UnpairNoCallback", [](H h) { return vorlink_unpair(h, "Tag", nullptr, &pairs); }, "The callback is null."},
        {"UnpairLatin1", [](H h) { return vorlink_unpair(h, "Zo\xEB", OnUnpaired, &pairs); }, "The name is not UTF-8."},
        {"WatchNull", [](H) { return vorlink_start_phone_watcher(nullptr, OnPhone, &pairs, &answer); },
         "The handle is null."},
        {"WatchNoCallback", [](H h) { return vorlink_start_phone_watcher(h, nullptr, &pairs, &answer); },
         "The callback is null."},
        {"WatchNoAnswer", [](H h) { return vorlink_start_phone_watcher(h, OnPhone, &pairs, nullptr); },
         "The place for the answer is null."},
        {"PhoneNull", [](H) { return vorlink_pair_phone(nullptr, "Tag", OnPaired, &pairs); }, "The handle is null."},
        {"PhoneNoName", [](H h) { return vorlink_pair_phone(h, nullptr, OnPaired, &pairs); }, "The name is null."},
        {"PhoneNoCallback", [](H h) { return vorlink_pair_phone(h, "Tag", nullptr, &pairs); }, "The callback is null."},
        {"PhoneLatin1", [](H h) { return vorlink_pair_phone(h, "Zo\xEB", OnPaired, &pairs); },
         "The name is not UTF-8."},
    };

    // Each with a handle that is not open.
    WrongCall const callsByHandle[] = {
        {"Close", [](H h) { return vorlink_close(h); }, ""},
        {"Forget", [](H h) { return vorlink_forget(h, VORLINK_PAIRING); }, ""},
        {"Initialize", [](H h) { return vorlink_initialize(h, nullptr); }, ""},
        {"Uninitialize", [](H h) { return vorlink_uninitialize(h); }, ""},
        {"Log", [](H h) { return vorlink_set_log_enabled(h, 1); }, ""},
        {"Pair", [](H h) { return vorlink_pair(h, "Tag", OnPaired, &pairs); }, ""},
        {"Unpair", [](H h) { return vorlink_unpair(h, "Tag", OnUnpaired, &pairs); }, ""},
        {"Watch", [](H h) { return vorlink_start_phone_watcher(h, OnPhone, &pairs, &answer); }, ""},
        {"Phone", [](H h) { return vorlink_pair_phone(h, "Tag", OnPaired, &pairs); }, ""},
    };

    std::string NameOf(testing::TestParamInfo<WrongCall> const& test)
    {
        return test.param.name;
    }

    using Arguments = testing::TestWithParam<WrongCall>;
    using ClosedHandle = testing::TestWithParam<WrongCall>;
} // namespace

TEST_P(Arguments, AreRefusedWithASentenceAndWithoutACall)
{
    Load(patient + slowTag);
    auto* const vorlink = Open();
    SimulatorClearTrace();
    EXPECT_EQ(GetParam().call(vorlink), VORLINK_INVALID_ARGUMENT);
    EXPECT_STREQ(vorlink_last_error(), GetParam().sentence);
    EXPECT_EQ(vorlink_last_hresult(), 0);
    EXPECT_THAT(Trace({""}), IsEmpty());
    EXPECT_EQ(pairs.Count(), 0u);
    EXPECT_EQ(vorlink_close(vorlink), VORLINK_OK) << "nothing was begun";
}

INSTANTIATE_TEST_SUITE_P(Each, Arguments, testing::ValuesIn(wrongCalls), NameOf);

TEST_P(ClosedHandle, IsRefused)
{
    Load(patient + slowTag);
    auto* const vorlink = Open();
    auto* const other = Open();
    ASSERT_EQ(vorlink_close(vorlink), VORLINK_OK);
    SimulatorClearTrace();
    EXPECT_EQ(GetParam().call(vorlink), VORLINK_INVALID_ARGUMENT);
    EXPECT_STREQ(vorlink_last_error(), "The handle is not open.");
    EXPECT_THAT(Trace({""}), IsEmpty());
    EXPECT_EQ(vorlink_close(other), VORLINK_OK) << "another one's is not touched";
}

INSTANTIATE_TEST_SUITE_P(Each, ClosedHandle, testing::ValuesIn(callsByHandle), NameOf);

TEST(Sentences, AreTheThreadsOwnAndEmptyAfterASuccess)
{
    ASSERT_EQ(vorlink_close(nullptr), VORLINK_INVALID_ARGUMENT);
    std::string elsewhere = "?";
    std::thread([&] { elsewhere = vorlink_last_error(); }).join();
    EXPECT_EQ(elsewhere, "");
    EXPECT_STREQ(vorlink_last_error(), "The handle is null.");
    ASSERT_EQ(vorlink_version(nullptr, nullptr), VORLINK_OK);
    EXPECT_STREQ(vorlink_last_error(), "");
}

TEST(Sentences, EachCodeHasAMeaningOfItsOwn)
{
    EXPECT_STREQ(vorlink_error_text(VORLINK_OK), "");
    std::vector<std::string> meanings;
    for (std::int32_t code = VORLINK_INVALID_ARGUMENT; code <= VORLINK_STILL_RUNNING; ++code)
    {
        std::string const meaning = vorlink_error_text(code);
        EXPECT_THAT(meanings, testing::Not(testing::Contains(meaning)));
        EXPECT_TRUE(meaning.ends_with('.')) << meaning;
        meanings.push_back(meaning);
    }
    for (std::int32_t const code : {-1, VORLINK_STILL_RUNNING + 1, INT32_MAX, INT32_MIN})
    {
        EXPECT_THAT(vorlink_error_text(code), HasSubstr("none of Vorlink's codes"));
    }
}
