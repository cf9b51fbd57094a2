#pragma once

#include "platform/process/Published.h"

#include <string>
#include <vector>

namespace tavro {

/// Whether a newer version has been published: so when neither field is true. Main thread only.
class VersionObserver {
public:
    static VersionObserver& shared();

    VersionObserver() = default;
    VersionObserver(const VersionObserver&) = delete;
    VersionObserver& operator=(const VersionObserver&) = delete;

    /// Starts the check and returns at once; the outcome comes later through the two fields. A record that
    /// cannot be had leaves them as they are. To be called once.
    void checkVersion();

    /// The running version is the newest one, or the record was of no use.
    bool isUpdated() const { return m_isUpdated.get(); }
    /// There is no outcome yet.
    bool loading() const { return m_loading.get(); }
    /// The observer is notified before either field changes.
    [[nodiscard]] std::vector<Observation> willChange(const std::function<void()>& observer);

private:
    void finish(const std::string& data);
    void publish(bool isUpdated);

    Published<bool> m_isUpdated{false};
    Published<bool> m_loading{true};
};

} // namespace tavro
