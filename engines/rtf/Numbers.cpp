#include "engines/rtf/Numbers.h"

#include <algorithm>
#include <iterator>
#include <string_view>

namespace quillow::rtf {

namespace {

using Letters = std::u32string_view;

constexpr Letters kLatinUpper = U"ABCDEFGHIJKLMNOPQRSTUVWXYZ";
constexpr Letters kLatinLower = U"abcdefghijklmnopqrstuvwxyz";
constexpr Letters kRussianUpper = U"АБВГДЕЖЗИКЛМНОПРСТУФХЦЧШЩЫЭЮЯ";
constexpr Letters kRussianLower = U"абвгдежзиклмнопрстуфхцчшщыэюя";
constexpr Letters kAiueo =
    U"アイウエオカキクケコサシスセソタチツテトナニヌネノハヒフヘホマミムメモヤユヨラリルレロワヲン";
constexpr Letters kIroha =
    U"イロハニホヘトチリヌルヲワカヨタレソツネナラムウヰノオクヤマケフコエテアサキユメミシヱヒモセスン";
constexpr Letters kAiueoHalf = U"ｱｲｳｴｵｶｷｸｹｺｻｼｽｾｿﾀﾁﾂﾃﾄﾅﾆﾇﾈﾉﾊﾋﾌﾍﾎﾏﾐﾑﾒﾓﾔﾕﾖﾗﾘﾙﾚﾛﾜｦﾝ";
constexpr Letters kIrohaHalf = U"ｲﾛﾊﾆﾎﾍﾄﾁﾘﾇﾙｦﾜｶﾖﾀﾚｿﾂﾈﾅﾗﾑｳヰﾉｵｸﾔﾏｹﾌｺｴﾃｱｻｷﾕﾒﾐｼヱﾋﾓｾｽﾝ";
constexpr Letters kCircled = U"①②③④⑤⑥⑦⑧⑨⑩⑪⑫⑬⑭⑮⑯⑰⑱⑲⑳";
constexpr Letters kFullStops = U"⒈⒉⒊⒋⒌⒍⒎⒏⒐⒑⒒⒓⒔⒕⒖⒗⒘⒙⒚⒛";
constexpr Letters kParenthesized = U"⑴⑵⑶⑷⑸⑹⑺⑻⑼⑽⑾⑿⒀⒁⒂⒃⒄⒅⒆⒇";
constexpr Letters kParenthesizedIdeographs = U"㈠㈡㈢㈣㈤㈥㈦㈧㈨㈩";
constexpr Letters kGanada = U"가나다라마바사아자차카타파하";
constexpr Letters kChosung = U"ㄱㄴㄷㄹㅁㅂㅅㅇㅈㅊㅋㅌㅍㅎ";
constexpr Letters kHeavenlyStems = U"甲乙丙丁戊己庚辛壬癸";
constexpr Letters kEarthlyBranches = U"子丑寅卯辰巳午未申酉戌亥";
constexpr Letters kArabicAlphabet = U"أبتثجحخدذرزسشصضطظعغفقكلمنهوي";
constexpr Letters kArabicAbjad = U"أبجدهوزحطيكلمنسعفصقرشتثخذضظغ";
constexpr Letters kHebrew = U"אבגדהוזחטיכלמנסעפצקרשת";
constexpr Letters kHindiVowels = U"अआइईउऊऋऌऍऎएऐऑऒओऔ";
constexpr Letters kHindiConsonants = U"कखगघङचछजझञटठडढणतथदधनपफबभमयरलवशषसह";
constexpr Letters kThai = U"กขคงจฉชซฌญฎฏฐฑฒณดตถทธนบปผฝพฟภมยรลวศษสหฬอฮ";

constexpr Letters kFullwidthDigits = U"０１２３４５６７８９";
constexpr Letters kDevanagariDigits = U"०१२३४५६७८९";
constexpr Letters kThaiDigits = U"๐๑๒๓๔๕๖๗๘๙";
constexpr Letters kIdeographDigits = U"〇一二三四五六七八九";
constexpr Letters kCircleDigits = U"○一二三四五六七八九";
constexpr Letters kZeroDigits = U"零一二三四五六七八九";
constexpr Letters kKoreanDigits = U"영일이삼사오육칠팔구";

/// How numbers beyond the last letter of an alphabet are written: with the letter repeated ("AA"), from the first
/// letter again, or in digits.
enum class Beyond { repeat, wrap, digits };

struct Alphabet {
    NumberFormat format;
    Beyond beyond;
    Letters letters;
};

constexpr Alphabet kAlphabets[] = {
    {NumberFormat::upperLetter, Beyond::repeat, kLatinUpper},
    {NumberFormat::lowerLetter, Beyond::repeat, kLatinLower},
    {NumberFormat::aiueo, Beyond::wrap, kAiueoHalf},
    {NumberFormat::iroha, Beyond::wrap, kIrohaHalf},
    {NumberFormat::circle, Beyond::digits, kCircled},
    {NumberFormat::aiueoDoubleByte, Beyond::wrap, kAiueo},
    {NumberFormat::irohaDoubleByte, Beyond::wrap, kIroha},
    {NumberFormat::korean2, Beyond::wrap, kGanada},
    {NumberFormat::korean1, Beyond::wrap, kChosung},
    {NumberFormat::chinese1, Beyond::digits, kFullStops},
    {NumberFormat::chinese2, Beyond::digits, kParenthesized},
    {NumberFormat::chinese3, Beyond::digits, kCircled},
    {NumberFormat::chinese4, Beyond::digits, kParenthesizedIdeographs},
    {NumberFormat::zodiac1, Beyond::digits, kHeavenlyStems},
    {NumberFormat::zodiac2, Beyond::digits, kEarthlyBranches},
    {NumberFormat::arabicAlphabet, Beyond::wrap, kArabicAlphabet},
    {NumberFormat::hebrewBiblical, Beyond::digits, kHebrew},
    {NumberFormat::arabicAbjad, Beyond::wrap, kArabicAbjad},
    {NumberFormat::hindiVowels, Beyond::wrap, kHindiConsonants}, // deliberate: word processors swap these two
    {NumberFormat::hindiConsonants, Beyond::wrap, kHindiVowels},
    {NumberFormat::thaiLetters, Beyond::wrap, kThai},
    {NumberFormat::lowerRussian, Beyond::repeat, kRussianLower},
    {NumberFormat::upperRussian, Beyond::repeat, kRussianUpper},
};

struct Digits {
    NumberFormat format;
    Letters digits;
};

constexpr Digits kDigits[] = {
    {NumberFormat::kanji1, kIdeographDigits},
    {NumberFormat::doubleByte, kFullwidthDigits},
    {NumberFormat::kanji4, kIdeographDigits},
    {NumberFormat::doubleByteArabic, kFullwidthDigits},
    {NumberFormat::taiwaneseDoubleByte4, kCircleDigits},
    {NumberFormat::koreanDoubleByte1, kKoreanDigits},
    {NumberFormat::koreanDoubleByte4, kZeroDigits},
    {NumberFormat::hindiNumbers, kDevanagariDigits},
    {NumberFormat::thaiNumbers, kThaiDigits},
};

/// Which powers of ten have the digit one before them.
enum class Ones { always, allButTen, never };

/// Numbers with a character for each power of ten, as in Chinese, Japanese and Korean.
struct Counting {
    NumberFormat format;
    Ones ones;
    bool saysZero; ///< whether a zero fills a gap between two digits
    std::uint32_t largest;
    Letters digits; ///< 0..9; numbers over `largest` are written in these alone
    Letters powers; ///< 10, 100, 1000
};

constexpr Letters kPowers = U"十百千";
constexpr Letters kFormalPowers = U"拾佰仟";
constexpr Letters kFormalDigits = U"零壹貳參肆伍陸柒捌玖";
constexpr Letters kSimplifiedFormalDigits = U"零壹贰叁肆伍陆柒捌玖";
constexpr Letters kJapaneseFormalDigits = U"〇壱弐参四伍六七八九";

constexpr Counting kCountings[] = {
    {NumberFormat::kanji2, Ones::never, false, 9999, kIdeographDigits, kPowers},
    {NumberFormat::kanji3, Ones::always, false, 9999, kJapaneseFormalDigits, U"拾百千"},
    {NumberFormat::taiwaneseDoubleByte1, Ones::allButTen, false, 99, kCircleDigits, kPowers},
    {NumberFormat::taiwaneseDoubleByte2, Ones::always, true, 9999, kFormalDigits, kFormalPowers},
    {NumberFormat::taiwaneseDoubleByte3, Ones::allButTen, true, 9999, kZeroDigits, kPowers},
    {NumberFormat::chineseDoubleByte1, Ones::allButTen, false, 99, kCircleDigits, kPowers},
    {NumberFormat::chineseDoubleByte2, Ones::always, true, 9999, kSimplifiedFormalDigits, kFormalPowers},
    {NumberFormat::chineseDoubleByte3, Ones::allButTen, true, 9999, kZeroDigits, kPowers},
    {NumberFormat::koreanDoubleByte2, Ones::never, false, 9999, kKoreanDigits, U"십백천"},
};

/// Native Korean numbers, for 1 to 99.
constexpr Letters kKoreanOnes[] = {U"", U"하나", U"둘", U"셋", U"넷", U"다섯", U"여섯", U"일곱", U"여덟", U"아홉"};
constexpr Letters kKoreanTens[] = {U"", U"열", U"스물", U"서른", U"마흔", U"쉰", U"예순", U"일흔", U"여든", U"아흔"};

void appendDigits(std::u32string& out, std::uint32_t value, Letters digits) {
    const std::size_t start = out.size();
    do {
        out.push_back(digits[value % 10]);
        value /= 10;
    } while (value != 0);
    std::reverse(out.begin() + static_cast<std::ptrdiff_t>(start), out.end());
}

void appendArabic(std::u32string& out, std::uint32_t value) {
    appendDigits(out, value, U"0123456789");
}

void appendAscii(std::u32string& out, std::string_view ascii) {
    out.append(ascii.begin(), ascii.end());
}

void appendRoman(std::u32string& out, std::uint32_t value, bool upper) {
    struct Numeral {
        std::uint32_t value;
        std::string_view letters;
    };
    constexpr Numeral kNumerals[] = {{1000, "m"}, {900, "cm"}, {500, "d"}, {400, "cd"}, {100, "c"},
                                     {90, "xc"},  {50, "l"},   {40, "xl"}, {10, "x"},   {9, "ix"},
                                     {5, "v"},    {4, "iv"},   {1, "i"}};
    constexpr std::uint32_t kLargest = 32767; // the largest number of the format; at most 43 letters
    if (value == 0 || value > kLargest) return appendArabic(out, value);
    for (const Numeral& numeral : kNumerals) {
        for (; value >= numeral.value; value -= numeral.value)
            for (const char letter : numeral.letters)
                out.push_back(static_cast<char32_t>(upper ? letter - 'a' + 'A' : letter));
    }
}

void appendLetters(std::u32string& out, const Alphabet& alphabet, std::uint32_t value) {
    constexpr std::uint32_t kMostRepeats = 30; // 780 is the last number in Latin letters
    const auto size = static_cast<std::uint32_t>(alphabet.letters.size());
    if (value == 0) return appendArabic(out, value);
    const std::uint32_t round = (value - 1) / size;
    const char32_t letter = alphabet.letters[(value - 1) % size];
    if (round > 0 && (alphabet.beyond == Beyond::digits || round >= kMostRepeats)) return appendArabic(out, value);
    out.append(alphabet.beyond == Beyond::repeat ? round + 1 : 1, letter);
}

void appendCounted(std::u32string& out, const Counting& counting, std::uint32_t value) {
    if (value == 0 || value > counting.largest) return appendDigits(out, value, counting.digits);
    bool zeroPending = false;
    const std::size_t start = out.size();
    std::uint32_t unit = 1000;
    for (std::size_t power = 3;; --power, unit /= 10) {
        const std::uint32_t digit = value / unit % 10;
        if (digit == 0) {
            zeroPending = out.size() > start;
        } else {
            if (zeroPending && counting.saysZero) out.push_back(counting.digits[0]);
            zeroPending = false;
            const bool isLeadingTen = power == 1 && out.size() == start;
            const bool saysOne = counting.ones == Ones::always || (counting.ones == Ones::allButTen && !isLeadingTen);
            if (power == 0 || digit > 1 || saysOne) out.push_back(counting.digits[digit]);
            if (power > 0) out.push_back(counting.powers[power - 1]);
        }
        if (power == 0) return;
    }
}

void appendKorean(std::u32string& out, std::uint32_t value) {
    if (value == 0 || value > 99) return appendArabic(out, value);
    out += kKoreanTens[value / 10];
    out += kKoreanOnes[value % 10];
}

constexpr std::string_view kOnes[] = {"",         "One",     "Two",     "Three",     "Four",     "Five",    "Six",
                                      "Seven",    "Eight",   "Nine",    "Ten",       "Eleven",   "Twelve",  "Thirteen",
                                      "Fourteen", "Fifteen", "Sixteen", "Seventeen", "Eighteen", "Nineteen"};
constexpr std::string_view kTens[] = {"",      "",      "Twenty",  "Thirty", "Forty",
                                      "Fifty", "Sixty", "Seventy", "Eighty", "Ninety"};
constexpr std::string_view kOrdinalOnes[] = {"",          "First",     "Second",      "Third",      "Fourth",
                                             "Fifth",     "Sixth",     "Seventh",     "Eighth",     "Ninth",
                                             "Tenth",     "Eleventh",  "Twelfth",     "Thirteenth", "Fourteenth",
                                             "Fifteenth", "Sixteenth", "Seventeenth", "Eighteenth", "Nineteenth"};
constexpr std::string_view kOrdinalTens[] = {"",         "",         "Twentieth",  "Thirtieth", "Fortieth",
                                             "Fiftieth", "Sixtieth", "Seventieth", "Eightieth", "Ninetieth"};

/// "1st", "2nd", "3rd", "11th".
void appendOrdinal(std::u32string& out, std::uint32_t value) {
    appendArabic(out, value);
    const std::uint32_t tens = value % 100;
    constexpr std::string_view kSuffixes[] = {"th", "st", "nd", "rd"};
    const bool isTeen = tens >= 11 && tens <= 13;
    appendAscii(out, isTeen || value % 10 > 3 ? kSuffixes[0] : kSuffixes[value % 10]);
}

void appendEnglish(std::u32string& out, std::uint32_t value, bool ordinal) {
    if (value == 0 || value > 99) return ordinal ? appendOrdinal(out, value) : appendArabic(out, value);
    if (value < 20) return appendAscii(out, ordinal ? kOrdinalOnes[value] : kOnes[value]);
    const std::uint32_t ones = value % 10;
    if (ones == 0) return appendAscii(out, ordinal ? kOrdinalTens[value / 10] : kTens[value / 10]);
    appendAscii(out, kTens[value / 10]);
    out.push_back('-');
    const std::size_t last = out.size();
    appendAscii(out, ordinal ? kOrdinalOnes[ones] : kOnes[ones]);
    out[last] += 'a' - 'A';
}

/// Hebrew letters as numbers: 1 to 9, the tens, then the hundreds up to 400. 15 and 16 are written 9 + 6 and 9 + 7.
void appendHebrewNumber(std::u32string& out, std::uint32_t value) {
    constexpr std::uint32_t kLargest = 999;
    constexpr std::uint32_t kLargestHundreds = 400; // the last letter; larger hundreds repeat it
    constexpr std::size_t kOne = 0;
    constexpr std::size_t kTen = 9;
    constexpr std::size_t kHundred = 18;
    constexpr std::size_t kFourHundred = 21;
    if (value == 0 || value > kLargest) return appendArabic(out, value);
    for (; value >= kLargestHundreds; value -= kLargestHundreds)
        out.push_back(kHebrew[kFourHundred]);
    if (value >= 100) out.push_back(kHebrew[kHundred + value / 100 - 1]);
    value %= 100;
    if (value == 15 || value == 16) {
        out.push_back(kHebrew[kOne + 9 - 1]);
        value -= 9;
    } else if (value >= 10) {
        out.push_back(kHebrew[kTen + value / 10 - 1]);
        value %= 10;
    }
    if (value > 0) out.push_back(kHebrew[kOne + value - 1]);
}

template <typename Table>
const auto* findFormat(const Table& table, NumberFormat format) {
    const auto* found = std::find_if(std::begin(table), std::end(table),
                                     [format](const auto& entry) { return entry.format == format; });
    return found != std::end(table) ? found : nullptr;
}

} // namespace

void appendNumber(std::u32string& out, NumberFormat format, std::uint32_t value) {
    switch (format) {
    case NumberFormat::bullet:
    case NumberFormat::none: return;
    case NumberFormat::upperRoman: return appendRoman(out, value, true);
    case NumberFormat::lowerRoman: return appendRoman(out, value, false);
    case NumberFormat::ordinal: return appendOrdinal(out, value);
    case NumberFormat::cardinalText: return appendEnglish(out, value, false);
    case NumberFormat::ordinalText: return appendEnglish(out, value, true);
    case NumberFormat::arabicLeadingZero:
        if (value < 10) out.push_back('0');
        return appendArabic(out, value);
    case NumberFormat::zodiac3: // the sixty-year cycle: a stem and a branch
        if (value == 0) return appendArabic(out, value);
        out.push_back(kHeavenlyStems[(value - 1) % kHeavenlyStems.size()]);
        out.push_back(kEarthlyBranches[(value - 1) % kEarthlyBranches.size()]);
        return;
    case NumberFormat::koreanDoubleByte3: return appendKorean(out, value);
    case NumberFormat::hebrewNonStandard: return appendHebrewNumber(out, value);
    case NumberFormat::page:
        appendAscii(out, "- ");
        appendArabic(out, value);
        return appendAscii(out, " -");
    default: break;
    }
    if (const Alphabet* alphabet = findFormat(kAlphabets, format)) return appendLetters(out, *alphabet, value);
    if (const Digits* digits = findFormat(kDigits, format)) return appendDigits(out, value, digits->digits);
    if (const Counting* counting = findFormat(kCountings, format)) return appendCounted(out, *counting, value);
    appendArabic(out, value);
}

} // namespace quillow::rtf
