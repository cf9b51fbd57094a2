#pragma once

#include "platform/simulated/windows/SimulatedWindow.h"
#include "platform/windows/TitledWindow.h"

namespace tavro {

class SimulatedTitledWindow final : public SimulatedWindow<TitledWindow> {
public:
    using SimulatedWindow::SimulatedWindow;

    void setTitle(const std::string& title) override;
    void center() override;
    void addTitlebarAccessory(std::shared_ptr<const View> view) override;
    void setDelegate(std::weak_ptr<WindowDelegate> delegate) override { m_delegate = std::move(delegate); }

    /// The user closes it.
    void closeByUser();
    /// Null before one is added.
    const std::shared_ptr<const View>& titlebarAccessory() const { return m_titlebarAccessory; }

private:
    std::shared_ptr<const View> m_titlebarAccessory;
    std::weak_ptr<WindowDelegate> m_delegate;
};

} // namespace tavro
