// The pictures of a device, and the streams that they come in.
#include "tests/simulator/Client.h"

#include <cstddef>

using namespace test;

namespace
{
    constexpr auto closed = Code(0x80000013);

    class Bytes final : public platform::IBuffer, public platform::IBufferByteAccess
    {
    public:
        explicit Bytes(std::size_t capacity)
            : m_bytes(capacity, '\0')
        {
        }

        std::string Text() const
        {
            return m_bytes.substr(0, m_length);
        }

        HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override
        {
            *object = nullptr;
            if (id == iid_of<platform::IBuffer>)
            {
                *object = static_cast<platform::IBuffer*>(this);
            }
            else if (id == iid_of<platform::IBufferByteAccess>)
            {
                *object = static_cast<platform::IBufferByteAccess*>(this);
            }
            return *object ? S_OK : E_NOINTERFACE;
        }

        // Lives on the stack of its test.
        ULONG STDMETHODCALLTYPE AddRef() override
        {
            return 2;
        }

        ULONG STDMETHODCALLTYPE Release() override
        {
            return 1;
        }

        HRESULT STDMETHODCALLTYPE GetIids(ULONG*, IID**) override
        {
            return E_NOTIMPL;
        }

        HRESULT STDMETHODCALLTYPE GetRuntimeClassName(HSTRING*) override
        {
            return E_NOTIMPL;
        }

        HRESULT STDMETHODCALLTYPE GetTrustLevel(TrustLevel*) override
        {
            return E_NOTIMPL;
        }

        HRESULT STDMETHODCALLTYPE get_Capacity(UINT32* value) override
        {
            *value = static_cast<UINT32>(m_bytes.size());
            return S_OK;
        }

        HRESULT STDMETHODCALLTYPE get_Length(UINT32* value) override
        {
            *value = m_length;
            return S_OK;
        }

        HRESULT STDMETHODCALLTYPE put_Length(UINT32 value) override
        {
            m_length = value;
            return S_OK;
        }

        HRESULT STDMETHODCALLTYPE Buffer(BYTE** value) override
        {
            *value = reinterpret_cast<BYTE*>(m_bytes.data());
            return S_OK;
        }

    private:
        std::string m_bytes;
        UINT32 m_length = 0;
    };

    Com<DeviceThumbnail> Open(HRESULT (STDMETHODCALLTYPE IDeviceInformation::*get)(ThumbnailOperation**))
    {
        auto const device = FindDevice(speaker);
        Com<ThumbnailOperation> operation;
        EXPECT_EQ((device.Get()->*get)(operation.Put()), S_OK);
        EXPECT_TRUE(WaitIdle());
        EXPECT_EQ(ClassNameOf(operation.Get()),
                  "Windows.Foundation.IAsyncOperation`1<Windows.Devices.Enumeration.DeviceThumbnail>");
        Com<DeviceThumbnail> thumbnail;
        EXPECT_EQ(operation->GetResults(thumbnail.Put()), S_OK);
        return thumbnail;
    }

    Com<DeviceThumbnail> Icon()
    {
        return Open(&IDeviceInformation::GetThumbnailAsync);
    }

    template <typename Stream>
    std::string Read(Com<Stream> const& stream, UINT32 count)
    {
        Bytes bytes(count);
        Com<ReadOperation> operation;
        EXPECT_EQ(stream.template As<IInputStream>()->ReadAsync(&bytes, count, 0, operation.Put()), S_OK);
        platform::IBuffer* read = nullptr;
        EXPECT_EQ(operation->GetResults(&read), S_OK);
        EXPECT_EQ(read, &bytes);
        return bytes.Text();
    }

    UINT64 SizeOf(Com<DeviceThumbnail> const& thumbnail)
    {
        UINT64 size = 0;
        EXPECT_EQ(thumbnail.As<IRandomAccessStream>()->get_Size(&size), S_OK);
        return size;
    }

    UINT32 NumberAt(std::string const& bytes, std::size_t place)
    {
        UINT32 number = 0;
        for (std::size_t index = place; index < place + 4; ++index)
        {
            number = number << 8 | static_cast<unsigned char>(bytes.at(index));
        }
        return number;
    }

