#include "desktop/GeneralPreferencesView.h"

#include "desktop/CustomWallpaper.h"
#include "platform/process/Log.h"
#include "platform/process/Machine.h"
#include "platform/process/Process.h"
#include "platform/storage/FileManager.h"
#include "platform/storage/Images.h"
#include "platform/storage/UserDefaults.h"
#include "platform/windows/OpenPanels.h"
#include "settings/Constants.h"

namespace tavro {

GeneralPreferencesView::GeneralPreferencesView()
    : m_selectedURL(std::make_shared<Published<std::optional<std::filesystem::path>>>(customWallpaperURL())) {
}

void GeneralPreferencesView::chooseWallpaper() const {
    const OpenPanelSettings settings{.title = "Choose a Image",
                                     .allowsMultipleSelection = false,
                                     .canChooseDirectories = false,
                                     .canCreateDirectories = false,
                                     .canChooseFiles = true,
                                     .allowedFileTypes = {"png", "jpg", "jpeg", "heic"}};
    const auto panel = machine().openPanels().openPanel(settings);
    // The panel is held until the user has decided, and so is this page's state.
    panel->begin([page = *this, panel](ModalResponse response) {
        if (response == ModalResponse::ok)
            page.store(*panel);
        panel->close();
    });
}

void GeneralPreferencesView::store(const OpenPanel& panel) const {
    const auto documents = machine().fileManager().existingDocumentsFolder();
    if (!documents)
        return machine().log().print("There is no folder for documents");
    const auto chosen = panel.url();
    const auto image = chosen ? machine().images().contentsOf(*chosen) : std::nullopt;
    if (!image)
        return machine().log().print("Not an image: " + chosen.value_or("").string());
    const auto destination = *documents / customWallpaperName;
    if (!setUsersOwnAside(destination))
        return;
    if (writePNG(*image, destination))
        machine().log().print("File saved");
    m_selectedURL->set(chosen);
    machine().userDefaults().setObject(Constants::wallpaperFileKey, true);
}

void GeneralPreferencesView::removeWallpaper() const {
    m_selectedURL->set(std::nullopt);
    machine().userDefaults().setObject(Constants::wallpaperFileKey, false);
}

bool GeneralPreferencesView::writePNG(const Image& image, const std::filesystem::path& destination) {
    const auto data = machine().images().pngRepresentation(image);
    if (!data)
        return false;
    if (const auto error = machine().fileManager().writeAtomically(destination, *data)) {
        machine().log().print(*error);
        return false;
    }
    return true;
}

} // namespace tavro
