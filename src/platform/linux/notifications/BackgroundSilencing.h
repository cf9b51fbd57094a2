#pragma once

#include "platform/notifications/NotificationSilencing.h"

#include <QObject>
#include <QThread>

namespace tavro {

class Log;

/// The switch of the desktop's notification server, asked on a thread of its own: servers, and the stores of
/// their settings, may take their time.
class BackgroundSilencing final : public QObject, public NotificationSilencing {
public:
    /// The log is written to from that thread; the block runs on this one, and keeps bubbles out of sight.
    BackgroundSilencing(Log& log, std::function<void(bool)> keepBubblesAway);
    ~BackgroundSilencing() override;

    void askIsOn(std::function<void(std::optional<bool>)> answer) override;
    void setOn(bool isOn, std::function<void(bool)> completion) override;

    /// Waits until all that was asked is done, and what its blocks asked in turn; within a bound. Whether
    /// there was anything, and it is done. For the end of the process.
    bool finish();

private:
    class Worker;
    /// Runs the question on the thread, and the block with its answer on this one.
    template <class Question, class Block>
    void run(Question question, Block block);

    QThread m_thread;
    Worker* m_worker; // lives on the thread, and ends with it
    int m_pending = 0;
};

} // namespace tavro
