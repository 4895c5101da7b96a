// A defaults store that reports every change, so that controls can show the stored values.
#pragma once

#include "platform/Defaults.h"

#include <functional>
#include <utility>

namespace quillow {

class ObservedDefaults final : public Defaults {
public:
    explicit ObservedDefaults(Defaults& store)
        : store_(store) {}

    /// Called with the key after each setObject(), even if the value stays the same, and after registerDefaults() for
    /// each of its keys.
    void setChangeHandler(std::function<void(const QString& key)> handler) { changeHandler_ = std::move(handler); }

    [[nodiscard]] Boxed objectForKey(const QString& key) const override { return store_.objectForKey(key); }
    void setObject(const Boxed& value, const QString& forKey) override {
        store_.setObject(value, forKey);
        if (changeHandler_) changeHandler_(forKey);
    }
    void registerDefaults(const Boxed::Dictionary& registrationDictionary) override {
        store_.registerDefaults(registrationDictionary);
        if (!changeHandler_) return;
        for (auto entry = registrationDictionary.begin(); entry != registrationDictionary.end(); ++entry)
            changeHandler_(entry.key());
    }
    void synchronize() override { store_.synchronize(); }

private:
    Defaults& store_;
    std::function<void(const QString&)> changeHandler_;
};

} // namespace quillow
