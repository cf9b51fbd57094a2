#include "platform/linux/process/SingleInstance.h"

#include <QDBusConnection>
#include <QDBusMessage>

namespace tavro {

namespace {
constexpr auto path = "/com/vantrelo/TavroPRO";
constexpr int answerMilliseconds = 3000;
} // namespace

SingleInstance::Claim SingleInstance::claim() {
    if (const auto owner = takeDisplay(); owner != XCB_NONE)
        return activate(owner);
    QDBusConnection::sessionBus().registerObject(path, this, QDBusConnection::ExportAllSlots);
    return Claim::first;
}

/// The window of the process that has the display; none where that is now this one. The window says by which
/// name on the bus its process can be asked.
xcb_window_t SingleInstance::takeDisplay() const {
    auto* connection = m_x.raw();
    const auto instance = m_x.atoms().tavroInstance;
    xcb_grab_server(connection); // two may start at once
    const XReply<xcb_get_selection_owner_reply_t> reply(
        xcb_get_selection_owner_reply(connection, xcb_get_selection_owner(connection, instance), nullptr));
    const auto owner = reply ? reply->owner : xcb_window_t{XCB_NONE};
    if (owner == XCB_NONE) {
        const auto window = xcb_generate_id(connection);
        xcb_create_window(connection, XCB_COPY_FROM_PARENT, window, m_x.root(), -1, -1, 1, 1, 0,
                          XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
        const auto name = QDBusConnection::sessionBus().baseService().toLatin1();
        xcb_change_property(connection, XCB_PROP_MODE_REPLACE, window, instance, XCB_ATOM_STRING, 8,
                            static_cast<std::uint32_t>(name.size()), name.data());
        // ICCCM wants an event's time here. There has been none, and while the server is grabbed nobody else
        // asks.
        xcb_set_selection_owner(connection, window, instance, XCB_CURRENT_TIME);
    }
    xcb_ungrab_server(connection);
    xcb_flush(connection);
    return owner;
}

SingleInstance::Claim SingleInstance::activate(xcb_window_t owner) const {
    const auto name = m_x.text(m_x.request(owner, m_x.atoms().tavroInstance));
    auto call = QDBusMessage::createMethodCall(QString::fromStdString(name), path,
                                               "org.freedesktop.Application", "Activate");
    call << QVariantMap();
    const auto answer = QDBusConnection::sessionBus().call(call, QDBus::Block, answerMilliseconds);
    return answer.type() == QDBusMessage::ReplyMessage ? Claim::activatedOther : Claim::otherIsSilent;
}

void SingleInstance::Activate(const QVariantMap&) {
    if (m_activate)
        m_activate();
}

} // namespace tavro
