// Guesses the encoding of a document that declares none. UTF-8, UTF-16 and ISO-2022-JP are recognised by
// their structure. Among the others the encoding wins in which the text is the most probable for a reader who
// knows the language.
#include "text/EncodingDetector.h"

#include "text/DetectorSample.h"
#include "text/DetectorScores.h"
#include "text/UnknownLatinModel.h"
#include "text/Utf8.h"

#include <algorithm>
#include <limits>

namespace quillow::text {

namespace {

struct Candidate {
    Encoding encoding;
    unsigned rarityBits; ///< how much rarer such documents are than those in windows-1252, in bits
    std::string_view languages;
};

constexpr std::string_view kWestern = "de fr es pt it nl sv da nb fi is ca eu gl ga sq";
constexpr std::string_view kCentral = "pl cs sk hu ro hr sl sq";
constexpr std::string_view kBaltic = "lt lv et";
constexpr std::string_view kCyrillic = "ru uk be bg sr mk";

constexpr Candidate kAlphabetCandidates[] = {
    {Encoding::windows1252, 0, kWestern},    {Encoding::windows1250, 8, kCentral},
    {Encoding::iso8859_2, 9, kCentral},      {Encoding::windows1251, 7, kCyrillic},
    {Encoding::koi8R, 8, "ru bg"},           {Encoding::koi8U, 9, "uk be ru"},
    {Encoding::ibm866, 10, "ru uk be bg"},   {Encoding::iso8859_5, 10, kCyrillic},
    {Encoding::xMacCyrillic, 11, kCyrillic}, {Encoding::windows1253, 8, "el"},
    {Encoding::iso8859_7, 12, "el"},         {Encoding::windows1254, 8, "tr"},
    {Encoding::windows1255, 8, "he"},        {Encoding::iso8859_8, 12, "he"},
    {Encoding::windows1256, 8, "ar fa"},     {Encoding::iso8859_6, 10, "ar"},
    {Encoding::windows874, 8, "th"},         {Encoding::windows1257, 9, kBaltic},
    {Encoding::iso8859_13, 11, kBaltic},     {Encoding::iso8859_4, 13, kBaltic},
    {Encoding::windows1258, 9, "vi"},        {Encoding::iso8859_15, 6, kWestern},
    {Encoding::macintosh, 7, kWestern},      {Encoding::iso8859_16, 13, "ro"},
    {Encoding::iso8859_3, 13, "eo"},         {Encoding::iso8859_14, 14, "cy ga"},
};

constexpr Candidate kEastAsianCandidates[] = {
    {Encoding::shiftJis, 8, {}}, {Encoding::eucJp, 9, {}},   {Encoding::eucKr, 8, {}},
    {Encoding::big5, 8, {}},     {Encoding::gb18030, 8, {}},
};

/// How much rarer a text in windows-1252 is in a language that has no model, names included. Measured with translated
/// messages: less takes single words of the Baltic languages, more leaves titles in languages without a model to other
/// encodings.
constexpr unsigned kUnknownLanguageBits = 5;

bool names(std::string_view languages, std::string_view language) {
    return languages.find(language) != std::string_view::npos;
}

/// Whether the bytes are UTF-8: well-formed apart from a truncated last sequence, or with so many sequences that
/// the rest must be damage. A sentence in another encoding does not contain three UTF-8 sequences per error.
bool looksLikeUtf8(std::string_view bytes) {
    constexpr std::size_t kSequencesPerError = 3;
    constexpr std::size_t kMostErrors = 1000; // enough to decide
    if (isValidUtf8(bytes)) return true;
    std::size_t sequences = 0;
    std::size_t errors = 0;
    while (!bytes.empty() && errors < kMostErrors) {
        bytes.remove_prefix(asciiPrefixLength(bytes));
        if (bytes.empty()) break;
        const DecodedCodePoint decoded = decodeUtf8(bytes);
        const auto lead = static_cast<std::uint8_t>(bytes.front());
        const bool cutOff = decoded.length == bytes.size() && lead >= 0xC2 && lead <= 0xF4;
        if (decoded.wellFormed) ++sequences;
        if (!decoded.wellFormed && !cutOff) ++errors;
        bytes.remove_prefix(decoded.length);
    }
    return sequences > 0 && sequences >= errors * kSequencesPerError;
}

/// Detects UTF-16 by its zero bytes: ASCII characters, spaces and line ends have them in UTF-16, and
/// legacy text has none.
std::optional<Encoding> utf16ByZeroBytes(std::string_view bytes) {
    constexpr std::size_t kLook = 4096;
    constexpr std::size_t kUnitsPerZero = 64;
    constexpr std::size_t kOneSided = 8;
    const std::string_view look = bytes.substr(0, kLook);
    std::size_t zeros[2] = {0, 0};
    for (std::size_t i = 0; i < look.size(); ++i)
        zeros[i % 2] += look[i] == '\0' ? 1 : 0;
    const std::size_t units = look.size() / 2;
    for (const std::size_t highByte : {std::size_t{0}, std::size_t{1}}) {
        if (zeros[highByte] == 0 || zeros[highByte] * kUnitsPerZero < units) continue;
        if (zeros[1 - highByte] * kOneSided > zeros[highByte]) continue;
        const Encoding encoding = highByte == 0 ? Encoding::utf16be : Encoding::utf16le;
        const DecodedText decoded = decode(look.substr(0, units * 2), encoding);
        if (decoded.replacements <= units / kUnitsPerZero) return encoding;
    }
    return std::nullopt;
}

/// Detects ISO-2022-JP by an escape sequence that selects Japanese characters. The bytes must all be ASCII.
bool looksLikeIso2022Jp(std::string_view bytes) {
    for (std::size_t at = bytes.find('\x1B'); at != std::string_view::npos; at = bytes.find('\x1B', at + 1)) {
        const std::string_view sequence = bytes.substr(at + 1, 2);
        if (sequence == "$@" || sequence == "$B" || sequence == "(J" || sequence == "(I") return true;
    }
    return false;
}

/// The candidate with the lowest cost; of several the first.
Encoding likeliest(const DetectorSample& sample) {
    const BytePairCounts pairs(sample);
    Encoding best = Encoding::windows1252;
    std::uint64_t least = std::numeric_limits<std::uint64_t>::max();
    const auto consider = [&](const Candidate& candidate, std::uint64_t cost) {
        cost += candidate.rarityBits * std::uint64_t{kStepsPerBit};
        if (cost >= least) return;
        least = cost;
        best = candidate.encoding;
    };
    for (const Candidate& candidate : kAlphabetCandidates)
        for (std::size_t i = 0; i < kLanguageModelCount; ++i)
            if (names(candidate.languages, kLanguageModels[i].language))
                consider(candidate, alphabetCost(pairs, candidate.encoding, kLanguageModels[i]));
    constexpr Candidate kAnyLatin{Encoding::windows1252, kUnknownLanguageBits, {}};
    consider(kAnyLatin, alphabetCost(pairs, kAnyLatin.encoding, kUnknownLatinModel));
    for (const Candidate& candidate : kEastAsianCandidates)
        consider(candidate, eastAsianCost(sample, candidate.encoding, least));
    return best;
}

} // namespace

Encoding detectEncoding(std::string_view bytes) {
    if (const auto mark = byteOrderMark(bytes)) return mark->encoding;
    if (const auto utf16 = utf16ByZeroBytes(bytes)) return *utf16;
    if (asciiPrefixLength(bytes) == bytes.size())
        return looksLikeIso2022Jp(bytes) ? Encoding::iso2022Jp : Encoding::windows1252;
    if (looksLikeUtf8(bytes)) return Encoding::utf8;
    return likeliest(DetectorSample(bytes, kDetectorWindow));
}

} // namespace quillow::text
