#pragma once

#include <QNetworkAccessManager>
#include <QTimer>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>

class QNetworkReply;

namespace tavro {

/// One document over HTTPS, from a server whose certificate is valid for its name. Redirects that leave HTTPS
/// are not followed.
class Download final : public QObject {
public:
    struct Limits {
        qint64 bytes;
        std::chrono::milliseconds time;
    };
    /// The document, or none when the connection failed or a limit was passed. What a server says of an
    /// error is a document too.
    using Completion = std::function<void(const std::optional<QByteArray>&)>;

    Download(const QUrl& url, Limits limits, Completion completion);
    ~Download() override;

private:
    void read();
    void finish();

    const Limits m_limits;
    const Completion m_completion;
    QNetworkAccessManager m_manager;
    std::unique_ptr<QNetworkReply> m_reply;
    QByteArray m_document;
    QTimer m_deadline;
};

} // namespace tavro
