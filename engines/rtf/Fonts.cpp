#include "engines/rtf/Fonts.h"

#include "text/Utf8.h"

#include <algorithm>
#include <string_view>

namespace quillow::rtf {

namespace {

/// The parameter of \fcharset, with RTF 1.9.1's names ("Font Table").
enum FontCharset : std::uint8_t {
    kAnsi = 0,
    kDefault = 1,
    kSymbol = 2,
    kMac = 77,
    kMacShiftJis = 78,
    kMacHangul = 79,
    kMacGb2312 = 80,
    kMacBig5 = 81,
    kMacHebrew = 83,
    kMacArabic = 84,
    kMacGreek = 85,
    kMacTurkish = 86,
    kMacThai = 87,
    kMacEastEurope = 88,
    kMacRussian = 89,
    kShiftJis = 128,
    kHangul = 129,
    kJohab = 130,
    kGb2312 = 134,
    kBig5 = 136,
    kGreek = 161,
    kTurkish = 162,
    kVietnamese = 163,
    kHebrew = 177,
    kArabic = 178,
    kArabicTraditional = 179,
    kArabicUser = 180,
    kHebrewUser = 181,
    kBaltic = 186,
    kRussian = 204,
    kThai = 222,
    kEasternEuropean = 238,
    kPc437 = 254,
    kOem = 255,
};

struct CharsetCodePage {
    FontCharset charset;
    int codePage;
};

constexpr CharsetCodePage kCharsets[] = {
    {kAnsi, text::kWindowsLatin},
    {kMac, text::kMacRoman},
    {kMacShiftJis, 10001},
    {kMacHangul, 10003},
    {kMacGb2312, 10008},
    {kMacBig5, 10002},
    {kMacHebrew, 10005},
    {kMacArabic, 10004},
    {kMacGreek, 10006},
    {kMacTurkish, 10081},
    {kMacThai, 10021},
    {kMacEastEurope, 10029},
    {kMacRussian, 10007},
    {kShiftJis, 932},
    {kHangul, 949},
    {kJohab, 1361},
    {kGb2312, 936},
    {kBig5, 950},
    {kGreek, 1253},
    {kTurkish, 1254},
    {kVietnamese, 1258},
    {kHebrew, 1255},
    {kArabic, 1256},
    {kArabicTraditional, 1256},
    {kArabicUser, 1256},
    {kHebrewUser, 1255},
    {kBaltic, 1257},
    {kRussian, 1251},
    {kThai, 874},
    {kEasternEuropean, 1250},
    {kPc437, text::kDosUnitedStates},
    {kOem, text::kDosLatin},
};

/// Suffixes by which Windows names the scripts of a font ("Arial CE"). Some writers give only such a name and no
/// charset.
struct SuffixCharset {
    std::string_view suffix;
    FontCharset charset;
};

constexpr SuffixCharset kSuffixes[] = {
    {" CE", kEasternEuropean}, {" Cyr", kRussian},   {" Greek", kGreek},
    {" Tur", kTurkish},        {" Baltic", kBaltic}, {" (Hebrew)", kHebrew},
    {" (Arabic)", kArabic},    {" (Thai)", kThai},   {" (Vietnamese)", kVietnamese},
};

int charsetOfName(std::string_view name, int otherwise) {
    for (const SuffixCharset& entry : kSuffixes)
        if (name.ends_with(entry.suffix)) return entry.charset;
    return otherwise;
}

} // namespace

void FontTable::reset() {
    document_ = pool_.forCodePage(text::kWindowsLatin);
    hasAnsiCodePage_ = false;
    defaultFont_ = kNotGiven;
    fonts_ = {};
    sawPairPage_ = {};
    latest_ = nullptr;
}

void FontTable::useForDocument(int codePage) {
    document_ = pool_.forCodePage(codePage);
    latest_ = nullptr;
}

void FontTable::setAnsiCodePage(int number) {
    hasAnsiCodePage_ = true;
    useForDocument(number);
}

void FontTable::setDocumentCharset(int number) {
    if (!hasAnsiCodePage_) useForDocument(number);
}

const Charset* FontTable::resolve(int number) {
    const auto found = fonts_.find(number);
    if (found == fonts_.end()) return document_;
    const Font& font = found->second;
    if (font.symbols != nullptr) return pool_.forSymbols(font.symbols);
    const int codePage = codePageOf(font);
    return codePage != kNotGiven ? pool_.forCodePage(codePage) : document_;
}

int FontTable::codePageOf(const Font& font) {
    if (font.codePage != kNotGiven) return font.codePage;
    for (const CharsetCodePage& entry : kCharsets)
        if (entry.charset == font.charsetNumber) return entry.codePage;
    return kNotGiven;
}

const text::CodePage* FontTable::pairsOf(const Font& font) {
    const int codePage = codePageOf(font);
    return (codePage != kNotGiven ? pool_.forCodePage(codePage) : document_)->pairs();
}

std::vector<const text::CodePage*> FontTable::pairPages() {
    std::vector<const text::CodePage*> pages;
    if (document_->pairs() != nullptr) pages.push_back(document_->pairs());
    for (std::size_t i = 0; i < kPairPages.size(); ++i)
        if (sawPairPage_[i]) pages.push_back(pool_.forCodePage(kPairPages[i])->pairs());
    return pages;
}

void FontTable::define(int number, Font font, const std::string& name) {
    if (number < 0 || fonts_.size() >= kMaxFonts) return;
    // A symbol font has the symbol charset. Old files and files from a Macintosh have only the font's name.
    const bool isSymbolCharset = font.charsetNumber == kSymbol;
    const bool mayBeSymbols =
        font.codePage == kNotGiven && (font.charsetNumber == kNotGiven || isSymbolCharset ||
                                       font.charsetNumber == kDefault || font.charsetNumber == kMac);
    if (mayBeSymbols) font.symbols = text::symbolFontDecoder(name);
    if (isSymbolCharset && font.symbols == nullptr) font.symbols = text::symbolToUnicode;
    const bool saysNothing = font.codePage == kNotGiven && font.charsetNumber == kNotGiven;
    if (saysNothing) font.charsetNumber = charsetOfName(name, kNotGiven);
    const auto page = std::find(kPairPages.begin(), kPairPages.end(), codePageOf(font));
    if (page != kPairPages.end()) sawPairPage_[static_cast<std::size_t>(page - kPairPages.begin())] = true;
    fonts_[number] = font;
    latest_ = nullptr;
}

/// Call after a token of one byte. If the byte is raw and a lead byte, skips the trail byte of its pair, which is not a
/// token.
void FontTable::passTrailByte(Scanner& scanner, char byte, const Font& font) {
    const char* p = scanner.position();
    if (!isHigh(byte) || p[-1] != byte || scanner.atEnd()) return; // written as \'hh, it ends with a digit
    const text::CodePage* pairs = pairsOf(font);
    const auto lead = static_cast<std::uint8_t>(byte);
    if (pairs == nullptr || !pairs->isLeadByte(lead)) return;
    if (pairs->decodePair(lead, static_cast<std::uint8_t>(*p)) != text::kReplacementCharacter) scanner.advance();
}

Scanner::Completeness FontTable::read(Scanner& scanner, RawPairs rawPairs) {
    std::size_t depth = 1;
    int number = kNotGiven;
    Font font;
    std::string name;
    const auto finishEntry = [&] {
        define(number, font, name);
        number = kNotGiven;
        font = {};
        name.clear();
    };
    while (true) {
        const Token token = scanner.nextToken();
        switch (token.kind) {
        case Token::Kind::end: finishEntry(); return Scanner::Completeness::cutShort;
        case Token::Kind::open:
            // {\*\panose}, {\*\falt}, {\*\fname} and embedded fonts are inside an entry.
            if (scanner.peek(0) == '\\' && scanner.peek(1) == '*') {
                if (scanner.skipGroup(nullptr) == Scanner::Completeness::cutShort)
                    return Scanner::Completeness::cutShort;
            } else {
                ++depth;
            }
            break;
        case Token::Kind::close:
            if (--depth <= 1) finishEntry();
            if (depth == 0) return Scanner::Completeness::whole;
            break;
        case Token::Kind::word:
            switch (token.word.action()) {
            case Action::font:
                if (number != kNotGiven) finishEntry();
                number = token.word.parameter;
                break;
            case Action::fontCharset: font.charsetNumber = token.word.parameter; break;
            case Action::fontCodePage: font.codePage = token.word.parameter; break;
            default: break;
            }
            break;
        case Token::Kind::symbol: break;
        case Token::Kind::byte:
            if (token.byte == ';') {
                finishEntry();
            } else if (name.size() < kMaxName) {
                name.push_back(token.byte);
            }
            if (rawPairs == RawPairs::decoded) passTrailByte(scanner, token.byte, font);
            break;
        }
    }
}

} // namespace quillow::rtf
