/* Vorlink for C and for whatever calls C: vorlink_c.dll finds, pairs and unpairs Bluetooth devices through the
   vorlink.dll beside it, with no C++ at its boundary. Any compiler's host can use it.

   The rules of the boundary:

   1. Errors. A function that returns an int32_t returns one of the codes below. Other than VORLINK_OK and
      VORLINK_STILL_RUNNING they mean that nothing was begun; vorlink_start_phone_watcher tells its own exception.
      vorlink_last_error() has a sentence for a person. No exception leaves a function, and a host's callback must let
      none out, nor jump out.
   2. Nulls. Null is refused with VORLINK_INVALID_ARGUMENT, except where a comment allows it. So is a handle that is
      not open, and a name that is not UTF-8.
   3. Ownership. What a function is handed is copied before it returns; what a callback is handed is valid until it
      returns; what a function returns is the wrapper's. Nobody frees anything of the other's. A context is the
      host's, handed back as it came; it may be null.
   4. Texts are UTF-8 and end with a zero.
   5. One at a time. A pairing or an unpairing lasts until its report has come, and another one is refused meanwhile
      with VORLINK_BUSY, in the whole process, whichever handle it goes by: the library mixes those that overlap.
      Some reports never come: of a pairing that the platform answers with "operation already in progress", of an
      unpairing of a name that nobody has, of one that fails on the LE side. A host decides how long it waits, and
      then gives up with vorlink_forget. Three seconds after its beginning an unpairing ends whatever search runs then,
      one begun after its report too, which may find nothing for it.
   6. Late reports. A report that comes after vorlink_forget or vorlink_close is dropped. But where a newer pairing
      has begun, the library hands the older one's report to the newer, and nobody can tell: compare the address. An
      unpairing's is told apart, until eight newer ones have begun.
   7. Threads. Any thread may call any function at any time, inside a callback too, but not from DllMain. A callback
      comes on a thread of the platform or of the library, or on the caller's own before the function has returned.
      No lock is held meanwhile. A slow one delays the library's next step.
   8. COM. A thread that has not initialised COM joins the process's multithreaded apartment. A pairing begun in a
      single-threaded apartment needs it to pump messages.
   9. Lifetime. Neither DLL is unloaded, and vorlink_close stops nothing of the library: its threads, its events and a
      report on its way need its code, and an unpairing its object, to the end of the process. One object serves all
      handles.
  10. What ends the process in the library ends it here: an error of the platform in vorlink_unpair, in a pairing from
      its beginning, or behind a function that has returned. Vorlink.h, which has the C++ interface, tells which, and
  more that holds here too: which device a name finds, what is learnt after a pairing, which files are kept in the
  current folder.
*/
#ifndef VORLINK_C_H
#define VORLINK_C_H

#include <stdint.h>

#ifdef VORLINK_C_STATIC /* the host links the wrapper itself; vorlink.dll then lies beside the program */
#define VORLINK_C_API
#else
#define VORLINK_C_API __declspec(dllimport)
#endif
#define VORLINK_C_CALL __cdecl

