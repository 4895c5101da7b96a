#!/usr/bin/env python3
"""check_comments.py [--fix]: comment lines of C++ sources are at most 120 characters long. --fix wraps the paragraphs that have a
longer line. Generated tables are left out."""
import pathlib
import re
import subprocess
import sys
import textwrap

LIMIT = 120
COMMENT = re.compile(r"(\s*)(///?)( ?)(.*)$")
LIST_ITEM = re.compile(r"(?:[-*]|\d+\.) ")


def sources():
    listed = subprocess.run(["git", "ls-files", "*.h", "*.cpp"], capture_output=True, text=True, check=True).stdout
    return [pathlib.Path(name) for name in listed.splitlines() if not name.endswith("Tables.cpp")]


def is_comment(line):
    return line.lstrip().startswith("//")


def wrapped(lines):
    """The lines with every comment paragraph that is too wide wrapped again. A paragraph ends at a blank comment line, at an
    item of a list, and where the indent changes."""
    out = []
    at = 0
    while at < len(lines):
        match = COMMENT.match(lines[at])
        if not match or not is_comment(lines[at]):
            out.append(lines[at])
            at += 1
            continue
        prefix = match[1] + match[2]
        end = at + 1
        while end < len(lines) and match[4]:
            following = COMMENT.match(lines[end])
            if not following or following[1] + following[2] != prefix or not following[4] or not following[3]:
                break
            if following[4].startswith(" ") or LIST_ITEM.match(following[4]):
                break
            end += 1
        paragraph = lines[at:end]
        if any(len(line) > LIMIT for line in paragraph):
            text = " ".join(COMMENT.match(line)[4] for line in paragraph)
            paragraph = textwrap.wrap(text, LIMIT, initial_indent=prefix + " ", subsequent_indent=prefix + " ",
                                      break_long_words=False, break_on_hyphens=False)
        out += paragraph
        at = end
    return out


def main():
    fixes = "--fix" in sys.argv[1:]
    found = 0
    for path in sources():
        lines = path.read_text().splitlines()
        if fixes and any(is_comment(line) and len(line) > LIMIT for line in lines):
            lines = wrapped(lines)
            path.write_text("\n".join(lines) + "\n")
        for number, line in enumerate(lines, 1):
            if len(line) > LIMIT and is_comment(line):
                print(f"{path}:{number}: a comment line of {len(line)} characters")
                found += 1
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
