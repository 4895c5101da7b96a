"""Runs the tests of the scratch copy: records the places that each case executes, and whether the tests notice a mutant."""
import collections
import concurrent.futures
import contextlib
import json
import os
import signal
import subprocess
import tempfile
import threading
import time

# A mutant may allocate memory without end, so memory is limited. Signals that a background job ignores get their default action
# again, because tests send them.
LIMITS = ["env", "--default-signal", "prlimit", "--as=8589934592", "--core=0"]
# Added to the time of a run without a mutant, and a factor of it, because a busy machine is slow.
PATIENCE_SECONDS = 20
PATIENCE_FACTOR = 6


class Case:
    """A ctest case. Cases of one GoogleTest program can run in one process (`filter`)."""

    def __init__(self, entry):
        properties = {p["name"]: p["value"] for p in entry.get("properties", [])}
        self.name, self.command = entry["name"], entry["command"]
        self.folder = properties.get("WORKING_DIRECTORY")
        self.environment = dict(pair.split("=", 1) for pair in properties.get("ENVIRONMENT", []))
        self.on_screen = "gui" in properties.get("LABELS", [])
        self.filter = next((w.split("=", 1)[1] for w in self.command if w.startswith("--gtest_filter=")), None)
        self.seconds, self.reached = 0.0, set()


def read_cases(build, on_screen):
    """The cases that run programs of the build. Checks of the sources themselves execute no mutant."""
    done = subprocess.run(["ctest", "--show-only=json-v1"], cwd=build, capture_output=True, text=True, check=True)
    cases = [Case(entry) for entry in json.loads(done.stdout)["tests"] if entry.get("command")]
    return [c for c in cases if (on_screen and c.on_screen) or (not c.on_screen and c.command[0].startswith(str(build)))]


@contextlib.contextmanager
def temporary_folder():
    """A folder of any depth that is removed afterwards. Python's own removal fails on very deep folders."""
    path = tempfile.mkdtemp(prefix="mutant")
    try:
        yield path
    finally:
        subprocess.run(["rm", "-rf", path], stderr=subprocess.DEVNULL)


def run(command, case, seconds, **environment):
    """Runs a command; returns "passed", "failed" or "hung". Then ends its remaining processes and removes its files."""
    with temporary_folder() as home:
        variables = {**os.environ, "QT_QPA_PLATFORM": "offscreen", "GTEST_FAIL_FAST": "1", "HOME": home, "TMPDIR": home,
                     **case.environment, **environment}
        process = subprocess.Popen(LIMITS + command, cwd=case.folder, env=variables, stdin=subprocess.DEVNULL,
                                   stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, start_new_session=True)
        try:
            return "failed" if process.wait(seconds) else "passed"
        except subprocess.TimeoutExpired:
            return "hung"
        finally:
            try:
                os.killpg(process.pid, signal.SIGKILL)
            except ProcessLookupError:
                pass
            process.wait()


class Runner:
    def __init__(self, cases, size, jobs, say):
        self.cases, self.size, self.say = cases, size, say
        self.screen = threading.Lock()
        self.pool = concurrent.futures.ThreadPoolExecutor(jobs)

    def measure(self):
        """Runs each case once without a mutant and records the places that it executes. Leaves out cases that fail."""
        passed = list(self.pool.map(self.measure_one, self.cases))
        for case, good in zip(self.cases, passed):
            if not good:
                self.say("left out, fails without a mutant: " + case.name)
        self.cases = [case for case, good in zip(self.cases, passed) if good]

    def measure_one(self, case):
        with tempfile.NamedTemporaryFile() as file:
            file.truncate(self.size)
            with self.screen if case.on_screen else contextlib.nullcontext():
                begun = time.monotonic()
                outcome = run(case.command, case, 300, QUILLOW_MUTANTS_REACHED=file.name)
                case.seconds = time.monotonic() - begun
            case.reached = {number for number, byte in enumerate(file.read()) if byte}
        return outcome == "passed"

    def judge_all(self, numbers, report):
        """Runs the tests of each mutant; calls `report` with its number and verdict when they end."""
        futures = {self.pool.submit(self.judge, number): number for number in numbers}
        for future in concurrent.futures.as_completed(futures):
            report(futures[future], future.result())

    def judge(self, number):
        """Runs the tests that execute the mutant's place: (outcome, name of the failed program or number of cases)."""
        cases = [case for case in self.cases if number in case.reached]
        for runs in sorted(self.groups(cases), key=lambda runs: (runs[0].on_screen, sum(case.seconds for case in runs))):
            outcome = self.run_group(runs, number)
            if outcome != "passed":
                return outcome, runs[0].name.split(".")[0]
        return "survived", len(cases)

    @staticmethod
    def groups(cases):
        """Groups the cases of each GoogleTest program. Every other case is a group of its own."""
        groups = collections.defaultdict(list)
        for case in cases:
            groups[case.command[0] if case.filter else case.name].append(case)
        return list(groups.values())

    def run_group(self, cases, number):
        first = cases[0]
        command = first.command
        if first.filter:
            command = [command[0], "--gtest_filter=" + ":".join(case.filter for case in cases), "--gtest_also_run_disabled_tests"]
        seconds = PATIENCE_SECONDS + PATIENCE_FACTOR * sum(case.seconds for case in cases)
        if not first.on_screen:
            return run(command, first, seconds, QUILLOW_MUTANT=str(number))
        # GUI tests may fail by chance: only a second failure counts.
        with self.screen:
            outcome = run(command, first, seconds, QUILLOW_MUTANT=str(number))
            return outcome if outcome == "passed" else run(command, first, seconds, QUILLOW_MUTANT=str(number))
