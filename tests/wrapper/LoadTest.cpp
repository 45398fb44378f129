// Where vorlink.dll comes from, what is said of one that cannot be used, and the versions.
#include "tests/wrapper/CHost.h"

#include <gmock/gmock.h>

#include <windows.h>

#include <filesystem>
#include <fstream>

using namespace test;
using testing::HasSubstr;
using testing::StartsWith;

namespace
{
    std::filesystem::path BinFolder()
    {
        std::wstring path(MAX_PATH, L'\0');
        path.resize(GetModuleFileNameW(nullptr, path.data(), MAX_PATH));
        return std::filesystem::path(path).parent_path();
    }

    std::filesystem::path const library = BinFolder() / "vorlink.dll";

    template <typename Function>
    Function* Find(HMODULE module, char const* name)
    {
        return reinterpret_cast<Function*>(reinterpret_cast<void*>(GetProcAddress(module, name)));
    }

    // A copy of vorlink_c.dll, in a folder of its own whose name is not ASCII.
    class Lonely
    {
    public:
        Lonely()
        {
            std::filesystem::create_directory(folder);
            auto const path = std::filesystem::absolute(folder / "vorlink_c.dll");
            std::filesystem::copy_file(BinFolder() / "vorlink_c.dll", path);
            m_module = LoadLibraryW(path.c_str());
        }

        std::int32_t Open() const
        {
            auto* vorlink = reinterpret_cast<vorlink_t*>(m_module); // no handle: an error makes it null
            auto const code = Find<decltype(vorlink_open)>(m_module, "vorlink_open")(&vorlink);
            EXPECT_EQ(vorlink != nullptr, code == VORLINK_OK);
            return code;
        }

        std::string Error() const
        {
            return Find<decltype(vorlink_last_error)>(m_module, "vorlink_last_error")();
        }

        void Free() const
        {
            FreeLibrary(m_module);
        }

        std::filesystem::path const folder = L"al\u00E9in";

    private:
        HMODULE m_module = nullptr;
    };

    std::string Utf8(std::filesystem::path const& path)
    {
        auto const text = path.u8string();
        return {text.begin(), text.end()};
    }
} // namespace

// The program's own folder, the current one and those of PATH hold one.
TEST(Load, LooksNowhereElse)
{
    Lonely const wrapper;
    std::filesystem::copy_file(library, "vorlink.dll");
    SetEnvironmentVariableW(L"PATH", BinFolder().c_str());
    EXPECT_EQ(wrapper.Open(), VORLINK_LIBRARY_NOT_FOUND);
    EXPECT_EQ(wrapper.Error(), "There is no vorlink.dll in " + Utf8(std::filesystem::absolute(wrapper.folder)) + ".");
}

TEST(Load, AFileThatIsNoLibraryIsNamed)
{
    Lonely const wrapper;
    std::ofstream(wrapper.folder / "vorlink.dll") << "no library";
    EXPECT_EQ(wrapper.Open(), VORLINK_LIBRARY_UNUSABLE);
    EXPECT_THAT(wrapper.Error(), HasSubstr("vorlink.dll does not load (Windows error 193)"));
}

TEST(Load, ALibraryWithoutTheExportIsNamedAndNotKept)
{
    Lonely const wrapper;
    auto const path = std::filesystem::absolute(wrapper.folder / "vorlink.dll");
    std::filesystem::copy_file(BinFolder() / "vorlink_simulator.dll", path);
    EXPECT_EQ(wrapper.Open(), VORLINK_LIBRARY_UNUSABLE);
    EXPECT_EQ(wrapper.Error(), Utf8(path) + " does not export getVorlinkPtr.");
    EXPECT_FALSE(GetModuleHandleW(path.c_str()));
}

TEST(Load, ALibraryOfAnotherMajorVersionIsNamed)
{
    Lonely const wrapper;
    std::filesystem::copy_file(BinFolder() / "later_vorlink.dll", wrapper.folder / "vorlink.dll");
    EXPECT_EQ(wrapper.Open(), VORLINK_LIBRARY_UNUSABLE);
    EXPECT_THAT(wrapper.Error(), HasSubstr("has the version \"" LATER_VERSION "\""));
}

TEST(Load, ALibraryWithoutAVersionIsNamed)
{
    Lonely const wrapper;
    std::filesystem::copy_file(BinFolder() / "unversioned_vorlink.dll", wrapper.folder / "vorlink.dll");
    EXPECT_EQ(wrapper.Open(), VORLINK_LIBRARY_UNUSABLE);
    EXPECT_THAT(wrapper.Error(), HasSubstr("has the version \"\""));
}

TEST(Load, AFailureIsNotForGood)
{
    Lonely const wrapper;
    EXPECT_EQ(wrapper.Open(), VORLINK_LIBRARY_NOT_FOUND);
    std::filesystem::copy_file(library, wrapper.folder / "vorlink.dll");
    EXPECT_EQ(wrapper.Open(), VORLINK_OK) << wrapper.Error();
}

TEST(Load, NothingIsLoadedBeforeTheFirstHandle)
{
    EXPECT_FALSE(GetModuleHandleW(library.c_str()));
    Open();
    EXPECT_TRUE(GetModuleHandleW(library.c_str()));
}

TEST(Load, ALibraryOnceLoadedKeepsBoth)
{
    Lonely const wrapper;
    auto const path = std::filesystem::absolute(wrapper.folder / "vorlink.dll");
    std::filesystem::copy_file(library, path);
    ASSERT_EQ(wrapper.Open(), VORLINK_OK) << wrapper.Error();
    wrapper.Free();
    EXPECT_TRUE(GetModuleHandleW(path.c_str()));
    EXPECT_TRUE(GetModuleHandleW(std::filesystem::absolute(wrapper.folder / "vorlink_c.dll").c_str()));
}

TEST(Version, OfBothAsNumbersAndText)
{
    vorlink_version_number wrapper{};
    vorlink_version_number loaded = {9, 9, 9, "9"};
    EXPECT_EQ(vorlink_version(&wrapper, &loaded), VORLINK_OK);
    EXPECT_STREQ(wrapper.text, VORLINK_VERSION);
    EXPECT_EQ(std::to_string(wrapper.major) + "." + std::to_string(wrapper.minor) + "." + std::to_string(wrapper.patch),
              VORLINK_VERSION);
    EXPECT_STREQ(loaded.text, "") << "not loaded yet";
    EXPECT_EQ(loaded.major + loaded.minor + loaded.patch, 0u);

    Open();
    EXPECT_EQ(vorlink_version(nullptr, &loaded), VORLINK_OK);
    EXPECT_STREQ(loaded.text, VORLINK_VERSION);
    EXPECT_EQ(loaded.major, wrapper.major);
    EXPECT_EQ(loaded.minor, wrapper.minor);
    EXPECT_EQ(loaded.patch, wrapper.patch);
}
