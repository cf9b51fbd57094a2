#include "platform/simulated/windows/SimulatedWindow.h"

#include <string>

namespace tavro {

SimulatedWindow::SimulatedWindow(WindowNumber number, SimulatedWindowServer& server, Journal& journal)
    : m_number(number)
    , m_server(server)
    , m_journal(journal) {}

SimulatedWindow::~SimulatedWindow() {
    m_server.remove(m_number);
}

template <class... Values>
ServerWindow* SimulatedWindow::change(const char* call, const Values&... values) {
    auto* window = m_server.find(m_number);
    if (window)
        m_journal.record(std::string("window.") + call, values...);
    return window;
}

void SimulatedWindow::setLevel(int level) {
    if (change("setLevel", level))
        m_server.setLevel(m_number, level);
}

void SimulatedWindow::setCollectionBehavior(unsigned behavior) {
    change("setCollectionBehavior", behavior);
}

void SimulatedWindow::setStyleMask(unsigned mask) {
    change("setStyleMask", mask);
}

void SimulatedWindow::setTitle(const std::string& title) {
    if (auto* window = change("setTitle", '"' + title + '"'))
        window->name = title;
}

void SimulatedWindow::setTitleHidden(bool hidden) {
    change("setTitleHidden", hidden);
}

void SimulatedWindow::setMovableByWindowBackground(bool movable) {
    change("setMovableByWindowBackground", movable);
}

void SimulatedWindow::setCanHide(bool canHide) {
    if (auto* window = change("setCanHide", canHide))
        window->canHide = canHide;
}

void SimulatedWindow::setHasShadow(bool hasShadow) {
    change("setHasShadow", hasShadow);
}

void SimulatedWindow::setIgnoresMouseEvents(bool ignores) {
    if (auto* window = change("setIgnoresMouseEvents", ignores))
        window->ignoresMouseEvents = ignores;
}

void SimulatedWindow::setBackgroundColor(Color color) {
    change("setBackgroundColor", color.red, color.green, color.blue, color.alpha);
}

void SimulatedWindow::setFrame(Rect frame, bool display) {
    if (auto* window = change("setFrame", frame, display))
        window->frame = frame;
}

void SimulatedWindow::center() {
    change("center");
}

void SimulatedWindow::addTitlebarAccessory(std::shared_ptr<const View>) {
    change("addTitlebarAccessory");
}

void SimulatedWindow::closeByUser() {
    if (const auto delegate = m_delegate.lock())
        delegate->windowWillClose();
    close();
}

void SimulatedWindow::setContentView(std::shared_ptr<const View> view) {
    if (change("setContentView"))
        m_contentView = std::move(view);
}

void SimulatedWindow::orderFrontRegardless() {
    if (change("orderFrontRegardless"))
        m_server.orderFront(m_number);
}

void SimulatedWindow::orderFront() {
    if (change("orderFront"))
        m_server.orderFront(m_number);
}

void SimulatedWindow::makeKeyAndOrderFront() {
    if (change("makeKeyAndOrderFront"))
        m_server.orderFront(m_number);
}

void SimulatedWindow::close() {
    if (change("close", windowNumber()))
        m_server.remove(m_number);
    // The view may hold the last reference to this window.
    const auto view = std::move(m_contentView);
}

} // namespace tavro
