#include "ui/PreferenceWidget.h"

#include "LaunchAtLogin/LaunchAtLogin.h"
#include "app/Constants.h"
#include "platform/Images.h"
#include "platform/Machine.h"
#include "platform/Process.h"
#include "preferences/PreferenceView.h"
#include "ui/Divider.h"
#include "ui/Pixels.h"
#include "ui/RecorderCocoa.h"
#include "ui/Translation.h"

#include <QCheckBox>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QVBoxLayout>

namespace tavro {

namespace {

constexpr int spacing = 8;

QLabel* makeLabel(const char* text, QWidget* parent) {
    auto* label = new QLabel(translated(text), parent);
    label->setFixedWidth(static_cast<int>(PreferenceView::labelWidth));
    return label;
}

/// Stretched, within a black border; empty where the file cannot be read.
QPixmap preview(const std::filesystem::path& file, double devicePixelRatio) {
    const QSize size(static_cast<int>(PreferenceView::previewSize.width),
                     static_cast<int>(PreferenceView::previewSize.height));
    QPixmap pixmap(size * devicePixelRatio);
    pixmap.setDevicePixelRatio(devicePixelRatio);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    if (const auto image = Process::current().machine().images().contentsOf(file))
        painter.drawImage(QRect(QPoint(0, 0), size), toolkitImage(*image));
    painter.drawRect(QRectF(QPointF(0, 0), size).adjusted(0.5, 0.5, -0.5, -0.5));
    return pixmap;
}

/// Later, since observers are told before what they observe has changed.
template <class Block>
std::function<void()> soon(QObject* object, Block block) {
    return [object, block] { QMetaObject::invokeMethod(object, block, Qt::QueuedConnection); };
}

} // namespace

PreferenceWidget::PreferenceWidget() {
    constexpr int padding = static_cast<int>(PreferenceView::padding);
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(padding, padding, padding, padding);
    rows->setSpacing(spacing);
    addStartupRow();
    addRecorderRow("Toggle TavroPRO", Constants::tavroGlobalShortcut);
    addRecorderRow("Mute Mic:", Constants::tavroMuteShortcut);
    rows->addWidget(makeDivider(this));
    rows->addSpacing(static_cast<int>(PreferenceView::rowBottomPadding));
    addWallpaperRow();
    rows->addStretch();
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
    row->addWidget(makeLabel(label, this));
    static_cast<QVBoxLayout*>(layout())->addLayout(row);
    return row;
}

void PreferenceWidget::addStartupRow() {
    const LaunchAtLogin::Toggle toggle;
    auto* row = addRow("Startup", PreferenceView::startupBottomPadding);
    m_launchAtLogin = new QCheckBox(translated(toggle.label), this);
    connect(m_launchAtLogin, &QCheckBox::clicked, this,
            [&observable = toggle.launchAtLogin](bool isOn) { observable.setIsEnabled(isOn); });
    row->addWidget(m_launchAtLogin);
    row->addStretch();
}

void PreferenceWidget::addRecorderRow(const char* label, const char* shortcut) {
    auto* row = addRow(label, PreferenceView::rowBottomPadding);
    auto* recorder = new RecorderCocoa(KeyboardShortcuts::Name(shortcut), {}, this);
    recorder->setAccessibleName(translated(label));
    row->addWidget(recorder);
    row->addStretch();
}

void PreferenceWidget::addWallpaperRow() {
    auto* row = addRow("Wallpaper", 0);
    row->itemAt(0)->setAlignment(Qt::AlignTop);
    auto* column = new QVBoxLayout;
    column->setSpacing(spacing);
    m_preview = new QLabel(this);
    m_preview->setAccessibleName(translated("Wallpaper"));
    column->addWidget(m_preview);
    auto* buttons = new QHBoxLayout;
    auto* select = new QPushButton(translated("Select..."), this);
    m_remove = new QPushButton(translated("Remove"), this);
    connect(select, &QPushButton::clicked, this, [this] { m_general.chooseWallpaper(); });
    connect(m_remove, &QPushButton::clicked, this, [this] { m_general.removeWallpaper(); });
    buttons->addWidget(select);
    buttons->addWidget(m_remove);
    buttons->addStretch();
    column->addLayout(buttons);
    row->addLayout(column);
    row->addStretch();
}

void PreferenceWidget::refreshStartup() {
    m_launchAtLogin->setChecked(LaunchAtLogin::isEnabled());
}

void PreferenceWidget::refreshWallpaper() {
    const auto& file = m_general.selectedURL();
    m_preview->setVisible(file.has_value());
    m_remove->setVisible(file.has_value());
    m_preview->setPixmap(file ? preview(*file, devicePixelRatio()) : QPixmap());
}

} // namespace tavro
