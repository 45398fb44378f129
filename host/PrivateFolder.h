#pragma once

#include <filesystem>

namespace host
{
    // A temporary folder, which is the process's current one for as long as this lives. It also removes those that
    // killed processes have left.
    class PrivateFolder
    {
    public:
        PrivateFolder();
        ~PrivateFolder();
        PrivateFolder(PrivateFolder const&) = delete;
        PrivateFolder& operator=(PrivateFolder const&) = delete;

        std::filesystem::path const& Path() const
        {
            return m_folder;
        }

    private:
        std::filesystem::path const m_folder;
    };
} // namespace host
