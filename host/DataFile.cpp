#include "host/DataFile.h"

#include <fstream>
#include <iterator>
#include <random>
#include <stdexcept>
#include <string_view>

namespace host
{
    namespace
    {
        struct Entry
        {
            std::string_view name;
            std::string_view value;
        };

        // Both empty where the library would skip the line.
        Entry ReadEntry(std::string_view line)
        {
            line.remove_suffix(line.ends_with('\r') ? 1 : 0);
            auto const name = line.substr(0, line.find('='));
            auto const rest = line.substr(std::min(line.size(), name.size() + 1));
            auto const value = rest.substr(0, rest.find('='));
            return name.empty() || value.empty() ? Entry{} : Entry{name, value};
        }

        // Takes the first line off.
        std::string_view TakeLine(std::string_view& text)
        {
            auto const line = text.substr(0, text.find('\n'));
            text.remove_prefix(std::min(text.size(), line.size() + 1));
            return line;
        }

        std::string NameOf(std::filesystem::path const& file)
        {
            auto const name = file.u8string();
            return {name.begin(), name.end()};
        }
    } // namespace

    std::string EntryIn(std::string const& text, std::string const& name)
    {
        for (std::string_view rest = text; !rest.empty();)
        {
            if (auto const entry = ReadEntry(TakeLine(rest)); !entry.name.empty() && entry.name == name)
            {
                return std::string(entry.value);
            }
        }
        return {};
    }

    std::string WithEntry(std::string const& text, std::string const& name, std::string const& value)
    {
        std::string changed;
        for (std::string_view rest = text; !rest.empty();)
        {
            auto const line = TakeLine(rest);
            if (ReadEntry(line).name != name)
            {
                changed.append(line).append("\n");
            }
        }
        return changed + name + "=" + value + "\n";
    }

    bool CanKeep(std::string const& name)
    {
        return !name.empty() && name.find_first_of("=\n") == std::string::npos;
    }

    std::string ReadFileText(std::filesystem::path const& file)
    {
        std::ifstream stream(file, std::ios::binary);
        std::string text(std::istreambuf_iterator<char>(stream), {});
        std::error_code missing;
        if ((!stream.is_open() || stream.bad()) && std::filesystem::exists(file, missing))
        {
            throw std::runtime_error(NameOf(file) + " cannot be read");
        }
        return text;
    }

    void ReplaceFileText(std::filesystem::path const& file, std::string const& text)
    {
        auto whole = file;
        whole += "." + std::to_string(std::random_device()()) + ".new";
        std::ofstream stream(whole, std::ios::binary);
        stream << text;
        stream.close();
        std::error_code error;
        if (!stream.fail())
        {
            std::filesystem::rename(whole, file, error);
            if (!error)
            {
                return;
            }
        }
        std::error_code ignored;
        std::filesystem::remove(whole, ignored);
        throw std::runtime_error(NameOf(file) + " cannot be written" + (error ? ": " + error.message() : ""));
    }
} // namespace host
