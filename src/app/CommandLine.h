#pragma once

#include <optional>
#include <string>
#include <vector>

namespace tavro {

/// What is said in place of starting, and the status that the process ends with.
struct CommandLineAnswer {
    int status = 0;
    /// For standard output where the status is 0, else for the diagnosis.
    std::string text;
    bool operator==(const CommandLineAnswer&) const = default;
};

/// None to start. The arguments are those after the program's name.
std::optional<CommandLineAnswer> answer(const std::vector<std::string>& arguments,
                                        const std::string& version);

} // namespace tavro
