// Fetches one document over HTTPS, from a server whose certificate is valid for its name, and writes it to
// standard output:
//   tavropro-fetch URL BYTES MILLISECONDS
// Exits with 1, or by SIGALRM, and without a word, when it cannot be had within the limits. What a server
// says of an error is a document too. A program of its own, so that TavroPRO need not keep what the network
// needs in memory for a moment's use.

#include <curl/curl.h>
#include <proxy.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <optional>
#include <string>
#include <sys/prctl.h>
#include <sys/time.h>

namespace {

template <auto release>
struct Release {
    template <class T>
    void operator()(T* object) const {
        release(object);
    }
};
using Transfer = std::unique_ptr<CURL, Release<&curl_easy_cleanup>>;
using HeaderLines = std::unique_ptr<curl_slist, Release<&curl_slist_free_all>>;
using ProxyFactory = std::unique_ptr<pxProxyFactory, Release<&px_proxy_factory_free>>;
using ProxyList = std::unique_ptr<char*, Release<&px_proxy_factory_free_proxies>>;

struct Document {
    std::string text;
    std::size_t limit;
};

/// Ends the process then, whatever it waits for: a name, the proxy's settings, the server.
void setDeadline(long milliseconds) {
    const itimerval timer{{}, {milliseconds / 1000, milliseconds % 1000 * 1000}};
    setitimer(ITIMER_REAL, &timer, nullptr);
}

std::size_t append(const char* bytes, std::size_t, std::size_t count, void* target) {
    auto& document = *static_cast<Document*>(target);
    if (count > document.limit - document.text.size())
        return CURL_WRITEFUNC_ERROR;
    document.text.append(bytes, count);
    return count;
}

/// The one that the system's settings give for the address; empty for none.
std::string proxyFor(const char* url) {
    const ProxyFactory factory(px_proxy_factory_new());
    const ProxyList proxies(factory ? px_proxy_factory_get_proxies(factory.get(), url) : nullptr);
    const std::string first = proxies && *proxies ? *proxies : "";
    return first.starts_with("direct:") ? "" : first;
}

void allowOnlyHttps(CURL* transfer) {
    curl_easy_setopt(transfer, CURLOPT_PROTOCOLS_STR, "https");
    curl_easy_setopt(transfer, CURLOPT_REDIR_PROTOCOLS_STR, "https");
    curl_easy_setopt(transfer, CURLOPT_SSLVERSION, long{CURL_SSLVERSION_TLSv1_2});
    // Else the system's certificate authorities; other programs go by this variable too.
    if (const auto* file = std::getenv("SSL_CERT_FILE"); file && *file)
        curl_easy_setopt(transfer, CURLOPT_CAINFO, file);
}

std::optional<std::string> documentAt(const char* url, std::size_t limit) {
    constexpr long mostRedirects = 5;
    const Transfer transfer(curl_easy_init());
    // Nobody needs to know more than where it goes: no word of the program, its version or the user's
    // language.
    const HeaderLines header(curl_slist_append(nullptr, "Accept:")),
        proxyHeader(curl_slist_append(nullptr, "Proxy-Connection:"));
    if (!transfer || !header || !proxyHeader)
        return std::nullopt;
    Document document{{}, limit};
    const auto proxy = proxyFor(url);
    const auto set = [&](CURLoption option, auto value) { curl_easy_setopt(transfer.get(), option, value); };
    allowOnlyHttps(transfer.get());
    set(CURLOPT_URL, url);
    set(CURLOPT_PROXY, proxy.c_str());
    set(CURLOPT_HTTP_VERSION, long{CURL_HTTP_VERSION_1_1});
    set(CURLOPT_HTTPHEADER, header.get());
    set(CURLOPT_PROXYHEADER, proxyHeader.get());
    set(CURLOPT_FOLLOWLOCATION, 1L);
    set(CURLOPT_MAXREDIRS, mostRedirects);
    set(CURLOPT_NOSIGNAL, 1L);
    set(CURLOPT_WRITEFUNCTION, &append);
    set(CURLOPT_WRITEDATA, static_cast<void*>(&document));
    return curl_easy_perform(transfer.get()) == CURLE_OK ? std::optional(document.text) : std::nullopt;
}

bool write(const std::string& document) {
    return std::fwrite(document.data(), 1, document.size(), stdout) == document.size() &&
           std::fflush(stdout) == 0;
}

} // namespace

int main(int argc, char** argv) {
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    const auto limit = argc == 4 ? std::atoll(argv[2]) : 0;
    const auto milliseconds = argc == 4 ? std::atol(argv[3]) : 0;
    if (limit <= 0 || milliseconds <= 0)
        return EXIT_FAILURE;
    setDeadline(milliseconds);
    const auto document = documentAt(argv[1], static_cast<std::size_t>(limit));
    return document && write(*document) ? EXIT_SUCCESS : EXIT_FAILURE;
}
