#include "platform/linux/input/QtEventMonitors.h"

#include "platform/linux/input/VirtualKeys.h"
#include "platform/linux/windows/QtScreens.h"

#include <QAbstractButton>
#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>

#include <algorithm>

namespace tavro {

namespace {

/// By the ranges of X11/keysymdef.h.
bool isModifierKey(xkb_keysym_t symbol) {
    const auto isWithin = [symbol](xkb_keysym_t first, xkb_keysym_t last) {
        return first <= symbol && symbol <= last;
    };
    return isWithin(XKB_KEY_Shift_L, XKB_KEY_Hyper_R) ||
           isWithin(XKB_KEY_ISO_Lock, XKB_KEY_ISO_Level5_Lock) || symbol == XKB_KEY_Mode_switch;
}

SpecialKey specialKeyOf(int key) {
    if (key >= Qt::Key_F1 && key <= Qt::Key_F35)
        return SpecialKey(static_cast<int>(SpecialKey::f1) + key - Qt::Key_F1);
    switch (key) {
    case Qt::Key_Tab:
        return SpecialKey::tab;
    case Qt::Key_Backspace:
        return SpecialKey::delete_;
    case Qt::Key_Delete:
        return SpecialKey::deleteForward;
    }
    return SpecialKey::none;
}

/// Whether a press there is of a button, which waits for the release. One around other widgets leaves the
/// mouse to them.
bool isControl(QPoint place) {
    const auto* button = qobject_cast<QAbstractButton*>(QApplication::widgetAt(place));
    return button && !button->layout();
}

EventType typeOf(Qt::MouseButton button) {
    if (button == Qt::LeftButton)
        return EventType::leftMouseUp;
    return button == Qt::RightButton ? EventType::rightMouseUp : EventType::none;
}

} // namespace

EventMonitorRef QtEventMonitors::addLocalMonitorForEvents(unsigned mask, EventMonitorHandler handler) {
    if (m_monitors.empty()) {
        // It may be the press that is being handled, for which this is installed.
        m_isFollowedByControl = QGuiApplication::mouseButtons() && isControl(QCursor::pos());
        qApp->installEventFilter(this);
    }
    const EventMonitorRef reference{++m_last};
    m_monitors.emplace(reference, Monitor{mask, std::move(handler)});
    return reference;
}

void QtEventMonitors::removeMonitor(EventMonitorRef monitor) {
    m_monitors.erase(monitor);
    if (m_monitors.empty())
        qApp->removeEventFilter(this);
}

// An event comes to the window first, and then to one widget after the other.
bool QtEventMonitors::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::ShortcutOverride && wants(EventType::keyDown)) {
        event->accept(); // shortcuts of the window are not to take the key before its press comes
        return true;
    }
    if (!watched->isWindowType())
        return false;
    std::optional<Event> described;
    switch (event->type()) {
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
        described = describe(static_cast<const QKeyEvent&>(*event));
        break;
    case QEvent::MouseButtonPress:
        m_isFollowedByControl = isControl(static_cast<const QMouseEvent&>(*event).globalPosition().toPoint());
        break;
    case QEvent::MouseButtonRelease:
        if (!m_isFollowedByControl)
            described = describe(static_cast<const QMouseEvent&>(*event));
        break;
    default:
        break;
    }
    return described && isDropped(*described);
}

std::optional<Event> QtEventMonitors::describe(const QKeyEvent& event) const {
    if (isModifierKey(event.nativeVirtualKey()))
        return std::nullopt;
    const auto type = event.type() == QEvent::KeyPress ? EventType::keyDown : EventType::keyUp;
    const auto keycode = event.nativeScanCode();
    const auto keyCode =
        keycode <= 0xFF ? virtualKeyOfKeycode(static_cast<std::uint8_t>(keycode)) : std::nullopt;
    return Event{type, modifierFlags(event.nativeModifiers()), keyCode, specialKeyOf(event.key())};
}

std::optional<Event> QtEventMonitors::describe(const QMouseEvent& event) const {
    const auto type = typeOf(event.button());
    if (type == EventType::none)
        return std::nullopt;
    const QPointF place = event.globalPosition().toPoint();
    return Event{type, 0, std::nullopt, SpecialKey::none, QtScreens::coordinates().fromToolkit(place)};
}

// From the server's bits: the toolkit's own flags leave out Caps Lock.
unsigned QtEventMonitors::modifierFlags(std::uint32_t state) const {
    using namespace EventModifierFlags;
    const std::pair<std::uint32_t, unsigned> bits[] = {
        {XCB_MOD_MASK_SHIFT, shift},
        {XCB_MOD_MASK_LOCK, capsLock},
        {XCB_MOD_MASK_CONTROL, control},
        {m_keyboard.modifiers().alt, option},
        {m_keyboard.modifiers().super, command},
    };
    unsigned flags = 0;
    for (const auto& [bit, flag] : bits)
        if (state & bit)
            flags |= flag;
    return flags;
}

bool QtEventMonitors::wants(EventType type) const {
    return std::ranges::any_of(m_monitors,
                               [type](const auto& entry) { return entry.second.mask & eventMask(type); });
}

bool QtEventMonitors::isDropped(const Event& event) {
    std::optional<Event> current = event;
    const auto monitors = m_monitors; // a handler may remove its own
    for (const auto& [reference, monitor] : monitors)
        if (current && m_monitors.contains(reference) && (monitor.mask & eventMask(current->type)))
            current = monitor.handler(*current);
    return !current;
}

} // namespace tavro
