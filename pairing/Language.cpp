#include "pairing/Language.h"

#include <algorithm>
#include <iterator>

namespace vorlink
{
    namespace
    {
        struct LanguageRow
        {
            std::uint16_t id;
            char country[16];
            char language[32];
            char locale[32];
        };

        // The spellings are those that hosts know, "fr_Fr" and the British row's "en_US" included.
        constexpr LanguageRow LanguageTable[] = {
            {0x0804, "CN", "zh", "zh_CN"}, {0x0409, "US", "en", "en_US"}, {0x0412, "KR", "ko", "ko_KR"},
            {0x0411, "JP", "ja", "ja_JP"}, {0x0421, "ID", "en", "en_ID"}, {0x0407, "DE", "de", "de_DE"},
            {0x040C, "FR", "fr", "fr_Fr"}, {0x0410, "IT", "it", "it_IT"}, {0x0416, "BR", "pt", "pt_BR"},
            {0x0C0A, "ES", "es", "es_Es"}, {0x0419, "RU", "ru", "ru_RU"}, {0x041F, "TR", "tr", "tr_TR"},
            {0x042A, "VI", "vi", "vi_VI"}, {0x041E, "TH", "en", "en_TH"}, {0x0809, "GB", "en", "en_US"},
        };
    } // namespace

    UiLanguage GetUiLanguage(std::uint16_t languageId) noexcept
    {
        auto const row = std::find_if(std::begin(LanguageTable), std::end(LanguageTable),
                                      [languageId](LanguageRow const& each) { return each.id == languageId; });
        if (row == std::end(LanguageTable))
        {
            return {"US", "en", "en_US", false};
        }
        return {row->country, row->language, row->locale, true};
    }
} // namespace vorlink