    UINT32 ChecksumOf(std::string const& bytes)
    {
        UINT32 sum = 0xFFFFFFFF;
        for (char const byte : bytes)
        {
            sum ^= static_cast<unsigned char>(byte);
            for (int bit = 0; bit < 8; ++bit)
            {
                sum = sum >> 1 ^ (sum & 1 ? 0xEDB88320 : 0);
            }
        }
        return ~sum;
    }

    // The names of its chunks, each of which is whole.
    std::string ChunksOf(std::string const& png)
    {
        EXPECT_EQ(png.substr(0, 8), "\x89PNG\r\n\x1A\n");
        std::string names;
        for (std::size_t place = 8; place < png.size();)
        {
            auto const size = NumberAt(png, place);
            auto const chunk = png.substr(place + 4, size + 4);
            EXPECT_EQ(NumberAt(png, place + 8 + size), ChecksumOf(chunk));
            names += chunk.substr(0, 4) + " ";
            place += size + 12;
        }
        return names;
    }

    using Thumbnail = SimulatorTest;
} // namespace

TEST_F(Thumbnail, IsAPicture)
{
    auto const icon = Icon();
    auto const glyph = Open(&IDeviceInformation::GetGlyphThumbnailAsync);
    auto const iconBytes = Read(icon, static_cast<UINT32>(SizeOf(icon)));
    auto const glyphBytes = Read(glyph, static_cast<UINT32>(SizeOf(glyph)));
    EXPECT_EQ(ChunksOf(iconBytes), "IHDR IDAT IEND ");
    EXPECT_EQ(ChunksOf(glyphBytes), "IHDR IDAT IEND ");
    EXPECT_NE(iconBytes, glyphBytes);
    String type;
    EXPECT_EQ(icon.As<IContentTypeProvider>()->get_ContentType(type.Put()), S_OK);
    EXPECT_EQ(type.Utf8(), "image/png");
}

TEST_F(Thumbnail, IsAnAgileObjectOfItsClass)
{
    auto const icon = Icon();
    EXPECT_EQ(ClassNameOf(icon.Get()), "Windows.Devices.Enumeration.DeviceThumbnail");
    EXPECT_TRUE(icon.Answers<platform::IAgileObject>());
    EXPECT_TRUE(icon.Answers<IOutputStream>());
    EXPECT_TRUE(icon.Answers<IClosable>());
    EXPECT_EQ(FindDevice(speaker)->GetThumbnailAsync(nullptr), E_POINTER);
    EXPECT_EQ(FindDevice(speaker)->GetGlyphThumbnailAsync(nullptr), E_POINTER);
}

TEST_F(Thumbnail, IsReadPieceByPiece)
{
    auto const icon = Icon();
    auto const stream = icon.As<IRandomAccessStream>();
    auto const size = static_cast<UINT32>(SizeOf(icon));
    auto const whole = Read(icon, size + 10);
    EXPECT_EQ(whole.size(), size);
    EXPECT_EQ(Read(icon, 5), ""); // nothing is left
    EXPECT_EQ(stream->Seek(1), S_OK);
    EXPECT_EQ(Read(icon, 3), "PNG");
    UINT64 position = 0;
    EXPECT_EQ(stream->get_Position(&position), S_OK);
    EXPECT_EQ(position, 4u);
    EXPECT_EQ(stream->Seek(size + 100), S_OK);
    EXPECT_EQ(Read(icon, 5), "");
}

TEST_F(Thumbnail, HasIndependentCopies)
{
    auto const stream = Icon().As<IRandomAccessStream>();
    EXPECT_EQ(stream->Seek(4), S_OK);
    Com<IRandomAccessStream> clone;
    ASSERT_EQ(stream->CloneStream(clone.Put()), S_OK);
    EXPECT_EQ(Read(clone, 4), "\x89PNG");
    Com<IInputStream> input;
    ASSERT_EQ(stream->GetInputStreamAt(1, input.Put()), S_OK);
    EXPECT_EQ(Read(input, 3), "PNG");
    UINT64 position = 0;
    EXPECT_EQ(stream->get_Position(&position), S_OK);
    EXPECT_EQ(position, 4u);
    EXPECT_EQ(stream->CloneStream(nullptr), E_POINTER);
    EXPECT_EQ(stream->GetInputStreamAt(0, nullptr), E_POINTER);
}

