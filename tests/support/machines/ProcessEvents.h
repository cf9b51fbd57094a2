#pragma once

#include <QCoreApplication>
#include <QTimer>

#include <chrono>

/// Lets the toolkit handle what has come, and waits for more where nothing has; a pause between two looks.
inline void processEvents() {
    QTimer lookAgain;
    lookAgain.start(std::chrono::milliseconds(10));
    QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
}
