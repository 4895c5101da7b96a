"""Corrections to Python's codecs: upper halves of code pages (bytes 0x80 to 0xFF as one string, U+FFFD for a byte
without a character), and runs of characters of double-byte sets (first pair: the characters from that pair on, in
the order of the set's trail bytes)."""

# The Encoding Standard, index Big5, against Python's big5hkscs (whose source is older: HKSCS-2004) and cp950.
BIG5 = {
    0x877A: '㡵\U00021D53\U0002369E\U00026021㻬\U000258DE㫵竼龗\U00024161\U0002890D\U000231EA\U00020A8A\U0002325E䌊蒄龖鐯䤰蘓墖靊鈘秐'
            '稲晠権袝瑌篅枂稬剏遆㓦珄\U00025DB9瓆鿇垳䤯呌䄱\U0002368E堘穲\U00027B65讏'
            '䚮\U00026E88䆁\U00025D99箮\U000224BC鿈\U000224C1\U000224C9\U000224CC鿉蔄\U000235BB䂴鿊䓡\U0002ADFF拁灮鿋',
    0x8E69: '箸',
    0x8E6F: '簆',
    0x8E7E: '糎',
    0x8EAB: '緒',
    0x8EB4: '縝',
    0x8ECD: '者',
    0x8ED0: '耨',
    0x8F57: '菁',
    0x8F69: '蒨',
    0x8F6E: '萏',
    0x8FCB: '覦覩',
    0x8FFE: '起',
    0x906D: '都',
    0x907A: '銹',
    0x90DC: '靜',
    0x90F1: '響',
    0x91BF: '鼖',
    0x9244: '蔃',
    0x92AF: '兙兛兝兞',
    0x92C8: '鍮',
    0x92D1: '瑹',
    0x9447: '浧',
    0x94CA: '禛',
    0x95D9: '邗',
    0x9644: '靝',
    0x96ED: '瀞',
    0x96FC: '嬨',
    0x9B76: '爁',
    0x9B78: '矗',
    0x9B7B: '纇',
    0x9BC6: '駖',
    0x9BDE: '釔',
    0x9BEC: '惞',
    0x9BF6: '澶',
    0x9C42: '輶',
    0x9C53: '侻',
    0x9C62: '營',
    0x9C68: '鄄',
    0x9C6B: '鷰',
    0x9C77: '菏',
    0x9CBC: '尐秣',
    0x9CD0: '婧',
    0x9D57: '輋',
    0x9D5A: '筑',
    0x9DC4: '拐',
    0x9EA9: '恢',
    0x9EEF: '痹',
    0x9EFD: '汊',
    0x9F60: '鬮',
    0x9F66: '鼗',
    0x9FCB: '僭',
    0x9FD8: '弌',
    0xA063: '蠏',
    0xA077: '拎',
    0xA0D5: '瑨',
    0xA0DF: '煢',
    0xA0E4: '牐',
    0xA3C0: '␀␁␂␃␄␅␆␇␈␉␊␋␌␍␎␏␐␑␒␓␔␕␖␗␘␙␚␛␜␝␞␟␡',
    0xC6CF: '廴',
    0xC6D3: '无',
    0xC6D5: '癶',
    0xC6D7: '隶',
    0xC6DE: '〃仝',
    0xF9FE: '￭',
    0xFA5F: '倩',
    0xFA66: '偽',
    0xFABD: '包',
    0xFAC5: '卄',
    0xFAD5: '卿',
    0xFB48: '嘅',
    0xFBB8: '婷',
    0xFBF3: '幵',
    0xFBF9: '廐',
    0xFC4F: '彘',
    0xFC6C: '悤',
    0xFCB9: '撐',
    0xFCE2: '晴',
    0xFCF1: '杞',
    0xFDB7: '沜渝',
    0xFDBB: '港',
    0xFDF1: '煮',
    0xFE52: '猪',
    0xFE6F: '瑜',
    0xFEAA: '瓩',
    0xFEDD: '砉',
}

# The Encoding Standard, index gb18030 (GB18030-2022), against Python's gb18030 (GB18030-2000).
GB18030 = {
    0xA3A0: '\u3000',
    0xA6D9: '︐︒︑︓︔︕︖',
    0xA6EC: '︗︘',
    0xA6F3: '︙',
    0xA8BC: 'ḿ',
    0xFE59: '龴',
    0xFE61: '龵',
    0xFE66: '龶龷',
    0xFE6D: '龸',
    0xFE7E: '龹',
    0xFE90: '龺',
    0xFEA0: '龻',
}

# The Encoding Standard, index jis0212, against Python's euc_jp.
JISX0212 = {
    0xA2B7: '～',
}

