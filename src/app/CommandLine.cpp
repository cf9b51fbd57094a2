#include "app/CommandLine.h"

namespace tavro {

namespace {

constexpr auto help = R"(Usage: tavropro
       tavropro --help | --version

Makes your desktop presentable with one action, and puts it back with the next. It stands in the
tray of the panel; started a second time, it opens its popover.

Scripts and shortcuts drive it over the session bus, such as:
  gdbus call --session --dest com.vantrelo.TavroPRO --object-path /com/vantrelo/TavroPRO \
    --method org.freedesktop.Application.ActivateAction toggle-presentation-mode '[]' '{}'

The manual page tavropro(1) says the rest.)";

constexpr int misuse = 2;

} // namespace

std::optional<CommandLineAnswer> answer(const std::vector<std::string>& arguments,
                                        const std::string& version) {
    if (arguments.empty())
        return std::nullopt;
    if (arguments == std::vector<std::string>{"--help"})
        return CommandLineAnswer{0, help};
    if (arguments == std::vector<std::string>{"--version"})
        return CommandLineAnswer{0, "TavroPRO " + version};
    const bool isKnown = arguments.front() == "--help" || arguments.front() == "--version";
    return CommandLineAnswer{misuse, "There is no argument \"" + arguments[isKnown ? 1 : 0] +
                                         "\"; see tavropro --help"};
}

} // namespace tavro
