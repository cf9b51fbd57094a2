#pragma once

#include <cstdio>
#include <filesystem>
#include <string>

/// A real HTTPS server on this machine (`tests/support/servers/https-server`), until the end of the scope.
class HttpsServer {
public:
    struct Ports {
        int trusted = 0, stranger = 0, misnamed = 0, plain = 0, proxy = 0;
    };

    /// Keeps its files in the folder. `host` is whom the proxy leads to.
    HttpsServer(std::filesystem::path folder, const std::string& host);
    HttpsServer(const HttpsServer&) = delete;
    HttpsServer& operator=(const HttpsServer&) = delete;
    ~HttpsServer();

    const Ports& ports() const { return m_ports; }
    std::filesystem::path authority() const { return m_folder / "ca.pem"; }
    /// What hosts behind the proxy answer.
    void setRecord(const std::string& document) const;
    /// The heads of all requests so far.
    std::string requests() const;

private:
    const std::filesystem::path m_folder;
    std::FILE* m_input; // it serves until this is closed
    Ports m_ports;
};
