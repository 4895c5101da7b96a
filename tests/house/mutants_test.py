#!/usr/bin/python3
"""Runs tools/mutants.py on a small project: it must find the changes that no test notices, and no others."""
import json
import pathlib
import random
import subprocess
import sys
import tempfile
import unittest
import unittest.mock

TOOLS = pathlib.Path(__file__).resolve().parents[2] / "tools"
sys.path.insert(0, str(TOOLS))
from mutants import runs, sites  # noqa: E402

SOURCE = """#include "base/Example.h"
static_assert(sizeof(int) == 4);
enum class Size { small = 3 };
constexpr int kLimit = 7;

int tested(int value) {
    if (value < 10) return 1;
    return 2;
}
int halfTested(int value) {
    return value > 5 ? 1 : 0;
}
int reachedByNoTest(int value) {
    value *= 2;
    return value;
}
const char* doesNotCompile() {
    return 0;
}
"""
PROJECT = {
    "base/Example.h": "int tested(int); int halfTested(int); int reachedByNoTest(int); const char* doesNotCompile();\n",
    "base/Example.cpp": SOURCE,
    "base/WordTables.cpp": "int generated() { return 5; }\n",
    "ExampleTest.cpp": """#include "base/Example.h"
#include <gtest/gtest.h>
TEST(Example, belowTheLimit) { EXPECT_EQ(tested(9), 1); }
TEST(Example, atTheLimit) { EXPECT_EQ(tested(10), 2); }
TEST(Example, farAbove) { EXPECT_EQ(halfTested(100), 1); }
TEST(Example, failsAlways) { FAIL() << tested(1); }
""",
    "CMakeLists.txt": """cmake_minimum_required(VERSION 3.25)
project(example LANGUAGES CXX)
set(CMAKE_CXX_STANDARD 20)
add_compile_options(-Wall -Wextra -Wconversion -Werror)
find_package(GTest REQUIRED)
include(GoogleTest)
enable_testing()
add_executable(example_test ExampleTest.cpp base/Example.cpp base/WordTables.cpp)
target_include_directories(example_test PRIVATE ${CMAKE_SOURCE_DIR})
target_link_libraries(example_test PRIVATE GTest::gtest_main)
gtest_discover_tests(example_test)
""",
    "CMakePresets.json": json.dumps({"version": 6, "configurePresets": [
        {"name": "release", "generator": "Ninja", "binaryDir": "${sourceDir}/build/release"}]}),
    "tools/mutants/equivalent.txt": """# Reviewed.

base/Example.cpp: > becomes >= in value > 5
    An example.
base/Example.cpp: dropped: removedSince()
    An example of changed code.
base/Gone.cpp: dropped: f()
    An example of a removed file.
""",
}


def find(text):
    return sites.find_sites("a.cpp", "a.cpp", text.encode(), ["-x", "c++", "-std=c++20"])


def changes(text):
    return [site.change for site in find(text)]


class Sites(unittest.TestCase):
    def test_every_kind_is_found(self):
        text = "void f(); void g(); void h(int a) { f(); g(); if (a < 5) a = 3; }"
        self.assertEqual(set(changes(text)), {
            "exchanged: f(); / g();", "exchanged: g(); / if (a < 5) a = 3;", "dropped: f()", "dropped: g()", "dropped: a = 3",
            "negated: a < 5", "< becomes <= in a < 5", f"5 becomes 5 + 1 in {text}", f"3 becomes 3 + 1 in {text}"})

    def test_what_is_settled_at_compile_time_is_left_alone(self):
        text = """static_assert(1 < 2); enum { a = 3 }; constexpr int b = 4; constexpr int c() { return 5; }
                  template <int n> int d() { return n; }
                  int e(int x) { switch (x) { case 6: return x; } if constexpr (b == 7) return d<8>(); return x; }"""
        self.assertEqual(changes(text), [])

    def test_a_named_constant_is_changed_where_it_is_used(self):
        text = "constexpr int kWidth = 4;\n  int f() { return kWidth; }"
        self.assertEqual(changes(text), ["kWidth becomes kWidth + 1 in int f() { return kWidth; }"])

    def test_equal_changes_are_told_apart(self):
        self.assertEqual(changes("int f(int a) { a = 0; a = 0; return a; }"), [
            "dropped: a = 0", "0 becomes 0 + 1 in int f(int a) { a = 0; a = 0; return a; }",
            "dropped: a = 0 (2)", "0 becomes 0 + 1 in int f(int a) { a = 0; a = 0; return a; } (2)"])

    def test_a_text_keeps_its_length(self):
        text = 'const char* f() { return "{abc}"; }'
        site, = find(text)
        site.number = 1
        self.assertIn('(::mutant::on(1) ? "Xabc}" : "{abc}")', sites.written(text.encode(), [site], "s.h").decode())

    def test_an_equality_is_turned_round_once(self):
        self.assertEqual(changes("bool f(int a, int b) { if (a == b) return a; return b; }"), ["== becomes != in a == b"])

    def test_nested_changes_are_all_written(self):
        text = "void f(int); void g(int a) { f(a < 5); f(6); }"
        chosen = sites.pick(find(text), 100, random.Random(1))
        for number, site in enumerate(chosen, 1):
            site.number = number
        written = sites.written(text.encode(), chosen, "s.h").decode()
        self.assertEqual({site.number for site in chosen}, {n for n in range(1, 100) if f"::mutant::on({n})" in written})

    def test_a_statement_is_moved_with_its_semicolon(self):
        text = "struct S { int a; }; S f(int b) { if (b < 1) return S{1}; if (b < 2) return S{2}; return S{3}; }"
        site, = [s for s in find(text) if s.kind == "exchange"]
        site.number = 1
        self.assertIn("if (::mutant::on(1)) { if (b < 2) return S{2}; if (b < 1) return S{1}; } else",
                      sites.written(text.encode(), [site], "s.h").decode())

    def test_chosen_changes_never_lie_half_over_one_another(self):
        text = "void f(); void g() { f(); ::f(); f (); }"
        for seed in range(20):
            chosen = [s for s in sites.pick(find(text), 100, random.Random(seed)) if s.kind == "exchange"]
            self.assertEqual(len(chosen), 1)


