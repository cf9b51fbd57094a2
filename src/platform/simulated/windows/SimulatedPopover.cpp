#include "platform/simulated/windows/SimulatedPopover.h"

namespace tavro {

void SimulatedPopover::setContentSize(Size size) {
    m_journal.record("popover.setContentSize", size.width, size.height);
}

void SimulatedPopover::setBehavior(PopoverBehavior behavior) {
    m_journal.record("popover.setBehavior", static_cast<int>(behavior));
}

void SimulatedPopover::setAnimates(bool animates) {
    m_journal.record("popover.setAnimates", animates);
}

void SimulatedPopover::show(Rect positioningRect, const StatusBarButton&, RectEdge preferredEdge) {
    m_journal.record("popover.show", positioningRect, static_cast<int>(preferredEdge));
    m_isShown = true;
}

void SimulatedPopover::makeKey() {
    m_journal.record("popover.makeKey");
}

void SimulatedPopover::performClose() {
    m_journal.record("popover.performClose");
    m_isShown = false;
}

void SimulatedPopover::close() {
    m_journal.record("popover.close");
    m_isShown = false;
}

} // namespace tavro
