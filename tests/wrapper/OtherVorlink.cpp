// A vorlink.dll by its export, which no host may call.
extern "C" __declspec(dllexport) void getVorlinkPtr()
{
    __builtin_trap();
}