#ifdef __cplusplus
extern "C"
{
#endif

    enum
    {
        VORLINK_OK = 0,
        VORLINK_INVALID_ARGUMENT = 1,  /* see rule 2 */
        VORLINK_LIBRARY_NOT_FOUND = 2, /* no vorlink.dll beside vorlink_c.dll */
        VORLINK_LIBRARY_UNUSABLE = 3,  /* it does not load, is no Vorlink, or one of another major version */
        VORLINK_PLATFORM_FAILURE = 4,  /* vorlink_last_hresult() has the platform's code */
        VORLINK_OUT_OF_MEMORY = 5,     /* what was asked for was not done */
        VORLINK_BUSY = 6,              /* a pairing or an unpairing lasts: see rule 5 */
        VORLINK_NO_THREAD = 7,         /* the system gave the library no thread */
        VORLINK_UNKNOWN_FAILURE = 8,   /* of a kind that this version does not know */
        VORLINK_STILL_RUNNING = 9      /* done, but a callback or a search still runs: see vorlink_forget */
    };

    /* What vorlink_forget forgets. */
    enum
    {
        VORLINK_PAIRING = 1, /* the pairing or unpairing that lasts */
        VORLINK_PHONE_WATCHER = 2
    };

    typedef struct vorlink_t vorlink_t;

    /* The outcome of a pairing. A later version may add fields at the end: `struct_size` is the size in bytes that this
       version fills. */
    typedef struct vorlink_pair_report
    {
        uint32_t struct_size;
        int32_t paired;        /* 1 when the platform reported Paired, otherwise 0: also when it was paired before */
        uint64_t address;      /* the device's Bluetooth address; 0 when no device was found */
        char name[256];        /* the name that was asked for, cut between two characters when it is longer */
        char address_text[32]; /* the address in 12 hexadecimal digits or more; empty when no device was found */
    } vorlink_pair_report;

    typedef struct vorlink_version_number
    {
        uint32_t major;
        uint32_t minor;
        uint32_t patch;
        char text[20]; /* "1.0.0" */
    } vorlink_version_number;

    typedef void(VORLINK_C_CALL* vorlink_pair_callback)(void* context, vorlink_pair_report const* report);

    /* `unpaired` is 1 or 0. */
    typedef void(VORLINK_C_CALL* vorlink_unpair_callback)(void* context, int32_t unpaired);

    /* Perhaps on several threads at a time. */
    typedef void(VORLINK_C_CALL* vorlink_phone_callback)(void* context, char const* name);

    /* Loads vorlink.dll from the folder of vorlink_c.dll, and from nowhere else, and sets `*vorlink` to a handle, or
       to null on an error. Stands for getVorlinkPtr. */
    VORLINK_C_API int32_t VORLINK_C_CALL vorlink_open(vorlink_t** vorlink);

    /* Closes a handle, and forgets what was begun by it as vorlink_forget does. */
    VORLINK_C_API int32_t VORLINK_C_CALL vorlink_close(vorlink_t* vorlink);

    /* From now on calls back no more for what this handle has begun of this kind; another may then begin. Neither the
       pairing nor the watcher is stopped. Read rule 6 before beginning another pairing.

       VORLINK_STILL_RUNNING: done, but a callback of this kind runs at this very moment, perhaps the caller, or the
       search of vorlink_pair or vorlink_unpair does, which lasts until that function returns. The context has to stay
       until it has returned; after VORLINK_OK it can go. */
    VORLINK_C_API int32_t VORLINK_C_CALL vorlink_forget(vorlink_t* vorlink, int32_t operation);

    /* Loads the data store. `*language_known` becomes 1 when the user's interface language is one that the library
       knows, otherwise 0; `language_known` may be null. Stands for Initialize. */
    VORLINK_C_API int32_t VORLINK_C_CALL vorlink_initialize(vorlink_t* vorlink, int32_t* language_known);

    /* Empties the data store and the list of phones, in memory alone. Stands for Uninitialize. */
    VORLINK_C_API int32_t VORLINK_C_CALL vorlink_uninitialize(vorlink_t* vorlink);

    /* Switches the log on (not 0) or off (0), for the whole process. Stands for SetLogEnabled. */
    VORLINK_C_API int32_t VORLINK_C_CALL vorlink_set_log_enabled(vorlink_t* vorlink, int32_t enabled);

    /* Finds a device by its name and pairs it. Blocks for the search, which may take 30 seconds. When no device is
       found, reports before it returns. Stands for PairedDevice. */
    VORLINK_C_API int32_t VORLINK_C_CALL vorlink_pair(vorlink_t* vorlink, char const* name,
                                                      vorlink_pair_callback callback, void* context);

    /* Finds a device by its name and unpairs it. Blocks for the search, some 3 seconds at most. When no device is found
       no report comes. Stands for UnpairedCurrent. */
    VORLINK_C_API int32_t VORLINK_C_CALL vorlink_unpair(vorlink_t* vorlink, char const* name,
                                                        vorlink_unpair_callback callback, void* context);

    /* Watches for phones and other devices that can be paired, and tells their names. `*started` becomes 1; or 0 when a
       watcher ran already, which this call has stopped. It ends by itself after 25 seconds at the latest, and nothing
       tells that it has. The new callback takes the place of the one before, in the whole process, and is called for
       what is still on its way, after an error too, until vorlink_forget. A name for which there is no memory is not
       told. Stands for StartIosWatcher. */
    VORLINK_C_API int32_t VORLINK_C_CALL vorlink_start_phone_watcher(vorlink_t* vorlink,
                                                                     vorlink_phone_callback callback, void* context,
                                                                     int32_t* started);

    /* Pairs a device of exactly this name that the phone watcher has seen. Reports as vorlink_pair does. A moment after
       the watcher's callback for it has returned it can be found, inside it not yet. When a device leaves at the very
       moment, fails with E_BOUNDS (0x8000000B), which a second call gets over. Stands for IosPairedDevicce. */
    VORLINK_C_API int32_t VORLINK_C_CALL vorlink_pair_phone(vorlink_t* vorlink, char const* name,
                                                            vorlink_pair_callback callback, void* context);

    /* The sentence for the latest function of this thread that returned a code; empty after VORLINK_OK. Valid until the
       thread's next call of such a function. */
    VORLINK_C_API char const* VORLINK_C_CALL vorlink_last_error(void);

    /* The platform's code (HRESULT) with it; 0 when the platform was not the reason. */
    VORLINK_C_API int32_t VORLINK_C_CALL vorlink_last_hresult(void);

    /* What a code means in general, for good. Never null. */
    VORLINK_C_API char const* VORLINK_C_CALL vorlink_error_text(int32_t code);

    /* The versions of vorlink_c.dll and of vorlink.dll; of the latter 0, 0, 0 and "" before vorlink_open has loaded it.
       Either pointer may be null. */
    VORLINK_C_API int32_t VORLINK_C_CALL vorlink_version(vorlink_version_number* wrapper,
                                                         vorlink_version_number* library);

#ifdef __cplusplus
}
#endif

#endif
