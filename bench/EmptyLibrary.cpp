// A library that does nothing, and takes in the same parts of the compiler's runtime: what loading vorlink.dll is held
// against.
#include <condition_variable>
#include <fstream>
#include <iostream>
#include <map>
#include <mutex>
#include <regex>
#include <string>
#include <thread>

extern "C" __declspec(dllexport) bool Touch(char const* pattern);

extern "C" __declspec(dllexport) bool Touch(char const* pattern)
{
    static std::mutex mutex;
    static std::condition_variable signal;
    static std::map<std::string, std::string> entries;
    std::lock_guard const lock(mutex);
    std::string line;
    std::ifstream file(pattern);
    std::getline(file, line);
    std::regex const expression(pattern);
    std::sregex_token_iterator const first(line.begin(), line.end(), expression, -1);
    entries.emplace(line, first == std::sregex_token_iterator() ? "" : first->str());
    std::ofstream(pattern) << line;
    std::cout << line << std::endl;
    signal.notify_one();
    return entries.size() > 1;
}
