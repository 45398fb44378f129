#include "pairing/Selector.h"

#include <string_view>

namespace vorlink
{
    namespace
    {
        // Passed to the platform exactly so; hosts' recordings of the platform's calls know their blanks.
        constexpr std::wstring_view classicAll =
            LR"((System.Devices.Aep.ProtocolId:= "{e0cbf06c-cd8b-4647-bb8a-263b43f0f974}") )";
        constexpr std::wstring_view classicPairable =
            LR"((System.Devices.Aep.ProtocolId:= "{e0cbf06c-cd8b-4647-bb8a-263b43f0f974}") )"
            LR"(AND(System.Devices.Aep.CanPair:= System.StructuredQueryType.Boolean#True )"
            LR"(OR System.Devices.Aep.IsPaired:=System.StructuredQueryType.Boolean#True))";
        constexpr std::wstring_view leAll =
            LR"((System.Devices.Aep.ProtocolId:="{bb7bb05e-5972-42b5-94fc-76eaa7084d49}") )";
        constexpr std::wstring_view lePairable =
            LR"((System.Devices.Aep.ProtocolId:="{bb7bb05e-5972-42b5-94fc-76eaa7084d49}") )"
            LR"(AND (System.Devices.Aep.CanPair:=System.StructuredQueryType.Boolean#True )"
            LR"(OR System.Devices.Aep.IsPaired:=System.StructuredQueryType.Boolean#True))";

        static_assert(classicAll.size() == 75 && classicPairable.size() == 220);
        static_assert(leAll.size() == 74 && lePairable.size() == 219);
    } // namespace

    wchar_t const* Selector(bool le, bool allEndpoints) noexcept
    {
        if (le)
        {
            return allEndpoints ? leAll.data() : lePairable.data();
        }
        return allEndpoints ? classicAll.data() : classicPairable.data();
    }
} // namespace vorlink
