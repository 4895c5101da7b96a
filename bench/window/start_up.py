#!/usr/bin/env python3
"""start_up.py PROGRAM EMPTY_WINDOW [RUNS]: compares the program's start-up time and memory with an empty Qt window's.

Run it under tests/gui/session.py. Starts both programs in turns and prints the least values of all runs, and
ratios: wall time until the window manager has the window, CPU time until the program is idle, and its proportional
set size (PSS) then.
"""
import os
import pathlib
import signal
import subprocess
import sys
import time

TICKS = os.sysconf("SC_CLK_TCK")
REST_SECONDS = 0.5  # a program without CPU use for so long is idle


def clients(watcher):
    return watcher.stdout.readline().split("#")[-1].strip()


def cpu_seconds(pid):
    fields = pathlib.Path(f"/proc/{pid}/stat").read_text().rsplit(") ", 1)[1].split()
    return (int(fields[11]) + int(fields[12])) / TICKS


def pss_mib(pid):
    for line in pathlib.Path(f"/proc/{pid}/smaps_rollup").read_text().splitlines():
        if line.startswith("Pss:"):
            return int(line.split()[1]) / 1024
    return 0.0


def run(program):
    """(milliseconds to the window, milliseconds of CPU until idle, MiB when idle) of one start."""
    watcher = subprocess.Popen(["xprop", "-root", "-spy", "_NET_CLIENT_LIST"], stdout=subprocess.PIPE, text=True)
    while clients(watcher):
        pass  # the window of the previous run is still listed
    begin = time.monotonic()
    process = subprocess.Popen([program], stdin=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    while not clients(watcher):
        pass
    shown = time.monotonic() - begin
    used, since = cpu_seconds(process.pid), time.monotonic()
    while time.monotonic() - since < REST_SECONDS:
        time.sleep(0.05)
        if (now := cpu_seconds(process.pid)) != used:
            used, since = now, time.monotonic()
    memory = pss_mib(process.pid)
    process.send_signal(signal.SIGTERM)
    process.wait()
    watcher.terminate()
    watcher.wait()
    return shown * 1000, used * 1000, memory


def main():
    program, empty = sys.argv[1:3]
    runs = int(sys.argv[3]) if len(sys.argv) > 3 else 7
    least = {program: None, empty: None}
    for _ in range(runs):
        for one in least:
            now = run(one)
            least[one] = now if least[one] is None else tuple(map(min, least[one], now))
    print(f"{'':24}{'program':>10}{'empty':>10}{'ratio':>8}")
    for title, ours, theirs in zip(("ms to the window", "ms of CPU to rest", "MiB (PSS) at rest"), least[program], least[empty]):
        print(f"{title:24}{ours:10.1f}{theirs:10.1f}{ours / theirs:8.2f}")


if __name__ == "__main__":
    main()
