#include "engines/pdf/layout/Accents.h"

#include <cstddef>
#include <string_view>

namespace quillow::pdf {

namespace {

/// The letters of one accent, each followed by itself with the accent (canonical decompositions of UnicodeData.txt,
/// those of Latin letters with one accent; and the stroke that TeX draws over l and L).
struct Accent {
    std::u32string_view characters; ///< that fonts have for the accent
    std::u32string_view letters;
};

constexpr Accent kAccents[] = {
    {U"`\u02CB", U"AÀEÈIÌNǸOÒUÙWẀYỲaàeèiìnǹoòuùwẁyỳ"},
    {U"\u00B4\u02CA", U"AÁCĆEÉGǴIÍKḰLĹMḾNŃOÓPṔRŔSŚUÚWẂYÝZŹaácćeégǵiíkḱlĺmḿnńoópṕrŕsśuúwẃyýzź"},
    {U"^\u02C6", U"AÂCĈEÊGĜHĤIÎJĴOÔSŜUÛWŴYŶZẐaâcĉeêgĝhĥiîjĵoôsŝuûwŵyŷzẑ"},
    {U"~\u02DC", U"AÃEẼIĨNÑOÕUŨVṼYỸaãeẽiĩnñoõuũvṽyỹ"},
    {U"\u00A8", U"AÄEËHḦIÏOÖUÜWẄXẌYŸaäeëhḧiïoötẗuüwẅxẍyÿ"},
    {U"\u00AF\u02C9", U"AĀEĒGḠIĪOŌUŪYȲaāeēgḡiīoōuūyȳ"},
    {U"\u02D8", U"AĂEĔGĞIĬOŎUŬaăeĕgğiĭoŏuŭ"},
    {U"\u02D9", U"AȦBḂCĊDḊEĖFḞGĠHḢIİMṀNṄOȮPṖRṘSṠTṪWẆXẊYẎZŻaȧbḃcċdḋeėfḟgġhḣmṁnṅoȯpṗrṙsṡtṫwẇxẋyẏzż"},
    {U"\u02DA", U"AÅUŮaåuůwẘyẙ"},
    {U"\u02DD", U"OŐUŰoőuű"},
    {U"\u02C7", U"AǍCČDĎEĚGǦHȞIǏKǨLĽNŇOǑRŘSŠTŤUǓZŽaǎcčdďeěgǧhȟiǐjǰkǩlľnňoǒrřsštťuǔzž"},
    {U"\u00B8", U"CÇDḐEȨGĢHḨKĶLĻNŅRŖSŞTŢcçdḑeȩgģhḩkķlļnņrŗsştţ"},
    {U"\u0337", U"LŁlł"},
    {U"\u02DB", U"AĄEĘIĮOǪUŲaąeęiįoǫuų"},
};

constexpr char32_t kSlash = 0x0338;
constexpr char32_t kMapsTo = 0x21A6;

const Accent* accentOf(char32_t character) {
    const bool isAscii = character < 0x80;
    if (isAscii ? character != '^' && character != '`' && character != '~' : character > 0x0337) return nullptr;
    for (const Accent& accent : kAccents)
        if (accent.characters.find(character) != std::u32string_view::npos) return &accent;
    return nullptr;
}

} // namespace

bool isAccent(char32_t character) {
    return accentOf(character) != nullptr;
}

char32_t composed(char32_t letter, char32_t accent) {
    constexpr char32_t kDotlessI = 0x0131;
    constexpr char32_t kDotlessJ = 0x0237;
    const Accent* const found = accentOf(accent);
    if (found == nullptr) return 0;
    if (letter == kDotlessI) letter = 'i';
    if (letter == kDotlessJ) letter = 'j';
    for (std::size_t i = 0; i + 1 < found->letters.size(); i += 2)
        if (found->letters[i] == letter) return found->letters[i + 1];
    return 0;
}

bool isOverlay(char32_t character) {
    return character == kSlash || character == kMapsTo;
}

char32_t overlaid(char32_t overlay, char32_t sign) {
    // Canonical decompositions of UnicodeData.txt with U+0338.
    constexpr std::u32string_view kNegated = U"=≠∈∉∋∌⊂⊄⊃⊅⊆⊈⊇⊉<≮>≯≤≰≥≱∼≁≃≄≅≇≈≉≡≢∃∄∣∤∥∦⊢⊬⊨⊭←↚→↛↔↮⇐⇍⇒⇏⇔⇎";
    if (overlay == kMapsTo) return sign == U'→' ? kMapsTo : 0;
    if (overlay != kSlash) return 0;
    for (std::size_t i = 0; i + 1 < kNegated.size(); i += 2)
        if (kNegated[i] == sign) return kNegated[i + 1];
    return 0;
}

} // namespace quillow::pdf
