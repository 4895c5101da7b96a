#!/usr/bin/env python3
"""The program is killed in the middle of its work; run under session.py with $QUILLOW set."""
import os
import signal
import time
import unittest

import gui_test

DOCUMENTS = 201  # an odd number, so that the last has no older text
PARAGRAPHS = 8000


class Interruption(gui_test.ProgramTest):
    def test_killed_in_the_middle(self):
        """The folder then contains only complete texts."""
        self.preset_destination()
        papers = [self.document(f"{i:03}.rtf", f"Text {i}.\\par " * PARAGRAPHS) for i in range(DOCUMENTS)]
        whole = {f"{i:03}.txt": f"Text {i}.\n" * PARAGRAPHS for i in range(DOCUMENTS)}
        old = "an older text\n"
        for name in list(whole)[::2][:-1]:
            (self.texts / name).write_text(old)
        program = self.start(os.environ["QUILLOW"], *papers)
        deadline = time.monotonic() + 60
        while not (self.texts / "007.txt").exists() and time.monotonic() < deadline:
            time.sleep(0.001)
        program.send_signal(signal.SIGKILL)
        self.assertEqual(program.wait(30), -signal.SIGKILL)

        found = {entry.name: entry.read_text() for entry in self.texts.iterdir()}
        self.assertIn("007.txt", found.keys())
        self.assertNotIn(f"{DOCUMENTS - 1:03}.txt", found.keys(), "it was killed after its work, not in the middle")
        self.assertEqual(found.keys() - whole.keys(), set())
        self.assertEqual([name for name, text in found.items() if text not in (whole[name], old)], [])

        # The program can start again and convert a document.
        self.start_program(papers[-1])
        self.wait_for_log(self.converted(papers[-1]))


if __name__ == "__main__":
    unittest.main(verbosity=2)