TEST_F(Thumbnail, IsNotWritten)
{
    auto const stream = Icon().As<IRandomAccessStream>();
    boolean flag = false;
    EXPECT_EQ(stream->get_CanRead(&flag), S_OK);
    EXPECT_TRUE(flag);
    EXPECT_EQ(stream->get_CanWrite(&flag), S_OK);
    EXPECT_FALSE(flag);
    EXPECT_EQ(stream->put_Size(1), E_ACCESSDENIED);
    Com<IOutputStream> output;
    EXPECT_EQ(stream->GetOutputStreamAt(0, output.Put()), E_ACCESSDENIED);
    Bytes bytes(1);
    Com<WriteOperation> write;
    EXPECT_EQ(stream.As<IOutputStream>()->WriteAsync(&bytes, write.Put()), E_ACCESSDENIED);
    Com<IAsyncOperation<boolean>> flush;
    EXPECT_EQ(stream.As<IOutputStream>()->FlushAsync(flush.Put()), E_ACCESSDENIED);
}

TEST_F(Thumbnail, RefusesBuffersThatAreTooSmall)
{
    auto const stream = Icon().As<IInputStream>();
    Bytes bytes(4);
    Com<ReadOperation> operation;
    EXPECT_EQ(stream->ReadAsync(&bytes, 5, 0, operation.Put()), E_INVALIDARG);
    EXPECT_EQ(stream->ReadAsync(nullptr, 5, 0, operation.Put()), E_POINTER);
    EXPECT_EQ(stream->ReadAsync(&bytes, 4, 0, nullptr), E_POINTER);
    EXPECT_FALSE(operation);
}

TEST_F(Thumbnail, IsReadAtOnce)
{
    Bytes bytes(4);
    Com<ReadOperation> operation;
    ASSERT_EQ(Icon().As<IInputStream>()->ReadAsync(&bytes, 4, 0, operation.Put()), S_OK);
    auto const info = operation.As<IAsyncInfo>();
    AsyncStatus status{};
    EXPECT_EQ(info->get_Status(&status), S_OK);
    EXPECT_EQ(status, AsyncStatus::Completed);
    int calls = 0;
    auto const handler = On<ReadCompletedHandler>([&](ReadOperation* sender, AsyncStatus last) {
        ++calls;
        EXPECT_EQ(sender, operation.Get());
        EXPECT_EQ(last, AsyncStatus::Completed);
        return S_OK;
    });
    EXPECT_EQ(operation->put_Completed(handler.Get()), S_OK);
    EXPECT_EQ(calls, 1);
    EXPECT_EQ(operation->put_Completed(handler.Get()), illegalDelegateAssignment);
    EXPECT_EQ(info->Close(), S_OK);
    EXPECT_EQ(info->get_Status(&status), illegalMethodCall);
}

TEST_F(Thumbnail, AnswersNothingOnceClosed)
{
    auto const icon = Icon();
    EXPECT_EQ(icon.As<IClosable>()->Close(), S_OK);
    EXPECT_EQ(icon.As<IClosable>()->Close(), S_OK);
    auto const stream = icon.As<IRandomAccessStream>();
    UINT64 number = 0;
    EXPECT_EQ(stream->get_Size(&number), closed);
    EXPECT_EQ(stream->Seek(0), closed);
    Bytes bytes(4);
    Com<ReadOperation> operation;
    EXPECT_EQ(stream.As<IInputStream>()->ReadAsync(&bytes, 4, 0, operation.Put()), closed);
}

TEST_F(Thumbnail, LeavesNothingBehind)
{
    Read(Icon(), 4);
    EXPECT_EQ(SimulatorLiveObjects(), 0u);
}
