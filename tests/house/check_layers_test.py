#!/usr/bin/env python3
"""The check of the layers must find violations: each small tree below contains one violation or none."""
import pathlib
import subprocess
import sys
import tempfile

CHECK = pathlib.Path(__file__).resolve().parents[2] / "tools/check_layers.py"
RULES = "engines/: std text/\nbase/: std qtvalue base/\nplatform/qt/: std qt x11 platform/\napp/: std base/ platform/ -platform/qt/\n"
CASES = [
    ("standardHeaderPasses", "engines/a.cpp", "#include <vector>", 0),
    ("ownFolderPasses", "base/a.cpp", '#include "base/b.h"', 0),
    ("engineMayNotIncludeQt", "engines/a.cpp", "#include <QString>", 1),
    ("engineMayNotIncludeApp", "engines/a.cpp", '#include "app/x.h"', 1),
    ("logicMayIncludeQtValues", "base/a.cpp", "#include <QString>", 0),
    ("logicMayNotIncludeQtServices", "base/a.cpp", "#include <QTimer>", 1),
    ("takenBackPrefixIsABreach", "app/a.cpp", '#include "platform/qt/x.h"', 1),
    ("portsPass", "app/a.cpp", '#include "platform/x.h"', 0),
    ("x11InASourcePasses", "platform/qt/a.cpp", "#include <X11/Xlib.h>", 0),
    ("x11InAHeaderIsABreach", "platform/qt/a.h", "#include <X11/Xlib.h>", 1),
    ("forwardDeclarationCountsAsAnInclude", "base/a.h", "class OfApp;", 1),
    ("forwardDeclarationOfAnOwnTypePasses", "base/a.h", "class OfBase;", 0),
    ("forwardDeclarationOfAForeignTypePasses", "base/a.h", "class QWidget;", 0),
    ("folderWithoutRuleIsABreach", "stray/a.cpp", "#include <vector>", 1),
]
TYPES = {"app/OfApp.h": "class OfApp final : public Base {", "base/OfBase.h": "struct OfBase {"}
failed = 0
for name, path, line, expected in CASES:
    with tempfile.TemporaryDirectory() as root:
        top = pathlib.Path(root)
        (top / "tools").mkdir()
        (top / "tools/layers.txt").write_text(RULES)
        for header, definition in TYPES.items():
            (top / header).parent.mkdir(parents=True)
            (top / header).write_text(definition + "\n")
        (top / path).parent.mkdir(parents=True, exist_ok=True)
        (top / path).write_text(line + "\n")
        done = subprocess.run([sys.executable, CHECK, root], capture_output=True, text=True)
        if done.returncode != expected:
            print(f"{name}: exit {done.returncode}, expected {expected}\n{done.stdout}")
            failed += 1
print(f"{len(CASES)} cases, {failed} failed")
sys.exit(1 if failed else 0)
