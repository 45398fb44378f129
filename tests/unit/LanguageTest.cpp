// The texts of the user's interface language.
#include "pairing/Language.h"

#include <gtest/gtest.h>

#include <ostream>
#include <set>
#include <string>

namespace
{
    struct Row
    {
        std::uint16_t id;
        std::string_view country;
        std::string_view language;
        std::string_view locale;
    };

    void PrintTo(Row const& row, std::ostream* stream)
    {
        *stream << row.locale;
    }

    constexpr Row rows[] = {
        {0x0804, "CN", "zh", "zh_CN"}, {0x0409, "US", "en", "en_US"}, {0x0412, "KR", "ko", "ko_KR"},
        {0x0411, "JP", "ja", "ja_JP"}, {0x0421, "ID", "en", "en_ID"}, {0x0407, "DE", "de", "de_DE"},
        {0x040C, "FR", "fr", "fr_Fr"}, {0x0410, "IT", "it", "it_IT"}, {0x0416, "BR", "pt", "pt_BR"},
        {0x0C0A, "ES", "es", "es_Es"}, {0x0419, "RU", "ru", "ru_RU"}, {0x041F, "TR", "tr", "tr_TR"},
        {0x042A, "VI", "vi", "vi_VI"}, {0x041E, "TH", "en", "en_TH"}, {0x0809, "GB", "en", "en_US"},
    };

    using KnownLanguage = testing::TestWithParam<Row>;
} // namespace

TEST_P(KnownLanguage, HasItsOwnTexts)
{
    auto const& row = GetParam();
    auto const texts = vorlink::GetUiLanguage(row.id);
    EXPECT_TRUE(texts.known);
    EXPECT_EQ(texts.country, row.country);
    EXPECT_EQ(texts.language, row.language);
    EXPECT_EQ(texts.locale, row.locale);
}

INSTANTIATE_TEST_SUITE_P(All, KnownLanguage, testing::ValuesIn(rows), [](auto const& test) {
    return std::string(test.param.country) + "_" + std::to_string(test.param.id);
});

TEST(Language, AnyOtherHasTheDefaults)
{
    std::set<std::uint16_t> known;
    for (auto const& row : rows)
    {
        known.insert(row.id);
    }
    ASSERT_EQ(known.size(), 15u);
    for (unsigned id = 0; id <= 0xffff; ++id)
    {
        auto const texts = vorlink::GetUiLanguage(static_cast<std::uint16_t>(id));
        if (!known.contains(static_cast<std::uint16_t>(id)))
        {
            ASSERT_FALSE(texts.known) << id;
            ASSERT_EQ(texts.country, "US");
            ASSERT_EQ(texts.language, "en");
            ASSERT_EQ(texts.locale, "en_US");
        }
    }
}
