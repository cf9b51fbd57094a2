#include "Download.h"

#include <QNetworkReply>
#include <QNetworkRequest>
#include <QSslCertificate>
#include <QSslConfiguration>

namespace tavro {

namespace {

/// The certificate authorities of the system, or of the file that the user has named in the variable that
/// other programs go by too.
QSslConfiguration security() {
    auto configuration = QSslConfiguration::defaultConfiguration();
    configuration.setProtocol(QSsl::TlsV1_2OrLater);
    if (const auto file = qEnvironmentVariable("SSL_CERT_FILE"); !file.isEmpty())
        configuration.setCaCertificates(QSslCertificate::fromPath(file));
    return configuration;
}

QNetworkRequest requestOf(const QUrl& url) {
    constexpr int mostRedirects = 5;
    QNetworkRequest request(url);
    request.setSslConfiguration(security());
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::NoLessSafeRedirectPolicy);
    request.setMaximumRedirectsAllowed(mostRedirects);
    request.setAttribute(QNetworkRequest::Http2AllowedAttribute, false);
    request.setRawHeader("Accept-Encoding", "identity"); // what is counted is what was sent
    request.setRawHeader("User-Agent", "TavroPRO");
    return request;
}

/// Whether the server has answered to the end, whatever its answer was.
bool isAnswer(QNetworkReply::NetworkError error) {
    return error == QNetworkReply::NoError ||
           (error > QNetworkReply::UnknownProxyError && error <= QNetworkReply::UnknownContentError) ||
           error >= QNetworkReply::InternalServerError;
}

} // namespace

Download::Download(const QUrl& url, Limits limits, Completion completion)
    : m_limits(limits)
    , m_completion(std::move(completion))
    , m_reply(m_manager.get(requestOf(url))) {
    m_reply->setReadBufferSize(limits.bytes + 1);
    connect(m_reply.get(), &QNetworkReply::readyRead, this, [this] { read(); });
    connect(m_reply.get(), &QNetworkReply::finished, this, [this] { finish(); });
    m_deadline.callOnTimeout(m_reply.get(), &QNetworkReply::abort);
    m_deadline.setSingleShot(true);
    m_deadline.start(limits.time);
}

Download::~Download() = default;

void Download::read() {
    m_document += m_reply->readAll();
    if (m_document.size() > m_limits.bytes)
        m_reply->abort();
}

void Download::finish() {
    if (m_reply->isOpen()) // not aborted
        m_document += m_reply->readAll();
    const bool isWhole = isAnswer(m_reply->error()) && m_document.size() <= m_limits.bytes;
    m_completion(isWhole ? std::optional(m_document) : std::nullopt);
}

} // namespace tavro
