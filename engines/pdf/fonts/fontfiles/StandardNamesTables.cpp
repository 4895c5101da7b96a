// The tables of StandardNames.h, as OpenType 1.9 ('post') and Adobe Technical Note 5176 (appendices A to C) print them.
#include "engines/pdf/fonts/fontfiles/StandardNames.h"

#include <array>

namespace quillow::pdf {
namespace {

/// Names in one text, each with a blank behind it.
template <std::size_t Count>
class NameList {
public:
    consteval explicit NameList(std::string_view names)
        : names_(names) {
        std::size_t next = 0;
        for (std::size_t at = 0; at < names.size(); ++at)
            if (names[at] == ' ') starts_[++next] = static_cast<std::uint16_t>(at + 1);
        if (next != Count) throw "wrong count"; // ends the compilation
    }

    [[nodiscard]] std::string_view at(std::size_t index) const {
        if (index >= Count) return {};
        return names_.substr(starts_[index], starts_[index + 1] - starts_[index] - 1U);
    }

private:
    std::string_view names_;
    std::array<std::uint16_t, Count + 1> starts_{};
};

// clang-format off
constexpr NameList<kMacintoshGlyphs> kMacintoshNames(
    ".notdef .null nonmarkingreturn space exclam quotedbl numbersign dollar percent ampersand quotesingle parenleft "
    "parenright asterisk plus comma hyphen period slash zero one two three four five six seven eight nine colon "
    "semicolon less equal greater question at A B C D E F G H I J K L M N O P Q R S T U V W X Y Z bracketleft "
    "backslash bracketright asciicircum underscore grave a b c d e f g h i j k l m n o p q r s t u v w x y z "
    "braceleft bar braceright asciitilde Adieresis Aring Ccedilla Eacute Ntilde Odieresis Udieresis aacute agrave "
    "acircumflex adieresis atilde aring ccedilla eacute egrave ecircumflex edieresis iacute igrave icircumflex "
    "idieresis ntilde oacute ograve ocircumflex odieresis otilde uacute ugrave ucircumflex udieresis dagger degree "
    "cent sterling section bullet paragraph germandbls registered copyright trademark acute dieresis notequal AE "
    "Oslash infinity plusminus lessequal greaterequal yen mu partialdiff summation product pi integral ordfeminine "
    "ordmasculine Omega ae oslash questiondown exclamdown logicalnot radical florin approxequal Delta guillemotleft "
    "guillemotright ellipsis nonbreakingspace Agrave Atilde Otilde OE oe endash emdash quotedblleft quotedblright "
    "quoteleft quoteright divide lozenge ydieresis Ydieresis fraction currency guilsinglleft guilsinglright fi fl "
    "daggerdbl periodcentered quotesinglbase quotedblbase perthousand Acircumflex Ecircumflex Aacute Edieresis "
    "Egrave Iacute Icircumflex Idieresis Igrave Oacute Ocircumflex apple Ograve Uacute Ucircumflex Ugrave dotlessi "
    "circumflex tilde macron breve dotaccent ring cedilla hungarumlaut ogonek caron Lslash lslash Scaron scaron "
    "Zcaron zcaron brokenbar Eth eth Yacute yacute Thorn thorn minus multiply onesuperior twosuperior threesuperior "
    "onehalf onequarter threequarters franc Gbreve gbreve Idotaccent Scedilla scedilla Cacute cacute Ccaron ccaron "
    "dcroat ");

constexpr NameList<kCffStandardStrings> kStandardStrings(
    ".notdef space exclam quotedbl numbersign dollar percent ampersand quoteright parenleft parenright asterisk "
    "plus comma hyphen period slash zero one two three four five six seven eight nine colon semicolon less equal "
    "greater question at A B C D E F G H I J K L M N O P Q R S T U V W X Y Z bracketleft backslash bracketright "
    "asciicircum underscore quoteleft a b c d e f g h i j k l m n o p q r s t u v w x y z braceleft bar braceright "
    "asciitilde exclamdown cent sterling fraction yen florin section currency quotesingle quotedblleft "
    "guillemotleft guilsinglleft guilsinglright fi fl endash dagger daggerdbl periodcentered paragraph bullet "
    "quotesinglbase quotedblbase quotedblright guillemotright ellipsis perthousand questiondown grave acute "
    "circumflex tilde macron breve dotaccent dieresis ring cedilla hungarumlaut ogonek caron emdash AE ordfeminine "
    "Lslash Oslash OE ordmasculine ae dotlessi lslash oslash oe germandbls onesuperior logicalnot mu trademark Eth "
    "onehalf plusminus Thorn onequarter divide brokenbar degree thorn threequarters twosuperior registered minus "
    "eth multiply threesuperior copyright Aacute Acircumflex Adieresis Agrave Aring Atilde Ccedilla Eacute "
    "Ecircumflex Edieresis Egrave Iacute Icircumflex Idieresis Igrave Ntilde Oacute Ocircumflex Odieresis Ograve "
    "Otilde Scaron Uacute Ucircumflex Udieresis Ugrave Yacute Ydieresis Zcaron aacute acircumflex adieresis agrave "
    "aring atilde ccedilla eacute ecircumflex edieresis egrave iacute icircumflex idieresis igrave ntilde oacute "
    "ocircumflex odieresis ograve otilde scaron uacute ucircumflex udieresis ugrave yacute ydieresis zcaron "
    "exclamsmall Hungarumlautsmall dollaroldstyle dollarsuperior ampersandsmall Acutesmall parenleftsuperior "
    "parenrightsuperior twodotenleader onedotenleader zerooldstyle oneoldstyle twooldstyle threeoldstyle "
    "fouroldstyle fiveoldstyle sixoldstyle sevenoldstyle eightoldstyle nineoldstyle commasuperior "
    "threequartersemdash periodsuperior questionsmall asuperior bsuperior centsuperior dsuperior esuperior "
    "isuperior lsuperior msuperior nsuperior osuperior rsuperior ssuperior tsuperior ff ffi ffl parenleftinferior "
    "parenrightinferior Circumflexsmall hyphensuperior Gravesmall Asmall Bsmall Csmall Dsmall Esmall Fsmall Gsmall "
    "Hsmall Ismall Jsmall Ksmall Lsmall Msmall Nsmall Osmall Psmall Qsmall Rsmall Ssmall Tsmall Usmall Vsmall "
    "Wsmall Xsmall Ysmall Zsmall colonmonetary onefitted rupiah Tildesmall exclamdownsmall centoldstyle Lslashsmall "
    "Scaronsmall Zcaronsmall Dieresissmall Brevesmall Caronsmall Dotaccentsmall Macronsmall figuredash "
    "hypheninferior Ogoneksmall Ringsmall Cedillasmall questiondownsmall oneeighth threeeighths fiveeighths "
    "seveneighths onethird twothirds zerosuperior foursuperior fivesuperior sixsuperior sevensuperior eightsuperior "
    "ninesuperior zeroinferior oneinferior twoinferior threeinferior fourinferior fiveinferior sixinferior "
    "seveninferior eightinferior nineinferior centinferior dollarinferior periodinferior commainferior Agravesmall "
    "Aacutesmall Acircumflexsmall Atildesmall Adieresissmall Aringsmall AEsmall Ccedillasmall Egravesmall "
    "Eacutesmall Ecircumflexsmall Edieresissmall Igravesmall Iacutesmall Icircumflexsmall Idieresissmall Ethsmall "
    "Ntildesmall Ogravesmall Oacutesmall Ocircumflexsmall Otildesmall Odieresissmall OEsmall Oslashsmall "
    "Ugravesmall Uacutesmall Ucircumflexsmall Udieresissmall Yacutesmall Thornsmall Ydieresissmall 001.000 001.001 "
    "001.002 001.003 Black Bold Book Light Medium Regular Roman Semibold ");

constexpr StringIdRun kStandardEncoding[] = {
    {32, 1, 95}, {161, 96, 15}, {177, 111, 4}, {182, 115, 8}, {191, 123, 1}, {193, 124, 8}, {202, 132, 2},
    {205, 134, 4}, {225, 138, 1}, {227, 139, 1}, {232, 140, 4}, {241, 144, 1}, {245, 145, 1}, {248, 146, 4}};
constexpr StringIdRun kExpertEncoding[] = {
    {32, 1, 1}, {33, 229, 2}, {36, 231, 8}, {44, 13, 3}, {47, 99, 1}, {48, 239, 10}, {58, 27, 2}, {60, 249, 4},
    {65, 253, 5}, {73, 258, 1}, {76, 259, 4}, {82, 263, 3}, {86, 266, 1}, {87, 109, 2}, {89, 267, 3}, {93, 270, 34},
    {161, 304, 3}, {166, 307, 5}, {172, 312, 1}, {175, 313, 1}, {178, 314, 2}, {182, 316, 3}, {188, 158, 1},
    {189, 155, 1}, {190, 163, 1}, {191, 319, 7}, {200, 326, 1}, {201, 150, 1}, {202, 164, 1}, {203, 169, 1},
    {204, 327, 52}};
constexpr StringIdRun kIsoAdobeCharset[] = {{0, 0, 229}};
constexpr StringIdRun kExpertCharset[] = {
    {0, 0, 2}, {2, 229, 10}, {12, 13, 3}, {15, 99, 1}, {16, 239, 10}, {26, 27, 2}, {28, 249, 18}, {46, 109, 2},
    {48, 267, 52}, {100, 158, 1}, {101, 155, 1}, {102, 163, 1}, {103, 319, 8}, {111, 150, 1}, {112, 164, 1},
    {113, 169, 1}, {114, 327, 52}};
constexpr StringIdRun kExpertSubsetCharset[] = {
    {0, 0, 2}, {2, 231, 2}, {4, 235, 4}, {8, 13, 3}, {11, 99, 1}, {12, 239, 10}, {22, 27, 2}, {24, 249, 3},
    {27, 253, 14}, {41, 109, 2}, {43, 267, 4}, {47, 272, 1}, {48, 300, 3}, {51, 305, 1}, {52, 314, 2}, {54, 158, 1},
    {55, 155, 1}, {56, 163, 1}, {57, 320, 7}, {64, 150, 1}, {65, 164, 1}, {66, 169, 1}, {67, 327, 20}};
// clang-format on

} // namespace

const std::span<const StringIdRun> kCffStandardEncoding = kStandardEncoding;
const std::span<const StringIdRun> kCffExpertEncoding = kExpertEncoding;
const std::span<const StringIdRun> kCffIsoAdobeCharset = kIsoAdobeCharset;
const std::span<const StringIdRun> kCffExpertCharset = kExpertCharset;
const std::span<const StringIdRun> kCffExpertSubsetCharset = kExpertSubsetCharset;

std::string_view macintoshGlyphName(std::size_t index) {
    return kMacintoshNames.at(index);
}

std::string_view cffStandardString(std::size_t id) {
    return kStandardStrings.at(id);
}

std::uint16_t stringIdOf(std::span<const StringIdRun> runs, std::size_t code) {
    for (const StringIdRun& run : runs)
        if (code >= run.firstCode && code - run.firstCode < run.count)
            return static_cast<std::uint16_t>(run.firstId + (code - run.firstCode));
    return 0;
}

} // namespace quillow::pdf
