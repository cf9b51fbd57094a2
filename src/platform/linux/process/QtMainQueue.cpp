#include "platform/linux/process/QtMainQueue.h"

#include <QTimer>

namespace tavro {

void QtMainQueue::async(std::function<void()> block) {
    QMetaObject::invokeMethod(&m_context, std::move(block), Qt::QueuedConnection);
}

void QtMainQueue::asyncAfter(Duration delay, std::function<void()> block) {
    const auto milliseconds = std::chrono::ceil<std::chrono::milliseconds>(delay);
    QTimer::singleShot(milliseconds, Qt::PreciseTimer, &m_context, std::move(block));
}

} // namespace tavro
