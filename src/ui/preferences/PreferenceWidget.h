#pragma once

#include "desktop/GeneralPreferencesView.h"

#include <QWidget>

#include <vector>

class QBoxLayout;
class QCheckBox;
class QPushButton;

namespace tavro {

class WallpaperPreview;

/// The general page of the preferences.
class PreferenceWidget final : public QWidget {
public:
    PreferenceWidget();

private:
    QBoxLayout* addRow(const char* label, double bottomPadding);
    void addStartupRow();
    void addRecorderRow(const char* label, const char* shortcut);
    void addWallpaperRow();
    void refreshStartup();
    void refreshWallpaper();

    const GeneralPreferencesView m_general;
    QCheckBox* m_launchAtLogin = nullptr;
    bool m_isRefreshing = false; // the switch, which the user has not touched
    WallpaperPreview* m_preview = nullptr;
    QPushButton* m_remove = nullptr;
    std::vector<Observation> m_observations;
};

} // namespace tavro
