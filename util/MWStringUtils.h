// Small operations on strings: identifiers, names that no two files share, trimming, and fitting a text into a width. Strings are
// taken unit by unit (UTF-16); a lone surrogate is a unit like any other.
#pragma once

#include <QString>

#include <cstdint>
#include <optional>

namespace quillow {

class Clock;
class RandomGenerator;
class TextMeasure;
struct TextAttributes;

/// What the process remembers between names.
struct UniqueNameState { // selector: none
    QString lastTimeString;
    std::int64_t serial = 0;
    bool isGeneratorSeeded = false;

    /// The one state of the process. Unguarded: for the main thread.
    [[nodiscard]] static UniqueNameState& ofProcess();
};

class MWStringUtils {
public:
    MWStringUtils(const Clock& clock, RandomGenerator& randomGenerator, const TextMeasure& textMeasure,
                  UniqueNameState& state = UniqueNameState::ofProcess()); // selector: none

    // New identifiers, in upper-case hexadecimal: five groups with hyphens between them (RFC 9562, version 4).
    [[nodiscard]] static QString createUUIDString();
    [[nodiscard]] static QString uniqueUUIDString();

    /// The present local time in digits: the year in full, then month, day, hour, minute and second of two digits each.
    [[nodiscard]] QString uniqueTimeString() const;
    /// The time string and a random number of five digits or more.
    [[nodiscard]] QString uniqueTimeRandString() const;
    /// "0" for a time string other than the last one asked for, and one more each time that it is asked for again.
    [[nodiscard]] QString getNewSerialForTimeString(const QString& timeString) const;
    /// The time string and its serial: no two calls of a process give the same while the clock runs forward.
    [[nodiscard]] QString uniqueTimeSerialString() const;

    /// The text when it is no wider than that; else its longest beginning that fits with ".." after it, and these two points.
    /// One unit always stays, even when that is too wide. Nil gives nil.
    /// For a text made to be slow, with thousands of units that take up no width at the limit, the beginning may be a shorter
    /// one that fits.
    [[nodiscard]] std::optional<QString> trimStringToFit(const std::optional<QString>& text, std::int32_t pixelLenght,
                                                         const TextAttributes& withAttributes) const;

    // Trimming. Nil gives nil.
    /// Only those units that occur in the accepted characters.
    [[nodiscard]] static std::optional<QString> trimString(const std::optional<QString>& text,
                                                           const std::optional<QString>& acceptingOnlyChars);
    /// Without tabs and Unicode space separators (category Zs) at its beginning; nil when nothing else is in it.
    [[nodiscard]] static std::optional<QString> removeInitialSpaces(const std::optional<QString>& text);
    /// Without U+0020 at both ends.
    [[nodiscard]] static std::optional<QString> trimLateralSpace(const std::optional<QString>& text);
    [[nodiscard]] static std::optional<QString> removeLateralSpace(const std::optional<QString>& text);
    /// Whether something other than U+0020 is in it; no for nil.
    [[nodiscard]] static bool spaceTrimmedNotEmpy(const std::optional<QString>& text);
    /// Without double quotes (U+0022) at both ends.
    [[nodiscard]] static std::optional<QString> trimLateralQuote(const std::optional<QString>& text);
    /// Without carriage returns and line feeds.
    [[nodiscard]] static std::optional<QString> stripNewLines(const std::optional<QString>& text);

private:
    /// A number from low to high, as far as the generator reaches.
    [[nodiscard]] std::int64_t randomInteger(std::int64_t low, std::int64_t high) const;

    const Clock& clock_;
    RandomGenerator& randomGenerator_;
    const TextMeasure& textMeasure_;
    UniqueNameState& state_;
};

} // namespace quillow
