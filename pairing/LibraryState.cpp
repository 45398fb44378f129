#include "pairing/LibraryState.h"

#include <memory>

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
