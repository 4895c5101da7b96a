// Small operations on strings: identifiers, unique file names, trimming, and fitting a text to a width. They work
// on UTF-16 units; a lone surrogate is a unit like any other.
#pragma once

#include <QString>

#include <cstdint>
#include <optional>

namespace quillow {

class Clock;
class RandomGenerator;
class TextMeasure;
struct TextAttributes;

/// The state of the process that makes generated names unique.
struct UniqueNameState { // selector: none
    QString lastTimeString;
    std::int64_t serial = 0;
    bool isGeneratorSeeded = false;

    /// The one state of the process. Not synchronized: for the main thread only.
    [[nodiscard]] static UniqueNameState& ofProcess();
};

class MWStringUtils {
public:
    MWStringUtils(const Clock& clock, RandomGenerator& randomGenerator, const TextMeasure& textMeasure,
                  UniqueNameState& state = UniqueNameState::ofProcess()); // selector: none

    // New identifiers, in upper-case hexadecimal: five groups with hyphens between them (RFC 9562, version 4).
    [[nodiscard]] static QString createUUIDString();
    [[nodiscard]] static QString uniqueUUIDString();

    /// The current local time in digits: the year in full, then month, day, hour, minute and second of two digits each.
    [[nodiscard]] QString uniqueTimeString() const;
    /// The time string and a random number of five digits or more.
    [[nodiscard]] QString uniqueTimeRandString() const;
    /// "0" if the time string differs from that of the previous call; else the previous result plus one.
    [[nodiscard]] QString getNewSerialForTimeString(const QString& timeString) const;
    /// The time string and its serial. The result is unique in the process as long as the clock runs forward.
    [[nodiscard]] QString uniqueTimeSerialString() const;

    /// The text if it is not wider than `pixelLenght`; else the longest prefix that fits with ".." after it, and
    /// "..". At least one unit stays, even if it is too wide. Nil gives nil. For extreme texts, with thousands of
    /// units without width at the limit, the prefix may be shorter than the longest one that fits.
    [[nodiscard]] std::optional<QString> trimStringToFit(const std::optional<QString>& text, std::int32_t pixelLenght,
                                                         const TextAttributes& withAttributes) const;

    // Trimming. Nil gives nil.
    /// Keeps only the units that occur in `acceptingOnlyChars`.
    [[nodiscard]] static std::optional<QString> trimString(const std::optional<QString>& text,
                                                           const std::optional<QString>& acceptingOnlyChars);
    /// Without leading tabs and Unicode space separators (category Zs); nil if nothing is left.
    [[nodiscard]] static std::optional<QString> removeInitialSpaces(const std::optional<QString>& text);
    /// Without leading and trailing U+0020.
    [[nodiscard]] static std::optional<QString> trimLateralSpace(const std::optional<QString>& text);
    [[nodiscard]] static std::optional<QString> removeLateralSpace(const std::optional<QString>& text);
    /// Whether the text contains anything but U+0020; false for nil.
    [[nodiscard]] static bool spaceTrimmedNotEmpy(const std::optional<QString>& text);
    /// Without leading and trailing double quotes (U+0022).
    [[nodiscard]] static std::optional<QString> trimLateralQuote(const std::optional<QString>& text);
    /// Without carriage returns and line feeds.
    [[nodiscard]] static std::optional<QString> stripNewLines(const std::optional<QString>& text);

private:
    /// A random number from `low` to `high`; the range of the generator may limit it.
    [[nodiscard]] std::int64_t randomInteger(std::int64_t low, std::int64_t high) const;

    const Clock& clock_;
    RandomGenerator& randomGenerator_;
    const TextMeasure& textMeasure_;
    UniqueNameState& state_;
};

} // namespace quillow
