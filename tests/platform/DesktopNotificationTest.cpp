// Notifications against a service on a private bus.
#include "platform/qt/life/DesktopNotification.h"

#include "tests/platform/PrivateBus.h"
#include "tests/platform/Waiting.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QGuiApplication>
#include <QTimer>
#include <QWidget>

#include <gtest/gtest.h>

namespace quillow {
namespace {

const QString kName = QStringLiteral("org.freedesktop.Notifications");
const QString kPath = QStringLiteral("/org/freedesktop/Notifications");
constexpr uint kId = 7;

/// A notification server that records calls.
class Server final : public QDBusVirtualObject {
public:
    QList<QDBusMessage> calls;
    QString introspect(const QString&) const override { return {}; }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override {
        calls.append(message);
        if (message.member() == u"Notify") return connection.send(message.createReply(kId));
        return connection.send(message.createReply());
    }
    [[nodiscard]] QStringList members() const {
        QStringList names;
        for (const QDBusMessage& call : calls)
            names.append(call.member());
        return names;
    }
};

class DesktopNotificationTest : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(bus_.isConnected());
        ASSERT_TRUE(bus_.service().registerVirtualObject(kPath, &server_));
        ASSERT_TRUE(bus_.service().registerService(kName));
    }
    void show() {
        notification_.show(QStringLiteral("3 documents converted"), QStringLiteral("a < b"), QStringLiteral("Show"),
                           [this] { ++pressed_; });
        ASSERT_TRUE(waitUntil([this] { return server_.members().contains(QStringLiteral("Notify")); }));
    }
    void press(uint id) {
        QDBusMessage signal = QDBusMessage::createSignal(kPath, kName, QStringLiteral("ActionInvoked"));
        signal << id << QStringLiteral("show");
        bus_.service().send(signal);
    }

    PrivateBus bus_;
    Server server_;
    DesktopNotification notification_{[this] { return bus_.client(); }};
    int pressed_ = 0;
};

TEST_F(DesktopNotificationTest, isQuietAndHasOneButton) {
    show();
    const QList<QVariant> arguments = server_.calls.constFirst().arguments();
    EXPECT_EQ(arguments.at(3).toString(), QStringLiteral("3 documents converted"));
    EXPECT_EQ(arguments.at(4).toString(), QStringLiteral("a &lt; b")) << "a body is markup";
    EXPECT_EQ(arguments.at(5).toStringList().last(), QStringLiteral("Show"));
    const auto hints = qdbus_cast<QVariantMap>(arguments.at(6));
    EXPECT_EQ(hints.value(QStringLiteral("urgency")).toUInt(), 0U);
    EXPECT_TRUE(hints.value(QStringLiteral("suppress-sound")).toBool());
}

TEST_F(DesktopNotificationTest, onlyItsOwnButtonIsHeard) {
    show();
    // The number of the notification is known after the answer.
    ASSERT_TRUE(waitUntil([this] {
        press(kId + 1);
        press(kId);
        runEvents();
        return pressed_ > 0;
    }));
    const int before = pressed_;
    press(kId + 1);
    press(kId);
    ASSERT_TRUE(waitUntil([&] { return pressed_ > before; }));
}

TEST_F(DesktopNotificationTest, goesAwayWhenItIsClosed) {
    show();
    ASSERT_TRUE(waitUntil([this] {
        notification_.close();
        runEvents();
        return server_.members().contains(QStringLiteral("CloseNotification"));
    }));
}

TEST_F(DesktopNotificationTest, inTheBackgroundItIsShownUntilTheProgramComesToTheFront) {
    notification_.showInBackground(QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("Show"), {});
    ASSERT_TRUE(waitUntil([this] { return server_.members().contains(QStringLiteral("Notify")); }));
    QWidget window;
    window.show();
    window.activateWindow();
    ASSERT_TRUE(waitUntil([this] { return server_.members().contains(QStringLiteral("CloseNotification")); }));
}

TEST_F(DesktopNotificationTest, isNotShownInFrontNorOnTheWayThere) {
    const auto begin = [this] {
        notification_.showInBackground(QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("Show"), {});
    };
    begin();
    QWidget window;
    window.show();
    window.activateWindow();
    ASSERT_TRUE(waitUntil([] { return QGuiApplication::applicationState() == Qt::ApplicationActive; }));
    begin();
    // As long as a notification would take to come.
    bool isOver = false;
    QTimer::singleShot(2 * DesktopNotification::kTimeToTheFront, [&] { isOver = true; });
    ASSERT_TRUE(waitUntil([&] { return isOver; }));
    EXPECT_EQ(server_.members(), QStringList());
}

TEST(DesktopNotification, withoutABusNothingIsShown) {
    DesktopNotification notification([] { return QDBusConnection(QStringLiteral("none")); });
    notification.show(QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c"), {});
    runEvents();
}

} // namespace
} // namespace quillow
