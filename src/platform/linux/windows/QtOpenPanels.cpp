#include "platform/linux/windows/QtOpenPanels.h"

#include "toolkit/KeepOnScreen.h"
#include "toolkit/Translation.h"

#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QScreen>
#include <QStandardPaths>
#include <QUrl>
#include <QWindow>

#include <memory>
#include <utility>

namespace tavro {

namespace {

/// Endings in either case: some choosers distinguish them.
QString nameFilter(const std::vector<std::string>& fileTypes) {
    QStringList patterns;
    for (const auto& type : fileTypes) {
        const auto ending = "*." + QString::fromStdString(type);
        patterns << ending << ending.toUpper();
    }
    return translated("Images") + " (" + patterns.join(' ') + ')';
}

QStringList usualFolders() {
    QStringList folders;
    for (const auto place :
         {QStandardPaths::PicturesLocation, QStandardPaths::HomeLocation, QStandardPaths::DesktopLocation,
          QStandardPaths::DocumentsLocation, QStandardPaths::DownloadLocation})
        if (const auto folder = QStandardPaths::writableLocation(place); QDir(folder).exists())
            folders << folder;
    folders.removeDuplicates();
    return folders;
}

std::unique_ptr<QFileDialog> makeDialog(const OpenPanelSettings& settings, const QString& folder) {
    auto dialog = std::make_unique<QFileDialog>();
    dialog->setWindowTitle(translated(settings.title));
    dialog->setAcceptMode(QFileDialog::AcceptOpen);
    dialog->setFileMode(settings.canChooseDirectories      ? QFileDialog::Directory
                        : settings.allowsMultipleSelection ? QFileDialog::ExistingFiles
                                                           : QFileDialog::ExistingFile);
    dialog->setOption(QFileDialog::ReadOnly, !settings.canCreateDirectories);
    dialog->setOption(QFileDialog::HideNameFilterDetails);
    dialog->setWindowModality(Qt::NonModal);
    if (!settings.allowedFileTypes.empty())
        dialog->setNameFilter(nameFilter(settings.allowedFileTypes));
    const auto folders = usualFolders();
    QList<QUrl> sidebar;
    for (const auto& usual : folders)
        sidebar << QUrl::fromLocalFile(usual);
    dialog->setSidebarUrls(sidebar);
    dialog->setDirectory(QDir(folder).exists() && !folder.isEmpty() ? folder : folders.value(0));
    constexpr QSize comfortable(800, 540);
    dialog->resize(comfortable.boundedTo(dialog->screen()->availableSize() * 0.9));
    keepOnScreen(*dialog);
    return dialog;
}

/// It stands before the window that the user works in, on the same screen.
void putBefore(QFileDialog& dialog, const QWidget* window) {
    if (!window || window == &dialog)
        return;
    dialog.winId();
    dialog.windowHandle()->setTransientParent(window->windowHandle());
}

} // namespace

class QtOpenPanels::Panel final : public OpenPanel, public std::enable_shared_from_this<Panel> {
public:
    Panel(QtOpenPanels& panels, OpenPanelSettings settings)
        : m_panels(panels)
        , m_settings(std::move(settings)) {}
    Panel(const Panel&) = delete;
    Panel& operator=(const Panel&) = delete;

    // It may be in an event of its own.
    ~Panel() override {
        if (m_dialog)
            m_dialog.release()->deleteLater();
    }

    // The handler, which may hold this panel, is let go of when it has run.
    void begin(std::function<void(ModalResponse)> completionHandler) override {
        const auto other = std::exchange(m_panels.m_shown, weak_from_this()).lock();
        m_handler = std::move(completionHandler);
        if (other && other->m_dialog && other->m_dialog->isVisible())
            takeDialogOf(*other);
        else
            m_dialog = makeDialog(m_settings, m_panels.m_folder);
        QObject::connect(
            m_dialog.get(), &QDialog::finished, m_dialog.get(),
            [this](int result) {
                end(result == QDialog::Accepted ? ModalResponse::ok : ModalResponse::cancel);
            },
            Qt::QueuedConnection);
        putBefore(*m_dialog, QApplication::activeWindow());
        m_dialog->show();
        m_dialog->raise();
        m_dialog->activateWindow();
    }

    std::optional<std::filesystem::path> url() const override {
        if (!m_dialog || m_dialog->result() != QDialog::Accepted)
            return std::nullopt;
        const auto urls = m_dialog->selectedUrls();
        if (urls.isEmpty() || !urls.front().isLocalFile())
            return std::nullopt;
        return std::filesystem::path(urls.front().toLocalFile().toStdString());
    }

    void close() override {
        if (m_dialog)
            m_dialog->close();
    }

    void abandon() {
        m_dialog.reset();
        m_handler = nullptr;
    }

private:
    void takeDialogOf(Panel& other) {
        m_dialog = std::move(other.m_dialog);
        QObject::disconnect(m_dialog.get(), &QDialog::finished, nullptr, nullptr);
        other.end(ModalResponse::cancel);
    }

    void end(ModalResponse response) {
        const auto self = shared_from_this(); // which the handler may hold alone
        if (response == ModalResponse::ok)
            m_panels.m_folder = m_dialog->directory().absolutePath();
        if (const auto handler = std::exchange(m_handler, nullptr))
            handler(response);
    }

    QtOpenPanels& m_panels;
    const OpenPanelSettings m_settings;
    std::function<void(ModalResponse)> m_handler; // until the user has decided
    std::unique_ptr<QFileDialog> m_dialog;
};

QtOpenPanels::~QtOpenPanels() {
    if (const auto shown = m_shown.lock())
        shown->abandon();
}

std::shared_ptr<OpenPanel> QtOpenPanels::openPanel(const OpenPanelSettings& settings) {
    return std::make_shared<Panel>(*this, settings);
}

} // namespace tavro
