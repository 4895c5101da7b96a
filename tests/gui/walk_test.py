#!/usr/bin/env python3
"""Every window as a user without a mouse or without a screen meets it; run under session.py."""
import os
import subprocess
import sys
import time
import unittest

import accessibility
import screen
from accessibility import Atspi
from gui_test import ProgramTest, WINDOW_TITLE

MOST_STOPS = 40
VIEWS = {"list", "tree"}
# The current item of a view has the state of the focus even if the view has no focus.
NO_STOPS = {"frame", "panel", "list item", "table cell"}
PATIENCE = 1.0  # a window with one control keeps its focus


def has(node, state):
    return node.get_state_set().contains(state)


def controls(root):
    """The controls of a window that can be used now."""
    return [node for node in accessibility.walk(root)
            if node.get_role_name() in accessibility.NAMED_ROLES | VIEWS and has(node, Atspi.StateType.SHOWING)
            and has(node, Atspi.StateType.FOCUSABLE) and has(node, Atspi.StateType.SENSITIVE)
            and node.get_role_name() not in ("menu", "menu item", "check menu item")]


def described(node):
    return node.get_role_name(), node.get_name()


def focused(root):
    return next((node for node in accessibility.walk(root) if has(node, Atspi.StateType.FOCUSED)
                 and has(node, Atspi.StateType.SHOWING) and node.get_role_name() not in NO_STOPS), None)


def place_on_screen(node):
    box = node.get_extents(Atspi.CoordType.SCREEN)
    return screen.Place(box.x, box.y, box.width, box.height)


class Walk(ProgramTest):
    def root(self, title):
        """The accessible window with this title."""
        def found():
            for i in range(self.accessible.get_child_count()):
                child = self.accessible.get_child_at_index(i)
                if child and child.get_name() == title and has(child, Atspi.StateType.SHOWING):
                    return child
            return None

        return screen.until(found, f"accessible window {title!r}")

    def next_stop(self, root, before):
        screen.press_keys("Tab")
        deadline = time.monotonic() + PATIENCE
        while time.monotonic() < deadline:
            node = focused(root)
            if node and described(node) != before:
                return node
            time.sleep(0.05)
        return focused(root)

    def way_of_tab(self, root):
        """The stops of the Tab key in the window, and those of them at which the focus does not show."""
        stops, unseen, before = [], [], None
        while len(stops) < MOST_STOPS:
            node = self.next_stop(root, before)
            self.assertIsNotNone(node, f"the focus is lost after {stops}")
            if described(node) in stops:
                break
            place = place_on_screen(node)
            lit = screen.picture_of(place)
            before = described(node)
            stops.append(before)
            follower = self.next_stop(root, before)
            if described(follower) != before and screen.picture_of(place) == lit:
                unseen.append(before)
            screen.press_keys("shift+Tab")
            screen.until(lambda: focused(root) and described(focused(root)) == before, "focus back")
        return stops, unseen

    def check_window(self, title, least):
        """Names, the way of the Tab key through the window, and how the focus shows."""
        subprocess.run(["xdotool", "windowactivate", "--sync", screen.window(f"^{title}$")])
        root = self.root(title)
        all_controls = controls(root)
        self.assertGreaterEqual(len(all_controls), least)
        self.assertEqual([described(node) for node in all_controls if not node.get_name()], [])

        stops, unseen = self.way_of_tab(root)
        # Tab stops once in a group of radio buttons; the arrow keys move in it.
        groups = [node.get_parent() for node in all_controls if described(node) in stops]
        missed = [described(node) for node in all_controls if described(node) not in stops
                  and not (node.get_role_name() == "radio button" and node.get_parent() in groups)]
        self.assertEqual(missed, [], f"not reached by {stops}")
        self.assertEqual(unseen, [], "the focus does not show")

    def press_window(self, *keys):
        subprocess.run(["xdotool", "windowactivate", "--sync", self.window])
        screen.press_keys(*keys)

    def test_main_window(self):
        self.preset_destination()
        self.start_program(self.document("thesis.rtf", "x"))
        self.wait_for_log(self.converted(self.papers / "thesis.rtf"))
        self.check_window("Quillow", 4)
        self.press_window("ctrl+l")
        screen.until(lambda: screen.place_of(self.window).height == 580, "big window")
        screen.settled_place(self.window)
        self.check_window("Quillow", 8)

    def test_preferences(self):
        self.preset_destination()
        self.start_program()
        self.press_window("ctrl+comma")
        screen.settled_place(screen.window("^General$"))
        self.check_window("General", 6)
        screen.press_keys("alt+u")
        screen.settled_place(screen.window("^Update$"))
        self.check_window("Update", 3)

    def test_dialog_for_documents(self):
        self.preset_destination()
        self.start_program()
        self.press_window("ctrl+o")
        self.check_window("Choose Files", 11)

    def test_dialog_for_the_destination(self):
        self.start_program(self.document("thesis.rtf", "x"))
        self.check_window("Choose a Folder", 11)

    def test_dialog_for_a_new_file(self):
        self.document("a.rtf", "x")
        self.start(os.environ["EXPORTER_WINDOW"], cwd=self.papers)
        self.accessible = accessibility.application("exporter_window")
        for title, key in (("^People$", "ctrl+e"), ("^Export$", "Return")):
            subprocess.run(["xdotool", "windowactivate", "--sync", screen.window(title)])
            screen.press_keys(key)
        self.check_window("Save As", 11)

    def test_drop_area_without_a_mouse(self):
        self.preset_destination()
        paper = self.document("thesis.rtf", "x")
        self.start_program()
        subprocess.run(["xdotool", "windowactivate", "--sync", self.window])
        area = accessibility.control(self.accessible, "push button", "Drop documents here")
        screen.until(lambda: has(area, Atspi.StateType.FOCUSED), "focus on the drop area")
        screen.press_keys("space")
        subprocess.run(["xdotool", "windowactivate", "--sync", screen.window("^Choose Files$")])
        screen.type_text(str(paper))
        screen.press_keys("Return")
        self.wait_for_log(self.converted(paper))

    def test_log_lines_are_announced(self):
        self.preset_destination()
        self.start_program()
        self.press_window("ctrl+l")
        screen.until(lambda: screen.place_of(self.window).height == 580, "big window")
        paper = self.document("thesis.rtf", "x")
        watcher = subprocess.Popen([sys.executable, __file__, "--announcements"], stdout=subprocess.PIPE, text=True)
        self.started.append(watcher)
        self.assertEqual(watcher.stdout.readline(), "ready\n")
        self.start(os.environ["QUILLOW"], paper)
        self.assertIn(self.converted(paper), watcher.stdout.readline())


def print_announcements():
    """Prints each text that is inserted into the message log, as a screen reader gets it."""
    def inserted(event):
        if event.source.get_name() == "Message log":
            print(str(event.any_data).strip(), flush=True)

    Atspi.EventListener.new(inserted).register("object:text-changed:insert")
    print("ready", flush=True)
    Atspi.event_main()


if __name__ == "__main__":
    if sys.argv[1:] == ["--announcements"]:
        print_announcements()
    else:
        unittest.main()
