"""The scratch copy of the tree: updates it, replaces some sources by changed ones, configures and builds it.

The copy keeps the time stamp of every unchanged file, so that a second run builds only what has changed.
"""
import json
import os
import pathlib
import re
import shlex
import shutil
import subprocess
import sys

LEFT_OUT = {".git", "build", "out", "__pycache__"}
MENTION = re.compile(r"^(?:\.\./)*(?P<path>[^\s:]+):(?P<line>\d+):(?:\d+:)? (?P<what>error|fatal error|note|warning|  required)",
                     re.M)
# Every changed source includes this first. It disables warnings that changed code causes; the project makes them errors.
SWITCH = """#pragma once
#pragma GCC diagnostic ignored "-Wall"
%s
#include <cstdlib>
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>
namespace mutant {
struct Switches {
    int active = 0;                   // QUILLOW_MUTANT: the number of the mutant that is on
    unsigned char* reached = nullptr; // QUILLOW_MUTANTS_REACHED: a file of one byte a mutant, set where its place is passed
    long size = 0;
    Switches() {
        if (const char* number = std::getenv("QUILLOW_MUTANT")) active = std::atoi(number);
        const char* name = std::getenv("QUILLOW_MUTANTS_REACHED");
        const int file = name ? ::open(name, O_RDWR | O_CLOEXEC) : -1;
        if (file < 0) return;
        struct ::stat status;
        ::fstat(file, &status);
        void* const bytes = ::mmap(nullptr, status.st_size, PROT_READ | PROT_WRITE, MAP_SHARED, file, 0);
        ::close(file);
        if (bytes == MAP_FAILED) return;
        reached = static_cast<unsigned char*>(bytes);
        size = status.st_size;
    }
};
inline bool on(int number) {
    static const Switches switches;
    if (number < switches.size) switches.reached[number] = 1;
    return switches.active == number;
}
} // namespace mutant
"""
WARNINGS = """unused-value unused-variable unused-but-set-variable unused-function unused-parameter parentheses conversion
sign-conversion float-conversion sign-compare bool-compare bool-operation int-in-bool-context type-limits tautological-compare logical-op
extra implicit-fallthrough array-bounds stringop-overflow stringop-overread nonnull return-type dangling-else empty-body
misleading-indentation shadow maybe-uninitialized uninitialized address null-dereference overflow div-by-zero
strict-overflow unused-result clobbered free-nonheap-object aggressive-loop-optimizations use-after-free dangling-pointer
pedantic pragmas comment narrowing"""


class Scratch:
    def __init__(self, root, folder, preset, jobs):
        self.root, self.tree, self.preset, self.jobs = pathlib.Path(root), pathlib.Path(folder) / "tree", preset, jobs
        self.build = self.tree / "build" / preset
        self.header = self.tree / "build" / "MutantSwitch.h"

    def update(self, changed):
        """Makes the copy equal to the tree, except for the `changed` texts (by path)."""
        kept = set()
        for top, folders, names in os.walk(self.root):
            folders[:] = [f for f in folders if f not in LEFT_OUT]
            for name in names:
                source = pathlib.Path(top, name)
                path = source.relative_to(self.root).as_posix()
                if name in LEFT_OUT:
                    continue
                kept.add(path)
                target = self.tree / path
                if source.is_symlink():
                    if not target.is_symlink():
                        target.parent.mkdir(parents=True, exist_ok=True)
                        target.symlink_to(os.readlink(source))
                    continue
                put(target, changed.get(path) or source.read_bytes())
                shutil.copymode(source, target)
        for top, folders, names in os.walk(self.tree):
            folders[:] = [f for f in folders if f not in LEFT_OUT]
            for name in names:
                path = pathlib.Path(top, name)
                if path.relative_to(self.tree).as_posix() not in kept:
                    path.unlink()
        put(self.header, (SWITCH % "\n".join('#pragma GCC diagnostic ignored "-W%s"' % w for w in WARNINGS.split())).encode())

    def configure(self):
        """Configures the copy; returns the compiler's arguments by source path."""
        command = ["cmake", "--preset", self.preset, "-DQUILLOW_TESTS=ON", "-DCMAKE_EXPORT_COMPILE_COMMANDS=ON"]
        done = subprocess.run(command, cwd=self.tree, capture_output=True, text=True)
        if done.returncode:
            sys.exit("mutants.py: the scratch copy cannot be configured:\n" + done.stdout + done.stderr)
        found = {}
        for entry in json.loads((self.build / "compile_commands.json").read_text()):
            words = shlex.split(entry["command"])
            arguments = [w for w in words if w.startswith(("-D", "-I", "-std")) or "/include" in w and not w.startswith("-")]
            arguments = ["-isystem" + w if not w.startswith("-") else w for w in arguments]
            path = pathlib.Path(entry["file"])
            if path.is_relative_to(self.tree):
                found[path.relative_to(self.tree).as_posix()] = ["-x", "c++", "-std=c++20", "-ferror-limit=0", *arguments]
        return found

    def make(self):
        """Builds everything; returns the compiler's messages, empty after success."""
        done = subprocess.run(["ninja", "-k", "0", "-j", str(self.jobs)], cwd=self.build, capture_output=True, text=True)
        return done.stdout + done.stderr if done.returncode else ""

    def places(self, complaints):
        """The (path, line) of the errors, and the (path, line) of all places in the compiler's messages."""
        errors, mentioned = set(), set()
        for match in MENTION.finditer(complaints):
            path = match["path"].removeprefix(str(self.tree) + "/")
            mentioned.add((path, int(match["line"])))
            if "error" in match["what"]:
                errors.add((path, int(match["line"])))
        return errors, mentioned


def put(path, data):
    """Writes a file unless it has this content already."""
    if path.is_file() and path.read_bytes() == data:
        return
    path.parent.mkdir(parents=True, exist_ok=True)
    if path.is_symlink():
        path.unlink()
    path.write_bytes(data)


def numbers_at(text, lines):
    """The mutants with switches on these lines of a written source. A line without any counts as the nearest one above."""
    rows = [{int(n) for n in re.findall(rb"::mutant::on\((\d+)\)", row)} for row in text.split(b"\n")]
    found = set()
    for line in lines:
        found |= next((numbers for numbers in reversed(rows[:line]) if numbers), set())
    return found
