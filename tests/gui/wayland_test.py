#!/usr/bin/env python3
"""The desktop program in Wayland sessions: drags of Wayland and X11 programs onto its Wayland and its X11 window, and what the
compositor does to its window. Run under session.py --desktop mutter|kwin with $QUILLOW and $DRAG_SOURCE set.

Wayland does not report the position of a window, so the tests find windows in pictures of the compositor's screen.
"""
import os
import pathlib
import subprocess
import unittest

import accessibility
import file_manager_test
import screen

DESKTOP = screen.Place(0, 0, *(int(n) for n in os.environ["SCREEN_SIZE"].split("x")))
PANEL = (400, 70)  # the minimum size of the drop area's panel, the only large white rectangle of the window


def wayland_client():
    env = {name: value for name, value in os.environ.items() if name != "DISPLAY"}
    return {**env, "WAYLAND_DISPLAY": os.environ["NESTED_WAYLAND_DISPLAY"], "XDG_SESSION_TYPE": "wayland",
            "QT_QPA_PLATFORM": "wayland", "GDK_BACKEND": "wayland"}


def x11_client():
    """The environment of a program whose tool kit has no Wayland plugin."""
    return {**os.environ, "DISPLAY": os.environ["NESTED_DISPLAY"], "XAUTHORITY": os.environ["NESTED_XAUTHORITY"],
            "QT_QPA_PLATFORM": "xcb", "GDK_BACKEND": "x11"}


class WaylandSession(file_manager_test.FileManagerTest):
    def setUp(self):
        super().setUp()
        self.preset_destination()
        self.place = screen.Place(-1, -1, 0, 0)  # of the program's window, once it has appeared
        self.picture, self.picture_before = (os.path.join(os.environ["HOME"], name) for name in ("now.ppm", "before.ppm"))
        self.is_picture_new = False

    # Windows, found by their change on the screen.

    def start_window(self, client, *command, **options):
        """Starts a program in the compositor's session; returns its process and the place of its window."""
        if not self.is_picture_new:
            self.take_picture()
        os.replace(self.picture, self.picture_before)
        process = self.start(*command, env=client, **options)
        return process, screen.until(self.change, f"window of {command[0]}")

    def take_picture(self):
        """Takes a picture of the whole screen, once nothing moves on it."""
        screen.save_settled_picture(DESKTOP, self.picture)
        self.is_picture_new = True

    def change(self):
        """The rectangle around all changes on the screen, or None if it is smaller than a window.

        Changes of the program's own window do not count: its title changes when another window gets the keyboard focus."""
        self.take_picture()
        own = self.place
        changes = screen.shapes(self.picture_before, self.picture, "-compose", "difference", "-composite",
                                "-colorspace", "gray", "-threshold", "4%", "-fill", "black", "-draw",
                                f"rectangle {own.x},{own.y} {own.x + own.width},{own.y + own.height}")
        left, top = min((c.x for c in changes), default=0), min((c.y for c in changes), default=0)
        right = max((c.x + c.width for c in changes), default=0)
        bottom = max((c.y + c.height for c in changes), default=0)
        return screen.Place(left, top, right - left, bottom - top) if right - left > 100 and bottom - top > 60 else None

    def find_panel(self):
        """Finds the drop area in the picture by its white panel."""
        white = screen.shapes(self.picture, "-fill", "black", "+opaque", "white")
        panels = [place for place in white if place.width >= PANEL[0] and place.height >= PANEL[1]]
        return min(panels, key=lambda place: place.y, default=None)  # the log below it is white as well

    # The program.

    def start_program(self, client):
        self.program, self.place = self.start_window(client, os.environ["QUILLOW"])
        self.accessible = accessibility.application("Quillow")
        self.panel = self.find_panel() or self.wait_for_panel(bool, "white panel of the drop area")

    def wait_for_panel(self, condition, what):
        """Waits until the condition holds for the drop area; returns the drop area."""
        def panel():
            self.take_picture()
            found = self.find_panel()
            return found if found and condition(found) else None

        return screen.until(panel, what)

    def drop_point(self):
        # The left end shows whether the area is lit, because the dragged icon at the pointer does not cover it.
        self.drop_place = self.panel._replace(width=60)
        return self.panel.x + self.panel.width // 2, self.panel.y + self.panel.height // 2

    def drop_from(self, file_manager_client, *file_manager, onto):
        paper = self.document("thesis.rtf", "Of bridges.")
        self.start_program(onto)
        _, files = self.start_window(file_manager_client, *file_manager, self.papers, stdout=subprocess.DEVNULL,
                                     stderr=subprocess.DEVNULL)
        self.drop(self.selected_item(files))
        self.wait_for_log(self.converted(paper))
        self.assert_text("thesis.txt", "Of bridges.")
        self.assertTrue(paper.exists(), "the document was moved")


