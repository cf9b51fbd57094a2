#include "notifications/SilencingRequests.h"

#include "notifications/SilencingRecord.h"
#include "platform/notifications/NotificationSilencing.h"
#include "platform/process/Machine.h"
#include "platform/process/Process.h"
#include "platform/storage/UserDefaults.h"

namespace tavro {

SilencingRequests& SilencingRequests::shared() {
    return Process::current().shared<SilencingRequests>();
}

void SilencingRequests::add(bool isOn) {
    m_waiting.push_back(isOn);
    if (m_waiting.size() == 1)
        run(isOn);
}

void SilencingRequests::runNext() {
    m_waiting.pop_front();
    if (!m_waiting.empty())
        run(m_waiting.front());
}

// The state is asked for once: where it is unknown, asking again would only take time.
void SilencingRequests::run(bool isOn) {
    SilencingRecord::begin(isOn);
    machine().notificationSilencing()->askIsOn([this, isOn](auto state) {
        m_wasOn = state.value_or(false);
        SilencingRecord::report(m_wasOn);
        const bool isOurs = SilencingRecord::isFromTavro();
        if (isOn)
            SilencingRecord::setFromTavro(true);
        if (isOn ? m_wasOn : !isOurs && !m_wasOn)
            return runNext();
        // The flag first: from here on a crash cannot leave the silence for good.
        machine().userDefaults().whenWritten([this, isOn] { set(isOn); });
    });
}

// Where switching off failed, the next turn-off, of whichever process, finds the flag and tries again.
void SilencingRequests::set(bool isOn) {
    machine().notificationSilencing()->setOn(isOn, [this, isOn](bool isDone) {
        if (isDone && !isOn)
            SilencingRecord::setFromTavro(false);
        runNext();
    });
}

} // namespace tavro
