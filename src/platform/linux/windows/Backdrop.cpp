#include "platform/linux/windows/Backdrop.h"

#include <xcb/shape.h>

#include <algorithm>
#include <vector>

namespace tavro {

namespace {

constexpr XEventKind<xcb_shape_notify_event_t> shapeNotify{XCB_SHAPE_NOTIFY, &xcb_shape_id};

bool managesDesktopWindows(const XConnection& x) {
    const auto supported = x.values(x.request(x.root(), x.atoms().netSupported));
    return std::ranges::count(supported, x.atoms().netWmWindowTypeDesktop) > 0;
}

} // namespace

Backdrop::Backdrop(XConnection& x, xcb_window_t number, const QRect& place, const Settings& settings)
    : Backdrop(x, number, place, settings, managesDesktopWindows(x)) {}

Backdrop::Backdrop(XConnection& x, xcb_window_t number, const QRect& place, const Settings& settings,
                   bool isManaged)
    : PaintedWindow(x, number, isManaged ? Kind::managed : Kind::unmanaged, x.root(), place)
    , m_x(x)
    , m_isManaged(isManaged) {
    if (!isManaged) {
        m_events = {x.onPropertyChange(x.root(), x.atoms().netClientListStacking,
                                       [this] { PaintedWindow::show(XCB_STACK_MODE_BELOW); })};
        return;
    }
    describe(place, settings);
    if (settings.passesClicks)
        m_events = {x.on(XEvents::reparentNotify,
                         [this](const auto& event) {
                             if (event.window == this->number())
                                 emptyFrame();
                         }),
                    x.on(shapeNotify, [this](const auto& event) {
                        const bool takesClicks =
                            !event.shaped || (event.extents_width > 0 && event.extents_height > 0);
                        if (event.affected_window == m_frame && event.shape_kind == XCB_SHAPE_SK_INPUT &&
                            takesClicks)
                            passClicks(m_x, m_frame);
                    })};
}

void Backdrop::show() {
    PaintedWindow::show(XCB_STACK_MODE_BELOW);
}

void Backdrop::describe(const QRect& place, const Settings& settings) {
    const auto& atoms = m_x.atoms();
    setValues(atoms.netWmWindowType, XCB_ATOM_ATOM, {atoms.netWmWindowTypeDesktop});
    std::vector<std::uint32_t> state{atoms.netWmStateBelow};
    if (settings.onAllWorkspaces) {
        // Some window managers follow only the state, others only the desktop number.
        constexpr std::uint32_t all = 0xFFFFFFFF;
        state.push_back(atoms.netWmStateSticky);
        setValues(atoms.netWmDesktop, XCB_ATOM_CARDINAL, {all});
    }
    if (settings.skipsSwitchers)
        state.insert(state.end(), {atoms.netWmStateSkipTaskbar, atoms.netWmStateSkipPager});
    setValues(atoms.netWmState, XCB_ATOM_ATOM, state);
    // ICCCM, WM_NORMAL_HINTS: position and size are meant, and without the frame; WM_HINTS: no input.
    constexpr std::uint32_t userPosition = 1, userSize = 2, windowGravity = 512, inputHint = 1;
    std::vector<std::uint32_t> hints(18);
    hints[0] = userPosition | userSize | windowGravity;
    hints[1] = static_cast<std::uint32_t>(place.x());
    hints[2] = static_cast<std::uint32_t>(place.y());
    hints[3] = static_cast<std::uint32_t>(place.width());
    hints[4] = static_cast<std::uint32_t>(place.height());
    hints.back() = XCB_GRAVITY_STATIC;
    setValues(XCB_ATOM_WM_NORMAL_HINTS, XCB_ATOM_WM_SIZE_HINTS, hints);
    std::vector<std::uint32_t> input(9);
    input[0] = inputHint;
    setValues(XCB_ATOM_WM_HINTS, XCB_ATOM_WM_HINTS, input);
}

// The window manager's frame takes the clicks that its window lets through, so it is emptied as well, now and
// whenever the window manager shapes it anew.
void Backdrop::emptyFrame() {
    m_frame = m_x.topLevelOf(number());
    if (m_frame == number() || !m_x.has(xcb_shape_id))
        return;
    xcb_shape_select_input(m_x.raw(), m_frame, true);
    passClicks(m_x, m_frame);
    m_x.flush();
}

} // namespace tavro
