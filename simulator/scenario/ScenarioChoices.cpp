#include "simulator/scenario/ScenarioChoices.h"

#include "simulator/scenario/ScenarioNames.h"

namespace simulator
{
    void ReadChoices(TableReader& reader, Choices& choices)
    {
        reader.ReadNumber("out-of-range-status", names::pairingStatuses, choices.outOfRangeStatus);
        reader.ReadNumber("wrong-pin-status", names::pairingStatuses, choices.wrongPinStatus);
        reader.Read("paired-can-pair", choices.pairedCanPair);
        reader.Read("paired-out-of-range", choices.pairedOutOfRange);
        reader.Read("sta-deferrals-hang", choices.staDeferralsHang);
        reader.Read("stopped-after-abort", choices.stoppedAfterAbort);
        reader.Read("late-events-to-all", choices.lateEventsToAll);
        reader.Read("silent-after-enumeration", choices.silentAfterEnumeration);
        reader.ReadNumber("event-delay-ms", 0, std::numeric_limits<std::int32_t>::max(), choices.eventDelayMs);
        reader.ReadName("early-close", names::earlyCloses, choices.earlyClose);
        reader.RejectOtherKeys();
    }
} // namespace simulator
