#!/usr/bin/env python3
"""session.py [--size WxH] [--home DIR] [--desktop openbox|none|mutter|kwin] [--portal] -- COMMAND...: runs COMMAND in a private
session.

The session has a private X server, D-Bus session, desktop and home folder. All end with it. The exit code is that of COMMAND.
The D-Bus session starts the installed services, but portals only with --portal.

The desktop is a window manager of the X server, or a Wayland compositor that shows its screen as the server's only window and has
its own Xwayland. COMMAND is then still a client of the outer server, where it moves the pointer and takes pictures. The variables
for the compositor's clients are $NESTED_WAYLAND_DISPLAY, $NESTED_DISPLAY and $NESTED_XAUTHORITY.
"""
import argparse
import contextlib
import os
import shutil
import signal
import subprocess
import sys
import tempfile
import time

LIMIT_SECONDS = 60
SERVICES = "/usr/share/dbus-1/services"
BUS = """<busconfig><type>session</type><listen>unix:dir={folder}</listen><servicedir>{services}</servicedir>
<policy context="default"><allow send_destination="*" eavesdrop="true"/><allow eavesdrop="true"/><allow own="*"/></policy>
</busconfig>
"""


def wait_for(condition, what):
    deadline = time.monotonic() + LIMIT_SECONDS
    while not condition():
        if time.monotonic() > deadline:
            sys.exit(f"session.py: no {what} within {LIMIT_SECONDS} s")
        time.sleep(0.02)


def start_server(start, size):
    """Starts an X server with the function `start`, which takes what subprocess.Popen does; returns its display."""
    # The server picks a free display and writes its number.
    readable, writable = os.pipe()
    server = start("Xvfb", "-displayfd", str(writable), "-screen", "0", size + "x24", "-dpi", "96", "-nolisten", "tcp", "-noreset",
                   pass_fds=[writable])
    os.close(writable)
    with os.fdopen(readable) as numbers:
        number = numbers.readline().strip()
    if not number:
        sys.exit(f"session.py: Xvfb did not start (exit code {server.wait()})")
    return ":" + number


