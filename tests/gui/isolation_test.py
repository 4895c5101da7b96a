#!/usr/bin/env python3
"""A document that crashes its worker; run under session.py with $QUILLOW and $ATTACK_WORKER set."""
import os
import shutil
import subprocess
import unittest

import accessibility
import gui_test
import screen


class Isolation(gui_test.ProgramTest):
    def test_a_crash_costs_its_own_entry(self):
        self.preset_destination()
        # A copy of the program finds the worker whose documents attack.
        folder = gui_test.HOME / "program"
        folder.mkdir()
        program = shutil.copy(os.environ["QUILLOW"], folder)
        shutil.copy(os.environ["ATTACK_WORKER"], folder / "quillow-worker")
        before = self.document("before.rtf", "before")
        hostile = self.papers / "hostile.pdf"
        hostile.write_text("attack:crash")
        after = self.document("after.rtf", "after")

        process = self.start(program, before, hostile, after, stderr=subprocess.PIPE, text=True)
        self.window = screen.window(gui_test.WINDOW_TITLE)
        self.accessible = accessibility.application("Quillow")
        self.wait_for_log(self.converted(before), self.no_text(hostile), self.converted(after))
        self.assertEqual(self.converted_count(), 2)

        process.terminate()
        self.assertIn("PDF document: crashed: its reader used memory that it does not have\n", process.communicate(timeout=30)[1])


if __name__ == "__main__":
    unittest.main(verbosity=2)
