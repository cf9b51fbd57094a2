#pragma once

#include "platform/menubar/Menu.h"

#include <QMenu>

#include <memory>

namespace tavro {

/// The menu as the toolkit shows it, in the user's language.
std::unique_ptr<QMenu> toolkitMenu(const Menu& menu);

} // namespace tavro
