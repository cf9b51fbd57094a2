#pragma once

#include <deque>

namespace tavro {

class NotificationSilencing;

/// Do Not Disturb by the machine's own switch, which answers later. Requests run one after the other, so that
/// the end of a presentation never overtakes its beginning. Main thread only.
class SilencingRequests {
public:
    static SilencingRequests& shared();

    void add(bool isOn);
    /// What the machine has answered last.
    bool wasOn() const { return m_wasOn; }

private:
    void runNext();
    void run(bool isOn);
    void set(bool isOn);

    std::deque<bool> m_waiting; // the first of them runs
    bool m_wasOn = false;
};

} // namespace tavro