# Code page 10001 on Windows, where it differs from code page 932: the vendor's characters of JIS rows 9 to 15.
MAC_JAPANESE = {
    0x8540: '①②③④⑤⑥⑦⑧⑨⑩⑪⑫⑬⑭⑮⑯⑰⑱⑲⑳',
    0x859F: 'ⅠⅡⅢⅣⅤⅥⅦⅧⅨⅩ',
    0x85B3: 'ⅰⅱⅲⅳⅴⅵⅶⅷⅸⅹ',
    0x8640: '㎜',
    0x8642: '㎝',
    0x8646: '㎡',
    0x8648: '㎞',
    0x864A: '㎎',
    0x864C: '㎏㏄',
    0x869B: '№㏍℡',
    0x874B: '㈹',
    0x874D: '㈱',
    0x8750: '㈲',
    0x8793: '㊤㊥㊦㊧㊨',
    0x879F: '㍉㌢㍍㌔',
    0x87A7: '㌃㌶㌘',
    0x87AB: '㌧㍑㍊',
    0x87AF: '㍗㌍',
    0x87B2: '㌣㌦㌻㌫',
    0x87E5: '㍾㍽㍼㍻',
    0x8840: '∮∟⊿',
}

# 708 as on Windows. 10005 and 10021 follow Apple's HEBREW.TXT and THAI.TXT with four changes. Right-to-left copies
# of ASCII characters become ASCII. Presentation variants of vowel and tone marks become the marks. Private-use
# characters become U+FFFD. A byte with two characters becomes its precomposed character (yod yod patah) or its
# letter without the point (lamed holam).
SINGLE_BYTE = {
    708: ('│┤éâ╡à╢çêëèïî╖╕╣║╗╝ô╜╛ûù┐└\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD'
            '\uFFFD┴┬├¤─┼╞╟╚╔╩،╦«»░▒▓╠═╬╧╨╤╥╙\u061B╘╒╓\u061F'
            '╫\u0621\u0622\u0623\u0624\u0625\u0626\u0627\u0628\u0629\u062A\u062B\u062C\u062D\u062E\u062F\u0630\u0631\u0632\u0633\u0634\u0635\u0636\u0637\u0638\u0639\u063A█▄▌▐▀'
            '\u0640\u0641\u0642\u0643\u0644\u0645\u0646\u0647\u0648\u0649\u064A\u064B\u064C\u064D\u064E\u064F\u0650\u0651\u0652\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD╪┘┌µ£■\u00A0'),
    10005: ('Ä\uFB1FÇÉÑÖÜáàâäãåçéèêëíìîïñóòôöõúùûü'
            ' !"#$%₪\u0027)(*+,-./0123456789:;<=>?'
            '\u05DC„\uFFFD\uFFFD\uFFFD\uFFFD\u05BC\uFB4B\uFB35…\u00A0\u05B8\u05B7\u05B5\u05B6\u05B4–—“”‘’\uFB2A\uFB2B\u05BF\u05B0\u05B2\u05B1\u05BB\u05B9\u05B8\u05B3'
            '\u05D0\u05D1\u05D2\u05D3\u05D4\u05D5\u05D6\u05D7\u05D8\u05D9\u05DA\u05DB\u05DC\u05DD\u05DE\u05DF\u05E0\u05E1\u05E2\u05E3\u05E4\u05E5\u05E6\u05E7\u05E8\u05E9\u05EA}]{[|'),
    10021: ('«»…\u0E48\u0E49\u0E4A\u0E4B\u0E4C\u0E48\u0E49\u0E4A\u0E4B\u0E4C“”\u0E4D\uFFFD•\u0E31\u0E47\u0E34\u0E35\u0E36\u0E37\u0E48\u0E49\u0E4A\u0E4B\u0E4C‘’\uFFFD'
            '\u00A0กขฃคฅฆงจฉชซฌญฎฏฐฑฒณดตถทธนบปผฝพฟ'
            'ภมยรฤลฦวศษสหฬอฮฯะ\u0E31าำ\u0E34\u0E35\u0E36\u0E37\u0E38\u0E39\u0E3A\u2060\u200B–—฿'
            'เแโใไๅๆ\u0E47\u0E48\u0E49\u0E4A\u0E4B\u0E4C\u0E4D™๏๐๑๒๓๔๕๖๗๘๙®©\uFFFD\uFFFD\uFFFD\uFFFD'),
}

