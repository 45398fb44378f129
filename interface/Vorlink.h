// Vorlink: finds, pairs and unpairs Bluetooth devices for a host application on Windows x86-64.
//
// The rules of the boundary:
//
// 1. Toolchain. Library and host are built with the same compiler and standard library, in the same
//    version and mode: std::string and std::unique_ptr cross the boundary by value. Others go by vorlink_c.h.
// 2. Ownership. The host owns the object behind getVorlinkPtr. Releasing it frees its storage and runs no
//    code of the library: nothing is stopped, nothing is waited for. Callbacks are plain functions that the
//    host keeps callable until their last call; none is tested for null.
// 3. State. All that outlives a call is the library's, not the object's: the log switch, the callbacks, the
//    name being paired, the data store, the watchers. Objects made by several calls share it. An object may be
//    released while a pairing is pending, not while an unpairing is. The library is best left loaded to the end of
//    the process: a watcher that was started runs on, and an event on its way, a callback that unloads it when it
//    returns, or an operation still pending, would meet code that is gone. The library's own threads do not: each keeps
//    it loaded until it has ended, for some seconds after a pairing or an unpairing and for 25 seconds after a
//    StartIosWatcher, whatever the host unloads.
// 4. One at a time. A pairing or an unpairing lasts until its callback has come, and a host begins no other before;
//    after an error on the LE side of an unpairing no callback comes, and the host decides how long it waits.
//    Operations that overlap keep the memory sound and mix their outcomes: a pairing reports the latest call's name to
//    the latest call's callback; searches take each other's devices, and one may not return; and 3 seconds after its
//    begin an unpairing, and its LE side again, ends whatever search runs then, a later PairedDevice's too.
// 5. Threads. An operation runs on the caller's thread. A callback comes on the thread that its type says, or inside
//    the call, on the caller's own, before the operation has returned. It must not throw, and a slow one delays the
//    library's next step. Inside it any operation may be called, which answers as it does outside: no lock is held.
// 6. COM. The caller's thread need not have initialised COM: the library then joins the process's
//    multithreaded apartment. A single-threaded apartment must pump messages, or a pairing begun there
//    does not end; the report then comes on that thread. An unpairing needs no pumping.
// 7. Blocking. PairedDevice blocks until the platform has reported a matching device or ended its
//    enumeration, which takes up to 30 seconds on Windows and has no limit of the library's own.
// 8. Errors. There are no error codes. A failing platform call in an operation, on the caller's thread,
//    throws the platform's error (winrt::hresult_error, or std::bad_alloc for E_OUTOFMEMORY); a failure to start a
//    thread throws std::system_error. A host that does not know the first type catches with `catch (...)`; one built
//    with Visual Studio catches getVorlinkPtr's std::bad_alloc under /EHs alone, for /EHsc takes it that a function
//    of C linkage never throws. An error in UnpairedCurrent, in a pairing from its beginning, in the phone watcher's
//    events, or behind an operation that has already returned, ends the process through the platform's fail-fast; one
//    in the phone watcher's end after 25 seconds through std::terminate.
// 9. Files. The log ("log.log"), the data store ("MyLEData") and, for a moment, a listing ("ble.jpg") and the data
//    store's next state ("MyLEData", the process's number and "new", with dots between) live in the process's current
//    directory. Standard output gets the store's entries and the listing's lines.
// 10. Which device. A name is looked up among the devices that the platform reports, and those that an earlier search
//    has left come first: one that is gone meanwhile, or after an unpairing's LE side a Bluetooth LE endpoint, can be
//    the match. Both names are compared in the process's OEM code page, where Windows puts the best fit for a
//    character that the page lacks: look-alikes can be equal. An empty name matches a device without a name. A host
//    that must be sure compares the report's `address`.
// 11. What is learnt. Some 4 seconds after a successful pairing the library reads the system's listing of devices and
//    keeps, under the name that was paired, the last Bluetooth LE device in it that it does not know yet. That may be
//    another device's, and an unpairing by that name then ends that one's bond. The name is the one that the library
//    holds when the callback has returned: a pairing begun inside the callback makes it the newer one. What the
//    system has not listed within 0.8 seconds is not seen. What is saved is the store in memory: without
//    an Initialize before the pairing, or with an Uninitialize before the lookup, the file loses its earlier entries.
//    A name with "=" or a line feed comes back from the file as other entries; a host does better not to pair one.
#ifndef VORLINK_H
#define VORLINK_H

#include <cstddef>
#include <cstdint>
#include <memory>
#include <new>
#include <string>
#include <type_traits>

// The outcome of a pairing, handed to the host by value. Texts are UTF-8 and zero-filled to the end of their
// field. A device name of 128 bytes or more runs on into `addressText`, up to the end of that field.
struct PairReport
{
    std::uint64_t address; // the device's Bluetooth address; 0 when no device was found
    std::uint8_t paired;   // 1 when the platform reported Paired, otherwise 0
    char name[128];        // the name that the host asked for, of the latest call when several are pending; not the
                           // device's own, which may only contain it
    char addressText[256]; // the address in hexadecimal, without separators; empty when paired or not found
};

static_assert(sizeof(PairReport) == 400 && alignof(PairReport) == 8);
static_assert(offsetof(PairReport, address) == 0);
static_assert(offsetof(PairReport, paired) == 8);
static_assert(offsetof(PairReport, name) == 9);
static_assert(offsetof(PairReport, addressText) == 137);

