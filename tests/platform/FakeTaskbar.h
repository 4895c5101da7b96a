// Records the signals of programs' progress as a taskbar gets them.
#pragma once

#include "tests/platform/Waiting.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>
#include <QStringList>
#include <QVariantMap>

#include <gtest/gtest.h>

namespace quillow {

class FakeTaskbar final : public QObject {
    Q_OBJECT
public:
    QStringList updates;

    void listenOn(QDBusConnection& bus) {
        EXPECT_TRUE(
            bus.connect(QString(), QString(), kInterface, QStringLiteral("Update"), this, SLOT(update(QDBusMessage))));
    }
    /// Waits until the signals that were sent before are received: signals come in order.
    void waitForEarlierSignals(QDBusConnection& bus) {
        QDBusMessage end = QDBusMessage::createSignal(QStringLiteral("/end"), kInterface, QStringLiteral("Update"));
        bus.send(end << QStringLiteral("end") << QVariantMap());
        EXPECT_TRUE(waitUntil([this] { return !updates.isEmpty() && updates.constLast().startsWith(u"end"); }));
        updates.removeLast();
    }

public Q_SLOTS:
    void update(const QDBusMessage& signal) {
        const auto values = qdbus_cast<QVariantMap>(signal.arguments().at(1));
        updates.append(QStringLiteral("%1 %2 %3%4")
                           .arg(signal.arguments().at(0).toString())
                           .arg(values.value(QStringLiteral("progress")).toDouble())
                           .arg(values.value(QStringLiteral("progress-visible")).toBool() ? u"visible" : u"hidden")
                           .arg(values.value(QStringLiteral("urgent"), true).toBool() ? u" urgent" : u""));
    }

private:
    static inline const QString kInterface = QStringLiteral("com.canonical.Unity.LauncherEntry");
};

} // namespace quillow
