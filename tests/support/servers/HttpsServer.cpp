#include "HttpsServer.h"

#include <fstream>
#include <iterator>
#include <stdexcept>
#include <sys/stat.h>

HttpsServer::HttpsServer(std::filesystem::path folder, const std::string& host)
    : m_folder(std::move(folder)) {
    const auto portsFile = m_folder / "ports";
    const auto command = std::string(TAVRO_HTTPS_SERVER) + " '" + m_folder.string() + "' '" + host + "' >'" +
                         portsFile.string() + "'";
    if (::mkfifo(portsFile.c_str(), 0600) != 0 || !(m_input = ::popen(command.c_str(), "w")))
        throw std::runtime_error("no HTTPS server");
    std::ifstream ports(portsFile);
    if (!(ports >> m_ports.trusted >> m_ports.stranger >> m_ports.misnamed >> m_ports.plain >> m_ports.proxy))
        throw std::runtime_error("the HTTPS server has not started");
}

HttpsServer::~HttpsServer() {
    ::pclose(m_input);
}

void HttpsServer::setRecord(const std::string& document) const {
    std::ofstream(m_folder / "record", std::ios::binary) << document;
}

std::string HttpsServer::requests() const {
    std::ifstream file(m_folder / "requests");
    return {std::istreambuf_iterator<char>(file), {}};
}
