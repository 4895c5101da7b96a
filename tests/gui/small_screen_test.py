#!/usr/bin/env python3
"""Every window on a small screen, in an ordinary and in a very large font; run under session.py."""
import os
import subprocess
import unittest

import accessibility
import pictures
import screen
from gui_test import ProgramTest

WIDTH, HEIGHT = (int(n) for n in os.environ["SCREEN_SIZE"].split("x"))


class SmallScreen(ProgramTest):
    def assert_on_screen(self, window):
        """The contents are on the screen, and so is the title bar above them."""
        place = screen.settled_place(window)
        self.assertGreaterEqual(place.x, 0, place)
        self.assertGreater(place.y, 0, place)
        self.assertLessEqual(place.x + place.width, WIDTH, place)
        self.assertLessEqual(place.y + place.height, HEIGHT, place)

    def check_windows(self):
        screen.move_window(self.window, WIDTH - 630, HEIGHT - 280)
        subprocess.run(["xdotool", "windowactivate", "--sync", self.window])
        screen.press_keys("ctrl+f")  # opens the log too
        screen.until(lambda: screen.place_of(self.window).height == 580, "the log")
        self.assert_on_screen(self.window)
        accessibility.press(accessibility.control(self.accessible, "menu item", "About Quillow"))
        self.assert_on_screen(screen.window("^About Quillow$"))
        screen.press_keys("Escape")
        screen.until(lambda: not screen.find_window("^About Quillow$"), "about box closed")
        screen.press_keys("ctrl+comma")
        preferences = screen.window("^General$")
        self.assert_on_screen(preferences)
        # The panes have different heights. The lower one is where its lower edge ends the screen.
        accessibility.press(accessibility.control(self.accessible, "radio button", "Update"))
        screen.window("^Update$")
        place = screen.settled_place(preferences)
        screen.move_window(preferences, place.x, HEIGHT - place.height)
        accessibility.press(accessibility.control(self.accessible, "radio button", "General"))
        screen.window("^General$")
        screen.until(lambda: screen.place_of(preferences).height > place.height, "higher pane")
        self.assert_on_screen(preferences)

    def check_in_font(self, points):
        self.preset_destination()
        pictures.write_theme("light", points)
        self.start_program(self.document("thesis.rtf", "x"), env={**os.environ, "XDG_CURRENT_DESKTOP": "KDE", "KDE_SESSION_VERSION": "5"})
        self.check_windows()

    def test_in_an_ordinary_font(self):
        self.check_in_font(10)

    def test_in_a_very_large_font(self):
        self.check_in_font(20)


if __name__ == "__main__":
    unittest.main(verbosity=2)
