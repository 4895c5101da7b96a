// The files installed with the program: its translations, looked up in Qt's installed translators, and its resource
// files.
#pragma once

#include "platform/Bundle.h"

#include <QCoreApplication>
#include <QFileInfo>

#include <utility>

namespace quillow {

class QtBundle final : public Bundle {
public:
    explicit QtBundle(QString resourceFolder)
        : resourceFolder_(std::move(resourceFolder)) {}

    [[nodiscard]] QString localizedStringForKey(const QString& key, const QString& value) const override {
        QString translation = QCoreApplication::translate("Quillow", key.toUtf8().constData());
        if (translation != key) return translation;
        return value.isEmpty() ? key : value;
    }

    [[nodiscard]] std::optional<QString> pathForResource(const QString& name, const QString& ofType) const override {
        if (name.isEmpty() || name.contains(QLatin1Char('/')) || ofType.contains(QLatin1Char('/'))) return std::nullopt;
        const QFileInfo file(resourceFolder_ + QLatin1Char('/') + name +
                             (ofType.isEmpty() ? QString() : QLatin1Char('.') + ofType));
        return file.isFile() ? std::optional(file.absoluteFilePath()) : std::nullopt;
    }

    /// "share/quillow" beside the program's folder, both in an installation and in a build folder.
    [[nodiscard]] static QString standardResourceFolder() {
        return QCoreApplication::applicationDirPath() + QStringLiteral("/../share/quillow");
    }

private:
    QString resourceFolder_;
};

} // namespace quillow
