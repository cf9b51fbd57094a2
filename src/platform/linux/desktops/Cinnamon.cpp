#include "platform/linux/desktops/Cinnamon.h"

#include "platform/linux/desktops/GnomeBackground.h"

namespace tavro {

std::optional<DesktopBackground> Cinnamon::background(const DesktopScreen& screen) {
    constexpr auto schema = "org.cinnamon.desktop.background";
    const auto settings = m_settings.list({schema});
    const auto found = settings.find(schema);
    if (found == settings.end())
        return std::nullopt;
    return withPresentPicture(parseGnomeBackground(found->second, found->second["picture-uri"].toString()),
                              screen.pixels.size());
}

} // namespace tavro
