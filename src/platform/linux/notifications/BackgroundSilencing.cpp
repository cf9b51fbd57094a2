#include "platform/linux/notifications/BackgroundSilencing.h"

#include "platform/linux/notifications/DesktopSilencing.h"

#include <QCoreApplication>
#include <QDBusServiceWatcher>
#include <QDeadlineTimer>
#include <QTimer>

namespace tavro {

class BackgroundSilencing::Worker final : public QObject {
public:
    Worker(Log& log, std::function<void(bool)> keepBubblesAway)
        : m_bus(QDBusConnection::sessionBus())
        , silencing(m_bus, m_settings, log, std::move(keepBubblesAway)) {
        m_bus.setParent(this); // these two come along to the thread
        m_servers.setParent(this);
        connect(&m_bus, &BoundedBus::serviceAnswers, this, [this] { silencing.catchUp(); });
        connect(&m_servers, &QDBusServiceWatcher::serviceRegistered, this, [this] { silencing.catchUp(); });
    }

private:
    BoundedBus m_bus;
    QDBusServiceWatcher m_servers{"org.freedesktop.Notifications", QDBusConnection::sessionBus(),
                                  QDBusServiceWatcher::WatchForRegistration};
    const GSettings m_settings;

public:
    DesktopSilencing silencing;
};

BackgroundSilencing::BackgroundSilencing(Log& log, std::function<void(bool)> keepBubblesAway)
    : m_worker(new Worker(log, [this, keepBubblesAway = std::move(keepBubblesAway)](bool areAway) {
        QMetaObject::invokeMethod(
            this, [keepBubblesAway, areAway] { keepBubblesAway(areAway); }, Qt::QueuedConnection);
    })) {
    m_thread.setObjectName("silencing");
    m_worker->moveToThread(&m_thread);
    connect(&m_thread, &QThread::finished, m_worker, &QObject::deleteLater);
}

BackgroundSilencing::~BackgroundSilencing() {
    if (!m_thread.isRunning()) {
        delete m_worker;
        return;
    }
    m_thread.quit();
    m_thread.wait(); // at most as long as one question
}

template <class Question, class Block>
void BackgroundSilencing::run(Question question, Block block) {
    if (!m_thread.isRunning())
        m_thread.start();
    ++m_pending;
    QMetaObject::invokeMethod(m_worker, [this, question = std::move(question), block = std::move(block)] {
        const auto result = question(m_worker->silencing);
        QMetaObject::invokeMethod(
            this,
            [this, result, block] {
                block(result);
                --m_pending;
            },
            Qt::QueuedConnection);
    });
}

void BackgroundSilencing::askIsOn(std::function<void(std::optional<bool>)> answer) {
    run([](DesktopSilencing& silencing) { return silencing.isOn(); }, std::move(answer));
}

void BackgroundSilencing::setOn(bool isOn, std::function<void(bool)> completion) {
    run([isOn](DesktopSilencing& silencing) { return silencing.setOn(isOn); }, std::move(completion));
}

bool BackgroundSilencing::finish() {
    if (m_pending == 0)
        return false;
    const QDeadlineTimer deadline(std::chrono::seconds(3));
    QTimer wakeUp; // for the deadline
    wakeUp.start(100);
    // Without the user's clicks: nothing is to begin while the process ends.
    while (m_pending > 0 && !deadline.hasExpired())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents | QEventLoop::ExcludeUserInputEvents);
    return m_pending == 0;
}

} // namespace tavro
