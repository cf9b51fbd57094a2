#pragma once

#include "platform/linux/notifications/NotificationSwitch.h"

#include <functional>
#include <utility>

namespace tavro {

/// For a server without a switch: its bubbles are kept out of sight.
class BubbleSwitch final : public NotificationSwitch {
public:
    explicit BubbleSwitch(std::function<void(bool)> keepAway)
        : m_keepAway(std::move(keepAway)) {}

    Result<bool, std::string> isOn() override { return m_isOn; }
    std::optional<std::string> setOn(bool isOn) override {
        m_isOn = isOn;
        m_keepAway(isOn);
        return std::nullopt;
    }

private:
    const std::function<void(bool)> m_keepAway;
    bool m_isOn = false;
};

} // namespace tavro
