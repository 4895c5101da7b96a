// The labels of the Encoding Standard, section 4.2.
#include "text/Encoding.h"

#include <algorithm>
#include <array>
#include <iterator>

namespace quillow::text {

namespace {

using E = Encoding;

struct Label {
    std::string_view label;
    Encoding encoding;
};

// Sorted by bytes, for the binary search below.
// clang-format off
constexpr Label kLabels[] = {
    {"866", E::ibm866}, {"ansi_x3.4-1968", E::windows1252}, {"arabic", E::iso8859_6}, {"ascii", E::windows1252},
    {"asmo-708", E::iso8859_6}, {"big5", E::big5}, {"big5-hkscs", E::big5}, {"chinese", E::gbk}, {"cn-big5", E::big5},
    {"cp1250", E::windows1250}, {"cp1251", E::windows1251}, {"cp1252", E::windows1252}, {"cp1253", E::windows1253},
    {"cp1254", E::windows1254}, {"cp1255", E::windows1255}, {"cp1256", E::windows1256}, {"cp1257", E::windows1257},
    {"cp1258", E::windows1258}, {"cp819", E::windows1252}, {"cp866", E::ibm866}, {"csbig5", E::big5},
    {"cseuckr", E::eucKr}, {"cseucpkdfmtjapanese", E::eucJp}, {"csgb2312", E::gbk}, {"csibm866", E::ibm866},
    {"csiso2022jp", E::iso2022Jp}, {"csiso2022kr", E::replacement}, {"csiso58gb231280", E::gbk},
    {"csiso88596e", E::iso8859_6}, {"csiso88596i", E::iso8859_6}, {"csiso88598e", E::iso8859_8},
    {"csiso88598i", E::iso8859_8i}, {"csisolatin1", E::windows1252}, {"csisolatin2", E::iso8859_2},
    {"csisolatin3", E::iso8859_3}, {"csisolatin4", E::iso8859_4}, {"csisolatin5", E::windows1254},
    {"csisolatin6", E::iso8859_10}, {"csisolatin9", E::iso8859_15}, {"csisolatinarabic", E::iso8859_6},
    {"csisolatincyrillic", E::iso8859_5}, {"csisolatingreek", E::iso8859_7}, {"csisolatinhebrew", E::iso8859_8},
    {"cskoi8r", E::koi8R}, {"csksc56011987", E::eucKr}, {"csmacintosh", E::macintosh}, {"csshiftjis", E::shiftJis},
    {"csunicode", E::utf16le}, {"cyrillic", E::iso8859_5}, {"dos-874", E::windows874}, {"ecma-114", E::iso8859_6},
    {"ecma-118", E::iso8859_7}, {"elot_928", E::iso8859_7}, {"euc-jp", E::eucJp}, {"euc-kr", E::eucKr},
    {"gb18030", E::gb18030}, {"gb2312", E::gbk}, {"gb_2312", E::gbk}, {"gb_2312-80", E::gbk}, {"gbk", E::gbk},
    {"greek", E::iso8859_7}, {"greek8", E::iso8859_7}, {"hebrew", E::iso8859_8}, {"hz-gb-2312", E::replacement},
    {"ibm819", E::windows1252}, {"ibm866", E::ibm866}, {"iso-10646-ucs-2", E::utf16le}, {"iso-2022-cn", E::replacement},
    {"iso-2022-cn-ext", E::replacement}, {"iso-2022-jp", E::iso2022Jp}, {"iso-2022-kr", E::replacement},
    {"iso-8859-1", E::windows1252}, {"iso-8859-10", E::iso8859_10}, {"iso-8859-11", E::windows874},
    {"iso-8859-13", E::iso8859_13}, {"iso-8859-14", E::iso8859_14}, {"iso-8859-15", E::iso8859_15},
    {"iso-8859-16", E::iso8859_16}, {"iso-8859-2", E::iso8859_2}, {"iso-8859-3", E::iso8859_3},
    {"iso-8859-4", E::iso8859_4}, {"iso-8859-5", E::iso8859_5}, {"iso-8859-6", E::iso8859_6},
    {"iso-8859-6-e", E::iso8859_6}, {"iso-8859-6-i", E::iso8859_6}, {"iso-8859-7", E::iso8859_7},
    {"iso-8859-8", E::iso8859_8}, {"iso-8859-8-e", E::iso8859_8}, {"iso-8859-8-i", E::iso8859_8i},
    {"iso-8859-9", E::windows1254}, {"iso-ir-100", E::windows1252}, {"iso-ir-101", E::iso8859_2},
    {"iso-ir-109", E::iso8859_3}, {"iso-ir-110", E::iso8859_4}, {"iso-ir-126", E::iso8859_7},
    {"iso-ir-127", E::iso8859_6}, {"iso-ir-138", E::iso8859_8}, {"iso-ir-144", E::iso8859_5},
    {"iso-ir-148", E::windows1254}, {"iso-ir-149", E::eucKr}, {"iso-ir-157", E::iso8859_10}, {"iso-ir-58", E::gbk},
    {"iso8859-1", E::windows1252}, {"iso8859-10", E::iso8859_10}, {"iso8859-11", E::windows874},
    {"iso8859-13", E::iso8859_13}, {"iso8859-14", E::iso8859_14}, {"iso8859-15", E::iso8859_15},
    {"iso8859-2", E::iso8859_2}, {"iso8859-3", E::iso8859_3}, {"iso8859-4", E::iso8859_4}, {"iso8859-5", E::iso8859_5},
    {"iso8859-6", E::iso8859_6}, {"iso8859-7", E::iso8859_7}, {"iso8859-8", E::iso8859_8},
    {"iso8859-9", E::windows1254}, {"iso88591", E::windows1252}, {"iso885910", E::iso8859_10},
    {"iso885911", E::windows874}, {"iso885913", E::iso8859_13}, {"iso885914", E::iso8859_14},
    {"iso885915", E::iso8859_15}, {"iso88592", E::iso8859_2}, {"iso88593", E::iso8859_3}, {"iso88594", E::iso8859_4},
    {"iso88595", E::iso8859_5}, {"iso88596", E::iso8859_6}, {"iso88597", E::iso8859_7}, {"iso88598", E::iso8859_8},
    {"iso88599", E::windows1254}, {"iso_8859-1", E::windows1252}, {"iso_8859-15", E::iso8859_15},
    {"iso_8859-1:1987", E::windows1252}, {"iso_8859-2", E::iso8859_2}, {"iso_8859-2:1987", E::iso8859_2},
    {"iso_8859-3", E::iso8859_3}, {"iso_8859-3:1988", E::iso8859_3}, {"iso_8859-4", E::iso8859_4},
    {"iso_8859-4:1988", E::iso8859_4}, {"iso_8859-5", E::iso8859_5}, {"iso_8859-5:1988", E::iso8859_5},
    {"iso_8859-6", E::iso8859_6}, {"iso_8859-6:1987", E::iso8859_6}, {"iso_8859-7", E::iso8859_7},
    {"iso_8859-7:1987", E::iso8859_7}, {"iso_8859-8", E::iso8859_8}, {"iso_8859-8:1988", E::iso8859_8},
    {"iso_8859-9", E::windows1254}, {"iso_8859-9:1989", E::windows1254}, {"koi", E::koi8R}, {"koi8", E::koi8R},
    {"koi8-r", E::koi8R}, {"koi8-ru", E::koi8U}, {"koi8-u", E::koi8U}, {"koi8_r", E::koi8R}, {"korean", E::eucKr},
    {"ks_c_5601-1987", E::eucKr}, {"ks_c_5601-1989", E::eucKr}, {"ksc5601", E::eucKr}, {"ksc_5601", E::eucKr},
    {"l1", E::windows1252}, {"l2", E::iso8859_2}, {"l3", E::iso8859_3}, {"l4", E::iso8859_4}, {"l5", E::windows1254},
    {"l6", E::iso8859_10}, {"l9", E::iso8859_15}, {"latin1", E::windows1252}, {"latin2", E::iso8859_2},
    {"latin3", E::iso8859_3}, {"latin4", E::iso8859_4}, {"latin5", E::windows1254}, {"latin6", E::iso8859_10},
    {"logical", E::iso8859_8i}, {"mac", E::macintosh}, {"macintosh", E::macintosh}, {"ms932", E::shiftJis},
    {"ms_kanji", E::shiftJis}, {"replacement", E::replacement}, {"shift-jis", E::shiftJis}, {"shift_jis", E::shiftJis},
    {"sjis", E::shiftJis}, {"sun_eu_greek", E::iso8859_7}, {"tis-620", E::windows874}, {"ucs-2", E::utf16le},
    {"unicode", E::utf16le}, {"unicode-1-1-utf-8", E::utf8}, {"unicode11utf8", E::utf8}, {"unicode20utf8", E::utf8},
    {"unicodefeff", E::utf16le}, {"unicodefffe", E::utf16be}, {"us-ascii", E::windows1252}, {"utf-16", E::utf16le},
    {"utf-16be", E::utf16be}, {"utf-16le", E::utf16le}, {"utf-8", E::utf8}, {"utf8", E::utf8}, {"visual", E::iso8859_8},
    {"windows-1250", E::windows1250}, {"windows-1251", E::windows1251}, {"windows-1252", E::windows1252},
    {"windows-1253", E::windows1253}, {"windows-1254", E::windows1254}, {"windows-1255", E::windows1255},
    {"windows-1256", E::windows1256}, {"windows-1257", E::windows1257}, {"windows-1258", E::windows1258},
    {"windows-31j", E::shiftJis}, {"windows-874", E::windows874}, {"windows-949", E::eucKr},
    {"x-cp1250", E::windows1250}, {"x-cp1251", E::windows1251}, {"x-cp1252", E::windows1252},
    {"x-cp1253", E::windows1253}, {"x-cp1254", E::windows1254}, {"x-cp1255", E::windows1255},
    {"x-cp1256", E::windows1256}, {"x-cp1257", E::windows1257}, {"x-cp1258", E::windows1258}, {"x-euc-jp", E::eucJp},
    {"x-gbk", E::gbk}, {"x-mac-cyrillic", E::xMacCyrillic}, {"x-mac-roman", E::macintosh},
    {"x-mac-ukrainian", E::xMacCyrillic}, {"x-sjis", E::shiftJis}, {"x-unicode20utf8", E::utf8},
    {"x-user-defined", E::xUserDefined}, {"x-x-big5", E::big5},
};
// clang-format on

constexpr std::size_t kLongestLabel = 19;

bool isAsciiWhiteSpace(char c) {
    return c == '\t' || c == '\n' || c == '\f' || c == '\r' || c == ' ';
}

} // namespace

std::optional<Encoding> encodingForLabel(std::string_view label) {
    while (!label.empty() && isAsciiWhiteSpace(label.front()))
        label.remove_prefix(1);
    while (!label.empty() && isAsciiWhiteSpace(label.back()))
        label.remove_suffix(1);
    if (label.size() > kLongestLabel) return std::nullopt;
    std::array<char, kLongestLabel> buffer{};
    std::transform(label.begin(), label.end(), buffer.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c; });
    const std::string_view lower(buffer.data(), label.size());
    const Label* found =
        std::lower_bound(std::begin(kLabels), std::end(kLabels), lower,
                         [](const Label& entry, std::string_view wanted) { return entry.label < wanted; });
    if (found == std::end(kLabels) || found->label != lower) return std::nullopt;
    return found->encoding;
}

} // namespace quillow::text
