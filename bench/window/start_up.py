#!/usr/bin/env python3
"""start_up.py [--checked] PROGRAM EMPTY_WINDOW [RUNS]: compares the program's start-up with that of another window.

Run it under tests/gui/session.py. Starts both programs in turns and prints the least values of all runs, and
ratios: wall time until the window manager has the window and until the window's middle is painted, CPU time until
the program is idle, and its proportional set size (PSS) then. With --checked the program finds that it has looked for
a newer release today.
"""
import ctypes
import datetime
import os
import pathlib
import signal
import subprocess
import sys
import time

REST_SECONDS = 0.5  # a program without CPU use for so long is idle
BETWEEN_LOOKS = 0.0005


class Screen:
    """The pixels of the display's root window."""
    ALL_PLANES = 0xFFFFFFFF
    Z_PIXMAP = 2

    def __init__(self):
        self.library = ctypes.CDLL("libX11.so.6")
        for name in ("XOpenDisplay", "XGetImage"):
            getattr(self.library, name).restype = ctypes.c_void_p
        self.library.XDefaultRootWindow.restype = ctypes.c_ulong
        self.library.XGetPixel.restype = ctypes.c_ulong
        self.display = ctypes.c_void_p(self.library.XOpenDisplay(None))
        self.root = ctypes.c_ulong(self.library.XDefaultRootWindow(self.display))

    def pixel(self, x, y):
        image = ctypes.c_void_p(self.library.XGetImage(self.display, self.root, x, y, 1, 1, ctypes.c_ulong(self.ALL_PLANES),
                                                       self.Z_PIXMAP))
        value = self.library.XGetPixel(image, 0, 0)
        self.library.XDestroyImage(image)
        return value


def clients(watcher):
    return watcher.stdout.readline().split("#")[-1].strip()


def cpu_seconds(pid):
    return time.clock_gettime((~pid << 3) | 2)  # the process's CPU clock, as clock_getcpuclockid(3) makes it


def pss_mib(pid):
    for line in pathlib.Path(f"/proc/{pid}/smaps_rollup").read_text().splitlines():
        if line.startswith("Pss:"):
            return int(line.split()[1]) / 1024
    return 0.0


def run(program, screen, middle):
    """(ms to the window, ms to its first painting, ms of CPU until idle, MiB when idle) of one start."""
    watcher = subprocess.Popen(["xprop", "-root", "-spy", "_NET_CLIENT_LIST"], stdout=subprocess.PIPE, text=True)
    while clients(watcher):
        pass  # the window of the previous run is still listed
    blank = screen.pixel(*middle)
    begin = time.monotonic()
    process = subprocess.Popen([program], stdin=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    while not clients(watcher):
        pass
    shown = time.monotonic() - begin
    while screen.pixel(*middle) == blank:
        time.sleep(BETWEEN_LOOKS)
    painted = time.monotonic() - begin
    used, since = cpu_seconds(process.pid), time.monotonic()
    while time.monotonic() - since < REST_SECONDS:
        time.sleep(0.05)
        if (now := cpu_seconds(process.pid)) - used > 0.0005:
            used, since = now, time.monotonic()
    memory = pss_mib(process.pid)
    process.send_signal(signal.SIGTERM)
    process.wait()
    watcher.terminate()
    watcher.wait()
    return shown * 1000, painted * 1000, used * 1000, memory


def store_check_of_today():
    folder = pathlib.Path(os.environ["XDG_CONFIG_HOME"], "org.quillow.Quillow")
    folder.mkdir(parents=True, exist_ok=True)
    now = datetime.datetime.now(datetime.timezone.utc).strftime("%Y-%m-%dT%H:%M:%S.000Z")
    (folder / "defaults.ini").write_text(f"[General]\nlastCheckDateForUpdate=t:{now}\n")


def main():
    arguments = sys.argv[1:]
    # As in most sessions: no assistive tool runs.
    os.environ.pop("QT_LINUX_ACCESSIBILITY_ALWAYS_ON", None)
    if arguments[0] == "--checked":
        arguments.pop(0)
        store_check_of_today()
    program, empty = arguments[:2]
    runs = int(arguments[2]) if len(arguments) > 2 else 7
    width, height = (int(n) for n in os.environ["SCREEN_SIZE"].split("x"))
    screen = Screen()
    least = {program: None, empty: None}
    for _ in range(runs):
        for one in least:
            now = run(one, screen, (width // 2, height // 2))
            least[one] = now if least[one] is None else tuple(map(min, least[one], now))
    print(f"{'':24}{'program':>10}{'empty':>10}{'ratio':>8}")
    titles = ("ms to the window", "ms to its painting", "ms of CPU to rest", "MiB (PSS) at rest")
    for title, ours, theirs in zip(titles, least[program], least[empty]):
        print(f"{title:24}{ours:10.1f}{theirs:10.1f}{ours / theirs:8.2f}")


if __name__ == "__main__":
    main()
