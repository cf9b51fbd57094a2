#include "app/CommandLine.h"

#include <gtest/gtest.h>

namespace tavro {
namespace {

TEST(CommandLineTest, KnowsHelpAndTheVersionAndNothingElse) {
    using Arguments = std::vector<std::string>;
    const auto misuse = [](const std::string& argument) {
        return CommandLineAnswer{2, "There is no argument \"" + argument + "\"; see tavropro --help"};
    };
    const std::pair<Arguments, std::optional<CommandLineAnswer>> cases[] = {
        {{}, std::nullopt},
        {{"--version"}, CommandLineAnswer{0, "TavroPRO 1.2.3"}},
        {{"-h"}, misuse("-h")},
        {{""}, misuse("")},
        {{"--help", "--version"}, misuse("--version")},
        {{"file", "--help"}, misuse("file")},
    };
    for (const auto& [arguments, expected] : cases)
        EXPECT_EQ(answer(arguments, "1.2.3"), expected) << testing::PrintToString(arguments);
    EXPECT_EQ(answer({"--help"}, "")->status, 0);
}

} // namespace
} // namespace tavro
