#!/usr/bin/env python3
"""End-to-end tests of the desktop program on a real X server; run under session.py.

$QUILLOW and $DRAG_SOURCE name the two programs. What the program did is read from the files it wrote and, over the
accessibility tree, from its window.
"""
import os
import pathlib
import plistlib
import signal
import subprocess
import sys
import tempfile
import unittest
import urllib.parse

import accessibility
import screen

HOME = pathlib.Path(os.environ["HOME"])
HERE = pathlib.Path(__file__).resolve().parent
DATA_FILE = HOME / "Library/Application Support/Quillow/Quillow.qwldat"
WINDOW_TITLE = "^Quillow$"


def rtf(text):
    """An RTF document with this text."""
    return "{\\rtf1\\ansi " + "".join(c if ord(c) < 128 else f"\\u{ord(c)}?" for c in text) + "\\par}"


class ProgramTest(unittest.TestCase):
    def setUp(self):
        self.papers = HOME / "Papers"
        self.texts = HOME / "Texts"
        self.papers.mkdir(parents=True, exist_ok=True)
        self.texts.mkdir(exist_ok=True)
        self.started = []

    def tearDown(self):
        for process in reversed(self.started):
            if process.poll() is None:
                process.terminate()
            try:
                process.wait(20)
            except subprocess.TimeoutExpired:
                process.kill()
                process.wait()
            if process.stdout:
                process.stdout.close()

    # The program.

    def preset_destination(self):
        subprocess.run([sys.executable, HERE / "presets.py", self.texts], check=True)

    def start(self, *command, **options):
        process = subprocess.Popen([str(part) for part in command], **options)
        self.started.append(process)
        return process

    def start_program(self, *arguments, **options):
        self.program = self.start(os.environ["QUILLOW"], *arguments, **options)
        self.window = screen.window(WINDOW_TITLE)
        self.accessible = accessibility.application("Quillow")

    def document(self, name, text):
        path = self.papers / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(rtf(text))
        return path

    def log(self):
        node = accessibility.find(self.accessible, "text", "Message log")
        return accessibility.text_of(node) if node else ""

    def wait_for_log(self, *messages):
        """Waits for exactly these messages in the log, in this order."""
        def lines():
            found = self.log().split("\n")[1:]
            return len(found) >= len(messages) and found

        found = screen.until(lines, lambda: f"log lines {messages}, there is {self.log()!r}")
        self.assertEqual([line.split("} ", 1)[1] for line in found], list(messages))

    def converted(self, document, name=None):
        return f"Converted {document}  >>  {self.texts}/{name or document.stem}.txt"

    def no_text(self, document):
        return f"Not able to extract any text from {document}"

    def converted_count(self):
        return int(accessibility.control(self.accessible, "label", "Converted: ").get_name().split(": ")[1])

    def assert_text(self, name, text):
        self.assertIn(text, (self.texts / name).read_text())

    def wait_until_idle(self):
        """Waits until the program has processed all earlier events, before a test checks that something did not happen. The
        program handles keys in order, and handles none of these while a sheet is open on the window."""
        subprocess.run(["xdotool", "windowactivate", "--sync", self.window])
        screen.press_keys("ctrl+comma")
        subprocess.run(["xdotool", "windowactivate", "--sync", screen.window("^General")])
        screen.press_keys("Escape")
        screen.until(lambda: not screen.find_window("^General"), "preferences closed")

    # The drag.

    def drop_point(self):
        """Moves the window to the left; returns the middle of the drop area."""
        screen.move_window(self.window, 10, 40)
        window = screen.settled_place(self.window)
        area = accessibility.control(self.accessible, "push button", "Drop documents here").get_extents(1)  # window
        # The left end shows whether the area is lit, because the dragged icon at the pointer does not cover it.
        self.drop_place = screen.Place(window.x + area.x, window.y + area.y, 100, area.height)
        return window.x + area.x + area.width // 2, window.y + area.y + area.height // 2

    def picture_at_rest(self, start):
        """The picture of the drop area with the pointer elsewhere."""
        screen.pointer("mousemove", *start)
        return screen.settled_picture(self.drop_place)

    def hover_until_lit(self, point, before):
        screen.hover_until(point, lambda: screen.picture_of(self.drop_place) != before, "drop area lit")

    def drag(self, actions, *uris, text=None, expect):
        """Drags from our test program onto the drop area and checks the resulting action: link or none."""
        arguments = ["--actions", actions]
        for uri in uris:
            arguments += ["--uri", uri]
        if text:
            arguments += ["--text", text]
        title = f"drag-source-{len(self.started)}"
        source = self.start(os.environ["DRAG_SOURCE"], "--title", title, *arguments, stdout=subprocess.PIPE, text=True)
        self.assertEqual(source.stdout.readline(), "ready\n")
        source_window = screen.window(f"^{title}$")
        point = self.drop_point()
        screen.pointer("windowactivate", source_window)
        screen.move_window(source_window, 900, 500)
        place = screen.settled_place(source_window)
        self.carry_out_drag((place.x + place.width // 2, place.y + place.height // 2), point, source, expect)

    def carry_out_drag(self, start, point, source, expect):
        """Drags from the window of our test program; a refused drag must not change the drop area."""
        before = self.picture_at_rest(start)
        screen.begin_drag(start, point)
        if expect == "link":
            self.hover_until_lit(point, before)
        else:
            screen.hover(point, 1.5)
            self.assertEqual(screen.picture_of(self.drop_place), before, "a refused drag lit the drop area")
        screen.pointer("mouseup", 1)
        answers = []
        for line in source.stdout:
            answers.append(line.split())
            if answers[-1][0] == "result":
                break
        # The source runs until the end of the test, because the target may not have fetched the data yet.
        self.assertEqual(answers[-1], ["result", expect])

    @staticmethod
    def uri(path):
        return "file://" + urllib.parse.quote(os.fsencode(path))


class OwnDrag(ProgramTest):
    def setUp(self):
        super().setUp()
        self.preset_destination()

    def test_refused_actions_and_kinds(self):
        paper = self.document("thesis.rtf", "never")
        self.start_program()
        self.drag("copy", self.uri(paper), expect="none")
        self.drag("move", self.uri(paper), expect="none")
        self.drag("copy,move", self.uri(paper), expect="none")
        self.drag("copy,move,link", text=str(paper), expect="none")
        self.drag("copy,move,link", "https://example.org/thesis.rtf", expect="none")
        self.drag("copy,move,link", self.uri(paper), "https://example.org/thesis.rtf", expect="none")
        self.drag("copy,move,link", self.uri(paper), self.uri(paper).replace("file://", "file://other.example.org"),
                  expect="none")
        # The accepted drags show that the others were not just late.
        self.drag("copy,move,link", self.uri(paper), expect="link")
        self.drag("move,link", self.uri(paper), text=str(paper), expect="link")
        self.wait_for_log(self.converted(paper), self.converted(paper))
        self.assertTrue(paper.exists())

    def test_three_documents_in_one_drop(self):
        blanks = self.document("two  blanks & 'quotes' \"%1\".rtf", "first")
        letters = self.document("\u00fcber \u6587\u66f8.rtf", "second")
        bundle = self.document("Letter.rtfd/TXT.rtf", "third").parent
        self.start_program()
        self.drag("link,copy", self.uri(blanks), self.uri(letters), self.uri(bundle) + "/", expect="link")
        self.wait_for_log(self.converted(blanks), self.converted(letters), self.converted(bundle))
        self.assert_text(blanks.stem + ".txt", "first")
        self.assert_text(letters.stem + ".txt", "second")
        self.assert_text("Letter.txt", "third")
        self.assertEqual(self.converted_count(), 3)

    def test_a_failure_in_a_drop_is_told_in_the_small_window(self):
        good, late = self.document("good.rtf", "first"), self.document("late.rtf", "second")
        bad = self.papers / "bad.pdf"
        bad.write_bytes(b"")
        self.start_program()
        self.drag("link", self.uri(good), self.uri(bad), self.uri(late), expect="link")
        self.wait_for_log(self.converted(good), self.no_text(bad), self.converted(late))
        entry = accessibility.control(self.accessible, "label", "Latest entry: ")
        self.assertEqual(entry.get_name(), f"Latest entry: {self.converted(late)} \u00b7 1 not converted")
        small = screen.place_of(self.window).height
        place = entry.get_extents(0)  # screen coordinates
        screen.pointer("mousemove", place.x + place.width // 2, place.y + place.height // 2, "click", 1)
        screen.until(lambda: screen.place_of(self.window).height > small, "the log")

    def test_same_document_twice(self):
        paper = self.document("thesis.rtf", "again")
        self.start_program()
        self.drag("link", self.uri(paper), self.uri(paper), expect="link")
        self.drag("link", self.uri(paper), expect="link")
        self.wait_for_log(*[self.converted(paper)] * 3)
        self.assertEqual(self.converted_count(), 3)

    def test_drag_during_a_long_conversion(self):
        papers = [self.document(f"many/{i:03}.rtf", f"text {i}\\par " * 20000) for i in range(120)]
        late = self.document("late.rtf", "late")
        self.start_program(*papers)
        # The drag arrives while the first documents are converted. It waits, and no document is lost.
        self.drag("link", self.uri(late), expect="link")
        self.wait_for_log(*[self.converted(paper) for paper in papers], self.converted(late))


class Panels(ProgramTest):
    def test_drop_asks_for_the_destination(self):
        first, second = self.document("first.rtf", "one"), self.document("second.rtf", "two")
        self.start_program()
        self.drag("link", self.uri(first), self.uri(second), expect="link")
        screen.window("^Choose a Folder")
        accessibility.control(self.accessible, "label", "Please select the destination folder")
        screen.until(lambda: self.type_into_panel(str(self.texts)), "panel closed")
        self.wait_for_log(self.converted(first), self.converted(second))

        # A later run asks again. Cancel converts nothing.
        self.program.send_signal(signal.SIGTERM)
        self.assertEqual(self.program.wait(30), 0)
        self.start_program(first)
        panel = screen.window("^Choose a Folder")
        subprocess.run(["xdotool", "windowactivate", "--sync", panel])
        screen.press_keys("Escape")
        screen.until(lambda: not screen.find_window("^Choose a Folder"), "panel gone")
        self.wait_until_idle()
        self.wait_for_log(self.converted(first), self.converted(second))

    def test_names_that_are_not_utf8(self):
        letter, bundle = (self.papers / os.fsdecode(name) for name in (b"caf\xe9.rtf", b"no\xebl.rtfd"))
        letter.write_text(rtf("one"))
        bundle.mkdir()
        (bundle / "TXT.rtf").write_text(rtf("two"))
        self.texts = HOME / os.fsdecode(b"T\xe9xts")
        self.texts.mkdir()
        self.start_program()
        self.drag("link", self.uri(letter), self.uri(bundle), expect="link")
        screen.window("^Choose a Folder")
        screen.until(lambda: self.type_into_panel(self.uri(self.texts)), "panel closed")
        screen.until(lambda: self.log().count("Converted ") == 2, "two lines of the log")
        self.assert_text(os.fsdecode(b"caf\xe9.txt"), "one")
        self.assert_text(os.fsdecode(b"no\xebl.txt"), "two")

        # The same from the command line into the same folder, fixed.
        self.program.send_signal(signal.SIGTERM)
        self.assertEqual(self.program.wait(30), 0)
        for text in self.texts.iterdir():
            text.unlink()
        self.preset_destination()
        self.start_program(letter)
        screen.until(lambda: self.log().count("Converted ") == 3, "one more line of the log")
        self.assert_text(os.fsdecode(b"caf\xe9.txt"), "one")

    def test_many_documents_ask_once(self):
        papers = [self.document(f"many/{i:03}.rtf", f"text {i}") for i in range(500)]
        self.start_program()
        self.drag("copy,link", *(self.uri(paper) for paper in papers), expect="link")
        screen.window("^Choose a Folder")
        screen.until(lambda: self.type_into_panel(str(self.texts)), "panel closed")
        self.wait_for_log(*(self.converted(paper) for paper in papers))
        self.assertEqual(self.converted_count(), 500)
        self.assertEqual(len(list(self.texts.iterdir())), 500)
        self.wait_until_idle()
        self.assertIsNone(screen.find_window("^Choose a Folder"), "asked again")

        # Cancel drops all of them, and the next drop starts a new list.
        self.drag("link", *(self.uri(paper) for paper in papers), expect="link")
        panel = screen.window("^Choose a Folder")
        subprocess.run(["xdotool", "windowactivate", "--sync", panel])
        screen.press_keys("Escape")
        screen.until(lambda: not screen.find_window("^Choose a Folder"), "panel gone")
        self.wait_until_idle()
        self.assertEqual(self.converted_count(), 500)
        self.drag("link", self.uri(papers[0]), expect="link")
        screen.window("^Choose a Folder")
        screen.until(lambda: self.type_into_panel(str(self.texts)), "panel closed")
        screen.until(lambda: self.converted_count() == 501, "one more text")

    def type_into_panel(self, text):
        panel = screen.find_window("^Choose a Folder")
        if not panel:
            return True
        subprocess.run(["xdotool", "windowactivate", "--sync", panel])
        screen.press_keys("ctrl+a")
        screen.type_text(text)
        screen.press_keys("Return")
        screen.until(lambda: not screen.find_window("^Choose a Folder"), "panel gone")
        return True

    def test_refused_type_is_told(self):
        self.preset_destination()
        notes = self.papers / "notes.txt"
        notes.write_text("x")
        self.start_program()
        self.drag("link", self.uri(notes), expect="link")
        accessibility.control(self.accessible, "label", "Can't Accept This File Here")
        accessibility.control(self.accessible, "label", "You can drop here only File type: RTF, RTFD, HTM, HTML, PDF")
        accessibility.press(accessibility.control(self.accessible, "push button", "OK"))
        self.wait_until_idle()
        self.assertEqual(self.log(), "")

    def test_documents_chosen_by_keyboard(self):
        self.preset_destination()
        paper = self.document("thesis.rtf", "typed")
        self.start_program()
        subprocess.run(["xdotool", "windowactivate", "--sync", self.window])
        screen.press_keys("ctrl+o")
        chooser = screen.window("^Choose Files")
        subprocess.run(["xdotool", "windowactivate", "--sync", chooser])
        screen.type_text(str(paper))
        screen.press_keys("Return")
        self.wait_for_log(self.converted(paper))


class Preferences(ProgramTest):
    def press_in(self, title, *keys):
        subprocess.run(["xdotool", "windowactivate", "--sync", screen.window(title)])
        screen.press_keys(*keys)

    def test_panes_by_keyboard(self):
        self.start_program()
        self.press_in(WINDOW_TITLE, "ctrl+comma")
        preferences = screen.window("^General")
        general = screen.settled_place(preferences)
        self.assertEqual(general.height, 278)

        self.press_in("^General", "alt+u")
        self.assertEqual(screen.window("^Update"), preferences)
        screen.until(lambda: screen.place_of(preferences).height == 238, "height of the Update pane")
        update = screen.settled_place(preferences)
        self.assertEqual(update, general._replace(height=238))  # the top edge does not move
        accessibility.control(self.accessible, "push button", "Check Now")

        # An assistive tool can change the pane like a click.
        accessibility.press(accessibility.control(self.accessible, "radio button", "General"))
        screen.window("^General")
        screen.until(lambda: screen.place_of(preferences).height == 278, "height of the General pane")
        accessibility.press(accessibility.control(self.accessible, "radio button", "Update"))
        screen.window("^Update")
        self.press_in("^Update", "alt+g")
        screen.until(lambda: screen.place_of(preferences).height == 278, "height of the General pane")
        self.assertEqual(screen.settled_place(preferences), general)
        self.press_in("^General", "alt+f")
        defaults = HOME / ".config/org.quillow.Quillow/defaults.ini"
        screen.until(lambda: defaults.exists() and "destinationType=i:1" in defaults.read_text(), "stored type")
        accessibility.press(accessibility.control(self.accessible, "radio button", "Ask when saving"))
        screen.until(lambda: "destinationType=i:0" in defaults.read_text(), "stored type")
        self.press_in("^General", "Escape")
        screen.until(lambda: not screen.find_window("^General"), "preferences closed")
        self.assertIsNone(self.program.poll())


class Modes(ProgramTest):
    SMALL, BIG = 255, 580

    def disclosure(self):
        return accessibility.control(self.accessible, "check box", "Message log")

    def press_window(self, *keys):
        subprocess.run(["xdotool", "windowactivate", "--sync", self.window])
        screen.press_keys(*keys)

    def expect_height(self, height):
        def has_height():
            place = screen.place_of(self.window)
            # Only the lower edge moves, also during the animation.
            self.assertEqual(place._replace(height=0), self.place._replace(height=0))
            return place.height == height

        screen.until(has_height, f"height {height}")
        self.assertEqual(screen.settled_place(self.window), self.place._replace(height=height))
        self.assertEqual(accessibility.is_checked(self.disclosure()), height == self.BIG)

    def quit(self):
        self.press_window("ctrl+q")
        self.assertEqual(self.program.wait(30), 0)

    def test_switched_by_the_disclosure_button(self):
        self.start_program()
        screen.move_window(self.window, 60, 40)
        self.place = screen.settled_place(self.window)
        self.expect_height(self.SMALL)
        accessibility.press(self.disclosure())
        self.expect_height(self.BIG)
        accessibility.press(self.disclosure())
        self.expect_height(self.SMALL)
        self.press_window("alt+m")
        self.expect_height(self.BIG)
        self.press_window("ctrl+l")
        self.expect_height(self.SMALL)
        button = self.disclosure().get_extents(0)  # screen coordinates
        screen.pointer("mousemove", button.x + 8, button.y + button.height // 2, "click", 1)
        self.expect_height(self.BIG)

    def test_an_opened_log_is_on_the_screen(self):
        width, height = (int(n) for n in os.environ["SCREEN_SIZE"].split("x"))
        self.start_program()
        screen.move_window(self.window, 60, height - 300)
        low = screen.settled_place(self.window)
        accessibility.press(self.disclosure())
        screen.until(lambda: screen.place_of(self.window).height == self.BIG, "the log")
        raised = screen.settled_place(self.window)
        self.assertLess(raised.y, low.y)
        # The frame's lower edge is a few pixels below the contents.
        self.assertLessEqual(raised.y + raised.height, height)
        accessibility.press(self.disclosure())
        screen.until(lambda: screen.place_of(self.window) == low, "the window where it was")

    def test_only_the_width_is_the_users(self):
        self.start_program()
        screen.move_window(self.window, 60, 40)
        hints = screen.output_of("xprop", "-id", self.window, "WM_NORMAL_HINTS").decode()
        self.assertRegex(hints, r"minimum size: 615 by 255\b")
        self.assertRegex(hints, r"maximum size: 9999 by 255\b")
        subprocess.run(["xdotool", "windowsize", self.window, "800", "255"])
        screen.until(lambda: screen.place_of(self.window).width == 800, "width 800")
        self.place = screen.settled_place(self.window)
        self.press_window("ctrl+l")
        self.expect_height(self.BIG)
        hints = screen.output_of("xprop", "-id", self.window, "WM_NORMAL_HINTS").decode()
        self.assertRegex(hints, r"minimum size: 615 by 580\b")
        self.assertRegex(hints, r"maximum size: 9999 by 580\b")

    def test_log_and_mode_are_kept(self):
        self.preset_destination()
        first, second = self.document("first.rtf", "one"), self.document("second \U0001f600.rtf", "two")
        self.start_program(first, second)
        self.wait_for_log(self.converted(first), self.converted(second))
        self.press_window("ctrl+l")
        screen.until(lambda: screen.place_of(self.window).height == self.BIG, "big mode")
        log = self.log()
        self.quit()

        # An independent reader of the format can read the file.
        archive = plistlib.loads(DATA_FILE.read_bytes())
        objects = archive["$objects"]
        self.assertEqual((archive["$archiver"], archive["$version"], objects[0]), ("NSKeyedArchiver", 100000, "$null"))
        root = objects[archive["$top"]["root"].data]
        self.assertEqual(objects[root["$class"].data]["$classname"], "NSDictionary")
        entries = {objects[key.data]: objects[value.data] for key, value in zip(root["NS.keys"], root["NS.objects"])}
        self.assertEqual(entries, {"appversion": 10501, "bigWin": True, "logContent": log})
        self.assertEqual([path.name for path in DATA_FILE.parent.iterdir()], [DATA_FILE.name])

        self.start_program()
        self.place = screen.settled_place(self.window)
        self.expect_height(self.BIG)
        self.assertEqual(self.log(), log)
        self.assertEqual(self.converted_count(), 0)
        self.press_window("ctrl+l")
        self.expect_height(self.SMALL)
        self.quit()

        third = self.document("third.rtf", "three")
        self.start_program(third)
        self.wait_for_log(self.converted(first), self.converted(second), self.converted(third))
        self.assertTrue(self.log().startswith(log))
        self.assertEqual(screen.settled_place(self.window).height, self.SMALL)

    def test_file_of_another_writer(self):
        uid = plistlib.UID
        DATA_FILE.parent.mkdir(parents=True)
        DATA_FILE.write_bytes(plistlib.dumps({
            "$archiver": "NSKeyedArchiver", "$version": 100000, "$top": {"root": uid(1)}, "$objects": [
                "$null", {"$class": uid(9), "NS.keys": [uid(2), uid(3), uid(4)], "NS.objects": [uid(5), uid(6), uid(8)]},
                "appversion", "logContent", "bigWin", 10400, {"$class": uid(7), "NS.string": "\nstamp} \u00fcber"},
                {"$classname": "NSMutableString", "$classes": ["NSMutableString", "NSString", "NSObject"]}, True,
                {"$classname": "NSMutableDictionary", "$classes": ["NSMutableDictionary", "NSDictionary", "NSObject"]}]},
            fmt=plistlib.FMT_BINARY))
        self.start_program()
        self.place = screen.settled_place(self.window)
        self.expect_height(self.BIG)
        self.assertEqual(self.log(), "\nstamp} \u00fcber")

    def test_damaged_file_is_kept(self):
        DATA_FILE.parent.mkdir(parents=True)
        DATA_FILE.write_bytes(b"bplist00 and no more")
        with tempfile.TemporaryFile() as errors:
            self.start_program(stderr=errors)
            self.assertEqual(self.log(), "")
            self.quit()
            errors.seek(0)
            lines = errors.read().decode().splitlines()
        kept = DATA_FILE.with_name(DATA_FILE.name + ".damaged")
        self.assertEqual(kept.read_bytes(), b"bplist00 and no more")
        self.assertEqual([line for line in lines if str(kept) in line], lines)
        self.assertEqual(len(lines), 1)
        self.assertEqual(plistlib.loads(DATA_FILE.read_bytes())["$archiver"], "NSKeyedArchiver")


class Life(ProgramTest):
    def test_every_control_has_a_name(self):
        self.preset_destination()
        self.start_program(self.document("thesis.rtf", "x"))
        self.wait_for_log(self.converted(self.papers / "thesis.rtf"))
        nodes = list(accessibility.walk(self.accessible))
        unnamed = [node.get_role_name() for node in nodes
                   if node.get_role_name() in accessibility.NAMED_ROLES and not node.get_name()]
        self.assertEqual(unnamed, [])
        self.assertGreater(len(nodes), 30)

    def test_documents_of_the_command_line(self):
        self.preset_destination()
        paper, missing = self.document("thesis.rtf", "one"), self.papers / "missing.pdf"
        bad = self.papers / "scan.pdf"
        bad.write_bytes(b"this is no PDF document")
        os.chdir(self.papers)
        self.start_program("thesis.rtf", missing.name, bad)
        self.wait_for_log(self.converted(paper), self.no_text(bad))

    def test_clear_undo_redo(self):
        self.preset_destination()
        paper = self.document("thesis.rtf", "x")
        self.start_program(paper)
        self.wait_for_log(self.converted(paper))
        text = self.log()
        accessibility.press(accessibility.control(self.accessible, "push button", "Clear Log"))
        accessibility.press(accessibility.control(self.accessible, "push button", "OK"))
        screen.until(lambda: self.log() == "", "log cleared")
        subprocess.run(["xdotool", "windowactivate", "--sync", self.window])
        screen.press_keys("ctrl+z")
        screen.until(lambda: self.log() == text, "log back")
        screen.press_keys("ctrl+shift+z")
        screen.until(lambda: self.log() == "", "log cleared again")

    def test_signals_and_the_menu_end_it_in_order(self):
        for end in (lambda: self.program.send_signal(signal.SIGTERM), lambda: self.program.send_signal(signal.SIGINT),
                    lambda: screen.press_keys("ctrl+q")):
            self.start_program()
            subprocess.run(["xdotool", "windowactivate", "--sync", self.window])
            end()
            self.assertEqual(self.program.wait(30), 0)
            screen.until(lambda: not screen.find_window(WINDOW_TITLE), "window gone")


if __name__ == "__main__":
    unittest.main(verbosity=2)
