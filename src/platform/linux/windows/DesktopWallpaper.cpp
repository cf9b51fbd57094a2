#include "platform/linux/windows/DesktopWallpaper.h"

#include "platform/linux/storage/PictureProcess.h"
#include "platform/linux/windows/QtScreens.h"
#include "platform/linux/windows/XPixmap.h"
#include "toolkit/ScreenChanges.h"

#include <algorithm>
#include <chrono>
#include <utility>

namespace tavro {

// What it takes to look waits until what the audience sees, at the launch or at a presentation's begin, is
// there.
DesktopWallpaper::DesktopWallpaper(XConnection& x, DesktopSnapshots& snapshots, const QtScreens& screens,
                                   std::filesystem::path painter, Question question)
    : m_x(x)
    , m_snapshots(snapshots)
    , m_screens(screens)
    , m_painter(std::move(painter))
    , m_question(std::move(question))
    , m_events{x.onPropertyChange(x.root(), x.atoms().xrootpmapId, [this] { pixmapChanged(); }),
               x.onPropertyChange(x.root(), x.atoms().netCurrentDesktop, [this] { workspaceChanged(); })} {
    constexpr std::chrono::seconds moment{1};
    m_soon.setSingleShot(true);
    m_soon.setInterval(moment);
    m_soon.callOnTimeout([this] { renew(); });
    onScreenChange(m_context, [this] { renewSoon(); });
    renewSoon();
}

std::optional<Image> DesktopWallpaper::ownPicture(const QRect& pixels) const {
    const auto found = std::ranges::find_if(
        m_pictures, [&](const auto& picture) { return picture.source.screen.contains(pixels); });
    if (found == m_pictures.end() || pixels.isEmpty())
        return std::nullopt;
    auto image = found->image;
    const auto corner = pixels.topLeft() - found->source.screen.topLeft();
    const auto* first = image.pixels.get() + static_cast<std::size_t>(corner.y()) * image.bytesPerRow +
                        static_cast<std::size_t>(corner.x()) * sizeof(std::uint32_t);
    image.pixels = {image.pixels, first};
    image.pixelWidth = pixels.width();
    image.pixelHeight = pixels.height();
    return image;
}

std::vector<DesktopScreen> DesktopWallpaper::screens(XConnection& x, const QtScreens& screens) {
    const auto workspace = x.value(x.request(x.root(), x.atoms().netCurrentDesktop)).value_or(0);
    std::vector<DesktopScreen> result;
    for (const auto& screen : screens.screens())
        result.push_back({screens.connector(screen), static_cast<int>(result.size()),
                          static_cast<int>(workspace), QtScreens::framePixels(screen.frame)});
    return result;
}

void DesktopWallpaper::pixmapChanged() {
    m_observers.notify();
    renewSoon();
}

void DesktopWallpaper::workspaceChanged() {
    if (std::ranges::any_of(m_pictures,
                            [](const auto& picture) { return picture.source.background.isOfWorkspace; }))
        renew();
}

void DesktopWallpaper::renew() {
    if (m_isAsking || m_paintings > 0)
        return renewSoon();
    XPixmap::prepare(m_x);
    if (const auto pixmap = this->pixmap(); pixmap && pixmap->isWhole)
        return m_pictures.clear();
    m_isAsking = true;
    const auto known = screens(m_x, m_screens);
    m_background.run([question = m_question, known] { return question(known); },
                     [this, known](const Backgrounds& backgrounds) {
                         m_isAsking = false;
                         compose(known, backgrounds);
                     });
}

// A desktop that has not answered keeps what it had.
void DesktopWallpaper::compose(const std::vector<DesktopScreen>& screens, const Backgrounds& backgrounds) {
    std::erase_if(m_pictures, [&](const auto& picture) {
        return std::ranges::find(screens, picture.source.screen, &DesktopScreen::pixels) == screens.end();
    });
    QRect all;
    for (const auto& screen : screens)
        all |= screen.pixels;
    for (std::size_t i = 0; i < std::min(screens.size(), backgrounds.size()); ++i) {
        if (!backgrounds[i])
            continue;
        const auto& pixels = screens[i].pixels;
        Source source{*backgrounds[i], pixels, backgrounds[i]->spansScreens ? all : pixels, {}};
        if (source.background.picture)
            source.file = RecentPicture::versionOf(*source.background.picture, {});
        if (std::ranges::find(m_pictures, source, &Picture::source) == m_pictures.end())
            compose(source);
    }
}

// A picture that is not there any more leaves the colours alone, as it does on desktops.
void DesktopWallpaper::compose(const Source& source) {
    const Composition composition{source.background.style, source.screen.size(),
                                  source.area.translated(-source.screen.topLeft())};
    auto* process = new PictureProcess(&m_context);
    ++m_paintings;
    const bool isStarted =
        process->decode(m_painter, source.file ? *source.background.picture : std::filesystem::path(),
                        composition.arguments(), [this, process, source] {
                            process->deleteLater();
                            finish(source, process->image());
                        });
    if (isStarted)
        return;
    delete process;
    finish(source, std::nullopt);
}

void DesktopWallpaper::finish(const Source& source, const std::optional<Image>& image) {
    const auto before = std::erase_if(
        m_pictures, [&](const auto& picture) { return picture.source.screen == source.screen; });
    if (image)
        m_pictures.push_back({source, *image});
    m_isAnother |= image || before > 0;
    if (--m_paintings == 0 && std::exchange(m_isAnother, false))
        m_observers.notify();
}

} // namespace tavro
