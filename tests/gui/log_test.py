#!/usr/bin/env python3
"""Real drags out of the message log; run under session.py with $QUILLOW and $DROP_TARGET set."""
import os
import subprocess
import unittest

import accessibility
import screen
from accessibility import Atspi
from gui_test import HOME, ProgramTest

BIG = 580
LARGE_WIDTH = 900


class LogDrag(ProgramTest):
    def setUp(self):
        super().setUp()
        self.preset_destination()

    def open_log(self, *documents):
        """Starts the program at the left of the screen with these documents, and opens its log."""
        self.start_program(*documents)
        screen.until(lambda: self.log().count("\n") == len(documents), "an entry for each document")
        subprocess.run(["xdotool", "windowsize", self.window, str(LARGE_WIDTH), "255"])
        screen.move_window(self.window, 10, 40)
        subprocess.run(["xdotool", "windowactivate", "--sync", self.window])
        screen.press_keys("ctrl+l")
        screen.until(lambda: screen.place_of(self.window).height == BIG, "big window")
        screen.settled_place(self.window)
        self.log_node = accessibility.control(self.accessible, "text", "Message log")

    def place_in_log(self, text, offset=1):
        """The middle of a character of the last occurrence of this text in the log."""
        position = self.log().rindex(text) + offset
        box = Atspi.Text.get_character_extents(self.log_node, position, Atspi.CoordType.SCREEN)
        return box.x + box.width // 2, box.y + box.height // 2

    def selected(self):
        if Atspi.Text.get_n_selections(self.log_node) == 0:
            return ""
        chosen = Atspi.Text.get_selection(self.log_node, 0)
        return Atspi.Text.get_text(self.log_node, chosen.start_offset, chosen.end_offset)

    def place_at_right(self, title):
        window = screen.window(title)
        subprocess.run(["xdotool", "windowsize", window, "340", "400"])
        screen.move_window(window, LARGE_WIDTH + 30, 200)
        place = screen.settled_place(window)
        return place.x + place.width // 2, place.y + place.height * 2 // 3

    def drop_target(self):
        target = self.start(os.environ["DROP_TARGET"], "--title", "drop-target", stdout=subprocess.PIPE, text=True)
        self.assertEqual(target.stdout.readline(), "ready\n")
        return target, self.place_at_right("^drop-target$")

    def drag_out(self, start, end):
        screen.begin_drag(start, end)
        screen.hover(end, 0.3)
        screen.pointer("mouseup", 1)

    def test_a_text_goes_to_a_file_manager(self):
        paper = self.document("100%25 of 'two  blanks' & \u00fcber #1?.rtf", "Out of the log.")
        self.open_log(paper)
        text = self.texts / (paper.stem + ".txt")
        incoming = HOME / "Incoming"
        incoming.mkdir()
        self.start("pcmanfm", "--no-desktop", incoming, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        folder = self.place_at_right("^Incoming( |$)")
        self.drag_out(self.place_in_log(str(text)), folder)
        copy = incoming / text.name
        screen.until(lambda: copy.exists() and copy.read_bytes() == text.read_bytes(), "the text in the folder")
        self.assertTrue(text.exists(), "the text was moved")

    def test_a_text_goes_by_its_uri_and_nothing_else_goes(self):
        good = self.document("good.rtf", "Out of the log.")
        bad = self.papers / "bad.pdf"
        bad.write_bytes(b"")
        self.open_log(bad, good)
        target, point = self.drop_target()
        text = self.texts / "good.txt"
        # From every other place the pointer selects text.
        beyond = self.place_in_log("\n", offset=0)
        for start in (self.place_in_log(str(bad)), self.place_in_log(str(good)), self.place_in_log("} Converted", 0),
                      (beyond[0] + 60, beyond[1])):
            screen.pointer("windowactivate", "--sync", self.window)
            screen.press_keys("ctrl+Home")
            screen.until(lambda: self.selected() == "", "nothing selected")
            self.drag_out(start, point)
            screen.until(lambda: self.selected() != "", f"a selection from {start}")
        # The drag that brings a file shows that the others were not just late.
        self.drag_out(self.place_in_log(str(text)), point)
        self.assertEqual(target.stdout.readline(), "enter\n")
        self.assertEqual(target.stdout.readline(), f"drop copy {self.uri(text)}\n")
        self.assertTrue(text.exists())


if __name__ == "__main__":
    unittest.main(verbosity=2)