class Runs(unittest.TestCase):
    def test_a_run_without_end_is_ended(self):
        case = runs.Case({"name": "endless", "command": ["sleep", "1000"]})
        self.assertEqual(runs.run(case.command, case, 0.2), "hung")

    def test_a_very_deep_folder_that_a_run_leaves_is_removed(self):
        make = "import os, sys\nfor i in range(1200): os.mkdir('d'); os.chdir('d')\nprint(i)"
        with tempfile.TemporaryDirectory() as parent, unittest.mock.patch.object(tempfile, "tempdir", parent):
            case = runs.Case({"name": "deep", "command": ["sh", "-c", f'cd "$HOME" && exec {sys.executable} -c "$1"', "-", make]})
            self.assertEqual(runs.run(case.command, case, 60), "passed")
            self.assertEqual(list(pathlib.Path(parent).iterdir()), [])


class WholeTool(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = tempfile.TemporaryDirectory()
        cls.root = pathlib.Path(cls.folder.name)
        for name, text in PROJECT.items():
            (cls.root / name).parent.mkdir(parents=True, exist_ok=True)
            (cls.root / name).write_text(text)
        cls.done = cls.run_tool("--count", "100")

    @classmethod
    def tearDownClass(cls):
        cls.folder.cleanup()

    @classmethod
    def run_tool(cls, *options):
        return subprocess.run([TOOLS / "mutants.py", "--root", cls.root, *options], capture_output=True, text=True)

    def test_it_succeeds_though_mutants_survive(self):
        self.assertEqual(self.done.returncode, 0, self.done.stderr)

    def test_just_the_unnoticed_changes_are_listed(self):
        lines = [line for line in self.done.stdout.splitlines()[:-1] if not line.startswith("equivalent.txt")]
        listed = sorted(" ".join(line.split()) for line in lines)
        self.assertEqual(listed, [
            "base/Example.cpp:11 0 becomes 0 + 1 in return value > 5 ? 1 : 0; no test reaches it",
            "base/Example.cpp:11 5 becomes 5 + 1 in return value > 5 ? 1 : 0; reached by 1",
            "base/Example.cpp:14 2 becomes 2 + 1 in value *= 2; no test reaches it",
            "base/Example.cpp:14 dropped: value *= 2 no test reaches it"])

    def test_explanations_of_mutants_that_do_not_exist_are_listed(self):
        stale = ["equivalent.txt explains a mutant that does not exist: base/Example.cpp: dropped: removedSince()",
                 "equivalent.txt explains a mutant that does not exist: base/Gone.cpp: dropped: f()"]
        self.assertEqual([line for line in self.done.stdout.splitlines() if line.startswith("equivalent.txt")], stale)
        alone = self.run_tool("--stale")
        self.assertEqual((alone.returncode, alone.stdout.splitlines()), (1, stale))

    def test_the_summary_counts_everything(self):
        self.assertEqual(self.done.stdout.splitlines()[-1],
                         "made 12, killed 7 (0 by the time limit), survived 4, explained 1; 1 did not compile")

    def test_a_test_that_fails_anyhow_kills_nothing(self):
        self.assertIn("left out, fails without a mutant: Example.failsAlways", self.done.stderr)

    def test_the_project_itself_is_not_touched(self):
        self.assertEqual((self.root / "base/Example.cpp").read_text(), SOURCE)

    def test_the_survivors_can_be_run_again(self):
        again = self.run_tool("--again", self.root / "build/mutants/survivors.json")
        self.assertTrue(again.stdout.splitlines()[-1].startswith("made 4, killed 0"), again.stdout + again.stderr)

    def test_the_same_seed_makes_the_same_mutants(self):
        first, second = (self.run_tool("--list", "--count", "4", "--seed", "3").stdout for _ in range(2))
        self.assertEqual(first, second)
        self.assertEqual(len(first.splitlines()), 4)


if __name__ == "__main__":
    unittest.main()
