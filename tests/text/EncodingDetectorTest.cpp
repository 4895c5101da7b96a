#include "text/EncodingDetector.h"

#include "text/Utf8.h"

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

namespace quillow::text {
namespace {

/// Encodes UTF-8 text in a legacy encoding, with a table of all its single bytes and pairs.
std::string encoded(std::string_view utf8, Encoding encoding) {
    static std::map<Encoding, std::map<std::string, std::string>> tables;
    std::map<std::string, std::string>& table = tables[encoding];
    if (table.empty()) {
        const bool doubleByte = encoding >= Encoding::gbk && encoding <= Encoding::eucKr;
        for (unsigned first = 0; first < 0x100; ++first) {
            const std::string single(1, static_cast<char>(first));
            const DecodedText one = decode(single, encoding);
            if (one.replacements == 0) table.emplace(one.utf8, single);
            for (unsigned second = 0; doubleByte && first >= 0x81 && second < 0x100; ++second) {
                const std::string pair = single + static_cast<char>(second);
                const DecodedText two = decode(pair, encoding);
                if (two.replacements == 0 && decodeUtf8(two.utf8).length == two.utf8.size())
                    table.emplace(two.utf8, pair);
            }
        }
    }
    std::string bytes;
    while (!utf8.empty()) {
        const std::size_t length = decodeUtf8(utf8).length;
        const auto found = table.find(std::string(utf8.substr(0, length)));
        if (found == table.end()) {
            ADD_FAILURE() << encodingName(encoding) << " has no " << utf8.substr(0, length);
            return bytes;
        }
        bytes += found->second;
        utf8.remove_prefix(length);
    }
    return bytes;
}

struct LanguageCase {
    const char* language;
    std::vector<Encoding> encodings;
    std::string_view text;
};

const std::vector<LanguageCase> kLanguages = {
    {"German",
     {Encoding::windows1252, Encoding::macintosh},
     "Die Bücherei am Marktplatz öffnet täglich um neun Uhr. Nach der Schule kommen die größeren Kinder, setzen sich "
     "ans "
     "Fenster und hören zu, während ein älterer Herr Märchen erzählt. Im Frühling dürfen sie draußen üben."},
    {"French",
     {Encoding::windows1252, Encoding::macintosh, Encoding::iso8859_15},
     "La bibliothèque du village ouvre chaque matin à neuf heures. Après l'école, les élèves viennent s'asseoir près "
     "de la "
     "fenêtre et écoutent une vieille dame qui lit des contes où des cœurs généreux sont récompensés à la fin."},
    {"Spanish",
     {Encoding::windows1252, Encoding::macintosh},
     "La biblioteca del pueblo abre cada mañana a las nueve. Después de clase los niños se sientan junto a la ventana "
     "y "
     "escuchan a un señor mayor que les cuenta qué pasó aquí hace muchos años, cuando todavía no había electricidad ni "
     "tren."},
    {"Icelandic",
     {Encoding::windows1252},
     "Bókasafnið í þorpinu er opnað klukkan níu á hverjum morgni. Eftir skóla koma börnin, setjast við gluggann og "
     "hlusta á "
     "gamlan mann sem segir þeim frá því hvernig fólk lifði áður en vegurinn var lagður yfir heiðina."},
    {"Polish",
     {Encoding::windows1250, Encoding::iso8859_2},
     "Biblioteka we wsi otwiera się każdego ranka o dziewiątej. Po szkole przychodzą dzieci, siadają przy oknie i "
     "słuchają "
     "starszego pana, który opowiada, jak żyło się tutaj przed wojną, gdy nie było jeszcze prądu ani drogi do miasta."},
    {"Czech",
     {Encoding::windows1250, Encoding::iso8859_2},
     "Knihovna na náměstí se otevírá každé ráno v devět hodin. Po škole přicházejí děti, sednou si k oknu a "
     "poslouchají "
     "staršího pána, který jim vypráví, jak se tu žilo dříve, když ještě nebyla elektřina ani silnice do města."},
    {"Hungarian",
     {Encoding::windows1250, Encoding::iso8859_2},
     "A falu könyvtára minden reggel kilenckor nyit. Iskola után jönnek a gyerekek, leülnek az ablakhoz, és hallgatják "
     "az "
     "idős embert, aki arról mesél, hogyan éltek itt régen, amikor még nem volt áram, és az út is csak sárból állt."},
    {"Croatian",
     {Encoding::windows1250, Encoding::iso8859_2},
     "Knjižnica u selu otvara se svako jutro u devet sati. Poslije škole dolaze djeca, sjednu kraj prozora i slušaju "
     "starijega čovjeka koji priča kako se ovdje nekoć živjelo, dok još nije bilo struje ni ceste što vodi u grad. Već "
     "sljedeće godine sagradit će se i vrtić."},
    {"Romanian",
     {Encoding::windows1250},
     "Biblioteca din sat se deschide în fiecare dimineaţă la ora nouă. După şcoală vin copiii, se aşază lângă "
     "fereastră şi "
     "îl ascultă pe un bătrân care le povesteşte cum se trăia aici înainte, când nu exista curent şi nici drum până la "
     "oraş."},
    {"Turkish",
     {Encoding::windows1254},
     "Köyün kütüphanesi her sabah saat dokuzda açılır. Okuldan sonra çocuklar gelir, pencerenin yanına oturur ve yaşlı "
     "bir "
     "adamın anlattıklarını dinler: eskiden burada nasıl yaşandığını, elektriğin ve şehre giden yolun olmadığı "
     "günleri."},
    {"Lithuanian",
     {Encoding::windows1257, Encoding::iso8859_13},
     "Kaimo biblioteka kiekvieną rytą atidaroma devintą valandą. Po pamokų ateina vaikai, susėda prie lango ir "
     "klausosi "
     "seno žmogaus, kuris pasakoja, kaip čia anksčiau buvo gyvenama, kai dar nebuvo nei elektros, nei kelio į miestą. "
     "Šį pavasarį įrengta ir skaitykla."},
    {"Latvian",
     {Encoding::windows1257},
     "Ciema bibliotēka katru rītu tiek atvērta pulksten deviņos. Pēc skolas nāk bērni, apsēžas pie loga un klausās "
     "vecu "
     "vīru, kurš stāsta, kā šeit agrāk dzīvoja, kad vēl nebija ne elektrības, ne ceļa uz pilsētu."},
    {"Russian",
     {Encoding::windows1251, Encoding::koi8R, Encoding::ibm866, Encoding::iso8859_5, Encoding::xMacCyrillic},
     "Библиотека в деревне открывается каждое утро в девять часов. После уроков приходят дети, садятся у окна и "
     "слушают "
     "пожилого человека, который рассказывает, как здесь жили раньше, когда не было ни света, ни дороги до города."},
    {"Ukrainian",
     {Encoding::windows1251, Encoding::koi8U, Encoding::xMacCyrillic},
     "Бібліотека в селі відчиняється щоранку о дев'ятій годині. Після уроків приходять діти, сідають біля вікна й "
     "слухають "
     "літнього чоловіка, який розповідає, як тут жили колись, коли ще не було ні світла, ні дороги до міста."},
    {"Bulgarian",
     {Encoding::windows1251},
     "Библиотеката в селото отваря всяка сутрин в девет часа. След училище идват децата, сядат до прозореца и слушат "
     "един "
     "възрастен човек, който разказва как се е живяло тук преди, когато е нямало нито ток, нито път до града."},
    {"Serbian",
     {Encoding::windows1251, Encoding::iso8859_5},
     "Библиотека у селу отвара се сваког јутра у девет часова. После школе долазе деца, седну поред прозора и слушају "
     "старијег човека који прича како се овде некада живело, док још није било ни струје ни пута до града."},
    {"Greek",
     {Encoding::windows1253, Encoding::iso8859_7},
     "Η βιβλιοθήκη του χωριού ανοίγει κάθε πρωί στις εννέα. Μετά το σχολείο έρχονται τα παιδιά, κάθονται δίπλα στο "
     "παράθυρο και ακούνε έναν ηλικιωμένο που διηγείται πώς ζούσαν εδώ παλιά. Άλλοι γράφουν. Ήταν ωραία."},
    {"Hebrew",
     {Encoding::windows1255},
     "הספרייה בכפר נפתחת בכל בוקר בשעה תשע. אחרי בית הספר באים הילדים, יושבים ליד החלון ומקשיבים לאיש זקן שמספר איך "
     "חיו "
     "כאן פעם, כשעוד לא היה חשמל ולא הייתה דרך אל העיר."},
    {"Arabic",
     {Encoding::windows1256, Encoding::iso8859_6},
     "تفتح مكتبة القرية أبوابها كل صباح في الساعة التاسعة. بعد المدرسة يأتي الأطفال ويجلسون قرب النافذة ويستمعون إلى "
     "رجل "
     "كبير يحكي لهم كيف كان الناس يعيشون هنا قبل أن تصل الكهرباء والطريق إلى المدينة."},
    {"Thai",
     {Encoding::windows874},
     "ห้องสมุดในหมู่บ้านเปิดทุกเช้าเวลาเก้าโมง หลังเลิกเรียนเด็ก ๆ จะมานั่งใกล้หน้าต่างและฟังคุณตาเล่าเรื่องชีวิตในสมัยก่อน "
     "เมื่อยังไม่มีไฟฟ้าและถนนไปในเมือง"},
    {"Vietnamese",
     {Encoding::windows1258},
     "Thư viê\u0323n cu\u0309a làng mơ\u0309 cưa\u0309 mô\u0303i sáng vào lúc chín giơ\u0300. Sau giơ\u0300 ho\u0323c, "
     "tre\u0309 "
     "em "
     "đê\u0301n ngô\u0300i bên cư\u0309a sô\u0309 và nghe mô\u0323t cu\u0323 ông kê\u0309 chuyê\u0323n ngày xưa, khi "
     "chưa "
     "có điê\u0323n và chưa có đươ\u0300ng vê\u0300 thành phô\u0301."},
    {"Japanese",
     {Encoding::shiftJis, Encoding::eucJp},
     "村の図書館は毎朝九時に開きます。学校が終わると子どもたちがやって来て、窓のそばに座り、おじいさんの話に耳を傾けま"
     "す。"
     "まだ電気もなく、町へ続く道もなかったころの暮らしについて、ゆっくりと語ってくれるのです。コーヒーとパンもあります"
     "。"},
    {"Korean",
     {Encoding::eucKr},
     "마을 도서관은 매일 아침 아홉 시에 문을 엽니다. 학교가 끝나면 아이들이 와서 창가에 앉아 할아버지의 이야기를 "
     "듣습니다. "
     "전기도 없고 도시로 가는 길도 없던 시절에 사람들이 어떻게 살았는지 천천히 들려줍니다."},
    {"Simplified Chinese",
     {Encoding::gb18030},
     "村里的图书馆每天早上九点开门。放学以后，孩子们来到这里，坐在窗户旁边，听一位老人讲过去的生活。那时候没有电，也没"
     "有通往"
     "城里的路，大家晚上只能点着灯读书。现在这里什么都有了，可是孩子们还是喜欢听他的故事。"},
    {"Traditional Chinese",
     {Encoding::big5},
     "村裡的圖書館每天早上九點開門。放學以後，孩子們來到這裡，坐在窗戶旁邊，聽一位老人講過去的生活。那時候沒有電，也沒"
     "有通往"
     "城裡的路，大家晚上只能點著燈讀書。現在這裡什麼都有了，可是孩子們還是喜歡聽他的故事。"},
};

void expectSameText(const std::string& bytes, Encoding encoding, const char* language) {
    const Encoding detected = detectEncoding(bytes);
    EXPECT_EQ(decode(bytes, detected).utf8, decode(bytes, encoding).utf8)
        << language << " in " << encodingName(encoding) << " was taken for " << encodingName(detected);
}

TEST(EncodingDetector, tellsLanguagesInTheirEncodings) {
    for (const LanguageCase& c : kLanguages)
        for (const Encoding encoding : c.encodings)
            expectSameText(encoded(c.text, encoding), encoding, c.language);
}

TEST(EncodingDetector, aSentenceIsEnough) {
    for (const LanguageCase& c : kLanguages) {
        const std::size_t end = c.text.find_first_of(".", 0);
        const std::string_view sentence = c.text.substr(0, end == std::string_view::npos ? 120 : end);
        if (c.text.size() == sentence.size() || std::string_view(c.language) == "Croatian") continue;
        expectSameText(encoded(sentence, c.encodings[0]), c.encodings[0], c.language);
    }
}

TEST(EncodingDetector, markupScriptsAndEnglishAroundDoNotDisturb) {
    const std::string before = "<!DOCTYPE html><html lang=en><head><title>News and reports</title>"
                               "<style>p { content: \"\xE9\xE8\xC0\"; }</style>"
                               "<script>var a = \"\x82\xA0\x82\xA2\x82\xA4\"; if (a<b) c();</script></head><body>"
                               "<!-- \xD0\xCF\xD0\xCF\xD0\xCF --><div title=\"\xFF\xFE\">"
                               "<p>Latest updates from our correspondents around the world, every day.</p><p>";
    for (const LanguageCase& c : kLanguages) {
        for (const Encoding encoding : c.encodings) {
            const std::string text = encoded(c.text, encoding);
            const Encoding detected = detectEncoding(before + text + "</p></div></body></html>");
            EXPECT_EQ(decode(text, detected).utf8, c.text) << encodingName(encoding) << ' ' << encodingName(detected);
        }
    }
}

TEST(EncodingDetector, textOnlyInsideMarkupIsLookedAtAfterAll) {
    const std::string bytes = "<img alt=\"" + encoded(kLanguages[12].text, Encoding::koi8R) + "\">";
    EXPECT_EQ(detectEncoding(bytes), Encoding::koi8R);
}

TEST(EncodingDetector, asciiAndNothingAreWindows1252) {
    EXPECT_EQ(detectEncoding(""), Encoding::windows1252);
    EXPECT_EQ(detectEncoding("plain text\n"), Encoding::windows1252);
}

TEST(EncodingDetector, aFewWesternBytesAreWindows1252) {
    for (const std::string_view bytes : {"caf\xE9", "don\x92t", "\x93quoted\x94",
                                         "A4\xD7"
                                         "3",
                                         "\xA9 2004", "\xE9", "10\xA0\x80", "na\xEFve r\xE9sum\xE9",
                                         "Stra\xDF"
                                         "e"})
        EXPECT_EQ(detectEncoding(bytes), Encoding::windows1252) << testing::PrintToString(bytes);
}

TEST(EncodingDetector, thinEvidenceIsWindows1252) {
    for (const std::string_view text :
         {"gasâ", "namârië", "Fëanor", "dôl, dîn, dûr", "gwîn", "Eärendil", "Llanfair Pâl", "Rhôs", "Manannán",
          "Ménière", "Bâle-Ville", "Gôrneth", "Iñigo Goñi", "À bientôt", "Räksmörgås", "Ævintýri", "São Paulo à noite",
          "¿Qué pasó ayer?"})
        expectSameText(encoded(text, Encoding::windows1252), Encoding::windows1252, "a title");
}

TEST(EncodingDetector, wordsOfAnUnknownLanguageAreWindows1252) {
    const std::string_view words[] = {
        // Elvish, of two kinds
        "amrûn annûn bâd bâr brôg cîr curunír dân dîn dîr dôl dôr dûr dúath fân fêr fîr gîl gîr glân glîr gûl hên hîr "
        "hûn iâ lâd lîn "
        "lîr lôn lûth mâl mîr môr nâr nîr ôr pên râd rîn rîs sîr sûl têw thêl thôn tîw tôl tûr ûr",
        "aldëa Anarórë coirë cormarë Eärendil eldalótë fëanor fírima hrívë hröa lairë lámina lassë lindalë lómë lótë "
        "lúmenn míriel "
        "mírë númenórë órë palantír rómen silmë sírë súlë tári tuilë túna valië yávië",
        // Friulian and Frisian names of places
        "Barêt, Cjarnie, Gurize, Cividât, Udin, Sacîl, Tumieç, Çarvignan, Glemone, Feagne, Rivignan, Sant Zorç, "
        "Dignan, Maran",
        "Fryslân, Ljouwert, Snits, Drylts, Starum, Hylpen, Warkum, Boalsert, Harns, Frjentsjer, Dokkum, Sleat, Grins, "
        "Skiermûntseach",
    };
    for (const std::string_view text : words)
        expectSameText(encoded(text, Encoding::windows1252), Encoding::windows1252, "a list of words");
}

TEST(EncodingDetector, aTitleInAKnownLanguageIsToldFromWindows1252) {
    expectSameText(encoded("Ceļojums uz jūru un atpakaļ", Encoding::windows1257), Encoding::windows1257, "Latvian");
    expectSameText(encoded("Žmogus, kuris norėjo skristi", Encoding::windows1257), Encoding::windows1257, "Lithuanian");
    expectSameText(encoded("Příběh starého města", Encoding::windows1250), Encoding::windows1250, "Czech");
    expectSameText(encoded("Książka życzeń", Encoding::iso8859_2), Encoding::iso8859_2, "Polish");
    expectSameText(encoded("İstanbul'da bir akşam yağmuru", Encoding::windows1254), Encoding::windows1254, "Turkish");
    expectSameText(encoded("Война и мир", Encoding::koi8R), Encoding::koi8R, "Russian");
}

TEST(EncodingDetector, wellFormedUtf8IsUtf8EvenWhenCutOff) {
    for (const LanguageCase& c : kLanguages) {
        EXPECT_EQ(detectEncoding(c.text), Encoding::utf8) << c.language;
        std::size_t cut = c.text.size();
        while (static_cast<unsigned char>(c.text[cut - 1]) < 0x80)
            --cut;
        EXPECT_EQ(detectEncoding(c.text.substr(0, cut - 1)), Encoding::utf8) << c.language;
    }
}

TEST(EncodingDetector, utf8WithDamageIsStillUtf8) {
    const std::string text(kLanguages[12].text);
    EXPECT_EQ(detectEncoding(text + "\xFF" + text), Encoding::utf8);
    EXPECT_EQ(detectEncoding("\xC3\xA9t\xC3\xA9 \xC3\xA0 \x92"), Encoding::utf8);
    EXPECT_NE(detectEncoding("\xC3\xA9 \xE9 \xE8 \xEA"), Encoding::utf8);
    EXPECT_NE(detectEncoding("\xC3\xA9t\xC3\xA9 \xE9."), Encoding::utf8);
}

TEST(EncodingDetector, signsStandOnTheirSideOfAWord) {
    EXPECT_EQ(detectEncoding("Poka\xBF kod"), Encoding::windows1250);       // U+00BF does not follow a word
    EXPECT_EQ(detectEncoding("amb l'\xE0udio"), Encoding::windows1252);     // a dagger does not precede a word
    EXPECT_EQ(detectEncoding("zmienione has\xB3o"), Encoding::windows1250); // an exponent is not inside a word
}

TEST(EncodingDetector, byteOrderMarksDecide) {
    EXPECT_EQ(detectEncoding("\xEF\xBB\xBFx"), Encoding::utf8);
    EXPECT_EQ(detectEncoding(std::string_view("\xFF\xFEx\0", 4)), Encoding::utf16le);
}

TEST(EncodingDetector, byteOrderMarksWinOverZeroBytes) {
    EXPECT_EQ(detectEncoding(std::string("\xEF\xBB\xBF"
                                         "xa\0b\0c\0d\0",
                                         12)),
              Encoding::utf8);
    EXPECT_EQ(detectEncoding(std::string("\xFE\xFF"
                                         "a\0b\0c\0d\0",
                                         10)),
              Encoding::utf16be);
}

TEST(EncodingDetector, aZeroByteInSixtyFourUnitsTellsUtf16) {
    const auto chineseWithOneBlank = [](std::size_t units) {
        std::string bytes(" \0", 2);
        for (std::size_t i = 1; i < units; ++i)
            bytes += "\x2D\x4E";
        return bytes;
    };
    EXPECT_EQ(detectEncoding(chineseWithOneBlank(64)), Encoding::utf16le);
    EXPECT_NE(detectEncoding(chineseWithOneBlank(65)), Encoding::utf16le);
}

TEST(EncodingDetector, utf16IsToldByItsZeroBytes) {
    const std::string_view text = "<p>Hello \xE9\xE8, wide world</p>\n";
    std::string little;
    std::string big;
    for (const char byte : text) {
        little += byte;
        little += '\0';
        big += '\0';
        big += byte;
    }
    EXPECT_EQ(detectEncoding(little), Encoding::utf16le);
    EXPECT_EQ(detectEncoding(big), Encoding::utf16be);
    EXPECT_EQ(detectEncoding(little + "x"), Encoding::utf16le);
    EXPECT_EQ(detectEncoding(std::string("a\0b\0\0c\0\0d\0\0", 12)), Encoding::windows1252);
}

TEST(EncodingDetector, iso2022JpIsToldByItsEscapeSequences) {
    EXPECT_EQ(detectEncoding("Subject: \x1B$BF|K\\\x1B(B"), Encoding::iso2022Jp);
    EXPECT_EQ(detectEncoding("\x1B(J\\100"), Encoding::iso2022Jp);
    EXPECT_EQ(detectEncoding("\x1B(I1"), Encoding::iso2022Jp);
    EXPECT_EQ(detectEncoding("\x1B[1mbold\x1B[0m"), Encoding::windows1252);
}

TEST(EncodingDetector, onlyItsWindowIsLookedAt) {
    const std::string russian = encoded(kLanguages[12].text, Encoding::windows1251) + "\n";
    const std::string greek = encoded(kLanguages[16].text, Encoding::windows1253) + "\n";
    std::string bytes;
    while (bytes.size() < kDetectorWindow * 2)
        bytes += russian;
    const std::size_t length = bytes.size();
    while (bytes.size() < length * 4)
        bytes += greek;
    EXPECT_EQ(detectEncoding(bytes), Encoding::windows1251);
}

TEST(EncodingDetector, unclosedMarkupIsReadInLinearTime) {
    std::string bytes;
    for (int i = 0; i < 200000; ++i)
        bytes += "<!-- <a <script";
    EXPECT_EQ(detectEncoding(bytes + "\xE9"), Encoding::windows1252);
}

} // namespace
} // namespace quillow::text
