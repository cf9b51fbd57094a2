#pragma once

#include "platform/linux/menubar/TrayIcon.h"
#include "platform/linux/process/OncePerTurn.h"
#include "platform/menubar/ControlStrip.h"

#include <QIcon>

#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

namespace tavro {

class TrayHost;

/// Buttons of the desktop's tray, beside the status item: desktops have no Touch Bar. A button is drawn as a
/// rounded rectangle of its bezel colour with its image, or title, on it; any click is a touch.
class TrayControlStrip final : public ControlStrip {
public:
    TrayControlStrip(TrayHost& host, MainQueue& queue);
    ~TrayControlStrip() override;

    /// Nothing covers a tray.
    void showsCloseBoxWhenFrontMost(bool) override {}
    void setPresence(const std::string& identifier, bool isPresent) override;
    void addSystemTrayItem(std::shared_ptr<CustomTouchBarItem> item) override;
    void removeSystemTrayItem(const std::shared_ptr<CustomTouchBarItem>& item) override;

private:
    struct Entry {
        std::shared_ptr<CustomTouchBarItem> item;
        Observation viewChange;
        std::unique_ptr<TrayIcon> icon; // while it shows
    };

    void updateAll();
    void update(Entry& entry);
    void show(Entry& entry, const TouchBarButton& button);
    const QIcon& iconOf(const TouchBarButton& button);
    static void touch(const CustomTouchBarItem& item);

    TrayHost& m_host;
    OncePerTurn m_updating;
    bool m_hasHost = false;
    std::vector<std::unique_ptr<Entry>> m_entries;
    std::set<std::string> m_present;
    std::map<QString, QIcon> m_icons; // by what they show
};

} // namespace tavro
