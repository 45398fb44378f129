/* A host in C: pairs one device by its name, unpairs it again, and prints both outcomes. */
#include <vorlink/vorlink_c.h>

#include <windows.h>
#include <stdio.h>

/* Static: a report that nobody waits for any more may still be on its way. */
static struct
{
    HANDLE arrived;
    vorlink_pair_report report;
    int32_t unpaired;
} outcome;

static void VORLINK_C_CALL on_paired(void* context, vorlink_pair_report const* report)
{
    (void)context;
    outcome.report = *report;
    SetEvent(outcome.arrived);
}

static void VORLINK_C_CALL on_unpaired(void* context, int32_t unpaired)
{
    (void)context;
    outcome.unpaired = unpaired;
    SetEvent(outcome.arrived);
}

/* Whether the operation has begun, and its report has come within a minute. */
static int is_reported(vorlink_t* vorlink, int32_t code)
{
    if (code != VORLINK_OK)
    {
        fprintf(stderr, "%s\n", vorlink_last_error());
        return 0;
    }
    if (WaitForSingleObject(outcome.arrived, 60000) != WAIT_OBJECT_0)
    {
        fprintf(stderr, "No answer within a minute\n");
        vorlink_forget(vorlink, VORLINK_PAIRING);
        return 0;
    }
    return 1;
}

int main(int argc, char** argv)
{
    char const* const name = argc > 1 ? argv[1] : "Kitchen Speaker";
    vorlink_t* vorlink;
    if (vorlink_open(&vorlink) != VORLINK_OK || vorlink_initialize(vorlink, NULL) != VORLINK_OK)
    {
        fprintf(stderr, "%s\n", vorlink_last_error());
        return 1;
    }
    outcome.arrived = CreateEventA(NULL, FALSE, FALSE, NULL);
    if (!is_reported(vorlink, vorlink_pair(vorlink, name, on_paired, NULL)))
    {
        return 1;
    }
    printf("%s: %s\n", outcome.report.name, outcome.report.paired ? "paired" : "not paired");
    if (outcome.report.address == 0)
    {
        return 1; /* nobody has the name, so an unpairing would not report */
    }
    if (!is_reported(vorlink, vorlink_unpair(vorlink, name, on_unpaired, NULL)))
    {
        return 1;
    }
    printf("%s: %s\n", name, outcome.unpaired ? "unpaired" : "not unpaired");
    vorlink_close(vorlink);
    return 0;
}
