// Translations as the test gives them.
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
    void translate(const QString& key, const QString& translation) { translations_.insert(key, translation); }

private:
    QMap<QString, QString> translations_;
};

} // namespace quillow
