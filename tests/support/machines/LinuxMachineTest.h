#pragma once

#include "support/desktop/DesktopTest.h"

#include "platform/linux/process/LinuxMachine.h"
#include "platform/linux/process/StreamLog.h"
#include "platform/process/Process.h"
#include "ui/ViewPainting.h"

#include <QCoreApplication>

/// With parts of the product in the test's own process.
class InProcessTest : public DesktopTest {
protected:
    testing::AssertionResult shows(const std::string& what, const std::function<bool()>& condition) {
        return server.eventually(what, [&] {
            QCoreApplication::processEvents();
            return condition();
        });
    }
};

/// The machine in the test's own process, on the session's desktop.
class LinuxMachineTest : public InProcessTest {
protected:
    /// One for the process, whose signals they are.
    static tavro::TerminationSignals& terminationSignals() {
        static tavro::TerminationSignals signals;
        return signals;
    }

    tavro::StreamLog log;
    tavro::LinuxMachine machine{tavro::XConnection::open(log),
                                log,
                                terminationSignals(),
                                {&tavro::contentOf, &tavro::makeWidget},
                                config.path() / "defaults.plist"};
    tavro::Process process{machine};
};
