#include "pairing/LibraryState.h"

#include <memory>

#if defined(VORLINK_OWN_RUNTIME) && defined(__GLIBCXX__)
#define VORLINK_FREES_RUNTIME
namespace __gnu_cxx
{
    void __freeres(); // the runtime's own, which no header of it declares
}
#endif

namespace vorlink
{
    namespace
    {
        union Storage {
            Storage()
                : state()
            {
            }
            ~Storage()
            {
                if (!keep)
                {
                    std::destroy_at(&state);
#ifdef VORLINK_FREES_RUNTIME
                    // Some 73 KB for exceptions when memory has run out, which each load would leave behind.
                    __gnu_cxx::__freeres();
#endif
                }
            }

            LibraryState state;
            static inline bool keep = false;
        };

        Storage storage;
    } // namespace

    LibraryState& Library() noexcept
    {
        return storage.state;
    }

    void KeepLibraryState() noexcept
    {
        Storage::keep = true;
    }
} // namespace vorlink
