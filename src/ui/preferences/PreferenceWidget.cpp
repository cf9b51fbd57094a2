#include "ui/preferences/PreferenceWidget.h"

#include "KeyboardShortcuts/KeyboardShortcuts.h"
#include "LaunchAtLogin/LaunchAtLogin.h"
#include "platform/process/Machine.h"
#include "platform/process/Process.h"
#include "platform/storage/Images.h"
#include "preferences/PreferenceView.h"
#include "settings/Constants.h"
#include "toolkit/Translation.h"
#include "ui/controls/Divider.h"
#include "ui/controls/PushButton.h"
#include "ui/preferences/Recorder.h"
#include "ui/preferences/RowLabel.h"
#include "ui/preferences/WallpaperPreview.h"

#include <QCheckBox>
#include <QPointer>
#include <QVBoxLayout>

namespace tavro {

namespace {

constexpr int spacing = 8;

/// Later, since observers are notified before what they observe has changed.
template <class Block>
std::function<void()> soon(QObject* object, Block block) {
    return [object, block] { QMetaObject::invokeMethod(object, block, Qt::QueuedConnection); };
}

} // namespace

PreferenceWidget::PreferenceWidget() {
    constexpr int padding = static_cast<int>(PreferenceView::padding);
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(padding, 0, padding, 0);
    const auto addPadding = [rows] { // which gives way where the preview needs the room
        rows->addItem(new QSpacerItem(0, padding, QSizePolicy::Minimum, QSizePolicy::Maximum));
    };
    addPadding();
    rows->setSpacing(spacing - Recorder::margin); // which the recorders have of their own
    addStartupRow();
    addRecorderRow("Toggle TavroPRO", Constants::tavroGlobalShortcut);
    addRecorderRow("Mute Mic:", Constants::tavroMuteShortcut);
    rows->addSpacing(Recorder::margin);
    rows->addWidget(new Divider(this));
    rows->addSpacing(static_cast<int>(PreferenceView::rowBottomPadding) + Recorder::margin);
    addWallpaperRow();
    rows->addStretch();
    addPadding();
    refreshStartup();
    refreshWallpaper();
    m_observations.push_back(
        LaunchAtLogin::observable().willChange(soon(this, [this] { refreshStartup(); })));
    m_observations.push_back(m_general.willChange(soon(this, [this] { refreshWallpaper(); })));
}

QBoxLayout* PreferenceWidget::addRow(const char* label, double bottomPadding) {
    auto* row = new QHBoxLayout;
    row->setContentsMargins(0, 0, 0, static_cast<int>(bottomPadding));
    row->setSpacing(spacing);
    row->addWidget(new RowLabel(translated(label), static_cast<int>(PreferenceView::labelWidth), this));
    static_cast<QVBoxLayout*>(layout())->addLayout(row);
    return row;
}

void PreferenceWidget::addStartupRow() {
    const LaunchAtLogin::Toggle toggle;
    auto* row = addRow("Startup", PreferenceView::startupBottomPadding);
    m_launchAtLogin = new QCheckBox(translated(toggle.label), this);
    // Assistive technology toggles it without a click.
    connect(m_launchAtLogin, &QCheckBox::toggled, this,
            [this, &observable = toggle.launchAtLogin](bool isOn) {
                if (!m_isRefreshing)
                    observable.setIsEnabled(isOn);
            });
    row->addWidget(m_launchAtLogin);
    row->addStretch();
}

void PreferenceWidget::addRecorderRow(const char* label, const char* shortcut) {
    auto* row = addRow(label, PreferenceView::rowBottomPadding - Recorder::margin);
    row->setSpacing(spacing - Recorder::margin);
    row->addWidget(new Recorder(KeyboardShortcuts::Name(shortcut), translated(label), this));
    row->addStretch();
}

void PreferenceWidget::addWallpaperRow() {
    auto* row = addRow("Wallpaper", 0);
    row->setAlignment(row->itemAt(0)->widget(), Qt::AlignTop);
    auto* column = new QVBoxLayout;
    column->setSpacing(spacing);
    m_preview = new WallpaperPreview(this);
    m_preview->setAccessibleName(translated("Wallpaper"));
    column->addWidget(m_preview);
    auto* buttons = new QHBoxLayout;
    auto* select = new PushButton(translated("Select..."), this);
    m_remove = new PushButton(translated("Remove"), this);
    connect(select, &QPushButton::clicked, this, [this] { m_general.chooseWallpaper(); });
    connect(m_remove, &QPushButton::clicked, this, [this, select] {
        select->setFocus(); // the button goes, and the focus stays near
        m_general.removeWallpaper();
    });
    buttons->addWidget(select);
    buttons->addWidget(m_remove);
    buttons->addStretch();
    column->addLayout(buttons);
    row->addLayout(column);
    row->addStretch();
}

void PreferenceWidget::refreshStartup() {
    m_isRefreshing = true;
    m_launchAtLogin->setChecked(LaunchAtLogin::isEnabled());
    m_isRefreshing = false;
}

void PreferenceWidget::refreshWallpaper() {
    const auto& file = m_general.selectedURL();
    m_preview->setVisible(file.has_value());
    m_remove->setVisible(file.has_value());
    if (!file)
        return m_preview->clear();
    m_preview->setImage(nullptr); // until there is one
    machine().images().load(*file, Images::Detail::ofScreens,
                            [page = QPointer(this), file = *file](const auto& image) {
                                if (image && page && page->m_general.selectedURL() == file)
                                    page->m_preview->setImage(&*image);
                            });
}

} // namespace tavro
