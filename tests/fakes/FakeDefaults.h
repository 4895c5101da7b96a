// A defaults store in memory.
#pragma once

#include "platform/Defaults.h"
#include "tests/fakes/Journal.h"

#include <QMap>
#include <QStringList>

namespace quillow {

class FakeDefaults final : public Defaults, public Recorded {
public:
    [[nodiscard]] Boxed objectForKey(const QString& key) const override {
        return values_.value(key, registered_.value(key));
    }

    void setObject(const Boxed& value, const QString& forKey) override {
        record(QStringLiteral("store ") + forKey);
        written_.append(forKey);
        if (value.isNil())
            values_.remove(forKey);
        else
            values_.insert(forKey, value);
    }

    void registerDefaults(const Boxed::Dictionary& registrationDictionary) override {
        for (auto entry = registrationDictionary.cbegin(); entry != registrationDictionary.cend(); ++entry)
            registered_.insert(entry.key(), entry.value());
    }
    void synchronize() override {
        record(QStringLiteral("synchronise"));
        ++synchronizedCount_;
    }

    [[nodiscard]] const Boxed::Dictionary& registered() const { return registered_; }
    [[nodiscard]] int synchronizedCount() const { return synchronizedCount_; }
    /// The keys that were written or removed, in order.
    [[nodiscard]] const QStringList& written() const { return written_; }

private:
    QMap<QString, Boxed> values_;
    Boxed::Dictionary registered_;
    int synchronizedCount_ = 0;
    QStringList written_;
};

} // namespace quillow