// Called once for each pairing that the platform answered by a status it documents, "operation already in
// progress" excepted. On the thread that completed the pairing (see rule 6), or on the caller's thread before
// the operation returns when nothing was found or the platform answered at once.
using PairResultCallback = void (*)(PairReport report);

// Called once with the success of an unpairing, and with 0, unless nothing was found or the LE side met an error. An LE
// endpoint that the data store does not know or that is not there counts as a success. On the thread that completed
// the unpairing, on one of the library's, or on the caller's before the operation returns.
using UnpairResultCallback = void (*)(bool success, int reserved);

// Called on a thread of the platform, perhaps on several at a time, with a device's name in zero-terminated UTF-16,
// which is valid during the call alone, and its length in UTF-16 code units: a character outside the basic plane counts
// as two. The device can be paired by IosPairedDevicce a moment after the callback has returned, not yet inside it.
using IosDeviceCallback = void (*)(wchar_t const* name, std::uint32_t length);

// The operations, in the order of their slots, which is the binary contract. No virtual destructor and no
// data: see rule 2. Names are UTF-8.
struct Vorlink
{
    // Loads the data store. True when the user's interface language is one that the library knows.
    virtual bool Initialize() = 0;

    // Empties the data store and the list of phones, in memory alone. Always true. Throws the platform's error.
    virtual bool Uninitialize() = 0;

    // Switches the log, which is off until then. Records already written stay.
    virtual void SetLogEnabled(bool enabled) = 0;

    // Finds a Bluetooth Classic device by name and pairs it, answering the platform's request itself. A name
    // under 14 bytes must be equal, a longer one contained in the device's; see rule 10. Reports through `callback`.
    virtual void PairedDevice(std::string name, PairResultCallback callback) = 0;

    // Unpairs a device's Bluetooth Classic endpoint by name, as PairedDevice finds it but among all endpoints, and
    // then its LE endpoint when the data store knows it. Returns within 3 seconds and a little; keep the object
    // until `callback` has come. A name that no Classic endpoint has is not reported, and neither is an error of the
    // platform on the LE side, which is logged alone.
    virtual void UnpairedCurrent(std::string name, UnpairResultCallback callback) = 0;

    // Watches for phones and other Bluetooth Classic devices. Keeps every one that the platform reports, paired or
    // not, and calls `callback` with the name of each that is not paired, can pair and has a name when the platform
    // reports it as added; a name that comes later is kept without a call. Ends when the platform has enumerated its
    // devices, or 25 seconds after the start of this watcher or of an earlier one. No callback tells of the end.
    // True when a watcher was started. While one runs: stops it and returns false, from then on calling the new
    // `callback` for what is still on its way. What was kept stays for IosPairedDevicce until the next start or
    // Uninitialize. Of several ends at the very same moment one does the work, and a call meanwhile returns false; an
    // end that meets a start is done when the watcher has started. Throws the platform's error. A watcher that could
    // not be started counts as running: the next call stops it, which Windows refuses for one that never ran
    // (E_ILLEGAL_METHOD_CALL), and so do all further ones. Should an earlier start's 25 seconds still run, their end
    // meets the same error and ends the process.
    virtual bool StartIosWatcher(IosDeviceCallback callback) = 0;

    // Pairs a device that StartIosWatcher's watcher has kept, still running or not: the first whose name in UTF-8
    // equals `name` byte by byte. Returns once the pairing has begun, and reports as PairedDevice does; before it
    // returns when no device has that name. An error of the search is thrown: E_BOUNDS when a device was removed
    // meanwhile, which a second call gets over.
    virtual void IosPairedDevicce(std::string name, PairResultCallback callback) = 0;
};

// Releases an object as rule 2 has it: the storage alone, without a destructor. The standard library's own deleter
// does the same by deleting through an abstract class, of which compilers warn from inside <memory>, out of a host's
// reach. It has to be known before the first std::unique_ptr<Vorlink>: include this header, do not declare Vorlink.
template <>
struct std::default_delete<Vorlink>
{
    constexpr default_delete() noexcept = default;

    template <typename Derived, std::enable_if_t<std::is_convertible_v<Derived*, Vorlink*>, int> = 0>
    default_delete(std::default_delete<Derived> const&) noexcept
    {
    }

    void operator()(Vorlink* object) const noexcept
    {
        ::operator delete(object);
    }
};

static_assert(sizeof(std::unique_ptr<Vorlink>) == sizeof(void*));

#ifndef _WIN32
#define VORLINK_API
#elif defined(VORLINK_BUILD)
#define VORLINK_API __declspec(dllexport)
#else
#define VORLINK_API __declspec(dllimport)
#endif

// C linkage is for the plain name alone: both sides are C++.
#if defined(_MSC_VER)
#pragma warning(push)
#pragma warning(disable : 4190)
#elif defined(__clang__)
#pragma clang diagnostic push
#pragma clang diagnostic ignored "-Wreturn-type-c-linkage"
#endif

// The library's one export. Makes a new, independent object at each call, without any other effect.
// Throws std::bad_alloc.
extern "C" VORLINK_API std::unique_ptr<Vorlink> getVorlinkPtr();

#if defined(_MSC_VER)
#pragma warning(pop)
#elif defined(__clang__)
#pragma clang diagnostic pop
#endif

#endif
