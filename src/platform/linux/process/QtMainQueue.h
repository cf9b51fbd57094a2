#pragma once

#include "platform/process/MainQueue.h"

#include <QObject>

namespace tavro {

/// The event loop of the main thread. Blocks that are still queued when it is destroyed do not run.
class QtMainQueue final : public MainQueue {
public:
    void async(std::function<void()> block) override;
    void asyncAfter(Duration delay, std::function<void()> block) override;

private:
    QObject m_context;
};

} // namespace tavro
