#include "platform/linux/desktops/Cinnamon.h"

#include "platform/linux/desktops/GnomeBackground.h"
#include "platform/linux/desktops/GnomeBindings.h"

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

std::vector<DesktopShortcut> Cinnamon::shortcuts() {
    const QString keybindings = "org.cinnamon.desktop.keybindings";
    const auto deadline = m_settings.deadline();
    auto all = m_settings.list(
        {keybindings, keybindings + ".wm", keybindings + ".media-keys", "org.cinnamon.muffin.keybindings"},
        deadline);
    // What the user has added: a list of names, each with bindings.
    QStringList added;
    for (const auto& name : all[keybindings].take("custom-list").toStringList())
        added += keybindings + ".custom-keybinding:/org/cinnamon/desktop/keybindings/custom-keybindings/" +
                 name + '/';
    all.merge(bindingsAt(m_settings, added, deadline));
    return parseAccelerators(all);
}

} // namespace tavro
