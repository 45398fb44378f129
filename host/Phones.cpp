#include "host/Phones.h"

#include "host/PhoneSearch.h"
#include "host/Terminal.h"
#include "host/Text.h"

namespace host
{
    namespace
    {
        SearchResult Search(VorlinkFactory factory, Request const& request, Progress& progress,
                            NameCallback const& takeName)
        {
            auto result =
                SearchPhones(factory, request, takeName, [&](auto elapsed) { progress.Show(Phase::Finding, elapsed); });
            progress.Finish();
            return result;
        }
    } // namespace

    Outcome ListPhones(VorlinkFactory factory, Request const& request, Progress& progress)
    {
        std::size_t count = 0;
        auto const result = Search(factory, request, progress, [&](std::string const& name) {
            progress.Finish();
            Print(Harmless(name) + "\n");
            ++count;
            return true;
        });
        if (auto const* const failure = std::get_if<Failure>(&result))
        {
            return DescribeFailure(failure->text);
        }
        return DescribeList(count, std::get<SearchEnd>(result) == SearchEnd::Complete);
    }

    std::optional<Outcome> AwaitPhone(VorlinkFactory factory, Request const& request, Progress& progress)
    {
        auto const result =
            Search(factory, request, progress, [&](std::string const& name) { return name != request.name; });
        if (auto const* const failure = std::get_if<Failure>(&result))
        {
            return DescribeFailure(failure->text);
        }
        switch (std::get<SearchEnd>(result))
        {
        case SearchEnd::TimeLimit:
            return DescribeNoAnswer(request.name, request.timeout.count(), nullptr);
        case SearchEnd::Interrupted:
            return DescribeInterruption(request.name);
        default:
            return std::nullopt; // the library may hold the phone by a name that it did not report
        }
    }
} // namespace host
