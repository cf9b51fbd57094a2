#pragma once

#include <memory>

namespace tavro {

class RunningApplication;

/// Hides every application but the one in front, and shows them all again. Main thread only.
class HideApps {
public:
    /// The application that was in front at the last remembering; null before, or when there was none.
    static const std::shared_ptr<RunningApplication>& lastActiveApp();

    static void rememberFrontmost();
    /// Without an application in front, all are asked to hide.
    static void hideOthers();
    /// Hides nothing more of the others; what is hidden stays so.
    static void stopHiding();
    /// Shows all, then brings the application that is in front now back to the front.
    static void showAll();

    HideApps() = delete;
};

} // namespace tavro
