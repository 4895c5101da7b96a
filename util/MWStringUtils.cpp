#include "util/MWStringUtils.h"

#include "platform/Clock.h"
#include "platform/RandomGenerator.h"
#include "util/TextFitting.h"
#include "util/TimeFields.h"

#include <QUuid>

#include <algorithm>
#include <bitset>

namespace quillow {
namespace {

// deliberate: far beyond the generator's maximum of 2147483647, so the number is 1 to 2147483648.
constexpr std::int64_t kLowestRandom = 1;
constexpr std::int64_t kHighestRandom = 32000000000000;
constexpr int kRandomDigits = 5;

/// The platform's white space, which does not include line ends.
bool isWhiteSpace(QChar unit) {
    return unit == u'\t' || unit.category() == QChar::Separator_Space;
}

std::optional<QString> trimmedOf(const std::optional<QString>& text, QChar unit) {
    if (!text) return std::nullopt;
    qsizetype start = 0;
    qsizetype end = text->size();
    while (start < end && text->at(start) == unit)
        ++start;
    while (end > start && text->at(end - 1) == unit)
        --end;
    return text->mid(start, end - start);
}

} // namespace

UniqueNameState& UniqueNameState::ofProcess() {
    static UniqueNameState state;
    return state;
}

MWStringUtils::MWStringUtils(const Clock& clock, RandomGenerator& randomGenerator, const TextMeasure& textMeasure,
                             UniqueNameState& state)
    : clock_(clock)
    , randomGenerator_(randomGenerator)
    , textMeasure_(textMeasure)
    , state_(state) {}

QString MWStringUtils::createUUIDString() {
    return QUuid::createUuid().toString(QUuid::WithoutBraces).toUpper();
}

QString MWStringUtils::uniqueUUIDString() {
    return createUUIDString();
}

QString MWStringUtils::uniqueTimeString() const {
    const TimeFields now(clock_.now());
    return QString::number(now.year) + twoDigits(now.month) + twoDigits(now.day) + twoDigits(now.hour) +
           twoDigits(now.minute) + twoDigits(now.second);
}

QString MWStringUtils::uniqueTimeRandString() const {
    const QString number = QString::number(randomInteger(kLowestRandom, kHighestRandom));
    return uniqueTimeString() + number.rightJustified(kRandomDigits, u'0');
}

std::int64_t MWStringUtils::randomInteger(std::int64_t low, std::int64_t high) const {
    if (!state_.isGeneratorSeeded) {
        randomGenerator_.seed(static_cast<std::uint32_t>(clock_.now().toSecsSinceEpoch()));
        state_.isGeneratorSeeded = true;
    }
    return low + randomGenerator_.next() % (high - low + 1);
}

QString MWStringUtils::getNewSerialForTimeString(const QString& timeString) const {
    state_.serial = timeString == state_.lastTimeString ? state_.serial + 1 : 0;
    state_.lastTimeString = timeString;
    return QString::number(state_.serial);
}

QString MWStringUtils::uniqueTimeSerialString() const {
    const QString timeString = uniqueTimeString();
    return timeString + getNewSerialForTimeString(timeString);
}

std::optional<QString> MWStringUtils::trimStringToFit(const std::optional<QString>& text, std::int32_t pixelLenght,
                                                      const TextAttributes& withAttributes) const {
    if (!text) return std::nullopt;
    return TextFitting(textMeasure_, withAttributes, pixelLenght).fitted(*text);
}

std::optional<QString> MWStringUtils::trimString(const std::optional<QString>& text,
                                                 const std::optional<QString>& acceptingOnlyChars) {
    if (!text) return std::nullopt;
    std::bitset<0x10000> isAccepted;
    for (const QChar unit : acceptingOnlyChars.value_or(QString()))
        isAccepted.set(unit.unicode());
    QString kept = *text;
    kept.removeIf([&](QChar unit) { return !isAccepted.test(unit.unicode()); });
    return kept;
}

std::optional<QString> MWStringUtils::removeInitialSpaces(const std::optional<QString>& text) {
    if (!text) return std::nullopt;
    const auto first = std::find_if_not(text->begin(), text->end(), isWhiteSpace);
    // deliberate: if nothing is left, the result is nil, not an empty text.
    if (first == text->end()) return std::nullopt;
    return text->mid(first - text->begin());
}

std::optional<QString> MWStringUtils::trimLateralSpace(const std::optional<QString>& text) {
    return trimmedOf(text, u' ');
}

std::optional<QString> MWStringUtils::removeLateralSpace(const std::optional<QString>& text) {
    return trimLateralSpace(text);
}

bool MWStringUtils::spaceTrimmedNotEmpy(const std::optional<QString>& text) {
    const auto trimmed = trimLateralSpace(text);
    return trimmed && !trimmed->isEmpty();
}

std::optional<QString> MWStringUtils::trimLateralQuote(const std::optional<QString>& text) {
    return trimmedOf(text, u'"');
}

std::optional<QString> MWStringUtils::stripNewLines(const std::optional<QString>& text) {
    if (!text) return std::nullopt;
    // The same as removing every "\n\r", then every "\n", then every "\r".
    QString stripped = *text;
    stripped.removeIf([](QChar unit) { return unit == u'\n' || unit == u'\r'; });
    return stripped;
}

} // namespace quillow
