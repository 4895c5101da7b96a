// The program's translations, as Qt finds them among the installed translators.
#pragma once

#include "platform/Bundle.h"

#include <QCoreApplication>

namespace quillow {

class QtBundle final : public Bundle {
public:
    [[nodiscard]] QString localizedStringForKey(const QString& key, const QString& value) const override {
        const QString translation = QCoreApplication::translate("Quillow", key.toUtf8().constData());
        if (translation != key) return translation;
        return value.isEmpty() ? key : value;
    }
};

} // namespace quillow
