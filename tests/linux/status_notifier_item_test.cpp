#include "platform/linux/menubar/StatusNotifierItem.h"

#include "support/servers/BusStandIn.h"
#include "support/servers/PrivateBus.h"

#include <QCoreApplication>
#include <QTest>

#include <gtest/gtest.h>

namespace tavro {
namespace {

const QString watcherService = StatusNotifierItem::watcherService;

// On its own connection, as every watcher is on another one than the item's.
TEST(StatusNotifierItemTest, RegistersAgainAFewTimesAfterTheWatcherDropsIt) {
    providePrivateBus();
    int count = 0;
    QCoreApplication application(count, nullptr);
    std::map<QString, std::atomic<int>> registrations;
    BusStandIn watcher({watcherService});
    const auto show = [&](const QString& name) {
        registrations[name] = 0; // before the other thread looks
        watcher.methods[watcherService + ".RegisterStatusNotifierItem " + name] = [&, name](auto&) {
            ++registrations[name];
            return QVariantList();
        };
        auto item = std::make_unique<StatusNotifierItem>(
            QDBusConnection::sessionBus(), name, TrayIcon::Identity{"id", "title", "hint"}, nullptr, [] {});
        item->show();
        EXPECT_TRUE(QTest::qWaitFor([&] { return registrations[name] == 1; }, 30'000));
        return item;
    };
    const auto item = show("org.example.Item"), last = show("org.example.Last");
    for (int time = 0; time < 20; ++time)
        item->watcherDropped("org.example.Item/StatusNotifierItem");
    last->watcherDropped("org.example.Last2/StatusNotifierItem");
    last->watcherDropped("org.example.Last"); // and comes after those, over the same connection
    EXPECT_TRUE(QTest::qWaitFor([&] { return registrations["org.example.Last"] == 2; }, 30'000));
    EXPECT_EQ(registrations["org.example.Item"], 6);
}

} // namespace
} // namespace tavro
