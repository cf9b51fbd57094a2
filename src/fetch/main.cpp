// Fetches one document over HTTPS and writes it to standard output:
//   tavropro-fetch URL BYTES MILLISECONDS
// Exits with 1, and without a word, when it cannot be had within the limits. A program of its own, so that
// TavroPRO need not keep what the network needs in memory for a moment's use.

#include "Download.h"

#include <QCoreApplication>
#include <QNetworkProxyFactory>
#include <QUrl>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <sys/prctl.h>

namespace {

bool write(const QByteArray& document) {
    return std::fwrite(document.constData(), 1, static_cast<std::size_t>(document.size()), stdout) ==
               static_cast<std::size_t>(document.size()) &&
           std::fflush(stdout) == 0;
}

void acceptSignals() {
    sigset_t none; // the parent handles some otherwise, and a child inherits that
    sigemptyset(&none);
    sigprocmask(SIG_SETMASK, &none, nullptr);
    prctl(PR_SET_PDEATHSIG, SIGKILL);
}

} // namespace

int main(int argc, char** argv) {
    acceptSignals();
    QCoreApplication application(argc, argv);
    const auto arguments = QCoreApplication::arguments();
    const QUrl url(arguments.value(1), QUrl::StrictMode);
    const tavro::Download::Limits limits{arguments.value(2).toLongLong(),
                                         std::chrono::milliseconds(arguments.value(3).toLongLong())};
    if (url.scheme() != "https" || limits.bytes <= 0 || limits.time.count() <= 0)
        return EXIT_FAILURE;
    QNetworkProxyFactory::setUseSystemConfiguration(true);
    const tavro::Download download(url, limits, [](const auto& document) {
        QCoreApplication::exit(document && write(*document) ? EXIT_SUCCESS : EXIT_FAILURE);
    });
    return QCoreApplication::exec();
}
