// Records the signals of programs' progress as a taskbar gets them.
#pragma once

#include <QDBusArgument>
#include <QDBusMessage>
#include <QObject>
#include <QStringList>
#include <QVariantMap>

namespace quillow {

class FakeTaskbar final : public QObject {
    Q_OBJECT
public:
    QStringList updates;

public Q_SLOTS:
    void update(const QDBusMessage& signal) {
        const auto values = qdbus_cast<QVariantMap>(signal.arguments().at(1));
        updates.append(QStringLiteral("%1 %2 %3%4")
                           .arg(signal.arguments().at(0).toString())
                           .arg(values.value(QStringLiteral("progress")).toDouble())
                           .arg(values.value(QStringLiteral("progress-visible")).toBool() ? u"visible" : u"hidden")
                           .arg(values.value(QStringLiteral("urgent"), true).toBool() ? u" urgent" : u""));
    }
};

} // namespace quillow
