// The page that lists what the simulated platform answers, against the table of methods.
#include "simulator/trace/Method.h"

#include <gmock/gmock.h>

#include <fstream>
#include <map>
#include <set>
#include <string>

namespace
{
    // Whether each member is told to work, by "Class.Member".
    std::map<std::string, std::string> AnswersOnThePage()
    {
        std::ifstream page(VORLINK_MEMBERS_PAGE);
        EXPECT_TRUE(page) << VORLINK_MEMBERS_PAGE;
        std::map<std::string, std::string> answers;
        std::string className;
        for (std::string line; std::getline(page, line);)
        {
            if (line.starts_with("## "))
            {
                className = line.substr(3);
            }
            else if (line.starts_with("| `"))
            {
                auto const end = line.find('`', 3);
                auto const answer = end + std::string_view("` | ").size();
                auto const name = className + "." + line.substr(3, end - 3);
                EXPECT_FALSE(answers.contains(name)) << name << " stands there twice";
                answers[name] = line.substr(answer, line.find(" |", answer) - answer);
            }
        }
        return answers;
    }

    std::map<std::string, std::string> AnswersOfTheTable()
    {
        std::map<std::string, std::string> answers;
        for (auto const name : simulator::methodNames)
        {
            // Of Windows.Foundation: made by others, and whole.
            if (!name.starts_with("AsyncOperation.") && !name.starts_with("Deferral."))
            {
                answers[std::string(name)] = simulator::IsLeftOut(name) ? "`E_NOTIMPL`" : "works";
            }
        }
        return answers;
    }

    // The classes that a manifest has, by their names without the namespace.
    std::set<std::string> ClassesOf(char const* manifest)
    {
        std::ifstream file(manifest);
        EXPECT_TRUE(file) << manifest;
        std::set<std::string> classes;
        for (std::string line; std::getline(file, line);)
        {
            if (auto const begin = line.find("activatableClass name=\""); begin != std::string::npos)
            {
                auto const name = line.substr(line.find('"', begin) + 1);
                auto const fullName = name.substr(0, name.find('"'));
                classes.insert(fullName.substr(fullName.rfind('.') + 1));
            }
        }
        return classes;
    }

    std::set<std::string> ClassesWithFactories()
    {
        std::set<std::string> classes;
        for (auto const name : simulator::methodNames)
        {
            if (name.ends_with(".GetActivationFactory"))
            {
                classes.emplace(name.substr(0, name.find('.')));
            }
        }
        return classes;
    }
} // namespace

TEST(Members, HaveTheirClassesInBothManifests)
{
    EXPECT_EQ(ClassesOf(VORLINK_SIMULATOR_MANIFEST), ClassesWithFactories());
    EXPECT_EQ(ClassesOf(VORLINK_HOST_MANIFEST), ClassesWithFactories());
}

TEST(Members, StandOnThePageAsTheyAnswer)
{
    EXPECT_THAT(AnswersOnThePage(), testing::ContainerEq(AnswersOfTheTable()));
}
