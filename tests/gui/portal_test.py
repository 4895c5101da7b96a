#!/usr/bin/env python3
"""The desktop's own file dialogs, with a real portal; run under session.py --portal.

$QUILLOW and $WINDOW_MANAGER_MESSAGE name the programs."""
import os
import subprocess
import unittest

import accessibility
import screen
from accessibility import Atspi
from gui_test import ProgramTest

DOCUMENTS = "^Choose the documents to convert$"
FOLDER = "^Please select the destination folder$"


class Portal(ProgramTest):
    def dialog(self, title):
        """The portal's dialog with this title, in front."""
        window = screen.window(title)
        self.assertIn(b"portal", screen.output_of("xprop", "-id", window, "WM_CLASS"))
        self.assertIn(hex(int(self.window)).encode(), screen.output_of("xprop", "-id", window, "WM_TRANSIENT_FOR"))
        subprocess.run(["xdotool", "windowactivate", "--sync", window])
        return window

    def answer(self, title, button, path):
        self.dialog(title)
        portal = accessibility.application("xdg-desktop-portal-gtk")

        def name_field():
            screen.press_keys("slash")  # opens the field
            return next((node for node in accessibility.walk(portal) if node.get_role_name() == "text"
                         and accessibility.is_showing(node)), None)

        field = screen.until(name_field, "name field")
        Atspi.EditableText.set_text_contents(field, str(path))
        accessibility.press(accessibility.control(portal, "push button", button))
        self.gone(title)

    def gone(self, title):
        screen.until(lambda: not screen.find_window(title), f"{title} gone")

    def choose_documents(self):
        subprocess.run(["xdotool", "windowactivate", "--sync", self.window])
        screen.press_keys("ctrl+o")

    def test_documents(self):
        self.preset_destination()
        bundle = self.document("Letter.rtfd/TXT.rtf", "Text of the bundle.").parent
        self.start_program()
        self.choose_documents()
        for end in (["xdotool", "key", "Escape"], [os.environ["WINDOW_MANAGER_MESSAGE"], "close"]):
            window = self.dialog(DOCUMENTS)
            subprocess.run(end + [window] if "close" in end else end, check=True)
            self.gone(DOCUMENTS)
            self.wait_until_idle()
            self.choose_documents()
        self.answer(DOCUMENTS, "Convert", bundle / "TXT.rtf")
        self.wait_for_log(self.converted(bundle))
        self.assert_text("Letter.txt", "Text of the bundle.")

    def test_destination(self):
        paper = self.document("thesis.rtf", "x")
        self.start_program(paper)
        self.answer(FOLDER, "Select", self.texts)
        self.wait_for_log(self.converted(paper))


if __name__ == "__main__":
    unittest.main(verbosity=2)
