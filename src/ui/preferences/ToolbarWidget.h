#pragma once

#include "preferences/Toolbar.h"

#include <QWidget>

class QButtonGroup;

namespace tavro {

/// The tabs as a segmented control.
class ToolbarWidget final : public QWidget {
public:
    explicit ToolbarWidget(const Toolbar& toolbar);

private:
    void showSelected();

    const std::shared_ptr<PreferenceState> m_selectedTab;
    QButtonGroup* m_segments;
    Observation m_selection;
};

} // namespace tavro
