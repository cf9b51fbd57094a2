#pragma once

#include "platform/linux/process/OncePerTurn.h"
#include "platform/plist/PlistNode.h"
#include "platform/storage/UserDefaults.h"

#include <filesystem>
#include <set>
#include <string>

namespace tavro {

class Log;
class MainQueue;

/// User defaults in a property-list file, written whole to a temporary file beside it, synchronized and
/// renamed over it, mode 0600. A file that cannot be read as a property list is set aside, never overwritten.
/// Values of other programs and of other versions stay in it as they are. What somebody else writes into the
/// file meanwhile stays as well, but for the keys that have changed here since; it is read at the next
/// launch.
class PlistUserDefaults final : public UserDefaults {
public:
    PlistUserDefaults(std::filesystem::path file, MainQueue& queue, Log& log);

    /// `com.vantrelo.TavroPRO.plist` in the user's configuration folder (XDG base directories).
    static std::filesystem::path standardFile();

    std::optional<PropertyList> object(const std::string& key) const override;
    void setObject(const std::string& key, PropertyList value) override;
    void removeObject(const std::string& key) override;
    bool synchronize() override;

private:
    PlistNode read();
    void setAside(const std::string& why);
    void changed(const std::string& key);
    PlistNode merged();

    std::filesystem::path m_file;
    Log& m_log;
    PlistNode m_root; // a dictionary
    OncePerTurn m_saving;
    std::set<std::string> m_unsaved; // keys that have changed since the file was written
    bool m_mayWrite = true;
    bool m_failureReported = false;
};

} // namespace tavro
