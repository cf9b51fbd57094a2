#pragma once

#include "platform/process/Published.h"
#include "settings/OptionItem.h"

#include <cstddef>
#include <vector>

namespace tavro {

/// The user's choices for presentation mode and whether it is on; the one place where both are stored.
/// Main thread only.
class UserSettings {
public:
    static UserSettings& shared();

    /// Reads user defaults, with the catalogue's defaults where they hold nothing, and writes every option
    /// back, so that all option keys exist afterwards.
    UserSettings();

    const std::vector<OptionItem>& options() const { return m_options.get(); }
    /// Stores every option, in list order.
    void setOptions(std::vector<OptionItem> options);
    /// An index out of range is ignored.
    void setOptionIsOn(std::size_t index, bool isOn);

    bool tavroIsOn() const { return m_tavroIsOn.get(); }
    void setTavroIsOn(bool isOn);

    /// The observer is notified before either field changes.
    [[nodiscard]] std::vector<Observation> willChange(const std::function<void()>& observer);

private:
    Published<std::vector<OptionItem>> m_options;
    Published<bool> m_tavroIsOn;
};

} // namespace tavro
