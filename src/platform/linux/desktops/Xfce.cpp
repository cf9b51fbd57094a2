#include "platform/linux/desktops/Xfce.h"

#include "platform/linux/desktops/SettingsText.h"

#include <algorithm>
#include <cstdint>

namespace tavro {

namespace {

/// Of shares of 1: red, green, blue, and how opaque it is.
std::uint32_t colorOf(const QVariant& value) {
    const auto parts = value.toList();
    std::uint32_t color = 0;
    for (qsizetype i = 0; i < 3; ++i)
        color = color << 8 |
                static_cast<std::uint32_t>(std::clamp(parts.value(i).toDouble(), 0.0, 1.0) * 255 + 0.5);
    return color;
}

} // namespace

std::optional<DesktopBackground> Xfce::background(const DesktopScreen& screen) {
    const auto reply = m_xfconf.list("xfce4-desktop");
    return reply ? std::optional(parseXfceBackground(*reply, screen)) : std::nullopt;
}

DesktopBackground parseXfceBackground(const QVariantMap& properties, const DesktopScreen& screen) {
    using Scaling = BackgroundStyle::Scaling;
    using Shading = BackgroundStyle::Shading;
    const bool isOfWorkspace = !properties.value("/backdrop/single-workspace-mode", true).toBool();
    const auto workspace =
        isOfWorkspace ? screen.workspace : properties.value("/backdrop/single-workspace-number", 0).toInt();
    const auto folder = "/backdrop/screen0/monitor" + QString::fromStdString(screen.connector).remove(' ') +
                        "/workspace" + QString::number(workspace) + '/';
    const auto number = [&](const char* name, int otherwise) {
        return properties.value(folder + name, otherwise).toInt();
    };
    // The numbers that its settings have for them.
    constexpr Scaling scalings[] = {Scaling::zoomed, Scaling::centered, Scaling::tiled, Scaling::stretched,
                                    Scaling::fitted, Scaling::zoomed,   Scaling::zoomed};
    constexpr int none = 0, zoomed = 5, spanning = 6, horizontal = 1, vertical = 2;
    const auto style = std::clamp(number("image-style", zoomed), none, spanning);
    DesktopBackground background;
    if (style != none)
        background.picture = localFile(properties[folder + "last-image"].toString());
    const auto shading = number("color-style", 0);
    background.style = {scalings[style],
                        shading == horizontal ? Shading::horizontal
                        : shading == vertical ? Shading::vertical
                                              : Shading::solid,
                        BackgroundStyle::Scaler::gdkPixbuf,
                        {colorOf(properties[folder + "rgba1"]), colorOf(properties[folder + "rgba2"])}};
    background.spansScreens = style == spanning;
    background.isOfWorkspace = isOfWorkspace;
    return background;
}

std::vector<DesktopShortcut> Xfce::shortcuts() {
    const auto reply = m_xfconf.list("xfce4-keyboard-shortcuts");
    return reply ? parseXfceShortcuts(*reply) : std::vector<DesktopShortcut>();
}

// Of commands and of the window manager, each with defaults and a copy of them that the user changes. Texts
// are actions; the members of an action stand one level deeper.
std::vector<DesktopShortcut> parseXfceShortcuts(const QVariantMap& properties) {
    std::vector<DesktopShortcut> shortcuts;
    for (const QString base : {"/commands/", "/xfwm4/"}) {
        const bool isCustom = properties.value(base + "custom/override").toBool();
        const QString folder = base + (isCustom ? "custom/" : "default/");
        for (auto entry = properties.begin(); entry != properties.end(); ++entry) {
            const auto name = entry.key().mid(folder.size());
            const bool isAction = entry.key().startsWith(folder) && !name.contains('/') &&
                                  entry->userType() == QMetaType::QString && !entry->toString().isEmpty();
            if (const auto shortcut = isAction ? parseAccelerator(name) : std::nullopt)
                shortcuts.push_back(*shortcut);
        }
    }
    return shortcuts;
}

} // namespace tavro
