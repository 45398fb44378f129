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
            : m_object(shared)
        {
            if (m_object)
            {
                m_object->AddRef();
            }
        }

        Com(Com const& other)
            : Com(other.m_object)
        {
        }

        Com(Com&& other) noexcept
            : m_object(std::exchange(other.m_object, nullptr))
        {
        }

        Com& operator=(Com other) noexcept
        {
            std::swap(m_object, other.m_object);
            return *this;
        }

        ~Com()
        {
            Reset();
        }

        void Reset()
        {
            if (auto* const old = std::exchange(m_object, nullptr))
            {
                old->Release();
            }
        }

        T** Put()
        {
            Reset();
            return &m_object;
        }

        T* Get() const
        {
            return m_object;
        }

        T* operator->() const
        {
            return m_object;
        }

        explicit operator bool() const
        {
            return m_object != nullptr;
        }

        template <typename U>
        Com<U> As() const
        {
            Com<U> other;
            void* found = nullptr;
            EXPECT_HRESULT_SUCCEEDED(m_object->QueryInterface(iid_of<U>, &found));
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
            if (FAILED(m_object->QueryInterface(id, &found)))
            {
                return false;
            }
            static_cast<::IUnknown*>(found)->Release();
            return true;
        }

    private:
        T* m_object = nullptr;
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
            return m_text;
        }

        HSTRING* Put()
        {
            return &m_text;
        }

        std::string Utf8() const;

    private:
        HSTRING m_text = nullptr;
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
            : m_function(std::move(function))
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
            return ++m_references;
        }

        ULONG STDMETHODCALLTYPE Release() override
        {
            ULONG const left = --m_references;
            if (left == 0)
            {
                delete this;
            }
            return left;
        }

        HRESULT STDMETHODCALLTYPE Invoke(Arguments... arguments) override
        {
            return m_function(arguments...);
        }

    protected:
        virtual ~HandlerBase() = default;

    private:
        std::atomic<ULONG> m_references{1};
        Function m_function;
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