class Drags(WaylandSession):
    def test_nautilus_to_x11_window(self):
        self.drop_from(wayland_client(), "nautilus", onto=x11_client())

    def test_nautilus_to_wayland_window(self):
        self.drop_from(wayland_client(), "nautilus", onto=wayland_client())

    def test_dolphin_to_x11_window(self):
        self.drop_from(wayland_client(), "dolphin", onto=x11_client())

    def test_dolphin_to_wayland_window(self):
        self.drop_from(wayland_client(), "dolphin", onto=wayland_client())

    def test_pcmanfm_to_wayland_window(self):
        self.drop_from(x11_client(), "pcmanfm", "--no-desktop", onto=wayland_client())

    def test_x11_copy_only_is_refused(self):
        paper = self.document("thesis.rtf", "never")
        self.start_program(x11_client())
        self.drag_own("copy", paper, expect="none")
        self.drag_own("copy,move", paper, expect="none")
        # The accepted drag shows that the others were not just late.
        self.drag_own("copy,link", paper, expect="link")
        self.wait_for_log(self.converted(paper))

    def drag_own(self, actions, paper, expect):
        """Drags from our X11 test program and checks the resulting action."""
        source, place = self.start_window(x11_client(), os.environ["DRAG_SOURCE"], "--actions", actions, "--uri",
                                          self.uri(paper), stdout=subprocess.PIPE, text=True)
        start = (place.x + place.width // 2, place.y + place.height // 2)
        self.carry_out_drag(start, self.drop_point(), source, expect)
        if expect == "none":  # the window may still be fetching what it took
            source.terminate()
            source.wait()
        self.is_picture_new = False


class Windows(WaylandSession):
    """What the user, the compositor and a launcher do to the Wayland window. The keys are those of mutter."""

    def resize(self, across, down):
        """Drags the window's right edge, or its lower right corner, until the width changes; returns the drop area."""
        former = self.find_panel()
        x = self.place.x + self.place.width + former.width - self.panel.width - 2
        y = self.place.y + (self.place.height - 2 if down else self.place.height // 2)
        screen.pointer("mousemove", x, y, "mousedown", 1)
        moves = [0]

        def is_resized():
            moves[0] += 1
            screen.pointer("mousemove", x + across + moves[0] % 2, y + down)
            self.take_picture()
            panel = self.find_panel()
            return panel and panel.width != former.width

        screen.until(is_resized, "window of another width")
        screen.pointer("mouseup", 1)
        return self.wait_for_panel(bool, "drop area of the resized window")

    def test_a_wider_window_stays_where_it_is(self):
        self.start_program(wayland_client())
        for _ in range(2):
            wider = self.resize(across=60, down=0)
            self.assertEqual(wider, self.panel._replace(width=wider.width))

    def test_the_height_is_not_the_users(self):
        self.start_program(wayland_client())
        for down in (80, -60):
            # The new width shows that the resize happened.
            wider = self.resize(across=60, down=down)
            self.assertEqual((wider.y, wider.height), (self.panel.y, self.panel.height))
            self.assertFalse(accessibility.is_showing(accessibility.control(self.accessible, "text", "Message log")))

    def test_a_maximised_window_fills_the_screen(self):
        self.start_program(wayland_client())
        screen.press_keys("super+Up")
        # The drop area gets the extra room; in the big mode the log gets it.
        self.wait_for_panel(lambda panel: panel.height > DESKTOP.height * 3 // 4, "drop area of the screen's height")
        screen.press_keys("ctrl+l")
        self.wait_for_panel(lambda panel: panel.height == self.panel.height and panel.width > DESKTOP.width * 3 // 4,
                            "drop area of its own height")
        log = accessibility.control(self.accessible, "text", "Message log").get_extents(1)  # window
        self.assertGreater(log.height, DESKTOP.height // 2)
        # The mode stays when the window has its normal size again.
        screen.press_keys("super+Down")
        self.wait_for_panel(lambda panel: panel == self.panel, "window of the former size")
        log = accessibility.control(self.accessible, "text", "Message log")
        screen.until(lambda: log.get_extents(1).height < DESKTOP.height // 2, "log of the big mode")
        self.assertTrue(accessibility.is_showing(log))

    def test_a_second_start_from_nautilus_brings_it_to_the_front(self):
        self.make_it_open_rtf()
        paper = self.document("thesis.rtf", "Of tokens.")
        self.start_program(wayland_client())
        _, files = self.start_window(wayland_client(), "nautilus", self.papers, stdout=subprocess.DEVNULL,
                                     stderr=subprocess.DEVNULL)
        self.selected_item(files)
        in_front = screen.settled_picture(self.panel)
        screen.press_keys("super+Up")
        screen.until(lambda: screen.picture_of(self.panel) != in_front, "window covered by nautilus")
        screen.press_keys("Return")
        self.wait_for_log(self.converted(paper))
        screen.until(lambda: screen.picture_of(self.panel) == in_front, "window in front")

    @staticmethod
    def make_it_open_rtf():
        applications = pathlib.Path(os.environ["XDG_DATA_HOME"], "applications")
        applications.mkdir(parents=True)
        entry = pathlib.Path(__file__).resolve().parents[2] / "packaging" / "org.quillow.Quillow.desktop"
        text = entry.read_text().replace("Exec=quillow ", f"Exec={os.environ['QUILLOW']} ")
        (applications / entry.name).write_text(text)
        settings = pathlib.Path(os.environ["XDG_CONFIG_HOME"], "mimeapps.list")
        settings.write_text("[Default Applications]\napplication/rtf=org.quillow.Quillow.desktop\n"
                            "text/rtf=org.quillow.Quillow.desktop\n")


if __name__ == "__main__":
    unittest.main(verbosity=2)
