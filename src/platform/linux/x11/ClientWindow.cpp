#include "platform/linux/x11/ClientWindow.h"

#include "platform/linux/x11/XConnection.h"

#include <algorithm>
#include <array>

namespace tavro {

namespace {

bool contains(const std::vector<std::uint32_t>& values, std::uint32_t value) {
    return std::ranges::find(values, value) != values.end();
}

bool isPartOfTheDesktop(const std::vector<std::uint32_t>& types, const XAtoms& atoms) {
    const std::array others{atoms.netWmWindowTypeDesktop, atoms.netWmWindowTypeDock,
                            atoms.netWmWindowTypeNotification};
    return std::ranges::find_first_of(types, others) != types.end();
}

std::string numbered(const char* kind, std::optional<std::uint32_t> number) {
    return number ? kind + std::string(" ") + std::to_string(*number) : std::string();
}

} // namespace

ClientWindow ClientWindow::from(xcb_window_t id, const ClientProperties& properties, const XAtoms& atoms) {
    const bool isTransient = properties.transientFor.value_or(XCB_NONE) != XCB_NONE;
    ClientWindow window;
    window.id = id;
    window.application = applicationOf(id, properties.application);
    // A window manager without workspaces says nothing.
    window.workspace = properties.workspace.value_or(allWorkspaces);
    window.isMinimised = contains(properties.state, atoms.netWmStateHidden);
    const bool isOurPopover = className(properties.application.wmClass) == "tavropro" &&
                              contains(properties.state, atoms.netWmStateSkipTaskbar);
    window.isApplicationWindow =
        !isTransient && !isOurPopover && !isPartOfTheDesktop(properties.types, atoms);
    window.isDesktop = contains(properties.types, atoms.netWmWindowTypeDesktop);
    window.isPanel = contains(properties.types, atoms.netWmWindowTypeDock);
    if (properties.mark) {
        window.hiddenMark = *properties.mark & ~concealedFlag;
        window.isConcealed = (*properties.mark & concealedFlag) != 0;
    }
    return window;
}

std::string className(const std::string& wmClass) {
    const auto end = wmClass.find('\0');
    return end == std::string::npos ? wmClass : std::string(wmClass.c_str() + end + 1);
}

// The first two are what a program says of itself for the desktop; the class is the same for all its windows,
// but two programs may share one; a leader (ICCCM) or a process groups the windows of one run only.
std::string applicationOf(xcb_window_t window, const ApplicationHints& hints) {
    const std::array names{hints.gtkApplication, hints.desktopFile, className(hints.wmClass),
                           numbered("leader", hints.leader), numbered("pid", hints.pid)};
    const auto name = std::ranges::find_if(names, [](const auto& text) { return !text.empty(); });
    return name == names.end() ? numbered("window", window) : *name;
}

} // namespace tavro
