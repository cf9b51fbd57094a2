#include "platform/linux/storage/AutostartEntry.h"

#include "platform/linux/storage/AtomicFile.h"

#include <QStandardPaths>

#include <glib.h>

#include <cerrno>
#include <cstring>
#include <memory>
#include <unistd.h>

namespace tavro {

namespace {

constexpr auto group = "Desktop Entry";
/// Many times an entry with every translation.
constexpr std::size_t largestFile = 1 << 16;

struct Free {
    void operator()(GKeyFile* entry) const { g_key_file_unref(entry); }
    void operator()(char* text) const { g_free(text); }
};
using KeyFile = std::unique_ptr<GKeyFile, Free>;
using Text = std::unique_ptr<char, Free>;

KeyFile parse(const std::string& bytes) {
    KeyFile entry(g_key_file_new());
    return g_key_file_load_from_data(entry.get(), bytes.data(), bytes.size(), G_KEY_FILE_NONE, nullptr)
               ? std::move(entry)
               : nullptr;
}

bool startsSomething(GKeyFile* entry) {
    const Text type(g_key_file_get_string(entry, group, "Type", nullptr));
    return type && std::strcmp(type.get(), "Application") == 0 &&
           g_key_file_has_key(entry, group, "Exec", nullptr);
}

/// "Hidden" is the standard's key (XDG autostart); the settings of two desktops write keys of their own.
bool isSwitchedOff(GKeyFile* entry) {
    for (const auto* key : {"X-GNOME-Autostart-enabled", "X-MATE-Autostart-enabled"})
        if (g_key_file_has_key(entry, group, key, nullptr) &&
            !g_key_file_get_boolean(entry, group, key, nullptr))
            return true;
    return g_key_file_get_boolean(entry, group, "Hidden", nullptr);
}

/// One argument of a command line of the Desktop Entry standard.
std::string quoted(const std::string& argument) {
    constexpr std::string_view special = "\"`$\\";
    std::string text = "\"";
    for (const char character : argument) {
        if (special.find(character) != special.npos)
            text += '\\';
        text += character;
        if (character == '%')
            text += character; // else a field code
    }
    return text + '"';
}

/// A text as the file holds it. (GLib's own writer leaves tabs as they are, which that standard forbids.)
std::string escaped(const std::string& text) {
    constexpr std::string_view special = "\\\n\t\r", letters = "\\ntr";
    std::string value;
    for (const char character : text)
        if (const auto index = special.find(character); index != special.npos)
            (value += '\\') += letters[index];
        else
            value += character;
    return value;
}

/// GLib looks for a program of exactly the first argument's name before it undoes the doubling in it.
std::string commandLine(const std::string& program) {
    return (program.find('%') == program.npos ? "" : "/usr/bin/env ") + quoted(program);
}

} // namespace

AutostartEntry::AutostartEntry(std::filesystem::path file, std::filesystem::path program)
    : m_file(std::move(file))
    , m_program(std::move(program)) {}

std::filesystem::path AutostartEntry::standardFile() {
    const auto folder = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
    return std::filesystem::path(folder.toStdString()) / "autostart" / "com.vantrelo.TavroPRO.desktop";
}

AutostartEntry::Status AutostartEntry::status() const {
    std::string bytes;
    const int error = readFile(m_file, largestFile, bytes);
    if (error == ENOENT || error == ENOTDIR)
        return Status::notRegistered;
    const auto entry = error == 0 ? parse(bytes) : nullptr;
    if (!entry || !startsSomething(entry.get()))
        return Status::notFound;
    return isSwitchedOff(entry.get()) ? Status::requiresApproval : Status::enabled;
}

std::optional<std::string> AutostartEntry::registerService() {
    const KeyFile entry(g_key_file_new());
    const std::pair<const char*, std::string> values[] = {
        {"Type", "Application"},
        {"Name", "TavroPRO"},
        {"Comment", "Makes the desktop presentable with one action"},
        {"Icon", "com.vantrelo.TavroPRO"},
        {"Exec", commandLine(m_program.string())},
        {"X-GNOME-Autostart-enabled", "true"}, // for settings that only change what is there
    };
    for (const auto& [key, value] : values)
        g_key_file_set_value(entry.get(), group, key, escaped(value).c_str());
    gsize length = 0;
    const Text bytes(g_key_file_to_data(entry.get(), &length, nullptr));
    const int error = replaceFile(m_file, {bytes.get(), length});
    return error == 0 ? std::nullopt : std::optional(failure(error));
}

std::optional<std::string> AutostartEntry::unregisterService() {
    const int error = ::unlink(m_file.c_str()) == 0 ? 0 : errno;
    return error == 0 || error == ENOENT || error == ENOTDIR ? std::nullopt : std::optional(failure(error));
}

std::string AutostartEntry::failure(int error) const {
    return m_file.string() + ": " + std::strerror(error);
}

} // namespace tavro
