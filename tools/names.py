#!/usr/bin/env python3
"""names.py [--check] [ROOT]: writes docs/NAMES.md, the frame's names in selector form and in C++, from the headers
of base/, util/, frame/, prefs/ and app/. --check writes nothing and fails if the file and the headers differ.

The rule: a function f(a, b, c) is the selector "f:b:c:", f() is "f". The page lists the public functions of every
class, but a constructor or destructor only if a comment gives its selector. The comment follows the declaration, on
its last line (for a class or a function with a body: on the line of the opening brace):
    // selector: initWithFrame:    this selector instead of the rule's
    // selector: none              a name of our own, not listed; after a class: none of its names is listed
A free function must have such a comment, because its first parameter may be the instance.
"""
import difflib
import pathlib
import re
import sys

FOLDERS = ("base", "util", "frame", "prefs", "app")
HEADING = """# Names

The frame's names in selector form and in C++. Made by `tools/names.py` from the headers; do not edit. The rule: the first
keyword is the function's name, later keywords are the names of the later parameters; a property `p` is `p()` and `setP(v)`.
"""


class Mistake(Exception):
    pass


def without_comments(text):
    """The text with comments, strings and preprocessor lines blanked, and the selector comments by line number."""
    selectors = {}
    for number, line in enumerate(text.split("\n"), 1):
        if match := re.search(r"//\s*selector:\s*(\S+)", line):
            selectors[number] = match[1]
    def blank(match):
        return re.sub(r"[^\n]", " ", match[0])
    text = re.sub(r'//[^\n]*|/\*.*?\*/|"(?:\\.|[^"\\\n])*"', blank, text, flags=re.S)
    return re.sub(r"^[ \t]*#[^\n]*(?:\\\n[^\n]*)*", blank, text, flags=re.M), selectors


def closing(text, start):
    """Index of the bracket that closes the one at `start`."""
    pairs = {"(": ")", "{": "}"}
    opening, close, depth = text[start], pairs[text[start]], 0
    for i in range(start, len(text)):
        depth += (text[i] == opening) - (text[i] == close)
        if depth == 0:
            return i
    raise Mistake("unbalanced brackets")


def split_outside(text, separator):
    parts, depth, part = [], 0, ""
    for c in text:
        depth += (c in "<({[") - (c in ">)}]")
        if c == separator and depth == 0:
            parts.append(part)
            part = ""
        else:
            part += c
    return [p.strip() for p in parts + [part] if p.strip()]


def parameter_list(statement):
    """Start of the parameter list of a function declaration, or None if the statement does not declare a function."""
    depth = 0
    for i, c in enumerate(statement):
        depth += (c == "<") - (c == ">")
        if c == "=" and depth == 0:
            return None
        if c == "(" and depth == 0:
            return i if re.search(r"\w$", statement[:i].rstrip()) else None
    return None


def function_of(statement):
    """(name, parameter names, C++ form) of a function declaration, or None."""
    statement = " ".join(statement.split())
    statement = re.sub(r"\[\[[^\]]*\]\]\s*", "", statement)
    statement = re.sub(r"^template\s*<.*?>\s*", "", statement)
    if re.match(r"(friend|using|typedef|static_assert|extern template|enum)\b", statement) or "operator" in statement:
        return None
    start = parameter_list(statement)
    if start is None:
        return None
    end = closing(statement, start)
    tail = statement[end + 1:].strip()
    if re.search(r"=\s*delete", tail):
        return None
    name = re.search(r"~?\w+$", statement[:start].rstrip())[0]
    parameters = [split_outside(p, "=")[0] for p in split_outside(statement[start + 1:end], ",")]
    result = re.sub(r"^((virtual|explicit|static|inline|constexpr)\s+)*", "", statement[:start]).strip()
    static = "static " if re.match(r"((virtual|explicit|inline|constexpr)\s+)*static\b", statement) else ""
    const = " const" if re.match(r"const\b", tail) else ""
    names = [m[1] if (m := re.search(r"[\w>&*]\s*[\s&*](\w+)$", p)) else None for p in parameters]
    return name, names, f"{static}{result}({', '.join(parameters)}){const}"


