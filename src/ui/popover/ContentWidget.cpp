#include "ui/popover/ContentWidget.h"

#include "toolkit/Translation.h"
#include "ui/controls/Divider.h"
#include "ui/popover/CustomToogleButton.h"
#include "ui/popover/InAppAlertButton.h"
#include "ui/popover/SimpleToogleButton.h"

#include <QApplication>
#include <QVBoxLayout>

#include <utility>

namespace tavro {

namespace {

constexpr int spacing = 8;
/// Without the margins that the buttons have of their own.
constexpr int padding = static_cast<int>(Constants::popoverPadding) - ToogleButton::margin;

} // namespace

ContentWidget::ContentWidget(const ContentView& view)
    : m_view(view) {
    auto* stack = new QVBoxLayout(this);
    stack->setContentsMargins(0, 0, 0, 0);
    stack->setSpacing(spacing);
    stack->addStretch();
    stack->addWidget(makeHeader());
    stack->addWidget(new Divider(this));
    stack->addWidget(makeRows());
    stack->addStretch();
    refresh();
    m_observations = view.willChange([this] { scheduleRefresh(); });
}

QWidget* ContentWidget::makeHeader() {
    auto* header = new QWidget(this);
    auto* stack = new QVBoxLayout(header);
    stack->setContentsMargins(padding, padding, padding,
                              qRound(ContentView::headerBottomPadding) - ToogleButton::margin);
    m_switch = new CustomToogleButton(
        translated(ContentView::headerTitle), ContentView::headerStyle(), [this] { m_view.tapHeader(); },
        header);
    auto font = m_switch->font();
    font.setPixelSize(static_cast<int>(ContentView::headerFontSize));
    font.setWeight(QFont::Medium);
    m_switch->setFont(font);
    stack->addWidget(m_switch);
    return header;
}

QWidget* ContentWidget::makeRows() {
    auto* rows = m_optionRows = new QWidget(this);
    auto* stack = new QVBoxLayout(rows);
    stack->setContentsMargins(padding, padding, padding,
                              padding + static_cast<int>(ContentView::rowBottomPadding));
    stack->setSpacing(spacing + static_cast<int>(ContentView::rowBottomPadding) - 2 * ToogleButton::margin);
    const auto& options = m_view.settings.options();
    for (std::size_t i = 0; i < options.size(); ++i)
        stack->addWidget(m_rows.emplace_back(new SimpleToogleButton(
            translated(options[i].name), [this, i] { m_view.tapOption(i); }, rows)));
    return rows;
}

// Observers are notified before the change is stored.
void ContentWidget::scheduleRefresh() {
    if (std::exchange(m_isScheduled, true))
        return;
    QMetaObject::invokeMethod(
        this,
        [this] {
            m_isScheduled = false;
            refresh();
        },
        Qt::QueuedConnection);
}

void ContentWidget::refresh() {
    m_switch->setIsOn(m_view.settings.tavroIsOn());
    const auto& options = m_view.settings.options();
    for (std::size_t i = 0; i < m_rows.size() && i < options.size(); ++i)
        m_rows[i]->setIsOn(options[i].isOn);
    if (const auto banner = m_view.banner(); banner && !m_banner)
        showBanner(*banner);
}

// No button has the focus before somebody moves it there.
void ContentWidget::showEvent(QShowEvent* event) {
    setAccessibleName(QApplication::applicationDisplayName()); // which is said when the popover opens
    setFocus();
    QWidget::showEvent(event);
}

// Once it is known that there is a newer version, that stays so.
void ContentWidget::showBanner(const InAppAlert& alert) {
    m_banner = new InAppAlertButton(
        alert, [this] { m_view.tapBanner(); }, this);
    auto* stack = static_cast<QVBoxLayout*>(layout());
    stack->insertWidget(stack->count() - 1, m_banner);
    auto margins = m_optionRows->layout()->contentsMargins();
    margins.setBottom(margins.bottom() + static_cast<int>(InAppAlert::topPadding));
    m_optionRows->layout()->setContentsMargins(margins);
}

} // namespace tavro
