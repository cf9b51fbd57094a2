#include "ui/preferences/ToolbarWidget.h"

#include "ui/controls/PushButton.h"

#include <QButtonGroup>
#include <QHBoxLayout>

namespace tavro {

ToolbarWidget::ToolbarWidget(const Toolbar& toolbar) {
    constexpr int padding = static_cast<int>(Toolbar::padding);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(padding, padding, padding, padding);
    auto* segments = new QWidget(this);
    segments->setMaximumWidth(static_cast<int>(Toolbar::greatestWidth));
    auto* side = new QHBoxLayout(segments);
    side->setContentsMargins(0, 0, 0, 0);
    side->setSpacing(0);
    auto* group = new QButtonGroup(this);
    for (const auto& tab : toolbar.tabs) {
        auto* button = new PushButton(QString::fromStdString(tab), segments);
        button->setCheckable(true);
        button->setAutoExclusive(true); // so that it says what it is: one of several
        group->addButton(button, static_cast<int>(group->buttons().size()));
        side->addWidget(button);
    }
    if (auto* selected = group->button(toolbar.selectedTab->pageIndex.get()))
        selected->setChecked(true);
    // Assistive technology toggles one without a click.
    connect(group, &QButtonGroup::idToggled, this, [state = toolbar.selectedTab](int index, bool isOn) {
        if (isOn)
            state->pageIndex.set(index);
    });
    row->addStretch();
    row->addWidget(segments);
    row->addStretch();
}

} // namespace tavro
