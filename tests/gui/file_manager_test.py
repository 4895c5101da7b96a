#!/usr/bin/env python3
"""Real drags from real file managers onto the window; run under session.py with $QUILLOW set.

Each file manager's window shows one folder; everything in it is selected and dragged.
"""
import subprocess
import unittest

import gui_test
import screen

SIDE_PANE = 160          # pixels at the left of the window that never contain an item
TOOLBARS = 90
STATUS_BAR = 50


class FileManagerTest(gui_test.ProgramTest):
    def selected_item(self, window):
        """Selects everything and returns a point on an item. Finds items by the change on the screen, whatever the theme is."""
        area = screen.Place(window.x + SIDE_PANE, window.y + TOOLBARS, window.width - SIDE_PANE - 20,
                            window.height - TOOLBARS - STATUS_BAR)
        before, after = str(gui_test.HOME / "before.png"), str(gui_test.HOME / "after.png")

        def changed():
            # Click into the icon area to clear the selection, then select everything.
            screen.pointer("mousemove", window.x + window.width - 40, window.y + window.height - 70, "click", 1)
            screen.save_settled_picture(area, before)
            screen.press_keys("ctrl+a")
            screen.save_settled_picture(area, after)
            changes = screen.shapes(before, after, "-compose", "difference", "-composite", "-colorspace", "gray",
                                    "-threshold", "4%", "-morphology", "close", "square:6")
            items = [place for place in changes if place.width < area.width - 8 and place.height > 8]
            if not items:
                return None
            first = min(items, key=lambda place: (place.y, place.x))
            # Adjacent items may form one shape, but its left end is always an item.
            return area.x + first.x + min(first.width // 2, 42), area.y + first.y + min(first.height // 3, 30)

        return screen.until(changed, "an item that selecting changes")

    def drop(self, item):
        point = self.drop_point()
        before = self.picture_at_rest(item)
        screen.begin_drag(item, point)
        self.hover_until_lit(point, before)
        screen.pointer("mouseup", 1)


class FileManagerDrag(FileManagerTest):
    # File names as in real folders: with blanks, quotes, signs and other scripts.
    names = ("plain.rtf", "two  blanks.html", "it's \"quoted\" & 100%25.rtf", "\u00fcber \u6587\u66f8 \U0001f4c4.rtf")

    def open_folder(self, *command):
        """Opens the folder of papers in a file manager at the right and selects its items; returns a point on an item."""
        self.start(*command, self.papers, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        files = screen.window(f"^{self.papers.name}( |$)")
        subprocess.run(["xdotool", "windowsize", files, "560", "480", "windowmove", files, "680", "40", "windowactivate", files],
                       stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        return self.selected_item(screen.settled_place(files))

    def one_document(self, *file_manager):
        self.preset_destination()
        paper = self.document("thesis.rtf", "Of drops and links.")
        self.start_program()
        self.drop(self.open_folder(*file_manager))
        self.wait_for_log(self.converted(paper))
        self.assert_text("thesis.txt", "Of drops and links.")
        self.assertEqual(self.converted_count(), 1)
        self.assertTrue(paper.exists(), "the document was moved")

    def many_documents(self, *file_manager):
        self.preset_destination()
        papers = [self.document(name, f"Text of number {i}.") if name.endswith(".rtf") else self.page(name, i)
                  for i, name in enumerate(self.names)]
        papers.append(self.document("Letter.rtfd/TXT.rtf", "Text of the bundle.").parent)
        self.start_program()
        self.drop(self.open_folder(*file_manager))
        # The order depends on the file manager.
        lines = self.wait_for_log_lines(len(papers))
        self.assertEqual(sorted(lines), sorted(self.converted(paper) for paper in papers))
        for i, name in enumerate(self.names):
            self.assert_text(name.rsplit(".", 1)[0] + ".txt", f"Text of number {i}.")
        self.assert_text("Letter.txt", "Text of the bundle.")
        self.assertEqual(self.converted_count(), len(papers))
        for paper in papers:
            self.assertTrue(paper.exists(), f"{paper} was moved")

    def page(self, name, number):
        path = self.papers / name
        path.write_text(f"<p>Text of number {number}.</p>")
        return path

    def wait_for_log_lines(self, count):
        def lines():
            found = self.log().split("\n")[1:]
            return len(found) >= count and found

        return [line.split("} ", 1)[1] for line in screen.until(lines, lambda: f"{count} log lines, there is {self.log()!r}")]

    def test_one_from_pcmanfm(self):
        self.one_document("pcmanfm", "--no-desktop")

    def test_many_from_pcmanfm(self):
        self.many_documents("pcmanfm", "--no-desktop")

    def test_one_from_thunar(self):
        self.one_document("thunar")

    def test_many_from_thunar(self):
        self.many_documents("thunar")


if __name__ == "__main__":
    unittest.main(verbosity=2)
