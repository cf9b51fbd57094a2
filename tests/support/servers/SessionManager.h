#pragma once

#include <X11/SM/SMlib.h>

#include <span>
#include <string>
#include <vector>

/// The least that an X session manager does (XSMP): takes clients in, announces the shutdown, ends them.
class SessionManager {
public:
    SessionManager();
    ~SessionManager();
    SessionManager(const SessionManager&) = delete;
    SessionManager& operator=(const SessionManager&) = delete;

    /// For SESSION_MANAGER.
    std::string address() const;
    /// Handles what clients have sent.
    void process();
    bool hasClient() const { return m_registered; }
    /// Whether the client has saved what it was asked to save since.
    bool hasSaved() const { return m_saved; }
    void shutDown();
    void die();

private:
    static Status newClient(SmsConn client, SmPointer manager, unsigned long* mask, SmsCallbacks* callbacks,
                            char** failure);

    std::span<IceListenObj> listeners() const { return {m_listeners, static_cast<std::size_t>(m_count)}; }

    int m_count = 0;
    IceListenObj* m_listeners = nullptr;
    std::vector<IceConn> m_connections;
    SmsConn m_client = nullptr;
    bool m_registered = false;
    bool m_saved = false;
};
