#pragma once

#include <filesystem>

namespace host
{
    // A temporary folder, which is the process's current one for as long as this lives.
    class PrivateFolder
    {
    public:
        PrivateFolder();
        ~PrivateFolder();
        PrivateFolder(PrivateFolder const&) = delete;
        PrivateFolder& operator=(PrivateFolder const&) = delete;

    private:
        std::filesystem::path const m_before;
        std::filesystem::path const m_folder;
    };
} // namespace host
