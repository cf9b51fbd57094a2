#include "app/AppDelegate.h"
#include "app/CommandLine.h"
#include "platform/linux/process/LinuxMachine.h"
#include "platform/linux/process/SingleInstance.h"
#include "platform/linux/process/StreamLog.h"
#include "platform/process/Process.h"
#include "toolkit/Translation.h"
#include "ui/ViewPainting.h"

#include <QApplication>
#include <QPixmapCache>

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <malloc.h>
#include <vector>

namespace {

tavro::StreamLog streamLog;

void logToolkitMessage(QtMsgType type, const QMessageLogContext&, const QString& message) {
    if (type != QtDebugMsg && type != QtInfoMsg)
        streamLog.diagnose(message.toStdString());
}

/// Whether this is the process that goes on.
bool isFirst(tavro::SingleInstance& instance, int& status) {
    using Claim = tavro::SingleInstance::Claim;
    switch (instance.claim()) {
    case Claim::activatedOther:
        streamLog.print("TavroPRO is running already and was activated");
        status = EXIT_SUCCESS;
        return false;
    case Claim::otherIsSilent:
        streamLog.print("TavroPRO is running already and does not answer");
        status = EXIT_FAILURE;
        return false;
    case Claim::first:
        return true;
    }
    return true;
}

int say(const tavro::CommandLineAnswer& answer) {
    if (answer.status == EXIT_SUCCESS)
        std::puts(answer.text.c_str());
    else
        streamLog.diagnose(answer.text);
    return answer.status;
}

} // namespace

int main(int argc, char** argv) {
    if (const auto answer = tavro::answer({argv + std::min(argc, 1), argv + argc}, TAVRO_VERSION))
        return say(*answer);
    tavro::TerminationSignals signals; // before the toolkit starts its threads
    std::signal(SIGPIPE, SIG_IGN);     // a closed log is no reason to end
    // A whole screen's pixels go back to the system, instead of teaching the allocator to keep as much.
    mallopt(M_MMAP_THRESHOLD, 256 * 1024);
    qInstallMessageHandler(logToolkitMessage);
    auto x = tavro::XConnection::open(streamLog);
    if (!x) {
        streamLog.diagnose("There is no X display to show anything on");
        return EXIT_FAILURE;
    }
    QApplication::setApplicationName("tavropro");
    QApplication::setApplicationDisplayName("TavroPRO");
    QApplication::setDesktopFileName("com.vantrelo.TavroPRO");
    // X11 also where a Wayland session offers its own; by an option, which a browser that we start does not
    // inherit.
    char option[] = "-platform", platform[] = "xcb";
    std::vector<char*> arguments(argv, argv + argc);
    arguments.insert(arguments.end(), {option, platform, nullptr});
    argc += 2;
    QApplication application(argc, arguments.data());
    tavro::installTranslations(application);
    QPixmapCache::setCacheLimit(0); // an entry would wake the process later, to be dropped

    tavro::SingleInstance instance(*x);
    int status = EXIT_SUCCESS;
    if (!isFirst(instance, status))
        return status;
    tavro::LinuxMachine machine(std::move(x), streamLog, signals, {&tavro::contentOf, &tavro::makeWidget},
                                tavro::PlistUserDefaults::standardFile());
    tavro::Process process(machine);
    tavro::AppDelegate delegate;
    instance.onActivate([&machine] { machine.application().reopen(); });
    return machine.application().run(delegate);
}
