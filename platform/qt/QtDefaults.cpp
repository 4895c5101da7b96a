#include "platform/qt/QtDefaults.h"

#include "platform/qt/BoxedText.h"

#include <QStandardPaths>

namespace quillow {

QtDefaults::QtDefaults(const QString& filePath)
    : settings_(filePath, QSettings::IniFormat) {
    settings_.setFallbacksEnabled(false);
}

Boxed QtDefaults::objectForKey(const QString& key) const {
    const Boxed stored = boxedFromText(settings_.value(key).toString());
    return stored.isNil() ? registered_.value(key) : stored;
}

void QtDefaults::setObject(const Boxed& value, const QString& forKey) {
    if (value.isNil())
        settings_.remove(forKey);
    else
        settings_.setValue(forKey, textFromBoxed(value));
    settings_.sync();
}

void QtDefaults::registerDefaults(const Boxed::Dictionary& registrationDictionary) {
    registered_.insert(registrationDictionary);
}

void QtDefaults::synchronize() {
    settings_.sync();
}

QString QtDefaults::standardFilePath() {
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
           QStringLiteral("/org.quillow.Quillow/defaults.ini");
}

} // namespace quillow
