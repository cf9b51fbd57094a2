#pragma once

#include "platform/menubar/ControlStrip.h"
#include "platform/simulated/process/Journal.h"

#include <set>
#include <string>
#include <vector>

namespace tavro {

/// The control strip of a Touch Bar, with a finger. It shows a button as it was when it was last set as the
/// view of its item.
class SimulatedControlStrip final : public ControlStrip {
public:
    explicit SimulatedControlStrip(Journal& journal)
        : m_journal(journal) {}

    void showsCloseBoxWhenFrontMost(bool shows) override;
    void setPresence(const std::string& identifier, bool isPresent) override;
    void addSystemTrayItem(std::shared_ptr<CustomTouchBarItem> item) override;
    void removeSystemTrayItem(const std::shared_ptr<CustomTouchBarItem>& item) override;

    /// The buttons that are there to be seen, in the order in which their items came.
    std::vector<TouchBarButton> shown() const;
    /// A finger touches one of them.
    void touch(std::size_t index) const { shown().at(index).action(); }
    /// The process has ended, and took its items along.
    void endProcess();

private:
    struct Entry {
        std::shared_ptr<CustomTouchBarItem> item;
        TouchBarButton look;
        Observation viewChange;
    };

    void update(const CustomTouchBarItem& item);

    Journal& m_journal;
    std::vector<Entry> m_tray;
    std::set<std::string> m_present;
};

} // namespace tavro
