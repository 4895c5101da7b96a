#!/usr/bin/env python3
"""The destination of texts, chosen in the real window; run under session.py with $QUILLOW and $DRAG_SOURCE set."""
import shutil
import subprocess
import unittest

import accessibility
import gui_test
import screen

PANEL = "^Choose a Folder"


class Destination(gui_test.ProgramTest):
    def answer_panel(self, *keys, text=None):
        subprocess.run(["xdotool", "windowactivate", "--sync", screen.window(PANEL)])
        if text:
            screen.press_keys("ctrl+a")
            screen.type_text(str(text))
        screen.press_keys(*keys)
        screen.until(lambda: not screen.find_window(PANEL), "panel gone")

    def test_cancel_then_ok(self):
        first, second, third = (self.document(f"{name}.rtf", name) for name in ("first", "second", "third"))
        self.start_program()
        self.drag("link", self.uri(first), self.uri(second), expect="link")
        self.answer_panel("Escape")

        # A later drop starts a new list: the documents of the first drop are not converted.
        self.drag("link", self.uri(third), expect="link")
        self.answer_panel("Return", text=self.texts)
        self.wait_for_log(self.converted(third))
        self.assertEqual([entry.name for entry in self.texts.iterdir()], ["third.txt"])

    def test_fixed_folder_gone(self):
        self.preset_destination()
        paper = self.document("thesis.rtf", "kept")
        self.start_program()
        shutil.rmtree(self.texts)
        self.drag("link", self.uri(paper), expect="link")
        accessibility.control(self.accessible, "label", "Destination folder not yet set")
        accessibility.control(self.accessible, "label", "It is necessary to indicate in the preferences the destination folder "
                                                        "where to save converted text files")
        accessibility.press(accessibility.control(self.accessible, "push button", "Cancel"))
        self.gone("Destination folder not yet set")

        # If Cancel had opened the preferences, they would appear before the next alert.
        self.drag("link", self.uri(paper), expect="link")
        accessibility.control(self.accessible, "label", "Destination folder not yet set")
        self.assertFalse(screen.find_window("^General"))
        accessibility.press(accessibility.control(self.accessible, "push button", "Open Preferences"))
        screen.window("^General")
        self.assertEqual(self.log(), "")
        self.assertFalse(self.texts.exists())

        # A folder of the same name is a destination again.
        self.texts.mkdir()
        self.drag("link", self.uri(paper), expect="link")
        self.wait_for_log(self.converted(paper))

    def gone(self, message):
        screen.until(lambda: not accessibility.find(self.accessible, "label", message), f"alert {message!r} gone")


if __name__ == "__main__":
    unittest.main(verbosity=2)
