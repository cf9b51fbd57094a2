#pragma once

#include "platform/process/Published.h"

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>

namespace tavro {

class OpenPanel;
struct Image;

/// What the preferences page does with the custom wallpaper. Copies share what they show. Main thread only.
class GeneralPreferencesView {
public:
    /// Shows the stored wallpaper, where one is in use.
    GeneralPreferencesView();

    /// The picture that the page shows.
    const std::optional<std::filesystem::path>& selectedURL() const { return m_selectedURL->get(); }
    /// The observer is notified before it changes.
    [[nodiscard]] Observation willChange(std::function<void()> observer) const {
        return m_selectedURL->willChange(std::move(observer));
    }

    /// Lets the user choose a picture, and returns at once. A chosen one is stored and then shown, in the
    /// background: what the user decides meanwhile holds. A file that is no picture changes nothing and gives
    /// one line in the log. A file of the user's own at that place is not overwritten.
    void chooseWallpaper() const;
    /// The page shows none and none is in use; the stored file stays.
    void removeWallpaper() const;

    /// In the background; the completion gets whether the picture now stands there as a PNG file. A file
    /// that cannot be written gives one line in the log. Right before it is written, `mayReplace` is asked;
    /// when that says no, nothing happens any more.
    static void writePNG(const Image& image, const std::filesystem::path& destination,
                         std::function<bool()> mayReplace, std::function<void(bool)> completion);

private:
    void store(const OpenPanel& panel) const;
    void use(const std::filesystem::path& chosen, const std::filesystem::path& stored) const;

    std::shared_ptr<Published<std::optional<std::filesystem::path>>> m_selectedURL;
};

} // namespace tavro
