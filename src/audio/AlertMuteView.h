#pragma once

#include "audio/AlertView.h"

#include <optional>

namespace tavro {

/// Owns the one indicator that can be on screen. Main thread only.
class AlertMuteView {
public:
    static AlertMuteView& shared();

    AlertMuteView() = default;
    AlertMuteView(const AlertMuteView&) = delete;
    AlertMuteView& operator=(const AlertMuteView&) = delete;
    /// Closes what still stands: an indicator and the window that shows it hold each other.
    ~AlertMuteView();

    void closeAlert();

    std::optional<AlertView> alertWindow;
};

} // namespace tavro
