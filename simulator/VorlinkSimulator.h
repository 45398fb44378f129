// The verbs of the simulated platform, for tests and for hosts that rehearse their Bluetooth flows.
//
// vorlink_simulator.dll answers for classes of Windows.Devices.Enumeration, Bluetooth and Radios in a process whose
// manifest registers them there (docs/simulator_members.md). A program that links it may also steer it, with these
// rules:
//
// 1. One simulated neighbourhood a process. It begins as the scenario file that the environment variable
//    VORLINK_SCENARIO names, or as the built-in default scenario when the variable is unset or empty. While
//    that file is faulty or missing, which standard error tells, no watcher can be made (E_INVALIDARG).
//    VORLINK_SIMULATOR_STATE may name a file that keeps which endpoints are paired: read with that first
//    scenario, and each change is noted in it, also by several processes at once. A faulty one is told on standard
//    error, ignored and left as it is.
//    VORLINK_SIMULATOR_TRACE may name a file to which the trace is appended, in the form of SimulatorTraceJson(): a
//    call when it has returned, an event when it is on its way, each in one piece, also by several processes at once.
//    One that cannot be written is told on standard error, once, and ignored.
// 2. Texts are UTF-8 and zero-terminated. An endpoint is named by its platform identifier
//    ("Bluetooth#Bluetooth<adapter>-<device>" or "BluetoothLE#BluetoothLE<adapter>-<device>").
// 3. Verbs that can be wrong return 1 when they took effect and 0 when they did not;
//    SimulatorLastError() then says why, on the same thread. No exception leaves any of them.
// 4. Any thread may call any verb at any time. No verb calls a handler of the program on its own thread.
// 5. Events reach handlers on threads of the simulator; SimulatorWaitIdle() waits until none is under way.
#ifndef VORLINK_SIMULATOR_H
#define VORLINK_SIMULATOR_H

#include <stddef.h>
#include <stdint.h>

#ifdef VORLINK_SIMULATOR_BUILD
#define VORLINK_SIMULATOR_API __declspec(dllexport)
#else
#define VORLINK_SIMULATOR_API __declspec(dllimport)
#endif

