#include "platform/linux/desktops/RunningDesktop.h"

#include "platform/linux/desktops/Cinnamon.h"
#include "platform/linux/desktops/Gnome.h"
#include "platform/linux/desktops/I3.h"
#include "platform/linux/desktops/Lxde.h"
#include "platform/linux/desktops/Lxqt.h"
#include "platform/linux/desktops/Mate.h"
#include "platform/linux/desktops/Plasma.h"
#include "platform/linux/desktops/Xfce.h"

#include <QString>
#include <QStringList>

#include <type_traits>

namespace tavro {

namespace {

template <class Kind>
std::unique_ptr<Desktop> make(BoundedBus& bus, const GSettings& settings) {
    if constexpr (std::is_constructible_v<Kind, BoundedBus&>)
        return std::make_unique<Kind>(bus);
    else if constexpr (std::is_constructible_v<Kind, const GSettings&>)
        return std::make_unique<Kind>(settings);
    else
        return std::make_unique<Kind>();
}

/// By the names that are registered for XDG_CURRENT_DESKTOP.
constexpr struct {
    const char* name;
    std::unique_ptr<Desktop> (*make)(BoundedBus&, const GSettings&);
} desktops[] = {
    {"XFCE", &make<Xfce>}, {"GNOME", &make<Gnome>},         {"Budgie", &make<Gnome>},
    {"MATE", &make<Mate>}, {"X-Cinnamon", &make<Cinnamon>}, {"KDE", &make<Plasma>},
    {"LXDE", &make<Lxde>}, {"LXQt", &make<Lxqt>},           {"i3", &make<I3>},
};

} // namespace

std::unique_ptr<Desktop> runningDesktop(BoundedBus& bus, const GSettings& settings) {
    for (const auto& name : qEnvironmentVariable("XDG_CURRENT_DESKTOP").split(':'))
        for (const auto& desktop : desktops)
            if (name.compare(QLatin1String(desktop.name), Qt::CaseInsensitive) == 0)
                return desktop.make(bus, settings);
    return std::make_unique<Desktop>();
}

} // namespace tavro
