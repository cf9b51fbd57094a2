#pragma once

#include "platform/process/Actions.h"

#include <memory>

// NOLINTBEGIN(bugprone-reserved-identifier): GLib's names
struct _GAsyncResult;
struct _GCancellable;
struct _GDBusConnection;
struct _GObject;
struct _GSimpleActionGroup;
// NOLINTEND(bugprone-reserved-identifier)

namespace tavro {

class Log;
class MainQueue;

/// The program on the session bus, as `com.vantrelo.TavroPRO`: at /com/vantrelo/TavroPRO it offers
/// org.freedesktop.Application (XDG desktop entries, D-Bus activation) and its actions as
/// org.gtk.Actions. Nothing here waits for the bus. Where that is missing, or the name belongs to another
/// program, the log says so once and all else goes on.
///
/// The connection is GLib's, since the toolkit cannot send the empty signature of an action without a
/// parameter. What comes over it runs in the main loop, which the toolkit shares with GLib.
class BusActions final : public Actions {
public:
    /// `reopen` runs when the program is activated as a whole.
    BusActions(std::function<void()> reopen, MainQueue& queue, Log& log);
    BusActions(const BusActions&) = delete;
    BusActions& operator=(const BusActions&) = delete;
    ~BusActions() override;

    void offer(std::vector<Action> actions) override;
    /// Sends what was answered: GLib does so from a thread of its own, which the end of the program would
    /// overtake, and who asked for that end would see a failure. A bus that does not read is not waited for.
    void finish();

private:
    struct Offered;
    struct Unref {
        void operator()(void* object) const;
    };
    template <class T>
    using Handle = std::unique_ptr<T, Unref>;

    static void connected(_GObject* source, _GAsyncResult* result, void* self);
    static void named(_GObject* source, _GAsyncResult* result, void* self);
    void exportObjects();
    void complain(const std::string& reason);

    const std::function<void()> m_reopen;
    MainQueue& m_queue;
    Log& m_log;
    const Handle<_GCancellable> m_end;
    const Handle<_GSimpleActionGroup> m_group;
    std::vector<std::unique_ptr<Offered>> m_offered;
    Handle<_GDBusConnection> m_bus; // once there is one
    unsigned m_applicationObject = 0, m_actionsObject = 0;
};

} // namespace tavro
