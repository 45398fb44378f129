#include "pairing/SubVorlink.h"

#include "pairing/LibraryState.h"

namespace vorlink
{
    void SubVorlink::SetLogEnabled(bool enabled)
    {
        Library().logEnabled = enabled;
    }
} // namespace vorlink
