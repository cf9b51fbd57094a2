#pragma once

#include "platform/linux/x11/XConnection.h"

#include <array>
#include <deque>
#include <functional>

namespace tavro {

/// Tells when the window manager has carried out what was asked of it. It serves requests in the order in
/// which the X server passes them on, whoever made them; so its answer to one that has a visible answer
/// (EWMH, _NET_REQUEST_FRAME_EXTENTS) means that all before it are done. One that hangs answers later, one
/// that has ended never; the next one is then asked in its place. Of one that does not know the request, a
/// second is taken for enough.
class WindowManagerSync {
public:
    explicit WindowManagerSync(XConnection& x);
    WindowManagerSync(const WindowManagerSync&) = delete;
    WindowManagerSync& operator=(const WindowManagerSync&) = delete;
    ~WindowManagerSync();

    /// Calls the block when all that was requested so far is carried out, by the present window manager or,
    /// where that ends before, by nobody.
    void whenCarriedOut(std::function<void()> block);
    /// Each time that another window manager has taken over, before what waits is asked of it.
    [[nodiscard]] Observation onReplacement(std::function<void()> handler);

private:
    void ask();
    void answered();
    void lookWhetherItAnswers();
    void replaced();

    XConnection& m_x;
    const xcb_window_t m_window;
    bool m_answers = true;
    std::deque<std::function<void()>> m_waiting;
    ObserverList<> m_replacementObservers;
    std::array<Observation, 3> m_events;
    std::shared_ptr<bool> m_asked = std::make_shared<bool>(true); // the present window manager
};

} // namespace tavro
