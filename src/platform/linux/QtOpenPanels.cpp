#include "platform/linux/QtOpenPanels.h"

#include <QCoreApplication>
#include <QFileDialog>
#include <QStandardPaths>
#include <QUrl>

#include <memory>

namespace tavro {

namespace {

QString translated(const std::string& text) {
    return QCoreApplication::translate("TavroPRO", text.c_str());
}

/// Endings in either case: some choosers tell them apart.
QString nameFilter(const std::vector<std::string>& fileTypes) {
    QStringList patterns;
    for (const auto& type : fileTypes) {
        const auto ending = "*." + QString::fromStdString(type);
        patterns << ending << ending.toUpper();
    }
    return translated("Images") + " (" + patterns.join(' ') + ')';
}

struct DeleteLater {
    void operator()(QObject* object) const { object->deleteLater(); }
};

class QtOpenPanel final : public OpenPanel {
public:
    explicit QtOpenPanel(const OpenPanelSettings& settings)
        : m_dialog(new QFileDialog) {
        m_dialog->setWindowTitle(translated(settings.title));
        m_dialog->setAcceptMode(QFileDialog::AcceptOpen);
        m_dialog->setFileMode(settings.canChooseDirectories      ? QFileDialog::Directory
                              : settings.allowsMultipleSelection ? QFileDialog::ExistingFiles
                                                                 : QFileDialog::ExistingFile);
        m_dialog->setOption(QFileDialog::ReadOnly, !settings.canCreateDirectories);
        m_dialog->setOption(QFileDialog::HideNameFilterDetails);
        m_dialog->setWindowModality(Qt::NonModal);
        m_dialog->setDirectory(QStandardPaths::writableLocation(QStandardPaths::PicturesLocation));
        if (!settings.allowedFileTypes.empty())
            m_dialog->setNameFilter(nameFilter(settings.allowedFileTypes));
    }

    // The handler, which may hold this panel, is let go of when it has run.
    void begin(std::function<void(ModalResponse)> completionHandler) override {
        const auto once = static_cast<Qt::ConnectionType>(Qt::QueuedConnection | Qt::SingleShotConnection);
        QObject::connect(
            m_dialog.get(), &QDialog::finished, m_dialog.get(),
            [handler = std::move(completionHandler)](int result) {
                handler(result == QDialog::Accepted ? ModalResponse::ok : ModalResponse::cancel);
            },
            once);
        m_dialog->show();
        m_dialog->activateWindow();
    }

    std::optional<std::filesystem::path> url() const override {
        const auto urls = m_dialog->selectedUrls();
        if (m_dialog->result() != QDialog::Accepted || urls.isEmpty() || !urls.front().isLocalFile())
            return std::nullopt;
        return std::filesystem::path(urls.front().toLocalFile().toStdString());
    }

    void close() override { m_dialog->close(); }

private:
    std::unique_ptr<QFileDialog, DeleteLater> m_dialog;
};

} // namespace

std::shared_ptr<OpenPanel> QtOpenPanels::openPanel(const OpenPanelSettings& settings) {
    return std::make_shared<QtOpenPanel>(settings);
}

} // namespace tavro
