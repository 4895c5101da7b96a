// A defaults store in memory.
#pragma once

#include "platform/Defaults.h"

#include <QMap>
#include <QStringList>

namespace quillow {

class FakeDefaults final : public Defaults {
public:
    [[nodiscard]] Boxed objectForKey(const QString& key) const override { return values_.value(key); }

    void setObject(const Boxed& value, const QString& forKey) override {
        written_.append(forKey);
        if (value.isNil())
            values_.remove(forKey);
        else
            values_.insert(forKey, value);
    }

    /// The keys that were written, in order, those that were removed included.
    [[nodiscard]] const QStringList& written() const { return written_; }

private:
    QMap<QString, Boxed> values_;
    QStringList written_;
};

} // namespace quillow
