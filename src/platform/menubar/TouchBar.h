#pragma once

#include "platform/process/ObserverList.h"
#include "platform/storage/Image.h"
#include "platform/windows/Color.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>

namespace tavro {

/// A push button for the Touch Bar: a description, shown by the machine.
struct TouchBarButton {
    /// Shown where there is no image.
    std::string title;
    std::optional<NamedImage> image;
    /// None: the colour that the system gives to buttons.
    std::optional<Color> bezelColor;
    std::function<void()> action;
};

/// An item of the Touch Bar whose look is a button. Main thread only.
class CustomTouchBarItem {
public:
    explicit CustomTouchBarItem(std::string identifier)
        : m_identifier(std::move(identifier)) {}

    const std::string& identifier() const { return m_identifier; }
    /// Its name for people, in English. To be set before it is shown.
    const std::string& customizationLabel() const { return m_customizationLabel; }
    void setCustomizationLabel(std::string label) { m_customizationLabel = std::move(label); }
    /// Null before it is set.
    const std::shared_ptr<const TouchBarButton>& view() const { return m_view; }
    /// Setting the button that is the view already shows what has changed about it.
    void setView(std::shared_ptr<const TouchBarButton> view) {
        m_view = std::move(view);
        m_viewChange.notify();
    }
    /// For the machine that shows the item: the observer is notified after the view was set, to whatever.
    [[nodiscard]] Observation viewDidChange(std::function<void()> observer) {
        return m_viewChange.add(std::move(observer));
    }

private:
    const std::string m_identifier;
    std::string m_customizationLabel;
    std::shared_ptr<const TouchBarButton> m_view;
    ObserverList<> m_viewChange;
};

} // namespace tavro
