#include "platform/linux/process/IdleInhibition.h"

#include "support/servers/BusStandIn.h"
#include "support/servers/PrivateBus.h"

#include <QCoreApplication>
#include <QTest>

#include <gtest/gtest.h>

#include <optional>

namespace tavro {
namespace {

class IdleInhibitionTest : public testing::Test {
protected:
    static void SetUpTestSuite() { providePrivateBus(); }

    /// A screen saver that counts who keeps it away.
    struct ScreenSaver : BusStandIn {
        explicit ScreenSaver(const QString& service, const char* release)
            : BusStandIn({service}) {
            methods[service + ".Inhibit com.vantrelo.TavroPRO Presentation mode"] = [this](auto&) {
                return QVariantList{quint32(100 + ++held)};
            };
            methods[service + '.' + release] = [this](const auto& message) {
                held -= message.arguments().at(0).toUInt() == quint32(100 + held);
                return QVariantList();
            };
        }
        std::atomic<int> held = 0;
    };

    int count = 0;
    QCoreApplication application{count, nullptr};
    bool isServerSuspended = false;
    std::optional<IdleInhibition> inhibition{[this](bool isSuspended) { isServerSuspended = isSuspended; }};
};

TEST_F(IdleInhibitionTest, InhibitsTheServersAndTheDesktopsScreenSaver) {
    for (const auto& [service, release] :
         {std::pair{"org.freedesktop.ScreenSaver", "UnInhibit"}, {"org.gnome.SessionManager", "Uninhibit"}}) {
        SCOPED_TRACE(service);
        ScreenSaver saver(service, release);
        for (int presentation = 0; presentation < 2; ++presentation) {
            inhibition->prevent();
            inhibition->prevent();
            EXPECT_TRUE(isServerSuspended);
            EXPECT_TRUE(QTest::qWaitFor([&] { return saver.held == 1; }, 30'000));
            inhibition->allow();
            EXPECT_FALSE(isServerSuspended);
            EXPECT_TRUE(QTest::qWaitFor([&] { return saver.held == 0; }, 30'000));
        }
        saver.setSilent(true);
        inhibition->prevent();
        inhibition->allow(); // before it has answered
        saver.setSilent(false);
        inhibition->prevent();
        EXPECT_TRUE(QTest::qWaitFor([&] { return saver.held == 1; }, 30'000));
        inhibition->allow();
        EXPECT_TRUE(QTest::qWaitFor([&] { return saver.held == 0; }, 30'000));
    }
}

} // namespace
} // namespace tavro