def functions(path, text):
    """(class or None, selector, C++ form) for every listed function of a header."""
    text, selectors = without_comments(text)
    found = []
    scopes = []  # (kind, name, access, is listed)
    buffer, i, line = "", 0, 1

    def declare(statement):
        declaration = function_of(statement)
        inside_class = bool(scopes) and scopes[-1][0] == "class"
        if not declaration or (inside_class and (scopes[-1][2] != "public" or not scopes[-1][3])):
            return
        name, names, form = declaration
        owner = "::".join(s[1] for s in scopes if s[0] == "class") or None
        selector = selectors.get(line)
        if selector is None:
            if owner is None:
                raise Mistake(f"{path}:{line}: the free function {name} needs a selector comment")
            if name.lstrip("~") == scopes[-1][1]:
                return
            if None in names[1:]:
                raise Mistake(f"{path}:{line}: a parameter of {name} has no name")
            selector = name + (":" if names else "") + "".join(f"{n}:" for n in names[1:])
        if selector != "none":
            found.append((owner, selector, form))

    while i < len(text):
        c = text[i]
        if c == "(":
            end = closing(text, i)
            buffer += text[i:end + 1]
            line += text.count("\n", i, end)
            i = end
        elif c == ";":
            declare(buffer)
            buffer = ""
        elif c == "{":
            head = re.sub(r"^template\s*<.*?>\s*", "", " ".join(re.sub(r"\[\[[^\]]*\]\]", "", buffer).split()))
            if re.match(r"(inline )?namespace\b", head):
                scopes.append(("namespace", "", "public", True))
                buffer = ""
            elif match := re.match(r"(class|struct)\s+(\w+)", head):
                listed = all(s[3] and s[2] == "public" for s in scopes) and selectors.get(line) != "none"
                scopes.append(("class", match[2], "private" if match[1] == "class" else "public", listed))
                buffer = ""
            else:
                is_function = parameter_list(head) is not None
                if is_function:
                    declare(buffer)
                end = closing(text, i)
                line += text.count("\n", i, end)
                i = end
                if is_function:
                    buffer = ""
        elif c == "}":
            scopes.pop()
            buffer = ""
        elif c == ":" and buffer.strip() in ("public", "protected", "private"):
            kind, name, _, listed = scopes[-1]
            scopes[-1] = (kind, name, buffer.strip(), listed)
            buffer = ""
        else:
            buffer += c
            line += c == "\n"
        i += 1
    return found


def names_page(root):
    sections = []
    for folder in FOLDERS:
        for header in sorted((root / folder).rglob("*.h")):
            relative = header.relative_to(root).as_posix()
            found = functions(relative, header.read_text())
            for owner in dict.fromkeys(f[0] for f in found):
                title = f"## `{owner}` ({relative})" if owner else f"## {relative}"
                rows = [f"| `{selector}` | `{form}` |" for o, selector, form in found if o == owner]
                sections.append("\n".join([title, "", "| selector | C++ |", "|---|---|", *rows]))
    return HEADING + "\n" + "\n\n".join(sections) + "\n"


def main():
    arguments = [a for a in sys.argv[1:] if a != "--check"]
    root = pathlib.Path(arguments[0]) if arguments else pathlib.Path(__file__).resolve().parents[1]
    page = root / "docs/NAMES.md"
    try:
        made = names_page(root)
    except Mistake as mistake:
        print(f"names.py: {mistake}", file=sys.stderr)
        return 2
    if "--check" not in sys.argv:
        page.write_text(made)
        return 0
    old = page.read_text() if page.exists() else ""
    sys.stdout.writelines(
        difflib.unified_diff(old.splitlines(True), made.splitlines(True), "docs/NAMES.md", "the headers", n=1))
    if old != made:
        print("docs/NAMES.md and the headers differ; run tools/names.py")
    return 0 if old == made else 1


if __name__ == "__main__":
    sys.exit(main())
