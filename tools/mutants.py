#!/usr/bin/python3
"""mutants.py [--seed N] [--count N] [--only PATH]... [--gui] [--list | --stale] [--again FILE]: finds code changes that no test notices.

Makes small random changes (mutants) in the sources of the folders below, runs the tests that execute the changed place, and lists
the mutants that pass all of them. A mutant is two statements exchanged, a call or assignment dropped, a condition negated, a
comparison or a constant changed. Each survivor needs a test, or an entry in tools/mutants/equivalent.txt that says why no test can
distinguish it from the original. Entries that match no place in the sources any more are reported.

All mutants are compiled into one scratch copy of the tree, build/mutants/tree, behind a switch that is read at run time; those that
do not compile are dropped. One run of each test case without a mutant records the places that it executes. Constant expressions,
headers, generated tables and types are not changed: a switch at run time cannot change them, or too much would be rebuilt.

  --seed N      seed of the random choice (1)
  --count N     about how many mutants, distributed over the files by their number of lines (40)
  --only PATH   only in this folder or file; may be repeated
  --gui         also runs the tests on a private X server, the only ones that reach most of program/; they take minutes
  --list        prints the mutants and does not build them
  --stale       only reports the entries of equivalent.txt that match no place; the exit status is 1 if there are any
  --again FILE  the mutants of an earlier run's table (build/mutants/survivors.json) instead of new ones
  --jobs N      number of parallel builds and runs (the number of cores)

Prints a table of the survivors and a summary, and writes build/mutants/survivors.json. The exit status is 0 unless the tool failed.
Needs the package set "mutants" of tools/install-packages.sh, and Debian's own Python, for clang's bindings.
"""
import argparse
import concurrent.futures
import json
import os
import pathlib
import random
import sys

from mutants import runs, scratch, sites

FOLDERS = ("app", "frame", "prefs", "util", "base", "program", "cli", "text")
GENERATED = "Tables.cpp"
ROUNDS = 25


def say(text):
    print(text, file=sys.stderr, flush=True)


def sources(root, only, compiled):
    """The sources that may be changed, with their numbers of lines."""
    found = {}
    for folder in FOLDERS:
        for path in sorted((root / folder).glob("*.cpp")):
            name = path.relative_to(root).as_posix()
            wanted = not only or any(name == o.rstrip("/") or name.startswith(o.rstrip("/") + "/") for o in only)
            if wanted and name in compiled and not name.endswith(GENERATED):
                found[name] = path.read_bytes().count(b"\n")
    return found


def shares(lines, count, chance):
    """How many mutants each file gets: one per fixed number of lines, from a random first line."""
    step = sum(lines.values()) / count
    at, share, passed = chance.uniform(0, step), {}, 0
    for name, size in lines.items():
        passed += size
        while at < passed:
            share[name] = share.get(name, 0) + 1
            at += step
    return share


def find_all(names, root, tree, arguments, jobs):
    """The sites of each file. Runs in parallel, because parsing a file takes seconds."""
    with concurrent.futures.ProcessPoolExecutor(jobs) as pool:
        found = {name: pool.submit(sites.find_sites, name, str(tree / name), (root / name).read_bytes(), arguments[name])
                 for name in names}
        return {name: future.result() for name, future in found.items()}


def choose(options, root, tree, arguments):
    """The seeded mutants, or those of an earlier table, numbered from 1; and all sites of the files that were looked at."""
    if options.again:
        wanted = {tuple(row["key"]) for row in json.loads(pathlib.Path(options.again).read_text())}
        names = sorted({key[0] for key in wanted} & set(arguments))
        names = [n for n in names if not options.only or n in sources(root, options.only, arguments)]
        found = find_all(names, root, tree, arguments, options.jobs)
        chosen = []
        for name in names:
            mine = []
            for site in found[name]:
                if site.key in wanted and sites.fits(site, mine):
                    mine.append(site)
            chosen += mine
    else:
        lines = sources(root, options.only, arguments)
        if not lines:
            sys.exit("mutants.py: no source to change")
        share = shares(lines, options.count, random.Random(options.seed))
        found = find_all(share, root, tree, arguments, options.jobs)
        chosen, owed = [], 0
        for name, count in share.items():
            picked = sites.pick(found[name], count + owed, random.Random("%d %s" % (options.seed, name)))
            owed += count - len(picked)
            chosen += sorted(picked, key=lambda s: s.start)
    for number, site in enumerate(chosen, 1):
        site.number = number
    return chosen, found


