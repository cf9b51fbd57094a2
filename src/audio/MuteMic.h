#pragma once

#include <functional>

namespace tavro {

/// The microphone: every input device of the machine that has a mute flag. Main thread only.
class MuteMic {
public:
    /// Unless some input device says that it is not; so also where there is none.
    static bool isMuted();
    /// Writes to every input device, changed or not. One that refuses gives a line in the log.
    static void setMute(bool mute);

    /// Calls the handler after each change of an input device's mute flag: once for the default input device
    /// and once for each device there is. While a default input device is observed, nothing is added.
    static void startObserving(const std::function<void()>& handler);
    static void stopObserving();
    /// The listener on the default input device, or -1.
    static int listenerID();

    MuteMic() = delete;
};

} // namespace tavro
