#include "desktop/CoverWindow.h"

#include "desktop/CustomWallpaper.h"
#include "platform/applications/Workspace.h"
#include "platform/process/Machine.h"
#include "platform/process/Process.h"
#include "platform/storage/Images.h"
#include "platform/windows/Screens.h"
#include "platform/windows/WindowList.h"
#include "platform/windows/WindowServer.h"

#include <algorithm>
#include <utility>

namespace tavro {

namespace {

constexpr unsigned coverBehavior =
    WindowCollectionBehavior::canJoinAllSpaces | WindowCollectionBehavior::stationary |
    WindowCollectionBehavior::ignoresCycle | WindowCollectionBehavior::fullScreenAuxiliary |
    WindowCollectionBehavior::fullScreenDisallowsTiling;

std::optional<WindowNumber> numberOf(const Window& window) {
    const auto number = window.windowNumber();
    if (!std::in_range<std::uint32_t>(number))
        return std::nullopt;
    return WindowNumber(static_cast<std::uint32_t>(number));
}

const std::string* textAt(const PropertyList::Dictionary& entry, const char* key) {
    const auto found = entry.find(key);
    return found == entry.end() ? nullptr : found->second.as<std::string>();
}

std::optional<Image> mainScreenWallpaper() {
    const auto mainScreen = machine().screens().mainScreen();
    if (!mainScreen)
        return std::nullopt;
    const auto url = machine().workspace().desktopImageURL(*mainScreen);
    return url ? machine().images().contentsOf(*url) : std::nullopt;
}

} // namespace

CoverWindow::CoverWindow(std::optional<std::filesystem::path> path, const Screen& screen)
    : displayFrame(screen.frame)
    , wallpaperPath(std::move(path)) {
    window = machine().windowServer().createOverlayWindow(
        {.contentRect = screen.frame, .styleMask = WindowStyleMask::titled, .screen = screen});
    displayID = screenDisplayID(screen);
    if (!window)
        return;
    windowNumber = numberOf(*window);
    configureWindow(screen);
    showContent();
    window->orderFrontRegardless();
    window->orderFront();
    window->makeKeyAndOrderFront();
}

void CoverWindow::showContent() const {
    if (window)
        window->setContentView(std::make_shared<HostingView<CoverWindow>>(*this));
}

void CoverWindow::configureWindow(const Screen& screen) const {
    window->setLevel(machine().windowServer().levelForKey(WindowLevelKey::desktopIcon) + 1);
    window->setCollectionBehavior(coverBehavior);
    window->setStyleMask(WindowStyleMask::borderless);
    window->setAttribute(WindowAttribute::canHide, false);
    window->setAttribute(WindowAttribute::hasShadow, false);
    window->setAttribute(WindowAttribute::ignoresMouseEvents, true);
    window->setBackgroundColor(Color::white(0.0, 0.01));
    window->setFrame(screen.frame, true);
}

CoverContent CoverWindow::body() const {
    if (wallpaperPath)
        if (auto image = PreparedWallpaper::shared().image(*wallpaperPath))
            return StretchedImage{std::move(*image)};
    if (auto image = capturedWallpaper())
        return FixedImage{std::move(*image)};
    if (auto image = mainScreenWallpaper())
        return StretchedImage{std::move(*image)};
    return CenteredText{"Error loading image"};
}

std::optional<Image> CoverWindow::capturedWallpaper() const {
    if (!displayID || !windowNumber || !displayFrame)
        return std::nullopt;
    auto image = captureWallpaper(*displayID, *windowNumber);
    if (image)
        image->size = displayFrame->size;
    return image;
}

std::optional<DisplayID> CoverWindow::screenDisplayID(const Screen& screen) {
    const auto entry = screen.deviceDescription.find("NSScreenNumber");
    if (entry == screen.deviceDescription.end())
        return std::nullopt;
    const auto number = entry->second.exactUInt32();
    return number ? std::optional(DisplayID(*number)) : std::nullopt;
}

std::optional<Image> CoverWindow::captureWallpaper(DisplayID display, WindowNumber cover) {
    const auto area = machine().screens().displayBounds(display);
    const auto& windowList = machine().windowList();
    const auto list =
        windowList
            .copyWindowInfo(WindowListOption::onScreenOnly | WindowListOption::onScreenBelowWindow, cover)
            .value_or(PropertyList::Array());
    const auto isDictionary = [](const auto& entry) { return entry.template as<PropertyList::Dictionary>(); };
    if (!std::ranges::all_of(list, isDictionary))
        return std::nullopt;
    const auto wallpaper = std::ranges::find_if(
        list, [&](const auto& entry) { return isWallpaperWindow(*isDictionary(entry)); });
    if (wallpaper == list.end())
        return std::nullopt;
    const auto& entry = *isDictionary(*wallpaper);
    const auto number = entry.find(WindowListKey::number);
    const auto exact = number == entry.end() ? std::nullopt : number->second.exactUInt32();
    if (!exact)
        return std::nullopt;
    return windowList.createImage(area, WindowListOption::includingWindow, WindowNumber(*exact),
                                  WindowImageOption::boundsIgnoreFraming | WindowImageOption::bestResolution);
}

bool CoverWindow::isWallpaperWindow(const PropertyList::Dictionary& entry) {
    const auto* owner = textAt(entry, WindowListKey::ownerName);
    const auto* name = textAt(entry, WindowListKey::name);
    if (!owner || !name || *owner != "Dock")
        return false;
    const bool namesWallpapers = machine().systemVersion() >= SystemVersion{14, 0};
    return name->starts_with(namesWallpapers ? "Wallpaper-" : "Desktop");
}

} // namespace tavro
