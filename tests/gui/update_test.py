#!/usr/bin/env python3
"""The update check of the real program against mirrors on this machine; run under session.py.

The program's build has tests, so it takes the mirrors from $QUILLOW_TEST_MIRRORS.
"""
import datetime
import http.server
import os
import plistlib
import threading
import unittest

import accessibility
import screen
from gui_test import HOME, ProgramTest

SETTINGS = HOME / ".config/org.quillow.Quillow/defaults.ini"
NEWER, SAME = 10600, 10501


class Mirrors(http.server.ThreadingHTTPServer):
    """One server for all mirrors, each a path. The second has a list of the release `latest`, if there is one; the others none."""

    def __init__(self):
        super().__init__(("127.0.0.1", 0), Mirror)
        self.latest = NEWER
        self.asked = []

    def addresses(self):
        return " ".join(f"http://127.0.0.1:{self.server_port}/{number}" for number in (1, 2, 3, 4))


class Mirror(http.server.BaseHTTPRequestHandler):
    def do_GET(self):
        self.server.asked.append((self.path, dict(self.headers)))
        if self.path != "/2" or self.server.latest is None:
            self.send_error(404)
            return
        address = f"http://127.0.0.1:{self.server.server_port}/page"
        body = plistlib.dumps({"LRA": self.server.latest, "GFU": address, "DPU": address})
        self.send_response(200)
        self.send_header("Content-Length", str(len(body)))
        self.end_headers()
        self.wfile.write(body)

    def log_message(self, *_):
        pass


def serve_mirrors(test):
    """Mirrors that end with the test."""
    mirrors = Mirrors()
    threading.Thread(target=mirrors.serve_forever, daemon=True).start()
    test.addCleanup(mirrors.server_close)
    test.addCleanup(mirrors.shutdown)
    return mirrors


class Update(ProgramTest):
    def setUp(self):
        super().setUp()
        self.mirrors = serve_mirrors(self)

    def alert(self, text):
        return accessibility.control(self.accessible, "label", text)

    def press_button(self, name):
        accessibility.press(accessibility.control(self.accessible, "push button", name))

    def stored_check(self):
        lines = SETTINGS.read_text().splitlines() if SETTINGS.exists() else []
        return [line for line in lines if line.startswith("lastCheckDateForUpdate=")]

    def test_menu_alert_and_stored_date(self):
        self.start_program(env={**os.environ, "QUILLOW_TEST_MIRRORS": self.mirrors.addresses()})
        # The daily check at the start tells of the newer release.
        self.alert("There is an update available for Quillow")
        self.alert("You are using release: 1.5.1\nLatest available release is: 1.6\n")
        today = datetime.datetime.now(datetime.timezone.utc).date().isoformat()
        stored, = screen.until(self.stored_check, "stored date")
        self.assertIn(today, stored)
        self.press_button("Later")
        screen.until(lambda: not accessibility.find(self.accessible, "label", "There is an update"), "closed alert")
        self.assertEqual([path for path, _ in self.mirrors.asked], ["/1", "/2"])

        # The menu checks at once and tells of the outcome in any case.
        self.mirrors.latest = SAME
        accessibility.press(accessibility.control(self.accessible, "menu item", "Software Update"))
        self.alert("Quillow is up to date")
        self.press_button("Close")
        self.assertEqual([path for path, _ in self.mirrors.asked], ["/1", "/2"] * 2)
        for _, headers in self.mirrors.asked:
            self.assertEqual(headers["User-Agent"], "Quillow/1.5.1")
            self.assertNotIn("Cookie", headers)
            self.assertEqual(headers["Accept-Language"], "*")


if __name__ == "__main__":
    unittest.main()