#ifdef __cplusplus
extern "C"
{
#endif

    /* Why the latest verb of this thread returned 0; an empty text when it returned 1. Owned by the simulator,
       valid until the thread's next verb. */
    VORLINK_SIMULATOR_API char const* SimulatorLastError(void);

    /* Back to the start: live watchers are cut off (no further event of theirs is raised), pending operations
       end as Canceled, failures and holds are forgotten, the trace is empty, and the first scenario is loaded. */
    VORLINK_SIMULATOR_API void SimulatorReset(void);

    /* Replaces the neighbourhood by a scenario in TOML. Does what SimulatorReset does first. On a faulty text
       nothing changes, and SimulatorLastError() gives all of its faults, one a line. */
    VORLINK_SIMULATOR_API int SimulateScenario(char const* toml);

    /* The faults of a scenario in TOML, one a line, each after the source's name and its line ("kitchen.toml:22: ...",
       "scenario:22: ..." when the name is null); an empty text when there is none. Neither changes nor starts anything.
       Copies at most `size` bytes, terminator included, and returns the size that the whole text needs. */
    VORLINK_SIMULATOR_API size_t SimulatorCheckScenario(char const* toml, char const* sourceName, char* buffer,
                                                        size_t size);

    /* An endpoint of the scenario comes into range (one that the scenario holds back, or that has left).
       Every started watcher whose filter it matches raises Added, unless the radio is off. */
    VORLINK_SIMULATOR_API int SimulateDeviceAppears(char const* id);

    /* Sets one property of an endpoint, by its platform name, say "System.ItemNameDisplay". `value` is a TOML
       value: true, 12, "text"; an empty text unsets it. Watchers raise Updated (with the changed keys alone),
       or Removed or Added where the change makes the endpoint stop or begin to match. */
    VORLINK_SIMULATOR_API int SimulateDeviceChanges(char const* id, char const* property, char const* value);

    /* Every started watcher that has reported an endpoint raises Added for it once more, as if it were new. */
    VORLINK_SIMULATOR_API int SimulateDeviceRepeats(char const* id);

    /* An endpoint goes out of range: watchers that reported it raise Removed. */
    VORLINK_SIMULATOR_API int SimulateDeviceLeaves(char const* id);

    /* Every started watcher that has not completed its enumeration does so now. */
    VORLINK_SIMULATOR_API void SimulateEnumerationCompletes(void);

    /* Every started watcher is aborted, as when the system takes the radio away. */
    VORLINK_SIMULATOR_API void SimulateWatchersAbort(void);

    /* The user switches the PC's radio: 1 for on, 2 for off, 3 for disabled. What follows is the scenario's choice.
       Fails where there is no adapter. */
    VORLINK_SIMULATOR_API int SimulateRadioState(int32_t state);

    /* Completes the pending pairing (unpairing) of an endpoint with a status by its number, which may be one
       that the platform does not define. Fails when none is pending. */
    VORLINK_SIMULATOR_API int SimulatePairingCompletes(char const* id, int32_t status);
    VORLINK_SIMULATOR_API int SimulateUnpairingCompletes(char const* id, int32_t status);

    /* Ends the pending pairing (unpairing) operation of an endpoint in the Error state with a code. */
    VORLINK_SIMULATOR_API int SimulatePairingFails(char const* id, int32_t hresult);
    VORLINK_SIMULATOR_API int SimulateUnpairingFails(char const* id, int32_t hresult);

    /* The next call of a platform method, named as in the trace ("DeviceWatcher.Start"), returns `hresult`
       and does nothing else. Calls queue up: two failures set for one method fail its next two calls. */
    VORLINK_SIMULATOR_API int SimulateFailure(char const* method, int32_t hresult);

    /* The same, but `calls` calls of the method go through first, counted from the failure before it in the queue. */
    VORLINK_SIMULATOR_API int SimulateLaterFailure(char const* method, uint32_t calls, int32_t hresult);

    /* Between Hold and Release an event that is raised takes its snapshot of handlers and then waits, so a test
       can revoke a handler while its event is in flight. Waits and completions of operations are not held. */
    VORLINK_SIMULATOR_API void SimulatorHoldEvents(void);
    VORLINK_SIMULATOR_API void SimulatorReleaseEvents(void);

    /* Waits until every event raised so far has been delivered and every timer that is due has fired.
       Held events count as under way. Returns 0 when `milliseconds` pass first. */
    VORLINK_SIMULATOR_API int SimulatorWaitIdle(uint32_t milliseconds);

    /* Waits until the trace holds at least `count` lines that contain `text`. A call counts when it has returned,
       an event when it is on its way. Returns 0 when time runs out. */
    VORLINK_SIMULATOR_API int SimulatorWaitForTrace(char const* text, uint32_t count, uint32_t milliseconds);

    /* The trace: one line a platform call or raised event, in order, each ended by a line feed.

         <thread> <Class.Method>(<arguments>)[ -> <result>]      a call into the platform
         <thread> ! <Class.Event>(<arguments>)[ -> <HRESULT>]    an event handed to one handler

       <thread> is the decimal Windows thread identifier. A failed call's result is its HRESULT as 0x and eight
       digits; a call that gives nothing back has none. An event's line is written before its handler runs; the
       HRESULT of a handler that fails follows in a line of its own. Copies at most `size` bytes, terminator
       included, and returns the size that the whole text needs. */
    VORLINK_SIMULATOR_API size_t SimulatorTrace(char* buffer, size_t size);

    /* The same lines as JSON, an object each, copied in the same way:

         {"time":"2026-01-02 10:00:00 047","utc":"2026-01-02T09:00:00.047123Z","process":32,"number":7,"thread":36,
          "kind":"call","name":"DeviceWatcher.get_Status","object":"#1","arguments":"","result":"Created",
          "hresult":"0x00000000","us":12}

       "time" is local time as the library's log has it, "utc" the same moment, by the same clock. "number" counts the
       process's lines from 0 in the order in which they began. "kind" is "call" or "event". "object" is the first
       argument, null where that is a text in quotation marks or there is none; "arguments" is what follows it.
       "result" is null where there is none. "hresult" and "us", how many microseconds a call took, are null where a
       call has not returned; an event has an "hresult" in the line that tells of its handler's failure, and no "us".
       Bytes that are not UTF-8 read as U+FFFD. */
    VORLINK_SIMULATOR_API size_t SimulatorTraceJson(char* buffer, size_t size);

    VORLINK_SIMULATOR_API void SimulatorClearTrace(void);

    /* How many platform objects are alive (watchers, devices, operations, ...): a test's view of leaks. */
    VORLINK_SIMULATOR_API uint32_t SimulatorLiveObjects(void);

#ifdef __cplusplus
}
#endif

#endif
