#include "platform/linux/process/BusActions.h"

#include "platform/process/Log.h"
#include "platform/process/MainQueue.h"

#include <gio/gio.h>

#include <chrono>
#include <future>
#include <string_view>
#include <thread>

namespace tavro {

namespace {

constexpr auto name = "com.vantrelo.TavroPRO";
constexpr auto path = "/com/vantrelo/TavroPRO";
constexpr auto applicationInterface = R"(<node><interface name='org.freedesktop.Application'>
    <method name='Activate'><arg type='a{sv}' name='platform_data' direction='in'/></method>
    <method name='Open'>
        <arg type='as' name='uris' direction='in'/><arg type='a{sv}' name='platform_data' direction='in'/>
    </method>
    <method name='ActivateAction'>
        <arg type='s' name='action_name' direction='in'/><arg type='av' name='parameter' direction='in'/>
        <arg type='a{sv}' name='platform_data' direction='in'/>
    </method></interface></node>)";

struct Free {
    void operator()(GError* error) const { g_error_free(error); }
    void operator()(GDBusNodeInfo* info) const { g_dbus_node_info_unref(info); }
    void operator()(GVariant* value) const { g_variant_unref(value); }
    void operator()(GDBusConnection* connection) const { g_object_unref(connection); }
};
using Connection = std::unique_ptr<GDBusConnection, Free>;
using Error = std::unique_ptr<GError, Free>;

/// A call of org.freedesktop.Application, for which the object stands that is passed along.
struct Application {
    const std::function<void()>& reopen;
    MainQueue& queue;
    GActionGroup* actions;
};

/// False where there is no such action, or it takes no such parameters.
bool activate(const Application& application, GVariant* arguments) {
    const char* action = nullptr;
    GVariantIter* parameters = nullptr;
    g_variant_get(arguments, "(&sav@a{sv})", &action, &parameters, nullptr);
    const bool hasNone = g_variant_iter_n_children(parameters) == 0;
    g_variant_iter_free(parameters);
    const bool isKnown = hasNone && g_action_group_has_action(application.actions, action);
    if (isKnown)
        g_action_group_activate_action(application.actions, action, nullptr);
    return isKnown;
}

// The program opens no files: it comes to the front, as others do.
void answerCall(GDBusConnection*, const char*, const char*, const char*, const char* method,
                GVariant* arguments, GDBusMethodInvocation* invocation, void* data) {
    const auto& application = *static_cast<Application*>(data);
    if (std::string_view(method) != "ActivateAction")
        application.queue.async(application.reopen);
    else if (!activate(application, arguments))
        return g_dbus_method_invocation_return_error(invocation, G_DBUS_ERROR, G_DBUS_ERROR_INVALID_ARGS,
                                                     "There is no such action, or it takes no parameter");
    g_dbus_method_invocation_return_value(invocation, nullptr);
}

constexpr GDBusInterfaceVTable applicationCalls{&answerCall, nullptr, nullptr, {}};

} // namespace

void BusActions::Unref::operator()(void* object) const {
    g_object_unref(object);
}

/// An action and what it is to others.
struct BusActions::Offered {
    Offered(Action offered, MainQueue& mainQueue)
        : action(std::move(offered))
        , queue(mainQueue)
        , exported(action.state ? g_simple_action_new_stateful(action.name.c_str(), nullptr,
                                                               g_variant_new_boolean(action.state->get()))
                                : g_simple_action_new(action.name.c_str(), nullptr)) {
        if (!action.state) {
            g_signal_connect(exported.get(), "activate", G_CALLBACK(&Offered::activated), this);
            return;
        }
        g_signal_connect(exported.get(), "change-state", G_CALLBACK(&Offered::stateWanted), this);
        observation = action.state->observe([this] {
            g_simple_action_set_state(exported.get(), g_variant_new_boolean(action.state->get()));
        });
    }
    Offered(const Offered&) = delete;
    Offered& operator=(const Offered&) = delete;
    ~Offered() { g_signal_handlers_disconnect_by_data(exported.get(), this); }

    // Who asks gets an answer first: an action may end the program.
    static void activated(GSimpleAction*, GVariant*, void* data) {
        const auto& self = *static_cast<Offered*>(data);
        self.queue.async(self.action.block);
    }
    static void stateWanted(GSimpleAction*, GVariant* value, void* data) {
        const auto& self = *static_cast<Offered*>(data);
        self.queue.async(
            [set = self.action.state->set, isOn = g_variant_get_boolean(value) != 0] { set(isOn); });
    }

    const Action action;
    MainQueue& queue;
    const Handle<GSimpleAction> exported;
    Observation observation;
};

