#pragma once

#include "picture/Composition.h"
#include "platform/linux/desktops/DesktopBackground.h"
#include "platform/linux/process/Background.h"
#include "platform/linux/storage/RecentPicture.h"
#include "platform/linux/windows/DesktopSnapshot.h"
#include "platform/linux/x11/XConnection.h"
#include "platform/process/ObserverList.h"
#include "platform/storage/Image.h"

#include <QTimer>

#include <array>
#include <filesystem>
#include <functional>
#include <optional>
#include <vector>

namespace tavro {

class QtScreens;

/// What the desktop shows as its background: the X server's picture of it, or where there is none, pictures
/// of our own. For these the desktop is asked on a thread of its own, and a program of its own draws. They
/// are made ahead and kept, since covers wait for nobody. Main thread only.
class DesktopWallpaper {
public:
    using Backgrounds = std::vector<std::optional<DesktopBackground>>;
    /// One background for each screen. Runs on that thread.
    using Question = std::function<Backgrounds(const std::vector<DesktopScreen>&)>;

    DesktopWallpaper(XConnection& x, DesktopSnapshots& snapshots, const QtScreens& screens,
                     std::filesystem::path painter, Question question);

    std::optional<RootPixmap> pixmap() const { return m_snapshots.current()->wallpaper; }
    bool hasOwnPictures() const { return !m_pictures.empty(); }
    /// The part of our own that shows these pixels of the root window, not copied.
    std::optional<Image> ownPicture(const QRect& pixels) const;
    /// Looks, a moment later, whether the desktop has another background.
    void renewSoon() { m_soon.start(); }
    /// The observer is notified after there is another picture, the server's or one of our own.
    [[nodiscard]] Observation onChange(std::function<void()> observer) {
        return m_observers.add(std::move(observer));
    }

    /// The screens as desktops know them.
    static std::vector<DesktopScreen> screens(XConnection& x, const QtScreens& screens);

private:
    /// What a picture is made of.
    struct Source {
        DesktopBackground background;
        QRect screen;
        QRect area;
        std::optional<RecentPicture::Version> file;
        bool operator==(const Source&) const = default;
    };
    struct Picture {
        Source source;
        Image image;
    };

    void renew();
    void pixmapChanged();
    void workspaceChanged();
    void compose(const std::vector<DesktopScreen>& screens, const Backgrounds& backgrounds);
    void compose(const Source& source);
    void finish(const Source& source, const std::optional<Image>& image);

    XConnection& m_x;
    DesktopSnapshots& m_snapshots;
    const QtScreens& m_screens;
    const std::filesystem::path m_painter;
    const Question m_question;
    std::vector<Picture> m_pictures; // one for a screen
    ObserverList<> m_observers;
    bool m_isAsking = false;
    int m_paintings = 0; // that are under way
    bool m_isAnother = false;
    QTimer m_soon;
    QObject m_context; // of the processes and of what the screens tell
    std::array<Observation, 2> m_events;
    Background m_background;
};

} // namespace tavro
