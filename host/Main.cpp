#include "host/Arguments.h"
#include "host/Command.h"
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
            auto const arguments = ReadArguments();
            if (auto const* const early = std::get_if<EarlyExit>(&arguments))
            {
                early->code == ExitCode::Usage ? PrintError(early->text) : Print(early->text);
                return early->code;
            }
            return RunCommand(std::get<Arguments>(arguments));
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
