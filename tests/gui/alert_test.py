#!/usr/bin/env python3
"""Each alert, and the about box, as a user without a mouse or without a screen meets it; run under session.py.

What the program opens in the browser is read from what it gives to xdg-open.
"""
import json
import os
import plistlib
import shutil
import subprocess
import sys
import unittest

import accessibility
import screen
import update_test
from accessibility import Atspi, is_showing
from gui_test import DATA_FILE, HOME
from walk_test import Walk, controls, focused

NEWER_FILE = (
    "Data file the software tryed to open from the Application Support folder was created with a more recent version of this "
    "application",
    "You need a release of this application equal or successive to the one used to create this data file.\n\nProbably you are using an "
    "outdated release.\nYou can download for free the last version of this application from our site",
    ["Go to Download Last Version", "Cancel"])
OPENED = HOME / "opened"
BOXES = ("alert", "dialog")


class Alerts(Walk):
    def setUp(self):
        super().setUp()
        self.walked = set()  # messages of boxes
        programs = HOME / "bin"
        programs.mkdir()
        (programs / "xdg-open").write_text(f'#!/bin/sh\necho "$1" >> {OPENED}\n')
        (programs / "xdg-open").chmod(0o700)
        os.environ["PATH"] = f"{programs}:{os.environ['PATH']}"
        self.reader = subprocess.Popen([sys.executable, __file__, "--reader"], stdout=subprocess.PIPE, text=True)
        self.addCleanup(self.reader.wait)
        self.addCleanup(self.reader.terminate)
        self.addCleanup(self.reader.stdout.close)
        self.assertEqual(self.reader.stdout.readline(), "ready\n")

    def opened(self):
        return OPENED.read_text().split() if OPENED.exists() else []

    def box(self):
        """The box that is shown, or None."""
        for i in range(self.accessible.get_child_count()):
            child = self.accessible.get_child_at_index(i)
            if child and child.get_role_name() in BOXES and is_showing(child):
                return child
        return None

    def check(self, message, informative, buttons):
        """Waits for the box. It is read out, the first of its buttons has the focus, and Tab reaches all of them."""
        root = screen.until(self.box, "box")
        role, name, texts = json.loads(self.reader.stdout.readline())
        self.assertIn(role, BOXES)
        self.assertEqual(name, message)
        self.assertTrue([text for text in texts if text.startswith(informative)], texts)
        first = screen.until(lambda: focused(root), "focus in the box")
        self.assertEqual(first.get_name(), buttons[0])
        if message in self.walked:
            return
        self.walked.add(message)
        stops, unseen = self.way_of_tab(root)
        self.assertEqual(sorted(name for _, name in stops), sorted(buttons))
        self.assertEqual(unseen, [], "the focus does not show")

    def answer(self, key):
        screen.press_keys(key)
        screen.until(lambda: not self.box(), f"no box after {key}")

    def test_sheets_of_the_main_window(self):
        self.preset_destination()
        paper = self.document("thesis.rtf", "x")
        notes = self.papers / "notes.txt"
        notes.write_text("x")
        self.start_program(paper)
        self.wait_for_log(self.converted(paper))

        refused = ("Can't Accept This File Here", "You can drop here only File type: RTF, RTFD, HTM, HTML, PDF", ["OK"])
        for key in ("Escape", "Return"):
            self.start(os.environ["QUILLOW"], notes).wait()
            self.check(*refused)
            self.answer(key)

        log = self.log()
        clear = ("Are you sure you want to reset the Log?", "Operation can't be reverted", ["OK"])
        for key, left in (("Escape", log), ("Return", "")):
            accessibility.press(accessibility.control(self.accessible, "push button", "Clear Log"))
            self.check(*clear)
            self.answer(key)
            screen.until(lambda: self.log() == left, f"log after {key}")

        for key in ("Escape", "Return"):
            accessibility.press(accessibility.control(self.accessible, "menu item", "Quillow Help"))
            self.check("Quillow turns documents into plain text", "Drop documents of the types ", ["OK"])
            self.answer(key)

        shutil.rmtree(self.texts)
        unset = ("Destination folder not yet set",
                 "It is necessary to indicate in the preferences the destination folder where to save converted text files",
                 ["Open Preferences", "Cancel"])
        for key in ("Escape", "Return"):
            self.start(os.environ["QUILLOW"], paper).wait()
            self.check(*unset)
            self.assertIsNone(screen.find_window("^General$"))
            self.answer(key)
        screen.window("^General$")

    def test_panel_for_the_destination(self):
        paper = self.document("thesis.rtf", "x")
        self.start_program(paper)
        root = screen.until(self.box, "panel")
        _, name, texts = json.loads(self.reader.stdout.readline())
        self.assertEqual(name, "Choose a Folder")
        self.assertIn("Please select the destination folder", texts)
        self.assertEqual([node for node in controls(root) if not node.get_name()], [])
        screen.until(lambda: focused(root) and focused(root).get_role_name() == "text", "focus on the name")
        self.answer("Escape")
        self.wait_until_idle()
        self.assertEqual(self.log(), "")
        self.start(os.environ["QUILLOW"], paper).wait()
        screen.until(lambda: focused(self.box() or self.accessible) and self.box(), "panel")
        screen.type_text(str(self.texts))
        self.answer("Return")
        self.wait_for_log(self.converted(paper))

    def test_about_box(self):
        self.start_program()
        for key in ("Escape", "Return"):
            accessibility.press(accessibility.control(self.accessible, "menu item", "About Quillow"))
            self.check("About Quillow", "Quillow", ["Close", "Quillow on the Web"])
            self.assertEqual(self.opened(), [])
            self.answer(key)
        accessibility.press(accessibility.control(self.accessible, "menu item", "About Quillow"))
        screen.until(self.box, "box")
        screen.press_keys("Tab", "Return")
        screen.until(lambda: len(self.opened()) == 1, "page of the program")
        self.assertIsNotNone(self.box())

    def test_alerts_of_the_update_check(self):
        mirrors = update_test.serve_mirrors(self)
        page = f"http://127.0.0.1:{mirrors.server_port}/page"
        self.start_program(env={**os.environ, "QUILLOW_TEST_MIRRORS": mirrors.addresses()})
        available = ("There is an update available for Quillow", "You are using release: 1.5.1\nLatest available release is: 1.6\n"
                     "Varnel recommends to use always the latest release", ["Download Update", "Download Page", "Later"])
        self.check(*available)
        self.answer("Escape")
        self.assertEqual(self.opened(), [])
        self.check_now(*available)
        self.answer("Return")
        screen.until(lambda: self.opened() == [page], "page of the update")

        mirrors.latest = update_test.SAME
        latest = ("Quillow is up to date", "You are using the latest available release.\n"
                  "If you like, you can go to the Varnel download page to manually check it.\n\n"
                  "Visit us and see all the macOS software we have available.\n"
                  "We are one of the developers in the world with more macOS apps!\n", ["Go to Varnel Download Page", "Close"])
        self.check_now(*latest)
        self.answer("Escape")
        self.check_now(*latest)
        self.answer("Return")
        screen.until(lambda: self.opened() == [page, page], "page of the downloads")

        mirrors.latest = None
        failed = ("Quillow was not able to connect to the Varnel server", "It was not possible to enstablish a internet connection "
                  "on the net with the Varnel upgrade server. Check your internet connection or try later.", ["OK"])
        for key in ("Escape", "Return"):
            self.check_now(*failed)
            self.answer(key)
        self.assertEqual(self.opened(), [page, page])

    def check_now(self, *expected):
        accessibility.press(accessibility.control(self.accessible, "menu item", "Software Update"))
        self.check(*expected)

    def test_invitation_at_launch(self):
        settings = update_test.SETTINGS
        settings.parent.mkdir(parents=True)
        settings.write_text("[General]\nnotifyUpdate=b:false\n")
        mirrors = update_test.serve_mirrors(self)
        mirrors.latest = None
        invitation = ("Would you like that Quillow informs you now for any available update?",
                      "Suggested option is to have the update report enabled.\nUse the Preference Dialog to enable this feature.",
                      ["OK", "Varnel Site", "Cancel"])
        environment = {**os.environ, "QUILLOW_TEST_MIRRORS": mirrors.addresses()}
        for key in ("Escape", "Return"):
            self.start_behind_an_alert(env=environment)
            self.check(*invitation)
            self.answer(key)
            self.quit()
        self.assertEqual(self.opened(), [])

    def test_newer_data_file_at_launch(self):
        uid = plistlib.UID
        archive = plistlib.dumps({
            "$archiver": "NSKeyedArchiver", "$version": 100000, "$top": {"root": uid(1)}, "$objects": [
                "$null", {"$class": uid(4), "NS.keys": [uid(2)], "NS.objects": [uid(3)]}, "appversion", 10502,
                {"$classname": "NSDictionary", "$classes": ["NSDictionary", "NSObject"]}]}, fmt=plistlib.FMT_BINARY)
        DATA_FILE.parent.mkdir(parents=True)
        for key, pages in (("Escape", 0), ("Return", 1)):
            DATA_FILE.write_bytes(archive)
            self.start_behind_an_alert()
            self.check(*NEWER_FILE)
            self.answer(key)
            screen.until(lambda: len(self.opened()) == pages, f"{pages} pages")
            self.quit()

    def start_behind_an_alert(self, **options):
        self.program = self.start(os.environ["QUILLOW"], **options)
        self.accessible = accessibility.application("Quillow", self.program.pid)

    def quit(self):
        self.program.terminate()
        self.assertEqual(self.program.wait(30), 0)


def read_boxes():
    """Prints the role, name and texts of each box that comes to the front, as a screen reader reads them out."""
    def activated(event):
        box = event.source
        if box.get_role_name() in BOXES:
            texts = [node.get_name() for node in accessibility.walk(box) if node.get_role_name() == "label" and is_showing(node)]
            print(json.dumps([box.get_role_name(), box.get_name(), texts]), flush=True)

    Atspi.EventListener.new(activated).register("window:activate")
    print("ready", flush=True)
    Atspi.event_main()


if __name__ == "__main__":
    if sys.argv[1:] == ["--reader"]:
        read_boxes()
    else:
        unittest.main(verbosity=2)
