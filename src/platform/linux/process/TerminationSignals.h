#pragma once

#include <QObject>

#include <functional>
#include <memory>

class QSocketNotifier;

namespace tavro {

/// Brings SIGTERM, SIGINT and SIGHUP to the main queue. Made before the process starts any thread: each
/// thread inherits that they are held back.
class TerminationSignals final : public QObject {
public:
    TerminationSignals();
    ~TerminationSignals() override;

    /// From now on the block runs for each signal, also for those that came before.
    void start(std::function<void()> block);

private:
    int m_descriptor;
    std::unique_ptr<QSocketNotifier> m_notifier;
};

} // namespace tavro