class Session:
    def __init__(self, size, home, desktop, has_portal):
        self.size = size
        self.desktop = desktop
        self.has_portal = has_portal
        self.folder = tempfile.mkdtemp(prefix="quillow-gui-")
        self.home = home or os.path.join(self.folder, "home")
        self.processes = []
        self.client = None  # of the compositor, by its id

    def __enter__(self):
        try:
            self.prepare_environment()
            self.start_display()
            self.start_bus()
            self.start_desktop()
        except BaseException:
            self.__exit__()
            raise
        return self

    def __exit__(self, *_):
        if self.client:
            with contextlib.suppress(ProcessLookupError):
                os.kill(self.client, signal.SIGTERM)
        for process in reversed(self.processes):
            process.terminate()
            try:
                process.wait(10)
            except subprocess.TimeoutExpired:
                process.kill()
        shutil.rmtree(self.folder, ignore_errors=True)

    def start(self, *command, **options):
        log = open(os.path.join(self.folder, os.path.basename(command[0]) + ".log"), "wb")
        process = subprocess.Popen(command, stdin=subprocess.DEVNULL, stderr=log, **{"stdout": log, **options})
        self.processes.append(process)
        return process

    def prepare_environment(self):
        runtime = os.path.join(self.folder, "run")
        os.makedirs(runtime, mode=0o700)
        os.makedirs(self.home, exist_ok=True)
        for name in ("WAYLAND_DISPLAY", "QT_QPA_PLATFORM", "XDG_CURRENT_DESKTOP", "LC_ALL", "LC_TIME"):
            os.environ.pop(name, None)
        os.environ.update(
            HOME=self.home, XDG_CONFIG_HOME=self.home + "/.config", XDG_DATA_HOME=self.home + "/.local/share",
            XDG_CACHE_HOME=self.home + "/.cache", XDG_STATE_HOME=self.home + "/.local/state", XDG_RUNTIME_DIR=runtime,
            SCREEN_SIZE=self.size, LANG="C.UTF-8", QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1")

    def start_display(self):
        os.environ["DISPLAY"] = start_server(self.start, self.size)

    def start_bus(self):
        configuration = os.path.join(self.folder, "bus.conf")
        with open(configuration, "w") as file:
            file.write(BUS.format(folder=self.folder, services=self.services()))
        bus = self.start("dbus-daemon", "--config-file=" + configuration, "--nofork", "--print-address", stdout=subprocess.PIPE)
        os.environ["DBUS_SESSION_BUS_ADDRESS"] = bus.stdout.readline().decode().strip()

    def services(self):
        """A folder with the services that the bus starts."""
        folder = os.path.join(self.folder, "services")
        os.mkdir(folder)
        for name in os.listdir(SERVICES):
            if self.has_portal or ".portal." not in name:
                os.symlink(os.path.join(SERVICES, name), os.path.join(folder, name))
        return folder

    def start_desktop(self):
        if self.desktop in COMPOSITORS:
            self.start_compositor()
        elif self.desktop != "none":
            self.start(self.desktop)
            check = ["xprop", "-root", "_NET_SUPPORTING_WM_CHECK"]
            wait_for(lambda: b"window id" in subprocess.run(check, capture_output=True).stdout, "window manager")

    def start_compositor(self):
        # The compositor starts a command when its session is ready. This one writes the environment of its clients to a file.
        told = os.path.join(self.folder, "environment")
        client = os.path.join(self.folder, "client")
        with open(client, "w") as script:
            script.write(f"#!/bin/sh\n(env -0; printf CLIENT=$$) > {told}.part && mv {told}.part {told}\nexec sleep infinity\n")
        os.chmod(client, 0o700)
        COMPOSITORS[self.desktop](self, client)
        wait_for(lambda: os.path.exists(told), "environment of " + self.desktop)
        with open(told) as file:
            environment = dict(line.split("=", 1) for line in file.read().split("\0") if line)
        self.client = int(environment["CLIENT"])
        os.environ.update({"NESTED_" + name: environment.get(name, "") for name in ("WAYLAND_DISPLAY", "DISPLAY", "XAUTHORITY")})

    def start_mutter(self, client):
        self.start("mutter", "--wayland", "--nested", "--wayland-display", "quillow-mutter", "--", client,
                   env={**os.environ, "MUTTER_DEBUG_DUMMY_MODE_SPECS": self.size, "LIBGL_ALWAYS_SOFTWARE": "1"})

    def start_kwin(self, client):
        # A copy does not have the file capability of the installed program, which not every container allows.
        program = shutil.copyfile(shutil.which("kwin_wayland"), os.path.join(self.folder, "kwin_wayland"))
        os.chmod(program, 0o700)
        width, height = self.size.split("x")
        os.makedirs(os.environ["XDG_CONFIG_HOME"], exist_ok=True)
        with open(os.path.join(os.environ["XDG_CONFIG_HOME"], "kwinrc"), "w") as settings:
            settings.write("[Windows]\nPlacement=Smart\n")  # side by side if there is room
        self.start(program, "--x11-display", os.environ["DISPLAY"], "--width", width, "--height", height, "--xwayland", "--socket",
                   "quillow-kwin", "--no-lockscreen", client,
                   env={**os.environ, "KWIN_COMPOSE": "Q", "XDG_CURRENT_DESKTOP": "KDE"})


COMPOSITORS = {"mutter": Session.start_mutter, "kwin": Session.start_kwin}


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--size", default="1280x900")
    parser.add_argument("--home")
    parser.add_argument("--desktop", default="openbox")
    parser.add_argument("--portal", action="store_true")
    parser.add_argument("command", nargs="+")
    arguments = parser.parse_args()
    signal.signal(signal.SIGTERM, lambda *_: sys.exit(143))
    with Session(arguments.size, arguments.home, arguments.desktop, arguments.portal):
        return subprocess.run(arguments.command).returncode


if __name__ == "__main__":
    sys.exit(main())
