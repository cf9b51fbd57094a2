#include "SessionManager.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <poll.h>
#include <stdexcept>

namespace {

Bool anybody(char*) {
    return True;
}

bool isReadable(int descriptor) {
    pollfd readable{descriptor, POLLIN, 0};
    return ::poll(&readable, 1, 0) == 1;
}

} // namespace

SessionManager::SessionManager() {
    char failure[256] = "";
    IceSetIOErrorHandler(
        [](IceConn) {}); // the client may go away; the library's own handler would end the test
    if (!SmsInitialize("test", "1", &newClient, this, &anybody, sizeof failure, failure) ||
        !IceListenForConnections(&m_count, &m_listeners, sizeof failure, failure))
        throw std::runtime_error(std::string("no session manager: ") + failure);
    for (auto* listener : listeners())
        IceSetHostBasedAuthProc(listener, &anybody);
}

SessionManager::~SessionManager() {
    for (auto* connection : m_connections) {
        IceSetShutdownNegotiation(connection, False);
        IceCloseConnection(connection);
    }
    IceFreeListenObjs(m_count, m_listeners);
}

std::string SessionManager::address() const {
    char* list = IceComposeNetworkIdList(m_count, m_listeners);
    std::string address = list;
    std::free(list);
    return address;
}

void SessionManager::process() {
    for (auto* listener : listeners())
        if (isReadable(IceGetListenConnectionNumber(listener))) {
            IceAcceptStatus status;
            if (auto* connection = IceAcceptConnection(listener, &status))
                m_connections.push_back(connection);
        }
    std::erase_if(m_connections, [](IceConn connection) {
        while (isReadable(IceConnectionNumber(connection))) {
            const auto status = IceProcessMessages(connection, nullptr, nullptr);
            if (status == IceProcessMessagesIOError) {
                IceSetShutdownNegotiation(connection, False);
                IceCloseConnection(connection);
            }
            if (status != IceProcessMessagesSuccess)
                return true;
        }
        return false;
    });
}

void SessionManager::shutDown() {
    m_saved = false;
    SmsSaveYourself(m_client, SmSaveBoth, True, SmInteractStyleAny, False);
}

void SessionManager::die() {
    SmsDie(m_client);
}

Status SessionManager::newClient(SmsConn client, SmPointer manager, unsigned long* mask,
                                 SmsCallbacks* callbacks, char**) {
    static_cast<SessionManager*>(manager)->m_client = client;
    *mask = SmsRegisterClientProcMask | SmsSaveYourselfDoneProcMask | SmsCloseConnectionProcMask |
            SmsSetPropertiesProcMask | SmsDeletePropertiesProcMask; // all that the toolkit's clients ask for
    std::memset(callbacks, 0, sizeof *callbacks);
    callbacks->register_client.callback = [](SmsConn connection, SmPointer self, char* previous) -> Status {
        std::free(previous);
        SmsRegisterClientReply(connection, SmsGenerateClientID(connection));
        // What the protocol demands after the first registration.
        SmsSaveYourself(connection, SmSaveLocal, False, SmInteractStyleNone, False);
        static_cast<SessionManager*>(self)->m_registered = true;
        return 1;
    };
    callbacks->register_client.manager_data = manager;
    callbacks->save_yourself_done.callback = [](SmsConn connection, SmPointer self, Bool) {
        static_cast<SessionManager*>(self)->m_saved = true;
        SmsSaveComplete(connection);
    };
    callbacks->save_yourself_done.manager_data = manager;
    callbacks->close_connection.callback = [](SmsConn connection, SmPointer, int count, char** reasons) {
        SmFreeReasons(count, reasons);
        SmsCleanUp(connection);
    };
    callbacks->set_properties.callback = [](SmsConn, SmPointer, int count, SmProp** properties) {
        std::for_each_n(properties, count, &SmFreeProperty);
        std::free(properties);
    };
    callbacks->delete_properties.callback = [](SmsConn, SmPointer, int count, char** names) {
        std::for_each_n(names, count, &std::free);
        std::free(names);
    };
    return 1;
}
