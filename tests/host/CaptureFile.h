#pragma once

#include <windows.h>

#include <string>

// Takes what a child writes: a file, not a pipe, so that nobody has to read while the child runs.
class CaptureFile
{
public:
    explicit CaptureFile(wchar_t const* fileName);

    HANDLE Handle() const
    {
        return handle;
    }

    std::string CloseAndRead();

private:
    wchar_t const* name;
    HANDLE handle;
};
