#pragma once

#include "platform/applications/RunningApplication.h"
#include "platform/linux/applications/XHiddenWindows.h"

namespace tavro {

/// An application of the session, by its name.
class XRunningApplication final : public RunningApplication {
public:
    /// `front`: the application's window in front, or none.
    XRunningApplication(std::string name, xcb_window_t front, std::shared_ptr<XHiddenWindows> hidden);

    void hide() override;
    void unhide() override;
    void activate(unsigned options) override;
    bool isEqual(const RunningApplication& other) const override;

private:
    std::string m_name;
    xcb_window_t m_front;
    std::shared_ptr<XHiddenWindows> m_hidden;
};

} // namespace tavro
