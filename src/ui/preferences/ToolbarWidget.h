#pragma once

#include "preferences/Toolbar.h"

#include <QWidget>

namespace tavro {

/// The tabs as a segmented control.
class ToolbarWidget final : public QWidget {
public:
    explicit ToolbarWidget(const Toolbar& toolbar);
};

} // namespace tavro
