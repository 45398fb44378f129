// The wrapper as a part of the program, and its pieces.
#include "wrapper/Failure.h"
#include "wrapper/Text.h"

#include <gmock/gmock.h>

#include <windows.h>

#include <algorithm>
#include <new>
#include <stdexcept>
#include <string>
#include <system_error>

using namespace wrapper;
using testing::HasSubstr;

namespace
{
    template <typename Exception>
    std::int32_t CodeOfThrown(Exception const& exception)
    {
        return Answer([&]() -> std::int32_t { throw exception; });
    }

    std::string Cut(std::string const& text)
    {
        char field[5];
        std::fill(std::begin(field), std::end(field), '?');
        CopyText(field, text);
        EXPECT_EQ(field[4], '\0');
        return field;
    }
} // namespace

TEST(Answer, KnowsWhatTheLibraryThrows)
{
    EXPECT_EQ(CodeOfThrown(std::bad_alloc()), VORLINK_OUT_OF_MEMORY);
    EXPECT_EQ(CodeOfThrown(std::system_error(1, std::generic_category())), VORLINK_NO_THREAD);
    EXPECT_EQ(CodeOfThrown(Failure{VORLINK_BUSY, "Busy."}), VORLINK_BUSY);
    EXPECT_STREQ(TheLastError().sentence, "Busy.");
}

TEST(Answer, TellsWhatItDoesNotKnow)
{
    EXPECT_EQ(CodeOfThrown(std::runtime_error("odd")), VORLINK_UNKNOWN_FAILURE);
    EXPECT_THAT(TheLastError().sentence, HasSubstr("odd"));
    EXPECT_EQ(CodeOfThrown(7), VORLINK_UNKNOWN_FAILURE);
    EXPECT_STREQ(TheLastError().sentence, CodeText(VORLINK_UNKNOWN_FAILURE));
}

TEST(Answer, CutsASentenceThatIsTooLong)
{
    Answer([]() -> std::int32_t { throw Failure{VORLINK_LIBRARY_UNUSABLE, std::string(5000, 'x')}; });
    EXPECT_EQ(std::string(TheLastError().sentence), std::string(sizeof TheLastError().sentence - 1, 'x'));
}

TEST(CopyText, EndsWithAZeroAndBetweenCharacters)
{
    EXPECT_EQ(Cut(""), "");
    EXPECT_EQ(Cut("abcd"), "abcd");
    EXPECT_EQ(Cut("abcde"), "abcd");
    EXPECT_EQ(Cut("ab\u00EB"), "ab\u00EB");
    EXPECT_EQ(Cut("abc\u00EB"), "abc");
    EXPECT_EQ(Cut("\U0001F4F1"), "\U0001F4F1");
    EXPECT_EQ(Cut("a\U0001F4F1"), "a");
    EXPECT_EQ(Cut("\x80\x80\x80\x80\x80"), "") << "no UTF-8, but no harm";
}

TEST(IsUtf8, RefusesWhatIsNot)
{
    EXPECT_TRUE(IsUtf8(""));
    EXPECT_TRUE(IsUtf8("Zo\u00EB's \U0001F4F1"));
    for (auto const* const text : {"\x80", "Zo\xEB", "\xC0\xAF", "\xED\xA0\x80", "\xF4\x90\x80\x80", "\xE2\x82"})
    {
        EXPECT_FALSE(IsUtf8(text));
    }
}

TEST(StaticWrapper, LoadsTheLibraryBesideTheProgram)
{
    vorlink_t* vorlink = nullptr;
    ASSERT_EQ(vorlink_open(&vorlink), VORLINK_OK) << vorlink_last_error();
    EXPECT_FALSE(GetModuleHandleW(L"vorlink_c.dll"));
    EXPECT_TRUE(GetModuleHandleW(L"vorlink.dll"));
    EXPECT_EQ(vorlink_close(vorlink), VORLINK_OK);
}
