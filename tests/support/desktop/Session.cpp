#include "Session.h"

#include <csignal>
#include <cstdlib>
#include <fstream>

namespace {

std::string folder() {
    return Session::variable("TAVRO_SESSION_DIR");
}

} // namespace

bool Session::isPrivate() {
    return !folder().empty();
}

std::string Session::variable(const char* name) {
    const char* value = std::getenv(name);
    return value ? value : "";
}

pid_t Session::pid(const std::string& piece) {
    pid_t number = 0;
    std::ifstream(folder() + "/pids/" + piece) >> number;
    return number;
}

void Session::signal(const std::string& piece, int number) {
    if (const auto process = pid(piece); process > 1)
        ::kill(process, number);
}

// The shell leaves at once, so that the piece is nobody's child here.
void Session::start(const std::string& piece) {
    run("setsid '" + folder() + "/start/" + piece + "' &");
}

bool Session::run(const std::string& command) {
    return std::system(command.c_str()) == 0;
}
