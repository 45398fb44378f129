// A first host program: pairs one device by its name and prints the outcome.
#include <atomic>
#include <cstdio>

#include "interface/Vorlink.h"

static PairReport answer;
static std::atomic_flag answered;

static void OnPaired(PairReport report) // on a thread of the platform
{
    answer = report;
    answered.test_and_set();
    answered.notify_one();
}

int main()
{
    Vorlink* const vorlink = getVorlinkPtr().release(); // kept to the end: the library may still be at work
    vorlink->Initialize();
    vorlink->PairedDevice("Kitchen Speaker", OnPaired);
    answered.wait(false);
    std::printf("%s: %s\n", answer.name, answer.paired ? "paired" : "not paired");
}
