#include "platform/qt/services/IcuDateFormatting.h"

#include <QTimeZone>

#include <unicode/datefmt.h>
#include <unicode/locid.h>
#include <unicode/simpletz.h>
#include <unicode/smpdtfmt.h>
#include <unicode/timezone.h>
#include <unicode/unistr.h>

#include <cstdlib>
#include <utility>

namespace quillow {
namespace {

icu::UnicodeString toIcu(const QString& text) {
    return {reinterpret_cast<const char16_t*>(text.utf16()), static_cast<int32_t>(text.size())};
}

QString toQt(const icu::UnicodeString& text) {
    return QString::fromUtf16(text.getBuffer(), text.length());
}

icu::Locale currentLocale() {
    return icu::Locale::createCanonical(IcuDateFormatting::localeName().constData());
}

icu::DateFormat::EStyle icuStyle(DateStyle style) {
    switch (style) {
    case DateStyle::none: return icu::DateFormat::kNone;
    case DateStyle::brief: return icu::DateFormat::kShort;
    case DateStyle::medium: return icu::DateFormat::kMedium;
    case DateStyle::full: return icu::DateFormat::kFull;
    }
    return icu::DateFormat::kMedium;
}

/// The date's own zone if ICU knows it and gives the same offset. Otherwise a zone with the fixed offset, which every
/// TZ setting has.
std::unique_ptr<icu::TimeZone> zoneOf(const QDateTime& date) {
    const int32_t offset = date.offsetFromUtc() * 1000;
    const QByteArray id = date.timeSpec() == Qt::LocalTime ? QTimeZone::systemTimeZoneId() : date.timeZone().id();
    std::unique_ptr<icu::TimeZone> zone(icu::TimeZone::createTimeZone(icu::UnicodeString::fromUTF8(id.constData())));
    UErrorCode status = U_ZERO_ERROR;
    int32_t raw = 0;
    int32_t saving = 0;
    zone->getOffset(static_cast<double>(date.toMSecsSinceEpoch()), false, raw, saving, status);
    if (U_SUCCESS(status) && raw + saving == offset) return zone;
    return std::make_unique<icu::SimpleTimeZone>(offset, icu::UnicodeString(u"local"));
}

QString formatted(icu::DateFormat& format, const QDateTime& date) {
    format.adoptTimeZone(zoneOf(date).release());
    icu::UnicodeString text;
    return toQt(format.format(static_cast<double>(date.toMSecsSinceEpoch()), text));
}

class PatternFormatter final : public DateFormatter {
public:
    explicit PatternFormatter(const QString& pattern) {
        UErrorCode status = U_ZERO_ERROR;
        format_ = std::make_unique<icu::SimpleDateFormat>(toIcu(pattern), currentLocale(), status);
        if (U_FAILURE(status)) format_.reset();
    }
    [[nodiscard]] QString stringFromDate(const QDateTime& date) const override {
        return format_ ? formatted(*format_, date) : QString();
    }

private:
    std::unique_ptr<icu::SimpleDateFormat> format_;
};

} // namespace

QString IcuDateFormatting::localizedStringFromDate(const QDateTime& date, DateStyle dateStyle,
                                                   DateStyle timeStyle) const {
    if (!date.isValid() || (dateStyle == DateStyle::none && timeStyle == DateStyle::none)) return {};
    const std::unique_ptr<icu::DateFormat> format(
        icu::DateFormat::createDateTimeInstance(icuStyle(dateStyle), icuStyle(timeStyle), currentLocale()));
    return format ? formatted(*format, date) : QString();
}

std::unique_ptr<DateFormatter> IcuDateFormatting::formatterWithPattern(const QString& dateFormat) const {
    return std::make_unique<PatternFormatter>(dateFormat);
}

QByteArray IcuDateFormatting::localeName() {
    QByteArray name;
    for (const char* variable : {"LC_ALL", "LC_TIME", "LANG"}) {
        name = qgetenv(variable);
        if (!name.isEmpty()) break;
    }
    // "language_TERRITORY.charset@modifier": the charset is irrelevant here, but some modifiers name a script.
    const QByteArray modifier = name.contains('@') ? name.mid(name.indexOf('@') + 1) : QByteArray();
    name = name.split('@').constFirst().split('.').constFirst();
    if (name.isEmpty() || name == "C" || name == "POSIX") return "en_US";
    for (const auto& [word, script] : {std::pair("latin", "Latn"), {"cyrillic", "Cyrl"}, {"devanagari", "Deva"}}) {
        if (modifier != word) continue;
        const qsizetype underscore = name.indexOf('_');
        return underscore < 0 ? name + '_' + script : name.left(underscore) + '_' + script + name.mid(underscore);
    }
    return name;
}

} // namespace quillow
