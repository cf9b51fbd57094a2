#pragma once

#include "platform/windows/Geometry.h"
#include "platform/windows/TitledWindow.h"
#include "preferences/PreferenceState.h"

#include <memory>

namespace tavro {

/// The preferences window, and at the same time the record that its content is computed from: one page, the
/// general one. Copies share what they hold. Main thread only.
struct PreferenceView {
    /// Knows whether the window stands.
    class PreferenceViewWindowDelegate final : public WindowDelegate {
    public:
        bool windowIsOpen = false;
        void windowWillClose() override { windowIsOpen = false; }
    };

    // In points.
    static constexpr Size contentSize{400, 360};
    static constexpr double padding = 30;
    static constexpr double labelWidth = 130;
    static constexpr double rowBottomPadding = 10;
    static constexpr double startupBottomPadding = 5;
    static constexpr Size previewSize{240, 100};

    /// Makes a window on that page and shows it.
    explicit PreferenceView(int pageIndex);

    std::shared_ptr<PreferenceViewWindowDelegate> prefsWindowDelegate;
    std::shared_ptr<PreferenceState> state;
    /// Null when the window server refused one. It and its content hold each other until it is closed.
    std::shared_ptr<TitledWindow> window;

private:
    void addToolbar();
    void show();
};

} // namespace tavro
