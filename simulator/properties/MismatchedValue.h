// A property value that is of none of the platform's types: what is of one overrides its getter.
#pragma once

#include "platform/abi/Foundation.h"
#include "simulator/com/Codes.h"

namespace simulator
{
    struct MismatchedValue : platform::IPropertyValue
    {
        HRESULT STDMETHODCALLTYPE GetUInt8(UINT8*) override
        {
            return typeMismatch;
        }

        HRESULT STDMETHODCALLTYPE GetInt16(INT16*) override
        {
            return typeMismatch;
        }

        HRESULT STDMETHODCALLTYPE GetUInt16(UINT16*) override
        {
            return typeMismatch;
        }

        HRESULT STDMETHODCALLTYPE GetInt32(INT32*) override
        {
            return typeMismatch;
        }

        HRESULT STDMETHODCALLTYPE GetUInt32(UINT32*) override
        {
            return typeMismatch;
        }

        HRESULT STDMETHODCALLTYPE GetInt64(INT64*) override
        {
            return typeMismatch;
        }

        HRESULT STDMETHODCALLTYPE GetUInt64(UINT64*) override
        {
            return typeMismatch;
        }

        HRESULT STDMETHODCALLTYPE GetSingle(FLOAT*) override
        {
            return typeMismatch;
        }

        HRESULT STDMETHODCALLTYPE GetDouble(DOUBLE*) override
        {
            return typeMismatch;
        }

        HRESULT STDMETHODCALLTYPE GetChar16(WCHAR*) override
        {
            return typeMismatch;
        }

        HRESULT STDMETHODCALLTYPE GetBoolean(boolean*) override
        {
            return typeMismatch;
        }

        HRESULT STDMETHODCALLTYPE GetString(HSTRING*) override
        {
            return typeMismatch;
        }

        HRESULT STDMETHODCALLTYPE GetGuid(GUID*) override
        {
            return typeMismatch;
        }

        HRESULT STDMETHODCALLTYPE GetDateTime(platform::DateTime*) override
        {
            return typeMismatch;
        }

        HRESULT STDMETHODCALLTYPE GetTimeSpan(void*) override
        {
            return typeMismatch;
        }

        HRESULT STDMETHODCALLTYPE GetPoint(void*) override
        {
            return typeMismatch;
        }

        HRESULT STDMETHODCALLTYPE GetSize(void*) override
        {
            return typeMismatch;
        }

        HRESULT STDMETHODCALLTYPE GetRect(void*) override
        {
            return typeMismatch;
        }

        HRESULT STDMETHODCALLTYPE GetUInt8Array(UINT32*, UINT8**) override
        {
            return typeMismatch;
        }

        HRESULT STDMETHODCALLTYPE GetInt16Array(UINT32*, INT16**) override
        {
            return typeMismatch;
        }

        HRESULT STDMETHODCALLTYPE GetUInt16Array(UINT32*, UINT16**) override
        {
            return typeMismatch;
        }

        HRESULT STDMETHODCALLTYPE GetInt32Array(UINT32*, INT32**) override
        {
            return typeMismatch;
        }

        HRESULT STDMETHODCALLTYPE GetUInt32Array(UINT32*, UINT32**) override
        {
            return typeMismatch;
        }

        HRESULT STDMETHODCALLTYPE GetInt64Array(UINT32*, INT64**) override
        {
            return typeMismatch;
        }

        HRESULT STDMETHODCALLTYPE GetUInt64Array(UINT32*, UINT64**) override
        {
            return typeMismatch;
        }

        HRESULT STDMETHODCALLTYPE GetSingleArray(UINT32*, FLOAT**) override
        {
            return typeMismatch;
        }

        HRESULT STDMETHODCALLTYPE GetDoubleArray(UINT32*, DOUBLE**) override
        {
            return typeMismatch;
        }

        HRESULT STDMETHODCALLTYPE GetChar16Array(UINT32*, WCHAR**) override
        {
            return typeMismatch;
        }

        HRESULT STDMETHODCALLTYPE GetBooleanArray(UINT32*, boolean**) override
        {
            return typeMismatch;
        }

        HRESULT STDMETHODCALLTYPE GetStringArray(UINT32*, HSTRING**) override
        {
            return typeMismatch;
        }

        HRESULT STDMETHODCALLTYPE GetInspectableArray(UINT32*, ::IInspectable***) override
        {
            return typeMismatch;
        }

        HRESULT STDMETHODCALLTYPE GetGuidArray(UINT32*, GUID**) override
        {
            return typeMismatch;
        }

        HRESULT STDMETHODCALLTYPE GetDateTimeArray(UINT32*, void**) override
        {
            return typeMismatch;
        }

        HRESULT STDMETHODCALLTYPE GetTimeSpanArray(UINT32*, void**) override
        {
            return typeMismatch;
        }

        HRESULT STDMETHODCALLTYPE GetPointArray(UINT32*, void**) override
        {
            return typeMismatch;
        }

        HRESULT STDMETHODCALLTYPE GetSizeArray(UINT32*, void**) override
        {
            return typeMismatch;
        }

        HRESULT STDMETHODCALLTYPE GetRectArray(UINT32*, void**) override
        {
            return typeMismatch;
        }
    };
} // namespace simulator
