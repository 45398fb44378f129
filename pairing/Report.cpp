#include "pairing/Report.h"

#include <cstddef>

namespace vorlink
{
    namespace
    {
        constexpr std::size_t textEnd = offsetof(PairReport, addressText) + sizeof(PairReport::addressText);

        void CopyText(PairReport& report, std::size_t offset, std::string_view text)
        {
            text.copy(reinterpret_cast<char*>(&report) + offset, textEnd - offset);
        }
    } // namespace

    PairReport MakeReport(std::uint64_t address, bool paired, std::string_view name, std::string_view addressText)
    {
        PairReport report{};
        report.address = address;
        report.paired = paired ? 1 : 0;
        CopyText(report, offsetof(PairReport, name), name);
        CopyText(report, offsetof(PairReport, addressText), addressText);
        return report;
    }
} // namespace vorlink
