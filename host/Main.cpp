#include "host/CommandLine.h"
#include "host/Failure.h"
#include "host/LastResort.h"
#include "host/Terminal.h"

#include <exception>
#include <variant>

namespace host
{
    namespace
    {
        ExitCode Run()
        {
            auto const line = ReadCommandLine();
            if (auto const* const early = std::get_if<EarlyExit>(&line))
            {
                early->code == ExitCode::Usage ? PrintError(early->text) : Print(early->text);
                return early->code;
            }
            return std::get<Action>(line)();
        }
    } // namespace
} // namespace host

int main()
{
    host::OpenTerminal();
    host::InstallLastResort();
    auto code = host::ExitCode::Failed;
    try
    {
        code = host::Run();
    }
    catch (...)
    {
        host::PrintError("vorlinkctl: " + host::DescribeCurrentException() + "\n");
    }
    host::EndProcess(code);
}
