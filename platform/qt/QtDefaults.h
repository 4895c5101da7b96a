// The defaults store: an INI file in which every value carries its type, because INI alone gives all back as strings. Each line
// is "key=<type>:<text>":
//   b: true or false    i: an integer    f: a float    g: a double    s: a string, percent-encoded where it must be
//   x: bytes in Base64  t: an instant in UTC, ISO 8601 with milliseconds
//   j: an array or dictionary, its CBOR bytes in Base64
#pragma once

#include "platform/Defaults.h"

#include <QSettings>

namespace quillow {

class QtDefaults final : public Defaults {
public:
    /// The file is made with the first value.
    explicit QtDefaults(const QString& filePath);

    [[nodiscard]] Boxed objectForKey(const QString& key) const override;
    /// On disk when it returns, the whole file replaced at once.
    void setObject(const Boxed& value, const QString& forKey) override;
    void registerDefaults(const Boxed::Dictionary& registrationDictionary) override;
    void synchronize() override;

    /// "org.quillow.Quillow/defaults.ini" in the user's configuration folder.
    [[nodiscard]] static QString standardFilePath();

private:
    QSettings settings_;
    Boxed::Dictionary registered_;
};

} // namespace quillow
