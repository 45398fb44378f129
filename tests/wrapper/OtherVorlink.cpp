// A vorlink.dll by its export, which no host may call.
#include <cstdlib>

extern "C" __declspec(dllexport) void getVorlinkPtr()
{
    std::abort();
}
