#include "ui/preferences/ToolbarWidget.h"

#include "ui/controls/PushButton.h"

#include <QButtonGroup>
#include <QHBoxLayout>

namespace tavro {

ToolbarWidget::ToolbarWidget(const Toolbar& toolbar)
    : m_selectedTab(toolbar.selectedTab)
    , m_segments(new QButtonGroup(this))
    , m_selection(m_selectedTab->pageIndex.willChange([this] {
        QMetaObject::invokeMethod( // when it has changed
            this, [this] { showSelected(); }, Qt::QueuedConnection);
    })) {
    constexpr int padding = static_cast<int>(Toolbar::padding);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(padding, padding, padding, padding);
    auto* segments = new QWidget(this);
    segments->setMaximumWidth(static_cast<int>(Toolbar::greatestWidth));
    auto* side = new QHBoxLayout(segments);
    side->setContentsMargins(0, 0, 0, 0);
    side->setSpacing(0);
    for (const auto& tab : toolbar.tabs) {
        auto* button = new PushButton(QString::fromStdString(tab), segments);
        button->setCheckable(true);
        button->setAutoExclusive(true); // so that it says what it is: one of several
        m_segments->addButton(button, static_cast<int>(m_segments->buttons().size()));
        side->addWidget(button);
    }
    showSelected();
    // Assistive technology toggles one without a click.
    connect(m_segments, &QButtonGroup::idToggled, this, [this](int index, bool isOn) {
        if (isOn && index != m_selectedTab->pageIndex.get())
            m_selectedTab->pageIndex.set(index);
    });
    row->addStretch();
    row->addWidget(segments);
    row->addStretch();
}

void ToolbarWidget::showSelected() {
    if (auto* selected = m_segments->button(m_selectedTab->pageIndex.get()))
        selected->setChecked(true);
}

} // namespace tavro