# IS 13194:1991 (ISCII), bytes 0xA0 to 0xFF, one code page per script: Devanagari, Bengali, Tamil, Telugu,
# Assamese, Oriya, Kannada, Malayalam, Gujarati, Gurmukhi. A letter that a script lacks becomes the nearest letter,
# as on Windows.
ISCII = {
    57002: ('\uFFFD\u0901\u0902\u0903अआइईउऊऋऎएऐऍऒओऔऑकखगघङचछजझञटठड'
            'ढणतथदधनऩपफबभमयय़रऱलळऴवशषसह\uFFFD\u093E\u093F\u0940\u0941\u0942\u0943'
            '\u0946\u0947\u0948\u0945\u094A\u094B\u094C\u0949\u094D\u093C।\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD०१२३४५६७८९\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD'),
    57003: ('\uFFFD\u0981\u0982\u0983অআইঈউঊঋএএঐঐওওঔঔকখগঘঙচছজঝঞটঠড'
            'ঢণতথদধননপফবভমযয়ররলললবশষসহ\uFFFD\u09BE\u09BF\u09C0\u09C1\u09C2\u09C3'
            '\u09C7\u09C7\u09C8\u09C8\u09CB\u09CB\u09CC\u09CC\u09CD\u09BC.\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD০১২৩৪৫৬৭৮৯\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD'),
    57004: ('\uFFFD\uFFFD\u0B82ஃஅஆஇஈஉஊ\uFFFDஏஏஐஐஒஓஔஔககககஙசசஜஜஞடடட'
            'டணததததநனபபபபமயயரறலளழவஷஷஸஹ\uFFFD\u0BBE\u0BBF\u0BC0\u0BC1\u0BC2\uFFFD'
            '\u0BC6\u0BC7\u0BC8\u0BC8\u0BCA\u0BCB\u0BCC\u0BCC\u0BCD\uFFFD.\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD0௧௨௩௪௫௬௭௮௯\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD'),
    57005: ('\uFFFD\u0C01\u0C02\u0C03అఆఇఈఉఊఋఎఏఐఐఒఓఔఔకఖగఘఙచఛజఝఞటఠడ'
            'ఢణతథదధననపఫబభమయయరఱలళళవశషసహ\uFFFD\u0C3E\u0C3F\u0C40\u0C41\u0C42\u0C43'
            '\u0C46\u0C47\u0C48\u0C48\u0C4A\u0C4B\u0C4C\u0C4C\u0C4D\uFFFD.\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD౦౧౨౩౪౫౬౭౮౯\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD'),
    57006: ('\uFFFD\u0981\u0982\u0983অআইঈউঊঋএএঐঐওওঔঔকখগঘঙচছজঝঞটঠড'
            'ঢণতথদধননপফবভমযয়ররলললবশষসহ\uFFFD\u09BE\u09BF\u09C0\u09C1\u09C2\u09C3'
            '\u09C7\u09C7\u09C8\u09C8\u09CB\u09CB\u09CC\u09CC\u09CD\u09BC.\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD০১২৩৪৫৬৭৮৯\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD'),
    57007: ('\uFFFD\u0B01\u0B02\u0B03ଅଆଇଈଉଊଋଏଏଐଐଐଓଔଔକଖଗଘଙଚଛଜଝଞଟଠଡ'
            'ଢଣତଥଦଧନନପଫବଭମଯୟରରଲଳଳବଶଷସହ\uFFFD\u0B3E\u0B3F\u0B40\u0B41\u0B42\u0B43'
            '\u0B47\u0B47\u0B48\u0B48\u0B4B\u0B4B\u0B4C\u0B4C\u0B4D\u0B3C.\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD୦୧୨୩୪୫୬୭୮୯\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD'),
    57008: ('\uFFFD\uFFFD\u0C82\u0C83ಅಆಇಈಉಊಋಎಏಐಐಒಓಔಔಕಖಗಘಙಚಛಜಝಞಟಠಡ'
            'ಢಣತಥದಧನನಪಫಬಭಮಯಯರಱಲಳಳವಶಷಸಹ\uFFFD\u0CBE\u0CBF\u0CC0\u0CC1\u0CC2\u0CC3'
            '\u0CC6\u0CC7\u0CC8\u0CC8\u0CCA\u0CCB\u0CCC\u0CCC\u0CCD\uFFFD.\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD೦೧೨೩೪೫೬೭೮೯\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD'),
    57009: ('\uFFFD\uFFFD\u0D02\u0D03അആഇഈഉഊഋഎഏഐഐഒഓഔഔകഖഗഘങചഛജഝഞടഠഡ'
            'ഢണതഥദധനനപഫബഭമയയരറലളഴവശഷസഹ\uFFFD\u0D3E\u0D3F\u0D40\u0D41\u0D42\u0D43'
            '\u0D46\u0D47\u0D48\u0D48\u0D4A\u0D4B\u0D4C\u0D4C\u0D4D\uFFFD.\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD൦൧൨൩൪൫൬൭൮൯\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD'),
    57010: ('\uFFFD\u0A81\u0A82\u0A83અઆઇઈઉઊઋએએઐઍઍઓઔઑકખગઘઙચછજઝઞટઠડ'
            'ઢણતથદધનનપફબભમયયરરલળળવશષસહ\uFFFD\u0ABE\u0ABF\u0AC0\u0AC1\u0AC2\u0AC3'
            '\u0AC7\u0AC7\u0AC8\u0AC5\u0ACB\u0ACB\u0ACC\u0AC9\u0ACD\u0ABC.\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD૦૧૨૩૪૫૬૭૮૯\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD'),
    57011: ('\uFFFD\uFFFD\u0A02\uFFFDਅਆਇਈਉਊ\uFFFDਏਏਐਐਐਓਔਔਕਖਗਘਙਚਛਜਝਞਟਠਡ'
            'ਢਣਤਥਦਧਨਨਪਫਬਭਮਯਯਰਰਲਲ਼ਲ਼ਵਸ਼ਸ਼ਸਹ\uFFFD\u0A3E\u0A3F\u0A40\u0A41\u0A42\uFFFD'
            '\u0A47\u0A47\u0A48\u0A48\u0A4B\u0A4B\u0A4C\u0A4C\u0A4D\u0A3C.\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD੦੧੨੩੪੫੬੭੮੯\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD'),
}
