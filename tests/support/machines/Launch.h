#pragma once

#include "app/AppDelegate.h"
#include "app/HideApps.h"
#include "desktop/HideDesktop.h"
#include "platform/process/Process.h"
#include "platform/simulated/menubar/SimulatedStatusItem.h"
#include "platform/simulated/process/SimulatedMac.h"
#include "settings/UserSettings.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tavro {

using Lines = std::vector<std::string>;

/// The lines as one text, for the order of many.
inline std::string joined(const Lines& lines) {
    std::string text;
    for (const auto& line : lines)
        text += (text.empty() ? "" : "; ") + line;
    return text;
}

/// One launch of the product, from its start to a kill. Two in a row over one machine are a relaunch.
class Launch {
public:
    explicit Launch(SimulatedMac& mac)
        : process(mac)
        , m_mac(mac) {
        mac.application().run(delegate);
    }
    ~Launch() { m_mac.endProcess(); }

    void click(EventType type, unsigned modifierFlags = 0) {
        m_mac.statusBar().click(item(), type, modifierFlags);
        m_mac.mainQueue().runUntilIdle();
    }
    void switchPresentationMode() { click(EventType::leftMouseUp, EventModifierFlags::option); }

    SimulatedStatusItem& item() { return *m_mac.statusBar().items().front(); }
    std::string shownImage() {
        const auto& image = item().button()->image();
        return image ? image->name : "none";
    }

    Process process;
    AppDelegate delegate;

private:
    SimulatedMac& m_mac;
};

/// A test on a machine of its own. A diagnostic line that it does not take fails it.
class SimulatedMacTest : public testing::Test {
protected:
    ~SimulatedMacTest() override { EXPECT_EQ(mac.log().takeDiagnosed(), Lines{}); }

    WindowNumber openWindow(const std::string& application) {
        const auto number = mac.workspace().openWindow(mac.workspace().launch(application), application,
                                                       {{100, 100}, {800, 600}});
        mac.mainQueue().runUntilIdle();
        return number;
    }
    ApplicationID owner(WindowNumber window) { return mac.windowServer().find(window)->owner; }
    bool isVisible(WindowNumber window) {
        return mac.windowServer().isVisible(*mac.windowServer().find(window));
    }

    SimulatedMac mac;
};

} // namespace tavro