BusActions::BusActions(std::function<void()> reopen, MainQueue& queue, Log& log)
    : m_reopen(std::move(reopen))
    , m_queue(queue)
    , m_log(log)
    , m_end(g_cancellable_new())
    , m_group(g_simple_action_group_new()) {}

BusActions::~BusActions() {
    g_cancellable_cancel(m_end.get());
    if (!m_bus)
        return;
    g_dbus_connection_unexport_action_group(m_bus.get(), m_actionsObject);
    g_dbus_connection_unregister_object(m_bus.get(), m_applicationObject);
    g_dbus_connection_call(m_bus.get(), "org.freedesktop.DBus", "/org/freedesktop/DBus",
                           "org.freedesktop.DBus", "ReleaseName", g_variant_new("(s)", name), nullptr,
                           G_DBUS_CALL_FLAGS_NONE, -1, nullptr, nullptr, nullptr);
}

// From a thread, as GLib's own way of waiting knows no deadline.
void BusActions::finish() {
    constexpr std::chrono::milliseconds patience(200);
    if (!m_bus)
        return;
    std::promise<void> promise;
    const auto sent = promise.get_future();
    std::thread([bus = Connection(G_DBUS_CONNECTION(g_object_ref(m_bus.get()))),
                 promise = std::move(promise)]() mutable {
        g_dbus_connection_flush_sync(bus.get(), nullptr, nullptr);
        promise.set_value();
    }).detach();
    sent.wait_for(patience);
}

void BusActions::offer(std::vector<Action> actions) {
    for (auto& action : actions) {
        auto& offered = *m_offered.emplace_back(std::make_unique<Offered>(std::move(action), m_queue));
        g_action_map_add_action(G_ACTION_MAP(m_group.get()), G_ACTION(offered.exported.get()));
    }
    g_bus_get(G_BUS_TYPE_SESSION, m_end.get(), &BusActions::connected, this);
}

// An operation that was cancelled ends after the object: only its error tells.
void BusActions::connected(GObject*, GAsyncResult* result, void* data) {
    GError* error = nullptr;
    Handle<GDBusConnection> bus(g_bus_get_finish(result, &error));
    const Error failure(error);
    if (failure && g_error_matches(error, G_IO_ERROR, G_IO_ERROR_CANCELLED))
        return;
    auto& self = *static_cast<BusActions*>(data);
    if (!bus)
        return self.complain(failure->message);
    self.m_bus = std::move(bus);
    g_dbus_connection_set_exit_on_close(self.m_bus.get(), false); // as GLib would have it
    self.exportObjects();
}

// The objects first: calls that have started the program come as soon as the name is ours.
void BusActions::exportObjects() {
    constexpr std::uint32_t doNotQueue = 4; // D-Bus, RequestName
    const std::unique_ptr<GDBusNodeInfo, Free> info(
        g_dbus_node_info_new_for_xml(applicationInterface, nullptr));
    m_applicationObject = g_dbus_connection_register_object(
        m_bus.get(), path, info->interfaces[0], &applicationCalls,
        new Application{m_reopen, m_queue, G_ACTION_GROUP(m_group.get())},
        [](void* data) { delete static_cast<Application*>(data); }, nullptr);
    m_actionsObject =
        g_dbus_connection_export_action_group(m_bus.get(), path, G_ACTION_GROUP(m_group.get()), nullptr);
    g_dbus_connection_call(m_bus.get(), "org.freedesktop.DBus", "/org/freedesktop/DBus",
                           "org.freedesktop.DBus", "RequestName", g_variant_new("(su)", name, doNotQueue),
                           G_VARIANT_TYPE("(u)"), G_DBUS_CALL_FLAGS_NONE, G_MAXINT, m_end.get(),
                           &BusActions::named, this);
}

void BusActions::named(GObject* bus, GAsyncResult* result, void* data) {
    constexpr std::uint32_t nameExists = 3; // D-Bus, RequestName
    GError* error = nullptr;
    const std::unique_ptr<GVariant, Free> answer(
        g_dbus_connection_call_finish(G_DBUS_CONNECTION(bus), result, &error));
    const Error failure(error);
    if (failure && g_error_matches(error, G_IO_ERROR, G_IO_ERROR_CANCELLED))
        return;
    std::uint32_t outcome = 0;
    if (answer)
        g_variant_get(answer.get(), "(u)", &outcome);
    if (failure)
        static_cast<BusActions*>(data)->complain(failure->message);
    else if (outcome == nameExists)
        static_cast<BusActions*>(data)->complain("its name belongs to another program");
}

void BusActions::complain(const std::string& reason) {
    m_log.diagnose("TavroPRO cannot be driven over the session bus: " + reason);
}

} // namespace tavro
