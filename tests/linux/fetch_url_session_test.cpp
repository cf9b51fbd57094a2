#include "platform/linux/storage/FetchURLSession.h"

#include "platform/simulated/process/SimulatedLog.h"
#include "support/TemporaryFolder.h"
#include "support/WaitUntil.h"
#include "support/servers/HttpsServer.h"

#include <QCoreApplication>
#include <QTimer>

#include <gtest/gtest.h>

#include <fstream>

namespace tavro {
namespace {

using namespace std::chrono_literals;
using Document = std::optional<std::string>;

class FetchURLSessionTest : public testing::Test {
protected:
    FetchURLSessionTest() {
        for (const auto* variable : {"http_proxy", "https_proxy", "all_proxy", "HTTPS_PROXY", "ALL_PROXY"})
            qunsetenv(variable);
        qputenv("SSL_CERT_FILE", server.authority().c_str());
    }

    /// Where the handler is not called within a deadline, a text that no server sends.
    Document fetch(const std::string& url, FetchURLSession::Limits limits = {.time = deadline}) {
        FetchURLSession session(program, log, limits);
        Document result = "(no answer)";
        QEventLoop loop;
        session.dataTask(url, [&](const Document& data) {
            result = data;
            loop.quit();
        });
        QTimer::singleShot(deadline, &loop, &QEventLoop::quit);
        loop.exec();
        return result;
    }
    std::string local(int port, const std::string& path) {
        return "https://localhost:" + std::to_string(port) + path;
    }

    int count = 0;
    QCoreApplication application{count, nullptr};
    TemporaryFolder folder;
    HttpsServer server{folder.path(), "updates.example"};
    std::filesystem::path program = TAVRO_FETCH_BINARY;
    Journal journal;
    SimulatedLog log{journal};
};

TEST_F(FetchURLSessionTest, OnlyCompleteDocumentsFromTrustedServersArrive) {
    const auto& [trusted, stranger, misnamed, plain, proxy] = server.ports();
    std::string bytes;
    for (int byte = 0; byte < 256; ++byte)
        bytes += static_cast<char>(byte);
    const std::tuple<const char*, std::string, Document> cases[] = {
        {"a document", local(trusted, "/document"), R"({"version": "9"})"},
        {"any bytes", local(trusted, "/bytes"), bytes},
        {"none", local(trusted, "/empty"), ""},
        {"an error's text", local(trusted, "/missing"), "no such record"},
        {"as much as may be", local(trusted, "/limit"), std::string(65536, 'x')},
        {"one byte more", local(trusted, "/beyond"), std::nullopt},
        {"a megabyte of unknown length", local(trusted, "/endless"), std::nullopt},
        {"closed half-way", local(trusted, "/closed"), std::nullopt},
        {"another protocol", local(trusted, "/no-http"), std::nullopt},
        {"redirected on the server", local(trusted, "/near"), R"({"version": "9"})"},
        {"redirected to a stranger", local(trusted, "/far"), std::nullopt},
        {"redirected to HTTP", local(trusted, "/downgrade"), std::nullopt},
        {"redirected to a file", local(trusted, "/file"), std::nullopt},
        {"an authority that nobody trusts", local(stranger, "/document"), std::nullopt},
        {"a certificate for another name", local(misnamed, "/document"), std::nullopt},
        {"HTTP", "http://localhost:" + std::to_string(plain) + "/document", std::nullopt},
        {"a file", "file://" + server.authority().string(), std::nullopt},
        {"nobody there", local(1, "/document"), std::nullopt},
        {"no address", "releases/version.json", std::nullopt},
    };
    for (const auto& [what, url, document] : cases) {
        SCOPED_TRACE(what);
        EXPECT_EQ(fetch(url), document);
    }
    EXPECT_EQ(log.takeDiagnosed(), std::vector<std::string>{});
}

TEST_F(FetchURLSessionTest, SystemAuthoritiesAreTrustedByDefault) {
    qunsetenv("SSL_CERT_FILE");
    EXPECT_EQ(fetch(local(server.ports().trusted, "/document")), std::nullopt);
}

// The server ends neither connection by itself, so that only the limit can.
TEST_F(FetchURLSessionTest, SlowOrOversizedAnswersYieldNoDocument) {
    for (const auto* path : {"/stalled", "/silent"})
        EXPECT_EQ(fetch(local(server.ports().trusted, path), {.time = 300ms}), std::nullopt) << path;
    EXPECT_EQ(fetch(local(server.ports().trusted, "/document"), {.bytes = 3}), std::nullopt);
}

TEST_F(FetchURLSessionTest, AMissingOrCrashingHelperYieldsNoDocument) {
    const auto script = folder.path() / "dies";
    std::ofstream(script) << "#!/bin/sh\necho half\nkill -KILL $$\n";
    std::filesystem::permissions(script, std::filesystem::perms::owner_all);
    program = script;
    EXPECT_EQ(fetch("https://localhost/"), std::nullopt);
    EXPECT_TRUE(log.takeDiagnosed().empty());
    program = folder.path() / "missing";
    EXPECT_EQ(fetch("https://localhost/"), std::nullopt);
    EXPECT_EQ(log.takeDiagnosed().size(), 1u);
}

} // namespace
} // namespace tavro
