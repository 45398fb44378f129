// A host with an event loop, as one with windows has it. Its thread is a single-threaded apartment, and has to turn the
// loop all the time; PairedDevice would stop it for as long as the search takes. So a second thread begins the pairing,
// and whichever thread the report comes on posts it to the loop, which handles it on its own.
// Usage: event_loop [NAME]
#include <vorlink/Vorlink.h>

#include <windows.h>
#include <objbase.h>

#include <cstdio>
#include <string>
#include <thread>

static constexpr UINT pairingEnded = WM_APP;
static constexpr UINT pairingFailed = WM_APP + 1;
static HWND window;
static DWORD loopThread;
static PairReport outcome; // there when pairingEnded is: one pairing at a time needs no more

static void OnPaired(PairReport report)
{
    outcome = report;
    PostMessageW(window, pairingEnded, 0, 0);
}

static void Pair(Vorlink* vorlink, std::string const& name)
{
    try
    {
        vorlink->PairedDevice(name, OnPaired);
    }
    catch (...) // the platform's error: no report comes
    {
        PostMessageW(window, pairingFailed, 0, 0);
    }
}

static LRESULT CALLBACK Receive(HWND receiver, UINT message, WPARAM wide, LPARAM address)
{
    switch (message)
    {
    case pairingEnded:
        std::printf("%s: %s, on %s thread\n", outcome.name, outcome.paired ? "paired" : "not paired",
                    GetCurrentThreadId() == loopThread ? "the loop's" : "another");
        PostQuitMessage(outcome.paired ? 0 : 1);
        return 0;
    case WM_TIMER: // of some outcomes the library tells nobody
        std::puts("No answer within a minute.");
        PostQuitMessage(1);
        return 0;
    case pairingFailed:
        std::puts("The platform let no pairing begin.");
        PostQuitMessage(1);
        return 0;
    }
    return DefWindowProcW(receiver, message, wide, address);
}

int main(int argc, char** argv)
{
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    window = CreateWindowExW(0, L"STATIC", L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr);
    SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(Receive));
    SetTimer(window, 1, 60000, nullptr);
    loopThread = GetCurrentThreadId();

    Vorlink* const vorlink = getVorlinkPtr().release(); // kept to the end: the library may still be at work
    vorlink->Initialize();
    std::thread(Pair, vorlink, argc > 1 ? argv[1] : "Kitchen Speaker").detach();

    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0) > 0)
    {
        DispatchMessageW(&message);
    }
    return static_cast<int>(message.wParam);
}
