#!/usr/bin/env python3
"""train_encoding_detector.py TEXTS [ROOT]: writes text/EncodingDetectorTables.cpp, the letter frequencies of each
language.

TEXTS is a folder with one plain UTF-8 text per language, TEXTS/LANG.train. collect_detector_texts.py writes them
from the message translations that are installed on a system. For languages with an alphabet, the tables have, for
each pair of letters, minus the binary logarithm of the probability that the second letter follows the first. For
Chinese, Japanese and Korean, they have the common characters, grouped by frequency.
"""
import collections
import math
import pathlib
import sys
import unicodedata

ALPHABETS = {
    "latin": "sq ca cy cs da de eo es et eu fi fr ga gl hr hu is it lt lv nb nl pl pt ro sk sl sv tr vi".split(),
    "cyrillic": "be bg mk ru sr uk".split(),
    "greek": ["el"], "hebrew": ["he"], "arabic": ["ar", "fa"], "thai": ["th"],
}
RANGES = {"cyrillic": (0x400, 0x4FF), "greek": (0x370, 0x3FF), "hebrew": (0x5D0, 0x5EA), "arabic": (0x61F, 0x6FF),
          "thai": (0xE01, 0xE59)}
TONES = {0x300, 0x301, 0x303, 0x309, 0x323}
UNIT = 8             # steps per bit
MOST_BITS = 14
SMOOTHING = 4.0
SHARE_OUTSIDE_ASCII = 2
# The most common characters of ordinary prose, most common first. Translations of program messages have too many
# words of their own.
PROSE = {
    "zh_CN": "的一是不了在人有我他这个们中来上大为和国地到以说时要就出会可也你对生能而子那得于着下自之年过发后作里用道行所然家种"
             "事成方多经么去法学如都同现当没动面起看定天分还进好小部其些主样理心她本前开但因只从想实日军者意无力它与长把机十民第"
             "公此已工使情明性知全三又关点正业外将两高间由问很最重并物手应战向头文体政美相见被利什二等产或新己制身果加西斯月话合",
    "zh_TW": "的一是不了在人有我他這個們中來上大為和國地到以說時要就出會可也你對生能而子那得於著下自之年過發後作裡用道行所然家種"
             "事成方多經麼去法學如都同現當沒動面起看定天分還進好小部其些主樣理心她本前開但因只從想實日軍者意無力它與長把機十民第"
             "公此已工使情明性知全三又關點正業外將兩高間由問很最重並物手應戰向頭文體政美相見被利什二等產或新己制身果加西斯月話合",
    "ja": "のにたいをはとるがしでてなっかれらもすりこだまさきめくあけどうえよつやわちみせろばおじべげほへふむびごぶねそひ"
          "ンールストアイラリクドシレジタフロカテマニオムチナコプバサメッデュエキャハビミィグパウボ"
          "日人年大一国会中本事上者生時分出行自場社合間方気手今前見地後言業学部長議政新思理体法何家民市力発同動物代定",
    "ko": "이다의는에을하가고를한은로기지사도어시으서인리자대그아나정있일해스들과부수전제보주구것상장면만여게원라적동"
          "오안소비성공국마문조세우경유드분화관당회신실미러무선치용진계생중연결모발내통방거간말요명야차물바개히금행",
}


def weight_of_prose(rank):
    return 1.0 / (rank + 10)


def prepared(text, language):
    text = unicodedata.normalize("NFC", text)
    if language == "vi":
        # windows-1258 has a letter and its tone as two characters.
        parts = []
        for c in text:
            decomposed = unicodedata.normalize("NFD", c)
            tones = [d for d in decomposed if ord(d) in TONES]
            parts.append(unicodedata.normalize("NFC", "".join(d for d in decomposed if ord(d) not in TONES)) + "".join(tones))
        text = "".join(parts)
    if language == "ro":
        text = text.translate({0x218: 0x15E, 0x219: 0x15F, 0x21A: 0x162, 0x21B: 0x163})
    text = text.replace("\u0130", "i")
    return "".join(c.lower() if len(c.lower()) == 1 else c for c in text)


def is_letter(c, script):
    if script == "latin":
        return c.isalpha() and (ord(c) < 0x250) or ord(c) in TONES or 0x1EA0 <= ord(c) < 0x1F00
    first, last = RANGES[script]
    return first <= ord(c) <= last and unicodedata.category(c)[0] in "LMN"


def words(text, script):
    word = []
    for c in text:
        if is_letter(c, script) or (c.isascii() and c.isalpha()):
            word.append(c)
        elif word:
            yield word
            word = []
    if word:
        yield word


