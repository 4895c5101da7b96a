#!/usr/bin/env python3
"""check_layers.py [ROOT]: checks every #include and every forward declaration of the project against the rules of
tools/layers.txt. Exits with 1 if one breaks a rule. A forward declaration counts as an include of the header that
defines the type; a type that several headers define may come from any of them.

A rule line is "<path prefix>: <allowed> ..."; the longest path prefix that matches a file decides. Allowed words:
  std        any <...> header that is neither Qt nor X11: the standard library and POSIX
  qtvalue    the Qt Core value headers listed in QT_VALUE
  qtcore     further Qt Core headers, of classes that only compute (QT_COMPUTING)
  qt         any Qt header
  x11        X11/ and xcb/ headers, in .cpp files only (their macros must not leak through a header)
  a prefix   of a project include ("util/") or of a library's ("nettle/"); "-prefix" forbids it; the longest decides
A file without a matching rule is an error too.
"""
import pathlib
import re
import sys

QT_VALUE = {"QByteArray", "QByteArrayView", "QChar", "QDate", "QDateTime", "QHash", "QList", "QLatin1StringView", "QMap",
            "QPoint", "QRect", "QRectF", "QSet", "QSize", "QSizeF", "QString", "QStringList", "QStringView", "QTime",
            "QTimeZone", "QUrl", "QUuid", "QtGlobal"}
# Classes that compute on bytes and texts: no file, no network, no event loop.
QT_COMPUTING = {"QStringDecoder", "QStringEncoder", "QXmlStreamReader", "QtEndian"}
POSIX = re.compile(r"(sys|linux|arpa|netinet)/|(unistd|fcntl|dirent|poll|pwd|signal|spawn|pthread|sched|dlfcn|malloc|pty|grp|termios|immintrin|arm_neon)\.h$")
SOURCES = {".h", ".hpp", ".c", ".cc", ".cpp"}
FORWARD = re.compile(r"(?:class|struct|enum class) (\w+)(?: : [\w:]+)?;")
DEFINITION = re.compile(r"(?:class|struct|enum class) (\w+)(?: final)?(?: : [^;]*)?(?: \{|$)")


def read_rules(path):
    rules = {}
    for number, line in enumerate(path.read_text().splitlines(), 1):
        line = line.split("#")[0].strip()
        if not line:
            continue
        if ":" not in line:
            sys.exit(f"{path}:{number}: no colon")
        prefix, allowed = line.split(":", 1)
        rules[prefix.strip()] = allowed.split()
    return rules


def is_allowed(source, include, angled, words):
    if not angled:
        matches = (w for w in words if include.startswith(w.lstrip("-")))
        best = max(matches, key=lambda w: len(w.lstrip("-")), default="-")
        return not best.startswith("-")
    name = include.split("/")[-1]
    if re.match(r"(X11|xcb)/", include):
        return "x11" in words and source.suffix == ".cpp"
    if re.match(r"Q[A-Z]|Qt[A-Z]|qt", name) or include.startswith("Qt"):
        return "qt" in words or ("qtvalue" in words and name in QT_VALUE) or ("qtcore" in words and name in QT_COMPUTING)
    if "std" in words and ("." not in include or POSIX.match(include)):
        return True
    return any(include.startswith(w) for w in words)


def project_sources(root):
    """The text of every source file by its path from the root."""
    texts = {}
    for source in sorted(root.rglob("*")):
        relative = source.relative_to(root).as_posix()
        if source.suffix in SOURCES and not relative.startswith("build/"):
            texts[relative] = source.read_text(errors="replace")
    return texts


def headers_of_types(texts):
    """The headers that define each type at the left margin, that is in a namespace."""
    headers = {}
    for path, text in texts.items():
        if not path.endswith((".h", ".hpp")):
            continue
        for line in text.splitlines():
            if match := DEFINITION.match(line):
                headers.setdefault(match[1], []).append(path)
    return headers


def main():
    root = pathlib.Path(sys.argv[1] if len(sys.argv) > 1 else ".")
    rules = read_rules(root / "tools/layers.txt")
    texts = project_sources(root)
    headers = headers_of_types(texts)
    breaches = 0
    for relative, text in texts.items():
        source = pathlib.PurePosixPath(relative)
        rule = max((p for p in rules if relative.startswith(p)), key=len, default=None)
        if rule is None:
            print(f"{relative}: no rule for this folder")
            breaches += 1
            continue
        for number, line in enumerate(text.splitlines(), 1):
            match = re.match(r'\s*#\s*include\s*([<"])([^>"]+)', line)
            if match and not is_allowed(source, match[2], match[1] == "<", rules[rule]):
                print(f"{relative}:{number}: '{rule}' may not include {match[2]}")
                breaches += 1
            declared = FORWARD.match(line)
            homes = headers.get(declared[1], []) if declared else []
            if homes and not any(is_allowed(source, home, False, rules[rule]) for home in homes):
                print(f"{relative}:{number}: '{rule}' may not name {declared[1]} of {homes[0]}")
                breaches += 1
    print(f"check_layers: {len(texts)} files, {len(rules)} rules, {breaches} breach(es)")
    return 1 if breaches or not texts else 0


if __name__ == "__main__":
    sys.exit(main())
