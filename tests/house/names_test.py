#!/usr/bin/env python3
"""The name map must follow the rule, and its check must find differences: each case is a header and its entries in the map."""
import pathlib
import subprocess
import sys
import tempfile

NAMES = pathlib.Path(__file__).resolve().parents[2] / "tools/names.py"
ROWS = [
    ("laterParametersAreLaterKeywords", "void doMessageLog(const QString& message, bool bringFront);",
     "| `doMessageLog:bringFront:` | `void doMessageLog(const QString& message, bool bringFront)` |"),
    ("noParametersNoColon", "[[nodiscard]] virtual Boxed Done() const { return Done_; }", "| `Done` | `Boxed Done() const` |"),
    ("defaultArgumentIsLeftOut", "void clearLog(Sender sender = {});", "| `clearLog:` | `void clearLog(Sender sender)` |"),
    ("outPointerKeepsItsName", "Url urlForBookmark(const std::optional<Bytes>& bookmark,\n    bool* isStale) const;",
     "| `urlForBookmark:isStale:` | `Url urlForBookmark(const std::optional<Bytes>& bookmark, bool* isStale) const` |"),
    ("soleParameterNeedsNoName", "virtual void hook(const Notification&) {}", "| `hook:` | `void hook(const Notification&)` |"),
    ("commentGivesTheSelector", "explicit MWView(const Rect& frame); // selector: initWithFrame:",
     "| `initWithFrame:` | `MWView(const Rect& frame)` |"),
    ("constructorWithoutCommentIsNotListed", "explicit MWView(const Rect& frame) : frame_(frame) {}", None),
    ("commentTakesANameOut", "void helper(); // selector: none", None),
    ("privateNamesAreNotListed", "private:\n    void hidden();", None),
    ("fieldsAreNotListed", "std::function<void(int)> handler_;\n    KVProperty<Boxed> Done_{*this, u\"Done(\"};", None),
    ("functionTypesInParametersPass", "void begin(std::function<void(int code)> handler, Window* window);",
     "| `begin:window:` | `void begin(std::function<void(int code)> handler, Window* window)` |"),
]
failed = 0


def expect(name, condition, detail=""):
    global failed
    if not condition:
        print(f"{name}: {detail}")
        failed += 1


def run(root, *arguments):
    return subprocess.run([sys.executable, NAMES, *arguments, root], capture_output=True, text=True)


def tree(root, header):
    top = pathlib.Path(root)
    for folder in ("base", "frame", "app", "docs"):
        (top / folder).mkdir(exist_ok=True)
    (top / "frame/MWView.h").write_text(header)
    return top / "docs/NAMES.md"


def in_class(member):
    return f"namespace quillow {{\nclass Other;\nclass MWView : public KVObject {{\npublic:\n    {member}\n}};\n}}\n"


for name, member, row in ROWS:
    with tempfile.TemporaryDirectory() as root:
        page = tree(root, in_class(member))
        done = run(root)
        rows = [r for r in page.read_text().splitlines() if r.startswith("| `")] if page.exists() else []
        expect(name, done.returncode == 0 and rows == ([row] if row else []), f"{done.returncode} {rows} {done.stderr}")

with tempfile.TemporaryDirectory() as root:
    page = tree(root, in_class("void first();"))
    expect("missingPageIsCaught", run(root, "--check").returncode == 1)
    expect("checkWritesNothing", not page.exists())
    run(root)
    expect("freshPagePasses", run(root, "--check").returncode == 0)
    tree(root, in_class("void first(Sender sender);"))
    check = run(root, "--check")
    expect("changedHeaderIsCaught", check.returncode == 1 and "+| `first:`" in check.stdout, check.stdout)
    tree(root, in_class("void first();"))
    page.write_text(page.read_text().replace("`first`", "`First`"))
    expect("changedPageIsCaught", run(root, "--check").returncode == 1)

for name, header in [("unnamedLaterParameterIsAMistake", in_class("void f(int a, int);")),
                     ("freeFunctionWithoutCommentIsAMistake", "namespace quillow {\nint f(int a);\n}\n")]:
    with tempfile.TemporaryDirectory() as root:
        tree(root, header)
        expect(name, run(root).returncode == 2)

print(f"{len(ROWS) + 7} cases, {failed} failed")
sys.exit(1 if failed else 0)
