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

namespace {

/// The number of what the user has last decided about the wallpaper, on whichever page.
int& latestDecision() {
    struct Decision {
        int number = 0;
    };
    return Process::current().shared<Decision>().number;
}

/// The file is ours from now on, whether it is in use or not.
void rememberStoring() {
    auto& defaults = machine().userDefaults();
    if (!defaults.object(Constants::wallpaperFileKey))
        defaults.setObject(Constants::wallpaperFileKey, false);
}

} // namespace

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
    const auto chosen = panel.url().value_or("");
    const auto destination = *documents / customWallpaperName;
    machine().images().load(
        chosen, Images::Detail::whole,
        [page = *this, chosen, destination, decision = ++latestDecision()](const auto& image) {
            if (!image)
                return machine().log().print("Not an image: " + chosen.string());
            writePNG(
                *image, destination,
                [decision, destination] {
                    return decision == latestDecision() && setUsersOwnAside(destination);
                },
                [page, chosen, destination, decision](bool isWritten) {
                    if (isWritten)
                        machine().log().print("File saved");
                    if (decision == latestDecision())
                        page.use(chosen, destination);
                    else if (isWritten)
                        rememberStoring();
                });
        });
}

void GeneralPreferencesView::use(const std::filesystem::path& chosen,
                                 const std::filesystem::path& stored) const {
    m_selectedURL->set(chosen);
    machine().userDefaults().setObject(Constants::wallpaperFileKey, true);
    PreparedWallpaper::shared().prepare(stored);
}

void GeneralPreferencesView::removeWallpaper() const {
    ++latestDecision();
    m_selectedURL->set(std::nullopt);
    machine().userDefaults().setObject(Constants::wallpaperFileKey, false);
    PreparedWallpaper::shared().forget();
}

void GeneralPreferencesView::writePNG(const Image& image, const std::filesystem::path& destination,
                                      std::function<bool()> mayReplace,
                                      std::function<void(bool)> completion) {
    machine().images().pngRepresentation(image, [destination, mayReplace, completion](auto data) {
        if (!mayReplace())
            return;
        if (!data)
            return completion(false);
        machine().fileManager().writeAtomically(destination, std::move(*data),
                                                [completion](const auto& error) {
                                                    if (error)
                                                        machine().log().print(*error);
                                                    completion(!error);
                                                });
    });
}

} // namespace tavro
