// A first host program: pairs one device by its name and prints the outcome.
#include <vorlink/Vorlink.h>

#include <cstdio>
#include <future>

static std::promise<PairReport> answer;

static void OnPaired(PairReport report) // perhaps on a thread of the platform
{
    answer.set_value(report);
}

int main()
{
    Vorlink* const vorlink = getVorlinkPtr().release(); // kept to the end: the library may still be at work
    vorlink->Initialize();
    vorlink->PairedDevice("Kitchen Speaker", OnPaired);
    PairReport const report = answer.get_future().get();
    std::printf("%s: %s\n", report.name, report.paired ? "paired" : "not paired");
}
