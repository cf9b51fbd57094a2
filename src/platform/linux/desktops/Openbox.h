#pragma once

#include "platform/linux/desktops/DesktopShortcut.h"

namespace tavro {

/// The combinations of openbox, the window manager of LXDE and mostly of LXQt, by the first of its files that
/// the user's configuration folders have, such as "rc.xml".
std::vector<DesktopShortcut> openboxShortcuts(const QStringList& files);

} // namespace tavro
