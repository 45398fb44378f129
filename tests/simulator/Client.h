// A client at the binary interface itself, so that nothing stands between a test and the simulated platform.
#pragma once

#include "platform/abi/Enumeration.h"
#include "simulator/VorlinkSimulator.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <cstdint>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace client
{
    using namespace platform;

    constexpr HRESULT Code(unsigned long value)
    {
        return static_cast<HRESULT>(value);
    }

    inline constexpr HRESULT illegalMethodCall = Code(0x8000000EUL);
    inline constexpr HRESULT outOfBounds = Code(0x8000000BUL);
    inline constexpr HRESULT illegalStateChange = Code(0x8000000DUL);
    inline constexpr HRESULT illegalDelegateAssignment = Code(0x80000018UL);
    inline constexpr HRESULT elementNotFound = Code(0x8002802BUL);
    inline constexpr HRESULT typeMismatch = Code(0x80028CA0UL);
    inline constexpr HRESULT disconnected = Code(0x80010108UL);
    inline constexpr HRESULT notInitialized = Code(0x800401F0UL);

    inline constexpr std::uint32_t patience = 10000; // milliseconds; passed only by a hang

    template <typename T>
    class Com
    {
    public:
        Com() = default;

        explicit Com(T* shared)
            : object_(shared)
        {
            if (object_)
            {
                object_->AddRef();
            }
        }

        Com(Com const& other)
            : Com(other.object_)
        {
        }

        Com(Com&& other) noexcept
            : object_(std::exchange(other.object_, nullptr))
        {
        }

        Com& operator=(Com other) noexcept
        {
            std::swap(object_, other.object_);
            return *this;
        }

        ~Com()
        {
            Reset();
        }

        void Reset()
        {
            if (auto* const old = std::exchange(object_, nullptr))
            {
                old->Release();
            }
        }

        T** Put()
        {
            Reset();
            return &object_;
        }

        T* Get() const
        {
            return object_;
        }

        T* operator->() const
        {
            return object_;
        }

        explicit operator bool() const
        {
            return object_ != nullptr;
        }

        template <typename U>
        Com<U> As() const
        {
            Com<U> other;
            void* found = nullptr;
            EXPECT_HRESULT_SUCCEEDED(object_->QueryInterface(iid_of<U>, &found));
            *other.Put() = static_cast<U*>(found);
            return other;
        }

        template <typename U>
        bool Answers() const
        {
            return Answers(iid_of<U>);
        }

        bool Answers(GUID const& id) const
        {
            void* found = nullptr;
            if (FAILED(object_->QueryInterface(id, &found)))
            {
                return false;
            }
            static_cast<::IUnknown*>(found)->Release();
            return true;
        }

    private:
        T* object_ = nullptr;
    };

    // A text for the boundary.
    class String
    {
    public:
        String() = default;
        explicit String(std::string const& utf8);
        String(String const&) = delete;
        String& operator=(String const&) = delete;
        ~String();

        HSTRING Get() const
        {
            return text_;
        }

        HSTRING* Put()
        {
            return &text_;
        }

        std::string Utf8() const;

    private:
        HSTRING text_ = nullptr;
    };

    // Any delegate: AddedHandler, PairingCompletedHandler, ...
    template <typename Delegate>
    class Handler;

    template <typename Delegate, typename... Arguments>
    class HandlerBase : public Delegate
    {
    public:
        using Function = std::function<HRESULT(Arguments...)>;

        explicit HandlerBase(Function function)
            : function_(std::move(function))
        {
        }

        HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override
        {
            if (id != iid_of<::IUnknown> && id != iid_of<Delegate> && id != iid_of<platform::IAgileObject>)
            {
                *object = nullptr;
                return E_NOINTERFACE;
            }
            *object = this;
            AddRef();
            return S_OK;
        }

        ULONG STDMETHODCALLTYPE AddRef() override
        {
            return ++references_;
        }

        ULONG STDMETHODCALLTYPE Release() override
        {
            ULONG const left = --references_;
            if (left == 0)
            {
                delete this;
            }
            return left;
        }

        HRESULT STDMETHODCALLTYPE Invoke(Arguments... arguments) override
        {
            return function_(arguments...);
        }

    protected:
        virtual ~HandlerBase() = default;

    private:
        std::atomic<ULONG> references_{1};
        Function function_;
    };

    template <typename Sender, typename Args>
    class Handler<TypedEventHandler<Sender, Args>> final
        : public HandlerBase<TypedEventHandler<Sender, Args>, Sender, Args>
    {
        using HandlerBase<TypedEventHandler<Sender, Args>, Sender, Args>::HandlerBase;
    };

    template <typename T>
    class Handler<AsyncOperationCompletedHandler<T>> final
        : public HandlerBase<AsyncOperationCompletedHandler<T>, IAsyncOperation<T>*, AsyncStatus>
    {
        using HandlerBase<AsyncOperationCompletedHandler<T>, IAsyncOperation<T>*, AsyncStatus>::HandlerBase;
    };

    template <typename Delegate, typename Function>
    Com<Delegate> On(Function function)
    {
        Com<Delegate> handler;
        *handler.Put() = new Handler<Delegate>(std::move(function));
        return handler;
    }

    inline constexpr auto speaker = "Bluetooth#Bluetooth00:1a:7d:da:71:13-a4:c1:38:5e:22:0f";
    inline constexpr auto mouse = "BluetoothLE#BluetoothLE00:1a:7d:da:71:13-e8:47:3a:15:b0:c2";
    inline constexpr auto lamp = "BluetoothLE#BluetoothLE00:1a:7d:da:71:13-cc:50:e3:18:f6:9d";

    // A speaker that can be paired, a mouse that is, a lamp that is held back.
    std::string Room(std::string const& speakerDetails = {}, std::string const& mouseDetails = {},
                     std::string const& top = "enumeration-completes-ms = 0");

    // A test in an apartment, with Room() around it.
    class SimulatorTest : public testing::Test
    {
    protected:
        void SetUp() override;
        static void Play(std::string const& scenario);
        static void WaitIdle();
    };

    Com<IDeviceInformationStatics> Statics();
    Com<IDeviceInformationStatics2> Statics2();
    Com<IDeviceWatcher> MakeWatcher(std::string const& filter = {}, std::vector<std::string> properties = {});
    HRESULT TryMakeWatcher(std::string const& filter, std::vector<std::string> properties, Com<IDeviceWatcher>& watcher,
                           DeviceInformationKind kind = DeviceInformationKind::AssociationEndpoint);
    DeviceWatcherStatus StatusOf(Com<IDeviceWatcher> const& watcher);

    // The device with an identifier, as a fresh watcher reports it.
    Com<IDeviceInformation> FindDevice(std::string const& id, std::vector<std::string> properties = {});
    Com<IDeviceInformationPairing> PairingOf(Com<IDeviceInformation> const& device);
    Com<IDeviceInformationCustomPairing> CustomOf(Com<IDeviceInformation> const& device);
    bool IsPaired(Com<IDeviceInformation> const& device);
    std::string NameOf(Com<IDeviceInformation> const& device);

    template <typename T>
    std::string IdOf(T* object)
    {
        String id;
        EXPECT_HRESULT_SUCCEEDED(object->get_Id(id.Put()));
        return id.Utf8();
    }

    template <typename T>
    std::vector<std::string> KeysOf(T* object);

    template <typename T>
    AsyncStatus StatusOf(Com<IAsyncOperation<T>> const& operation)
    {
        AsyncStatus status{};
        EXPECT_HRESULT_SUCCEEDED(operation.template As<IAsyncInfo>()->get_Status(&status));
        return status;
    }

    std::string ClassNameOf(::IInspectable* object);
    std::string Trace();
    std::vector<std::string> TraceLines(std::string const& containing);

    // A trace line without the thread that it begins with.
    std::string WithoutThread(std::string const& line);
} // namespace client
