#pragma once

#include "platform/linux/process/OncePerTurn.h"
#include "platform/plist/PlistNode.h"
#include "platform/storage/UserDefaults.h"

#include <QObject>

#include <filesystem>
#include <future>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace tavro {

class Log;
class MainQueue;

/// User defaults in a property-list file, written whole to a temporary file beside it, synchronized and
/// renamed over it, mode 0600. A file that cannot be read as a property list is set aside, never overwritten.
/// Values of other programs and of other versions stay in it as they are. What somebody else writes into the
/// file meanwhile stays as well, but for the keys that have changed here since; it is read at the next
/// launch. Unless asked to synchronize it writes on a thread of its own: disks may take their time.
class PlistUserDefaults final : public UserDefaults {
public:
    /// The log is written to from that thread, too.
    PlistUserDefaults(std::filesystem::path file, MainQueue& queue, Log& log);
    PlistUserDefaults(const PlistUserDefaults&) = delete;
    PlistUserDefaults& operator=(const PlistUserDefaults&) = delete;
    /// Waits for what is being written.
    ~PlistUserDefaults() override = default;

    /// `com.vantrelo.TavroPRO.plist` in the user's configuration folder (XDG base directories).
    static std::filesystem::path standardFile();

    std::optional<PropertyList> object(const std::string& key) const override;
    void setObject(const std::string& key, PropertyList value) override;
    void removeObject(const std::string& key) override;
    bool synchronize() override;
    void whenWritten(std::function<void()> block) override;

private:
    /// Keys, and their values; null for those that have been removed.
    using Changes = std::map<std::string, PlistNode>;

    PlistNode read();
    void setAside(const std::string& why);
    void changed(const std::string& key);
    void save();
    void startWriting();
    void finishWriting();
    void writingEnded();
    void runWaiting();
    bool write(const PlistNode& all, const Changes& changes);

    std::filesystem::path m_file;
    Log& m_log;
    PlistNode m_root; // a dictionary
    OncePerTurn m_saving;
    std::set<std::string> m_unsaved; // keys that have changed since the last write began
    std::set<std::string> m_beingWritten;
    bool m_mayWrite = true; // these two are the writer's while it runs
    bool m_failureReported = false;
    std::vector<std::function<void()>> m_waiting;
    QObject m_context;           // of blocks that the writer's thread sends here
    std::future<bool> m_writing; // the last: it ends first
};

} // namespace tavro
