#include "preferences/PreferenceView.h"

#include "platform/process/Machine.h"
#include "platform/process/Process.h"
#include "platform/windows/WindowServer.h"
#include "preferences/Toolbar.h"

namespace tavro {

namespace {

WindowServer& windowServer() {
    return machine().windowServer();
}

std::shared_ptr<TitledWindow> makeWindow() {
    const auto screen = machine().screens().mainScreen();
    constexpr unsigned style = WindowStyleMask::titled | WindowStyleMask::closable |
                               WindowStyleMask::miniaturizable | WindowStyleMask::fullSizeContentView;
    return windowServer().createTitledWindow({.contentRect = {{0, 0}, PreferenceView::contentSize},
                                              .styleMask = style,
                                              .screen = screen.value_or(Screen())});
}

} // namespace

PreferenceView::PreferenceView(int pageIndex)
    : prefsWindowDelegate(std::make_shared<PreferenceViewWindowDelegate>())
    , state(std::make_shared<PreferenceState>())
    , window(makeWindow()) {
    if (!window)
        return;
    window->center();
    window->setTitle("");
    window->setContentView(std::make_shared<HostingView<PreferenceView>>(*this));
    window->setDelegate(prefsWindowDelegate);
    state->pageIndex.set(pageIndex);
    addToolbar();
    prefsWindowDelegate->windowIsOpen = true;
    window->setLevel(windowServer().levelForKey(WindowLevelKey::normal));
    show();
}

void PreferenceView::addToolbar() {
    window->addTitlebarAccessory(std::make_shared<HostingView<Toolbar>>(Toolbar{{"General"}, state}));
}

void PreferenceView::show() {
    window->orderFront();
    window->makeKeyAndOrderFront();
    window->orderFrontRegardless();
}

} // namespace tavro
