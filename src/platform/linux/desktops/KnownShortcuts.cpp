#include "platform/linux/desktops/KnownShortcuts.h"

namespace tavro {

KnownShortcuts::~KnownShortcuts() {
    if (m_thread)
        m_thread->wait();
}

void KnownShortcuts::ask() {
    if (m_thread)
        return;
    m_thread.reset(QThread::create([this] {
        auto told = m_question();
        QMetaObject::invokeMethod(
            &m_context,
            [this, told = std::move(told)]() mutable {
                m_thread->wait();
                m_thread.reset();
                if (!told.empty()) // else it has not answered
                    m_lastTold = std::move(told);
            },
            Qt::QueuedConnection);
    }));
    m_thread->setObjectName("shortcuts");
    m_thread->start();
}

} // namespace tavro
