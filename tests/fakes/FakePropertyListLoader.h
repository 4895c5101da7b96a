// Returns property lists by URL, and records the requested URLs.
#pragma once

#include "platform/PropertyListLoader.h"

#include <QHash>
#include <QStringList>

namespace quillow {

class FakePropertyListLoader final : public PropertyListLoader {
public:
    [[nodiscard]] std::optional<Boxed::Dictionary> dictionaryWithContentsOfURL(const QString& url) const override {
        asked_.append(url);
        const auto found = lists_.constFind(url);
        return found == lists_.constEnd() ? std::nullopt : std::optional(*found);
    }
    void serve(const QString& url, const Boxed::Dictionary& list) { lists_.insert(url, list); }
    void clear() { lists_.clear(); }
    [[nodiscard]] const QStringList& asked() const { return asked_; }

private:
    QHash<QString, Boxed::Dictionary> lists_;
    mutable QStringList asked_;
};

} // namespace quillow
