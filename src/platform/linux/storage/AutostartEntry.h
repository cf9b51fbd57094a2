#pragma once

#include "platform/storage/AppService.h"

#include <filesystem>

namespace tavro {

/// The application among the programs that the session starts (XDG autostart): a desktop entry in the user's
/// configuration folder, which is all the state there is. One that was switched off in it, by hand or by the
/// desktop's own settings, counts as registered and not enabled.
class AutostartEntry final : public AppService {
public:
    /// The entry's file, and the absolute path of the program that it starts.
    AutostartEntry(std::filesystem::path file, std::filesystem::path program);

    /// `autostart/com.vantrelo.TavroPRO.desktop` in the user's configuration folder (XDG base directories).
    static std::filesystem::path standardFile();

    Status status() const override;
    std::optional<std::string> registerService() override;
    /// Where there is no entry, that is what was asked for.
    std::optional<std::string> unregisterService() override;

private:
    std::string failure(int error) const;

    const std::filesystem::path m_file;
    const std::filesystem::path m_program;
};

} // namespace tavro
