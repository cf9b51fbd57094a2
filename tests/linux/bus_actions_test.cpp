#include "platform/linux/process/BusActions.h"

#include "platform/simulated/process/SimulatedMac.h"
#include "support/servers/BusStandIn.h"
#include "support/servers/PrivateBus.h"

#include <QCoreApplication>
#include <QDBusConnectionInterface>
#include <QTest>

#include <gtest/gtest.h>

namespace tavro {
namespace {

TEST(BusActionsTest, SaysOnceThatItsNameIsTakenAndTakesItWhenItIsFree) {
    providePrivateBus();
    int count = 0;
    QCoreApplication application(count, nullptr);
    SimulatedMac mac;
    const auto name = QStringLiteral("com.vantrelo.TavroPRO");
    std::vector<std::string> lines;
    {
        const BusStandIn other({name});
        BusActions actions([] {}, mac.mainQueue(), mac.log());
        actions.offer({});
        EXPECT_TRUE(QTest::qWaitFor(
            [&] {
                lines = mac.log().takeDiagnosed();
                return !lines.empty();
            },
            30'000));
    }
    EXPECT_EQ(lines,
              std::vector<std::string>{"TavroPRO cannot be driven over the session bus: its name belongs to "
                                       "another program"});
    auto* bus = QDBusConnection::sessionBus().interface();
    {
        BusActions actions([] {}, mac.mainQueue(), mac.log());
        actions.offer({});
        EXPECT_TRUE(QTest::qWaitFor([&] { return bus->isServiceRegistered(name).value(); }, 30'000));
    }
    EXPECT_TRUE(QTest::qWaitFor([&] { return !bus->isServiceRegistered(name).value(); }, 30'000));
    EXPECT_TRUE(mac.log().takeDiagnosed().empty());
}

} // namespace
} // namespace tavro