def write_and_build(copy, root, chosen):
    """Builds the copy with the mutants; returns those that compile."""
    say("building the mutants")
    alive = {site.number: site for site in chosen}
    for _ in range(ROUNDS):
        changed = {}
        for name in sorted({site.path for site in alive.values()}):
            mine = [site for site in alive.values() if site.path == name]
            changed[name] = sites.written((root / name).read_bytes(), mine, copy.header)
        copy.update(changed)
        complaints = copy.make()
        if not complaints:
            return list(alive.values())
        errors, mentioned = copy.places(complaints)
        for places in (errors, mentioned):
            dropped = set()
            for name, text in changed.items():
                dropped |= scratch.numbers_at(text, [line for path, line in places if path == name])
            if dropped:
                break
        if not dropped:
            sys.exit("mutants.py: the copy does not build:\n" + complaints[-8000:])
        for number in dropped:
            alive.pop(number, None)
    sys.exit("mutants.py: the mutants do not build after %d rounds" % ROUNDS)


def read_equivalents(path):
    """Reads the reviewed mutants without a visible effect: "FILE: CHANGE", and the reason in an indented line below."""
    found, awaited = set(), False
    for line in path.read_text().splitlines() if path.exists() else []:
        if not line or line.startswith("#"):
            continue
        if line.startswith(" ") != awaited:
            sys.exit(f"mutants.py: {path}: {'this mutant has no reason' if awaited else 'this reason has no mutant'}: "
                     + (previous if awaited else line))
        if not awaited:
            found.add(tuple(line.split(": ", 1)))
        awaited, previous = not awaited, line
    return found


def stale_entries(equivalents, root, found):
    """The explained mutants whose file is gone, or is among the `found` sites by file and has no such site."""
    there = {site.key for found_here in found.values() for site in found_here}
    return sorted(key for key in equivalents if key not in there and (key[0] in found or not (root / key[0]).exists()))


def say_stale(entries):
    for path, change in entries:
        print(f"equivalent.txt explains a mutant that does not exist: {path}: {change}")


def report(made, verdicts, equivalents, dropped, output):
    survivors = [(site, verdicts[site.number][1]) for site in made if verdicts[site.number][0] == "survived"]
    explained = [site for site, _ in survivors if site.key in equivalents]
    survivors = [(site, count) for site, count in survivors if site.key not in equivalents]
    rows = [(f"{site.path}:{site.line}", site.change, f"reached by {count}" if count else "no test reaches it")
            for site, count in survivors]
    widths = [max((len(row[i]) for row in rows), default=0) for i in (0, 1)]
    for row in rows:
        print(f"{row[0]:{widths[0]}}  {row[1]:{widths[1]}}  {row[2]}")
    table = [{"key": site.key, "line": site.line, "tests": count} for site, count in survivors]
    output.write_text(json.dumps(table, indent=1) + "\n")
    killed = sum(1 for outcome, _ in verdicts.values() if outcome != "survived")
    hung = sum(1 for outcome, _ in verdicts.values() if outcome == "hung")
    print(f"made {len(made)}, killed {killed} ({hung} by the time limit), survived {len(survivors)}, "
          f"explained {len(explained)}; {dropped} did not compile")


def read_options():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--count", type=int, default=40)
    parser.add_argument("--only", action="append", default=[])
    parser.add_argument("--gui", action="store_true")
    parser.add_argument("--list", action="store_true")
    parser.add_argument("--stale", action="store_true")
    parser.add_argument("--again")
    parser.add_argument("--jobs", type=int, default=os.cpu_count())
    parser.add_argument("--root", type=pathlib.Path, default=pathlib.Path(__file__).resolve().parents[1], help=argparse.SUPPRESS)
    parser.add_argument("--preset", default="release", help=argparse.SUPPRESS)
    return parser.parse_args()


def main():
    options = read_options()
    root = options.root.resolve()
    folder = root / "build/mutants"
    copy = scratch.Scratch(root, folder, options.preset, options.jobs)
    if not copy.build.exists():
        copy.update({})
    arguments = copy.configure()
    equivalents = read_equivalents(root / "tools/mutants/equivalent.txt")
    if options.stale:
        names = {path for path, _ in equivalents} & set(arguments)
        entries = stale_entries(equivalents, root, find_all(names, root, copy.tree, arguments, options.jobs))
        say_stale(entries)
        return 1 if entries else 0
    chosen, found = choose(options, root, copy.tree, arguments)
    if options.list:
        for site in chosen:
            print(f"{site.path}:{site.line}: {site.change}")
        return 0
    made = write_and_build(copy, root, chosen)
    runner = runs.Runner(runs.read_cases(copy.build, options.gui), len(chosen) + 1, options.jobs, say)
    say(f"running {len(runner.cases)} tests without a mutant")
    runner.measure()
    say(f"running {len(made)} mutants")
    verdicts = {}
    by_number = {site.number: site for site in made}

    def note(number, verdict):
        verdicts[number] = verdict
        site = by_number[number]
        say(f"[{len(verdicts)}/{len(made)}] {verdict[0]} {site.path}:{site.line}: {site.change}")

    runner.judge_all(by_number, note)
    say_stale(stale_entries(equivalents, root, found))
    report(made, verdicts, equivalents, len(chosen) - len(made), folder / "survivors.json")
    return 0


if __name__ == "__main__":
    sys.exit(main())
