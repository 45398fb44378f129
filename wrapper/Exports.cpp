// The functions of vorlink_c.h.
#include "wrapper/Failure.h"
#include "wrapper/Handles.h"
#include "wrapper/Library.h"
#include "wrapper/Pairings.h"
#include "wrapper/Phones.h"
#include "wrapper/Text.h"

using namespace wrapper;

namespace
{
    void RequireName(char const* name)
    {
        RequireNotNull(name, "The name");
        if (!IsUtf8(name))
        {
            throw Failure{VORLINK_INVALID_ARGUMENT, "The name is not UTF-8."};
        }
    }

    Vorlink& LibraryOf(vorlink_t const* vorlink)
    {
        RequireOpen(vorlink);
        return Library();
    }

    using PairOperation = void (Vorlink::*)(std::string, PairResultCallback);

    std::int32_t PairBy(PairOperation operation, vorlink_t const* vorlink, char const* name,
                        vorlink_pair_callback callback, void* context)
    {
        return Answer([=] {
            auto& library = LibraryOf(vorlink);
            RequireName(name);
            RequireNotNull(callback, "The callback");
            Call call({vorlink, name, callback, nullptr, context});
            (library.*operation)(name, OnPaired);
            call.Succeed();
            return VORLINK_OK;
        });
    }
} // namespace

std::int32_t vorlink_open(vorlink_t** vorlink)
{
    return Answer([=] {
        RequireNotNull(vorlink, "The place for the handle");
        *vorlink = nullptr;
        Library();
        *vorlink = OpenHandle();
        return VORLINK_OK;
    });
}

std::int32_t vorlink_close(vorlink_t* vorlink)
{
    return Answer([=] { return CloseHandleAndForget(vorlink) ? VORLINK_STILL_RUNNING : VORLINK_OK; });
}

std::int32_t vorlink_forget(vorlink_t* vorlink, std::int32_t operation)
{
    return Answer([=] { return Forget(vorlink, operation) ? VORLINK_STILL_RUNNING : VORLINK_OK; });
}

std::int32_t vorlink_initialize(vorlink_t* vorlink, std::int32_t* language_known)
{
    return Answer([=] {
        bool const isKnown = LibraryOf(vorlink).Initialize();
        if (language_known)
        {
            *language_known = isKnown ? 1 : 0;
        }
        return VORLINK_OK;
    });
}

std::int32_t vorlink_uninitialize(vorlink_t* vorlink)
{
    return Answer([=] {
        LibraryOf(vorlink).Uninitialize();
        return VORLINK_OK;
    });
}

std::int32_t vorlink_set_log_enabled(vorlink_t* vorlink, std::int32_t enabled)
{
    return Answer([=] {
        LibraryOf(vorlink).SetLogEnabled(enabled != 0);
        return VORLINK_OK;
    });
}

std::int32_t vorlink_pair(vorlink_t* vorlink, char const* name, vorlink_pair_callback callback, void* context)
{
    return PairBy(&Vorlink::PairedDevice, vorlink, name, callback, context);
}

std::int32_t vorlink_unpair(vorlink_t* vorlink, char const* name, vorlink_unpair_callback callback, void* context)
{
    return Answer([=] {
        auto& library = LibraryOf(vorlink);
        RequireName(name);
        RequireNotNull(callback, "The callback");
        Call call({vorlink, name, nullptr, callback, context});
        library.UnpairedCurrent(name, call.UnpairCallback());
        call.Succeed();
        return VORLINK_OK;
    });
}

std::int32_t vorlink_start_phone_watcher(vorlink_t* vorlink, vorlink_phone_callback callback, void* context,
                                         std::int32_t* started)
{
    return Answer([=] {
        auto& library = LibraryOf(vorlink);
        RequireNotNull(callback, "The callback");
        RequireNotNull(started, "The place for the answer");
        *started = 0;
        ListenForPhones(vorlink, callback, context);
        *started = library.StartIosWatcher(OnPhone) ? 1 : 0;
        return VORLINK_OK;
    });
}

std::int32_t vorlink_pair_phone(vorlink_t* vorlink, char const* name, vorlink_pair_callback callback, void* context)
{
    return PairBy(&Vorlink::IosPairedDevicce, vorlink, name, callback, context);
}

char const* vorlink_last_error()
{
    return TheLastError().sentence;
}

std::int32_t vorlink_last_hresult()
{
    return TheLastError().hresult;
}

char const* vorlink_error_text(std::int32_t code)
{
    return CodeText(code);
}

std::int32_t vorlink_version(vorlink_version_number* wrapper, vorlink_version_number* library)
{
    return Answer([=] {
        if (wrapper)
        {
            *wrapper = WrapperVersion();
        }
        if (library)
        {
            *library = LibraryVersion();
        }
        return VORLINK_OK;
    });
}
