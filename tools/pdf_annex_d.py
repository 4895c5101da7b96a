"""The encodings of annex D of ISO 32000-2, for generate_pdf_font_tables.py. Symbol and ZapfDingbats are built into the fonts
and come from their metrics; so does StandardEncoding."""

DIGITS = "zero one two three four five six seven eight nine".split()


def win_ansi(name_of):
    """D.2. Unused codes from 0x20 on are bullets; 0xA0 is a second space, 0xAD a second hyphen (notes 3, 5 and 6)."""
    table = [("", None)] * 256
    for code in range(0x20, 0x100):
        try:
            char = bytes([code]).decode("cp1252")
        except UnicodeDecodeError:
            char = "\u2022"
        if code == 0x7F:
            char = "\u2022"
        if code not in (0xA0, 0xAD):
            table[code] = (name_of(ord(char)), None)
    table[0xA0] = ("space", "00A0")
    table[0xAD] = ("hyphen", "002D")
    return table


# The codes of the Macintosh's encoding that D.2 leaves out; 9.6.5.4 adds them for TrueType fonts.
MAC_OS_ONLY = {173: "notequal", 176: "infinity", 178: "lessequal", 179: "greaterequal", 182: "partialdiff", 183: "summation",
               184: "product", 185: "pi", 186: "integral", 189: "Omega", 195: "radical", 197: "approxequal", 198: "Delta",
               215: "lozenge", 219: "Euro", 240: "apple"}


def mac_roman(name_of, is_whole):
    table = [("", None)] * 256
    for code in [*range(0x20, 0x7F), *range(0x80, 0x100)]:
        if code not in MAC_OS_ONLY and code != 0xCA:
            table[code] = (name_of(ord(bytes([code]).decode("mac_roman"))), None)
    table[0xCA] = ("space", "00A0")
    table[0xDB] = ("currency", None)
    if is_whole:
        for code, name in MAC_OS_ONLY.items():
            table[code] = (name, None)
        table[198] = ("Delta", "2206")
        table[240] = ("apple", "")
    return table


# D.4. A name with ":N" goes to code N (octal); each following name to the next code.
MAC_EXPERT = """
    space:40 exclamsmall Hungarumlautsmall centoldstyle dollaroldstyle dollarsuperior ampersandsmall Acutesmall parenleftsuperior
    parenrightsuperior twodotenleader onedotenleader comma hyphen period fraction zerooldstyle oneoldstyle twooldstyle
    threeoldstyle fouroldstyle fiveoldstyle sixoldstyle sevenoldstyle eightoldstyle nineoldstyle colon semicolon
    threequartersemdash:75 questionsmall:77 Ethsmall:104 onequarter:107 onehalf threequarters oneeighth threeeighths fiveeighths
    seveneighths onethird twothirds ff:126 fi fl ffi ffl parenleftinferior parenrightinferior:135 Circumflexsmall hypheninferior
    Gravesmall Asmall Bsmall Csmall Dsmall Esmall Fsmall Gsmall Hsmall Ismall Jsmall Ksmall Lsmall Msmall Nsmall Osmall Psmall
    Qsmall Rsmall Ssmall Tsmall Usmall Vsmall Wsmall Xsmall Ysmall Zsmall colonmonetary onefitted rupiah Tildesmall
    asuperior:201 centsuperior Aacutesmall:207 Agravesmall Acircumflexsmall Adieresissmall Atildesmall Aringsmall Ccedillasmall
    Eacutesmall Egravesmall Ecircumflexsmall Edieresissmall Iacutesmall Igravesmall Icircumflexsmall Idieresissmall Ntildesmall
    Oacutesmall Ogravesmall Ocircumflexsmall Odieresissmall Otildesmall Uacutesmall Ugravesmall Ucircumflexsmall Udieresissmall
    eightsuperior:241 fourinferior threeinferior sixinferior eightinferior seveninferior Scaronsmall centinferior:251 twoinferior
    Dieresissmall:254 Caronsmall:256 osuperior fiveinferior commainferior:262 periodinferior Yacutesmall dollarinferior:266
    Thornsmall:271 nineinferior:273 zeroinferior Zcaronsmall AEsmall Oslashsmall questiondownsmall oneinferior Lslashsmall
    Cedillasmall:311 OEsmall:317 figuredash hyphensuperior exclamdownsmall:326 Ydieresissmall:330 onesuperior:332 twosuperior
    threesuperior foursuperior fivesuperior sixsuperior sevensuperior ninesuperior zerosuperior esuperior:344 rsuperior tsuperior
    isuperior:351 ssuperior dsuperior lsuperior:361 Ogoneksmall Brevesmall Macronsmall bsuperior nsuperior msuperior commasuperior
    periodsuperior Dotaccentsmall Ringsmall
"""


def mac_expert():
    table = [("", None)] * 256
    code = 0
    for entry in MAC_EXPERT.split():
        name, _, place = entry.partition(":")
        code = int(place, 8) if place else code + 1
        table[code] = (name, None)
    return table
