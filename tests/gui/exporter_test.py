#!/usr/bin/env python3
"""End-to-end test of the exporter's sheets on a real X server; run under session.py.

$EXPORTER_WINDOW names a small application with two records of four fields.
"""
import os
import pathlib
import subprocess
import unittest

import accessibility
import screen

HOME = pathlib.Path(os.environ["HOME"])


class Exporter(unittest.TestCase):
    def setUp(self):
        # In an empty folder the file dialog reports rows to assistive tools that do not exist.
        (HOME / "notes").touch()
        self.program = subprocess.Popen([os.environ["EXPORTER_WINDOW"]], cwd=HOME)
        self.window = screen.window("^People$")
        self.accessible = accessibility.application("exporter_window")

    def tearDown(self):
        self.program.terminate()
        self.program.wait(20)

    def press_in(self, title, *keys):
        subprocess.run(["xdotool", "windowactivate", "--sync", screen.window(title)])
        screen.press_keys(*keys)

    def wait_for_exported_fields(self, *names):
        # A button acts a moment after its mnemonic key.
        exported = accessibility.control(self.accessible, "list", "Exported fields")
        screen.until(lambda: [node.get_name() for node in accessibility.walk(exported)][1:] == list(names), f"fields {names}")

    def wait_for_file(self, name, content):
        path = HOME / name
        screen.until(lambda: path.exists(), f"{name} written")
        self.assertEqual(path.read_bytes(), content)

    def test_fields_layout_name_and_format_by_keyboard(self):
        self.press_in("^People$", "ctrl+e")
        # The first two fields, the second one moved up, a header row, and a custom separator.
        self.press_in("^Export$", "space", "shift+Down", "alt+a")
        self.wait_for_exported_fields("Name", "City")
        screen.press_keys("alt+u")
        self.wait_for_exported_fields("City", "Name")
        screen.press_keys("alt+w", "alt+n")
        screen.type_text(" / ")
        screen.press_keys("alt+c")
        screen.type_text("\\n")
        screen.press_keys("Return")
        self.press_in("^Save As$", "alt+f", "End", "alt+n", "ctrl+a")
        screen.type_text("people.txt")
        screen.press_keys("Return")
        self.wait_for_file("people.txt", b"City / Name\nRome / Ann\nOslo / Bob")
        screen.until(lambda: not screen.find_window("^Save As$"), "save sheet gone")

        # The second export starts with the settings of the first one; its format changes the name.
        self.press_in("^People$", "ctrl+e")
        self.press_in("^Export$", "alt+x")
        self.press_in("^Save As$", "alt+f", "Home", "Down", "Return", "Return")
        self.wait_for_file("Export.csv", b'"City","Name"\n"Rome","Ann"\n"Oslo","Bob"')

    def test_every_control_has_a_name(self):
        self.press_in("^People$", "ctrl+e")
        screen.window("^Export$")
        for role, name in (("list", "Available fields"), ("list", "Exported fields"), ("push button", "Remove All"),
                           ("text", "Between fields"), ("check box", "Write the fields' names as the first row")):
            accessibility.control(self.accessible, role, name)
        self.press_in("^Export$", "Return")
        screen.window("^Save As$")
        # On this desktop the name of a combo box is the chosen item; its title is the label before it.
        accessibility.control(self.accessible, "combo box", "Tab-separated text")
        accessibility.control(self.accessible, "label", "Format:")
        nodes = list(accessibility.walk(self.accessible))
        ours = [node for node in nodes if node.get_role_name() in accessibility.NAMED_ROLES]
        self.assertEqual([node.get_role_name() for node in ours if not node.get_name()], [])

    def test_a_preset_by_assistive_tools(self):
        self.press_in("^People$", "ctrl+e")
        screen.window("^Export$")
        self.press_in("^Export$", "alt+p", "h")
        field = accessibility.control(self.accessible, "text", "Start of file")
        screen.until(lambda: accessibility.text_of(field) == "<table>", "preset shown")
        accessibility.press(accessibility.control(self.accessible, "push button", "Cancel"))
        screen.until(lambda: not screen.find_window("^Export$"), "settings gone")
        self.assertIsNone(screen.find_window("^Save As$"))


if __name__ == "__main__":
    unittest.main(verbosity=2)
