// A bundle with the translations that the test sets.
#pragma once

#include "platform/Bundle.h"

#include <QMap>

namespace quillow {

class FakeBundle final : public Bundle {
public:
    [[nodiscard]] QString localizedStringForKey(const QString& key, const QString& value) const override {
        if (translations_.contains(key)) return translations_.value(key);
        return value.isEmpty() ? key : value;
    }
    [[nodiscard]] std::optional<QString> pathForResource(const QString& name, const QString& ofType) const override {
        const auto found = resources_.constFind(name + u'.' + ofType);
        return found == resources_.constEnd() ? std::nullopt : std::optional(*found);
    }
    void addResource(const QString& fileName, const QString& path) { resources_.insert(fileName, path); }
    void translate(const QString& key, const QString& translation) { translations_.insert(key, translation); }

private:
    QMap<QString, QString> translations_;
    QMap<QString, QString> resources_;
};

} // namespace quillow
