#include "pairing/DetachedThread.h"

namespace vorlink
{
    ModuleReference ReferToThisModule() noexcept
    {
        HMODULE module = nullptr;
        GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS, reinterpret_cast<LPCWSTR>(&ReferToThisModule),
                           &module);
        return ModuleReference(module);
    }
} // namespace vorlink
