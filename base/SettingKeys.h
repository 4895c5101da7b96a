// The keys of the settings store: their names, types, registered defaults and meanings. A key without a registered
// default is absent until it is written.
#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QString>

#include <cstdint>
#include <optional>

namespace quillow {

/// A key whose values have the type `Value`.
template <class Value>
struct SettingKey { // selector: none
    const char16_t* name;
    std::optional<Value> registeredDefault = std::nullopt;

    [[nodiscard]] QString string() const { return QString::fromUtf16(name); }
};

namespace settings {

/// Where texts go: kDestinationFixed, or to a folder that is requested at each conversion.
inline constexpr SettingKey<std::int64_t> kDestinationType{u"destinationType", 0};
inline constexpr std::int64_t kDestinationAsked = 0;
inline constexpr std::int64_t kDestinationFixed = 1;

/// The bookmark of the fixed folder; empty after the folder was cleared.
inline constexpr SettingKey<QByteArray> kDestBookmark{u"destBookmark"};
/// The path of the fixed folder when it was last found; empty after the folder was cleared.
inline constexpr SettingKey<QString> kDestPath{u"destPath"};

/// What happens at start-up, 0 to 3 (see frame/StartupDocument.cpp).
inline constexpr SettingKey<std::int64_t> kStartupActionTag{u"StartupActionTag"};
/// The start-up document's path when it was last found; empty after it was cleared.
inline constexpr SettingKey<QString> kStartupSelectedDocPath{u"StartupSelectedDocPath"};
/// Its bookmark; empty after it was cleared.
inline constexpr SettingKey<QByteArray> kStartupSelectedDocBookmark{u"StartupSelectedDocBookmark"};

/// Whether the daily look for a newer release is on.
inline constexpr SettingKey<bool> kNotifyUpdate{u"notifyUpdate", true};
/// When the list of releases was last downloaded.
inline constexpr SettingKey<QDateTime> kLastCheckDateForUpdate{u"lastCheckDateForUpdate"};
/// deliberate: registered, and neither written nor read by anything.
inline constexpr SettingKey<std::int64_t> kLastVersionUsedToUpdatePref{u"lastVersionUsedToUpdatePref", 0};

} // namespace settings

} // namespace quillow
