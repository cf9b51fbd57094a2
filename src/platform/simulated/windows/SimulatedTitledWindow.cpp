#include "platform/simulated/windows/SimulatedTitledWindow.h"

namespace tavro {

void SimulatedTitledWindow::setTitle(const std::string& title) {
    if (auto* window = change("setTitle", '"' + title + '"'))
        window->name = title;
}

void SimulatedTitledWindow::center() {
    change("center");
}

void SimulatedTitledWindow::addTitlebarAccessory(std::shared_ptr<const View> view) {
    if (change("addTitlebarAccessory"))
        m_titlebarAccessory = std::move(view);
}

void SimulatedTitledWindow::closeByUser() {
    if (const auto delegate = m_delegate.lock())
        delegate->windowWillClose();
    close();
}

} // namespace tavro
