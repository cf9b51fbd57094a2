#include "platform/linux/storage/PlistUserDefaults.h"

#include "platform/linux/storage/AtomicFile.h"
#include "platform/plist/PlistNode.h"
#include "platform/process/Log.h"
#include "platform/process/MainQueue.h"

#include <QStandardPaths>

#include <cerrno>
#include <cstring>

namespace tavro {

namespace {

namespace fs = std::filesystem;

/// Many times what the application stores.
constexpr std::size_t largestFile = 65536;

fs::path firstFreeName(const fs::path& file) {
    std::error_code error;
    for (int number = 1;; ++number) {
        auto candidate = file;
        candidate += ".unreadable-" + std::to_string(number);
        if (!fs::exists(fs::symlink_status(candidate, error)))
            return candidate;
    }
}

} // namespace

PlistUserDefaults::PlistUserDefaults(fs::path file, MainQueue& queue, Log& log)
    : m_file(std::move(file))
    , m_log(log)
    , m_saving(queue, [this] { save(); }) {
    std::error_code error;
    if (const auto target = fs::canonical(m_file, error); !error)
        m_file = target; // a link that the user made stays one
    removeRemnants(m_file);
    m_root = read();
    if (!m_root)
        m_root.reset(plist_new_dict());
}

fs::path PlistUserDefaults::standardFile() {
    const auto folder = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
    return fs::path(folder.toStdString()) / "com.vantrelo.TavroPRO.plist";
}

/// Null where there is no file, or none any more since it was set aside.
PlistNode PlistUserDefaults::read() {
    std::string bytes;
    PlistNode root;
    const int error = readFile(m_file, largestFile, bytes);
    if (error == 0)
        root = parsePlist(bytes);
    if (root && plist_get_node_type(root.get()) == PLIST_DICT)
        return root;
    if (error == 0)
        setAside("is not a property list of user defaults");
    else if (error != ENOENT && error != ENOTDIR)
        setAside(std::string("cannot be read: ") + std::strerror(error));
    return PlistNode();
}

void PlistUserDefaults::setAside(const std::string& why) {
    const auto aside = firstFreeName(m_file);
    std::error_code error;
    fs::rename(m_file, aside, error);
    m_mayWrite = !error;
    m_log.diagnose(m_file.string() + " " + why + "; " +
                   (error ? "settings are not stored in this run: " + error.message()
                          : "set aside as " + aside.filename().string()));
}

std::optional<PropertyList> PlistUserDefaults::object(const std::string& key) const {
    auto* node = plist_dict_get_item(m_root.get(), key.c_str());
    return node ? fromPlist(node) : std::nullopt;
}

void PlistUserDefaults::setObject(const std::string& key, PropertyList value) {
    if (object(key) == value)
        return;
    plist_dict_set_item(m_root.get(), key.c_str(), toPlist(value).release());
    changed(key);
}

void PlistUserDefaults::removeObject(const std::string& key) {
    if (!plist_dict_get_item(m_root.get(), key.c_str()))
        return;
    plist_dict_remove_item(m_root.get(), key.c_str());
    changed(key);
}

// Several values change together; they are written once.
void PlistUserDefaults::changed(const std::string& key) {
    m_unsaved.insert(key);
    m_saving.schedule();
}

// While one is being written, its end begins the next.
void PlistUserDefaults::save() {
    if (!m_writing.valid())
        startWriting();
    runWaiting();
}

bool PlistUserDefaults::synchronize() {
    finishWriting();
    startWriting();
    finishWriting();
    runWaiting();
    return m_unsaved.empty();
}

void PlistUserDefaults::whenWritten(std::function<void()> block) {
    m_waiting.push_back(std::move(block));
    m_saving.schedule();
}

void PlistUserDefaults::startWriting() {
    if (m_unsaved.empty() || !m_mayWrite)
        return;
    m_beingWritten = std::exchange(m_unsaved, {});
    Changes changes;
    for (const auto& key : m_beingWritten)
        changes.emplace(key, plist_copy(plist_dict_get_item(m_root.get(), key.c_str())));
    m_writing = std::async(std::launch::async,
                           [this, all = PlistNode(plist_copy(m_root.get())), changes = std::move(changes)] {
                               const bool isDone = write(all, changes);
                               QMetaObject::invokeMethod(
                                   &m_context, [this] { writingEnded(); }, Qt::QueuedConnection);
                               return isDone;
                           });
}

// What failed is tried again with the next change, and not before.
void PlistUserDefaults::writingEnded() {
    if (!m_writing.valid())
        return; // somebody has synchronized meanwhile
    const bool isDone = m_writing.get();
    if (!isDone)
        m_unsaved.merge(m_beingWritten);
    else
        startWriting();
    runWaiting();
}

void PlistUserDefaults::runWaiting() {
    if (!m_writing.valid())
        for (const auto& block : std::exchange(m_waiting, {}))
            block();
}

// What has not been written is to be written again.
void PlistUserDefaults::finishWriting() {
    if (m_writing.valid() && !m_writing.get())
        m_unsaved.merge(m_beingWritten);
}

/// Into the file as it is now, or where there is none, everything. On the writer's thread.
bool PlistUserDefaults::write(const PlistNode& all, const Changes& changes) {
    const auto onDisk = read();
    if (!m_mayWrite)
        return false;
    for (const auto& [key, value] : changes)
        if (onDisk && value)
            plist_dict_set_item(onDisk.get(), key.c_str(), plist_copy(value.get()));
        else if (onDisk)
            plist_dict_remove_item(onDisk.get(), key.c_str());
    const int error = replaceFile(m_file, formatPlistXml(onDisk ? onDisk : all));
    if (error != 0 && !m_failureReported)
        m_log.diagnose(m_file.string() + " cannot be written: " + std::strerror(error));
    m_failureReported = error != 0;
    return error == 0;
}

} // namespace tavro
