#include "engines/rtf/Fonts.h"

#include "text/Utf8.h"

#include <algorithm>
#include <string_view>

namespace quillow::rtf {

namespace {

constexpr int kSymbolCharset = 2;
constexpr int kDefaultCharset = 1;
constexpr int kMacCharset = 77;

struct CharsetCodePage {
    int charset;
    int codePage;
};

/// RTF 1.9.1, "Font Table", the list at \fcharset; 77 to 89 are the Macintosh scripts.
constexpr CharsetCodePage kCharsets[] = {
    {0, 1252},   {77, 10000}, {78, 10001}, {79, 10003}, {80, 10008}, {81, 10002}, {83, 10005}, {84, 10004},
    {85, 10006}, {86, 10081}, {87, 10021}, {88, 10029}, {89, 10007}, {128, 932},  {129, 949},  {130, 1361},
    {134, 936},  {136, 950},  {161, 1253}, {162, 1254}, {163, 1258}, {177, 1255}, {178, 1256}, {179, 1256},
    {180, 1256}, {181, 1255}, {186, 1257}, {204, 1251}, {222, 874},  {238, 1250}, {254, 437},  {255, 850},
};

/// Suffixes by which Windows names the scripts of a font ("Arial CE"). Some writers give only such a name and no
/// charset.
struct SuffixCharset {
    std::string_view suffix;
    int charset;
};

constexpr SuffixCharset kSuffixes[] = {
    {" CE", 238},       {" Cyr", 204},      {" Greek", 161},  {" Tur", 162},          {" Baltic", 186},
    {" (Hebrew)", 177}, {" (Arabic)", 178}, {" (Thai)", 222}, {" (Vietnamese)", 163},
};

int charsetOfName(std::string_view name, int otherwise) {
    for (const SuffixCharset& entry : kSuffixes)
        if (name.ends_with(entry.suffix)) return entry.charset;
    return otherwise;
}

} // namespace

void FontTable::reset() {
    document_ = pool_.forCodePage(kWindowsLatin);
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
    const bool isSymbolCharset = font.charsetNumber == kSymbolCharset;
    const bool mayBeSymbols =
        font.codePage == kNotGiven && (font.charsetNumber == kNotGiven || isSymbolCharset ||
                                       font.charsetNumber == kDefaultCharset || font.charsetNumber == kMacCharset);
    if (mayBeSymbols) font.symbols = text::symbolFontDecoder(name);
    if (isSymbolCharset && font.symbols == nullptr) font.symbols = text::symbolToUnicode;
    const bool saysNothing = font.codePage == kNotGiven && font.charsetNumber == kNotGiven;
    if (saysNothing) font.charsetNumber = charsetOfName(name, kNotGiven);
    const auto page = std::find(kPairPages.begin(), kPairPages.end(), codePageOf(font));
    if (page != kPairPages.end()) sawPairPage_[static_cast<std::size_t>(page - kPairPages.begin())] = true;
    fonts_[number] = font;
    latest_ = nullptr;
}

/// After the byte of a token: where it is raw and the first half of a pair, the second half is no token of its own.
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
