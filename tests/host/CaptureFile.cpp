#include "tests/host/CaptureFile.h"

#include <filesystem>
#include <fstream>
#include <iterator>

CaptureFile::CaptureFile(wchar_t const* fileName)
    : name{fileName}
{
    SECURITY_ATTRIBUTES inheritable{sizeof inheritable, nullptr, TRUE};
    handle =
        CreateFileW(name, GENERIC_WRITE, FILE_SHARE_READ, &inheritable, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
}

std::string CaptureFile::CloseAndRead()
{
    CloseHandle(handle);
    std::ifstream file{std::filesystem::path{name}, std::ios::binary};
    return {std::istreambuf_iterator<char>{file}, {}};
}
