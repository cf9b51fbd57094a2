#include "support/desktop/DesktopTest.h"
#include "support/servers/HttpsServer.h"

/// Behind the proxy of the test's server, which alone plays the host that publishes versions.
TEST_F(DesktopTest, EachLaunchComparesThePublishedVersionWithItsOwn) {
    const std::string running = TAVRO_VERSION, host = TAVRO_UPDATE_HOST;
    TemporaryFolder folder;
    const HttpsServer publisher(folder.path(), host);
    const std::pair<std::string, std::string> cases[] = {
        {R"({"version": "99.0", "url": "https://example.com/"})", "Version outdate " + running + " > 99.0"},
        {R"({"version": ")" + running + "\"}", "Version updated " + running},
    };
    for (const auto& [record, line] : cases) {
        SCOPED_TRACE(record);
        publisher.setRecord(record);
        auto how = settings();
        how.environment = {
            {"https_proxy", "http://127.0.0.1:" + std::to_string(publisher.ports().proxy)},
            {"SSL_CERT_FILE", publisher.authority().string()},
        };
        auto tavro = launch(how);
        EXPECT_TRUE(tavro->waitForLine(line, 1));
        quit(tavro);
        EXPECT_EQ(tavro->linesOfOutput(line), 1);
        EXPECT_EQ(lines(tavro->output()), 1 + tavro->linesOfOutput("resign active")) << tavro->output();
        EXPECT_EQ(tavro->errors(), "");
    }
    const auto target = host.find(':') == host.npos ? host + ":443" : host;
    const auto requests = "CONNECT " + target + " HTTP/1.1\r\nHost: " + target + "\r\n\r\n" +
                          "GET /releases/version.json HTTP/1.1\r\nHost: " + host + "\r\n\r\n";
    EXPECT_EQ(publisher.requests(), requests + requests);
}