def alphabet_model(path, language, script):
    text = prepared(path.read_text(encoding="utf-8"), language)
    # The detector looks at words with a letter outside ASCII. A language may have few of them, so all of its words
    # are counted, and these words get at least two thirds of the weight.
    counted = collections.Counter("".join(word) for word in words(text, script))
    of_ascii = sum(n for word, n in counted.items() if word.isascii())
    weight = max(1.0, of_ascii / max(1, counted.total() - of_ascii))
    for word in counted:
        if not word.isascii():
            counted[word] *= weight * SHARE_OUTSIDE_ASCII
    unigrams = collections.Counter()
    for word, count in counted.items():
        for c in word:
            unigrams[c] += count
    total = sum(unigrams.values())
    if script == "latin":
        letters = set("abcdefghijklmnopqrstuvwxyz")
        letters |= {c for c, n in unigrams.items() if n / total > 1.5e-4 and is_letter(c, script)}
    else:
        letters = {c for c, n in unigrams.items() if n / total > 2e-5 and is_letter(c, script)}
    letters = sorted(letters)
    classes = {c: i + 2 for i, c in enumerate(letters)}
    size = len(letters) + 2
    pairs = [[0.0] * size for _ in range(size)]
    for word, count in counted.items():
        if script != "latin" and word.isascii():
            continue
        previous = 0
        for c in word:
            current = classes.get(c, 1)
            pairs[previous][current] += count
            previous = current
        pairs[previous][0] += count
    follows = [sum(row[j] for row in pairs) for j in range(size)]
    everything = sum(follows)
    bits = []
    for i in range(size):
        seen = sum(pairs[i])
        for j in range(size):
            likely = (follows[j] + 0.5) / (everything + 0.5 * size)
            p = (pairs[i][j] + SMOOTHING * likely) / (seen + SMOOTHING)
            bits.append(min(round(-math.log2(p) * UNIT), MOST_BITS * UNIT))
    return letters, bits


def common_characters(path, language, levels):
    text = unicodedata.normalize("NFC", path.read_text(encoding="utf-8"))
    counts = collections.Counter(c for c in text if ord(c) >= 0x80 and c != "\u00A0")
    total = sum(counts.values())
    prose = {}
    for rank, c in enumerate(PROSE[language]):
        prose.setdefault(c, weight_of_prose(rank))
    whole = sum(prose.values())
    share = {c: 0.6 * counts[c] / total + 0.4 * prose.get(c, 0) / whole for c in counts.keys() | prose.keys()}
    by_level = collections.defaultdict(list)
    for c, p in share.items():
        level = math.ceil(-math.log2(p))
        if level <= levels and ord(c) < 0x10000:
            by_level[max(level, 4)].append(c)
    return {level: "".join(sorted(by_level[level])) for level in range(4, levels + 1)}


def quoted(text):
    return 'u"' + "".join(c if c.isprintable() and unicodedata.category(c)[0] != "M" and
                          unicodedata.bidirectional(c) not in ("R", "AL", "AN") and c not in '"\\' else f"\\u{ord(c):04X}"
                          for c in text) + '"'


def main():
    texts = pathlib.Path(sys.argv[1])
    root = pathlib.Path(sys.argv[2] if len(sys.argv) > 2 else pathlib.Path(__file__).parents[1])
    out = ["// How often letters follow one another in a language, and which characters are common in Chinese, Japanese and Korean.",
           "// Generated by tools/train_encoding_detector.py.", '#include "text/EncodingDetectorTables.h"', "",
           "namespace quillow::text {", "", "// clang-format off", "namespace {", ""]
    rows = []
    for script, languages in ALPHABETS.items():
        for language in languages:
            letters, bits = alphabet_model(texts / f"{language}.train", language, script)
            out.append(f"constexpr std::uint8_t {language}Bits[] = {{")
            out += ["    " + ",".join(map(str, bits[i:i + 40])) + "," for i in range(0, len(bits), 40)]
            out.append("};")
            rows.append(f'    {{"{language}", Script::{script}, {quoted("".join(letters))}, {language}Bits}},')
    out += ["", "} // namespace", "", f"const LanguageModel kLanguageModels[] = {{"] + rows + ["};",
            f"const std::size_t kLanguageModelCount = {len(rows)};", ""]
    for language, name in (("zh_CN", "kSimplifiedChinese"), ("zh_TW", "kTraditionalChinese"), ("ja", "kJapanese"), ("ko", "kKorean")):
        common = common_characters(texts / f"{language}.train", language, 11)
        out.append(f"const CommonCharacters {name} = {{{{")
        for level, characters in common.items():
            pieces = [characters[i:i + 60] for i in range(0, len(characters), 60)] or [""]
            out.append("    " + "\n    ".join(quoted(p) for p in pieces) + f", // {level} bits")
        out.append("}};")
    out += ["// clang-format on", "", "} // namespace quillow::text", ""]
    (root / "text/EncodingDetectorTables.cpp").write_text("\n".join(out), encoding="utf-8")


if __name__ == "__main__":
    main()
