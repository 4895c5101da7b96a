#!/usr/bin/env python3
"""End-to-end tests of the program's life: starts, later starts, closing, long conversions, the end. Run under session.py.

$QUILLOW, $QUILLOW_CONVERT, $DRAG_SOURCE and $WINDOW_MANAGER_MESSAGE name the programs.
"""
import os
import pathlib
import plistlib
import signal
import subprocess
import time
import unittest

import accessibility
import screen
import session
from gui_test import DATA_FILE, WINDOW_TITLE, ProgramTest, rtf

RUNTIME = pathlib.Path(os.environ["XDG_RUNTIME_DIR"])
screen.LIMIT_SECONDS = LIMIT_SECONDS = 200  # a long conversion on a busy machine


def long_pdf(pages, lines=75):
    """A small PDF that takes long to convert: every page shows the same many lines."""
    content = b"BT /F 9 Tf 40 800 Td 10 TL\n" + b"(The quick brown fox jumps over the lazy dog.) Tj T*\n" * lines + b"ET\n"
    kids = b" ".join(b"%d 0 R" % (5 + i) for i in range(pages))
    page = b"<</Type/Page/Parent 2 0 R/MediaBox[0 0 600 842]/Contents 4 0 R/Resources<</Font<</F 3 0 R>>>>>>"
    objects = [b"<</Type/Catalog/Pages 2 0 R>>", b"<</Type/Pages/Count %d/Kids[%s]>>" % (pages, kids),
               b"<</Type/Font/Subtype/Type1/BaseFont/Helvetica>>",
               b"<</Length %d>>stream\n%sendstream" % (len(content), content)] + [page] * pages
    out, offsets = bytearray(b"%PDF-1.4\n"), []
    for number, body in enumerate(objects, 1):
        offsets.append(len(out))
        out += b"%d 0 obj\n%s\nendobj\n" % (number, body)
    table = len(out)
    out += b"xref\n0 %d\n0000000000 65535 f \n" % (len(objects) + 1)
    out += b"".join(b"%010d 00000 n \n" % offset for offset in offsets)
    out += b"trailer<</Size %d/Root 1 0 R>>\nstartxref\n%d\n%%%%EOF\n" % (len(objects) + 1, table)
    return bytes(out)


def pages_that_take(seconds, folder, trial_pages=1000, most_pages=100000):
    """About how many pages of long_pdf take this many seconds to convert. It measures this machine with a trial document."""
    trial = folder / "trial.pdf"
    trial.write_bytes(long_pdf(trial_pages))
    begin = time.monotonic()
    subprocess.run([os.environ["QUILLOW_CONVERT"], trial], check=True, stdout=subprocess.DEVNULL)
    taken = time.monotonic() - begin
    trial.unlink()
    return min(most_pages, int(seconds / taken * trial_pages))


class LifeTest(ProgramTest):
    def setUp(self):
        super().setUp()
        self.preset_destination()

    def start_again(self, *arguments, **options):
        """Starts the program a second time; returns its exit code and its messages."""
        done = subprocess.run([os.environ["QUILLOW"], *arguments], stderr=subprocess.PIPE, timeout=LIMIT_SECONDS, **options)
        return done.returncode, done.stderr.decode()

    def window_manager_message(self, *arguments):
        return screen.output_of(os.environ["WINDOW_MANAGER_MESSAGE"], *arguments).decode().strip()

    def close_window(self, window=None):
        self.window_manager_message("close", window or self.window)

    def close_window_and_wait(self):
        self.close_window()
        screen.until(lambda: not screen.find_window(WINDOW_TITLE), "window closed")

    def active_window(self):
        return screen.output_of("xdotool", "getactivewindow").decode().strip()

    def wait_for_answer(self):
        """Waits until the program has handled all earlier events: it answers assistive tools from its event loop."""
        self.accessible.clear_cache()
        self.accessible.get_child_count()

    def end_and_wait(self, number=signal.SIGTERM):
        self.program.send_signal(number)
        return self.program.wait(LIMIT_SECONDS)

    def sockets(self):
        return sorted(RUNTIME.glob("org.quillow.Quillow-*.socket"))


class Start(LifeTest):
    def test_no_library_for_pictures_is_loaded(self):
        self.start_program()
        screen.until(lambda: screen.output_of("xprop", "-id", self.window, "_NET_WM_ICON").count(b"Icon"), "icon")
        self.wait_for_answer()
        libraries = {line.split()[-1] for line in pathlib.Path(f"/proc/{self.program.pid}/maps").read_text().splitlines()}
        self.assertTrue([name for name in libraries if "libQt6Widgets" in name])
        self.assertEqual([name for name in libraries if "imageformats" in name], [])

    def test_libraries_use_their_own_zlib(self):
        symbols = screen.output_of("nm", "-D", "--defined-only", os.environ["QUILLOW"]).decode().split()
        self.assertIn("xcb_wait_for_event", symbols)
        self.assertNotIn("inflate", symbols)


class SecondStart(LifeTest):
    def test_its_documents_go_to_the_running_window(self):
        folder = self.papers / "two  blanks 'and' \"quotes\""
        folder.mkdir()
        names = [b"plain.rtf", b"%1 %n.rtf", b"line\nbreak.rtf", b"\xff\xfe\x80latin.rtf", "\u00fcber \u6587.rtf".encode()]
        for name in names:
            with open(os.fsencode(folder) + b"/" + name, "w") as file:
                file.write(rtf("handed over"))
        self.start_program()
        self.assertEqual(self.start_again(b"--", b"./plain.rtf", *names[1:], cwd=folder), (0, ""))
        screen.until(lambda: self.converted_count() == len(names), "all converted")
        for name in names:
            text = os.fsencode(self.texts) + b"/" + name[:-4] + b".txt"
            self.assertTrue(os.path.exists(text), text)
        # The same document again: each start counts.
        self.assertEqual(self.start_again("plain.rtf", cwd=folder), (0, ""))
        screen.until(lambda: self.converted_count() == len(names) + 1, "converted again")

    def test_it_brings_a_covered_window_to_the_front(self):
        self.start_program()
        other = self.start(os.environ["DRAG_SOURCE"], "--title", "cover", stdout=subprocess.PIPE, text=True)
        other.stdout.readline()
        cover = screen.window("^cover$")
        subprocess.run(["xdotool", "windowactivate", "--sync", cover])
        self.assertEqual(self.active_window(), cover)
        self.assertEqual(self.start_again(), (0, ""))
        screen.until(lambda: self.active_window() == self.window, "window in front")
        # Also if the window is minimised.
        subprocess.run(["xdotool", "windowminimize", "--sync", self.window])
        self.assertEqual(self.start_again(), (0, ""))
        screen.until(lambda: self.active_window() == self.window, "window back")

    def test_it_brings_a_closed_window_back(self):
        self.start_program()
        self.close_window_and_wait()
        self.assertEqual(self.start_again(), (0, ""))
        screen.window(WINDOW_TITLE)
        self.assertIsNone(self.program.poll())
        # Also if the second start has documents.
        self.window = screen.window(WINDOW_TITLE)
        self.close_window_and_wait()
        paper = self.document("late.rtf", "late")
        self.assertEqual(self.start_again(paper), (0, ""))
        screen.window(WINDOW_TITLE)
        self.wait_for_log(self.converted(paper))

    def test_two_starts_at_one_instant(self):
        papers = [self.document(f"{i}.rtf", f"text {i}") for i in range(8)]
        starts = [self.start(os.environ["QUILLOW"], paper, stderr=subprocess.DEVNULL) for paper in papers]
        screen.until(lambda: sum(start.poll() is None for start in starts) == 1, "one left")
        self.assertEqual([start.poll() for start in starts].count(0), len(papers) - 1)
        self.accessible = accessibility.application("Quillow")
        screen.until(lambda: self.converted_count() == len(papers), "all converted")

    def test_a_killed_one_is_in_nobodys_way(self):
        self.start_program()
        self.program.kill()
        self.program.wait()
        self.assertEqual(len(self.sockets()), 1)
        screen.until(lambda: not screen.find_window(WINDOW_TITLE), "window gone")
        paper = self.document("next.rtf", "next")
        self.start_program(paper)
        self.wait_for_log(self.converted(paper))
        self.assertEqual(self.end_and_wait(), 0)
        self.assertEqual(self.sockets(), [])

    def test_a_stopped_one_is_told_of(self):
        self.start_program()
        self.program.send_signal(signal.SIGSTOP)
        try:
            code, message = self.start_again(self.document("x.rtf", "x"))
        finally:
            self.program.send_signal(signal.SIGCONT)
        self.assertEqual(code, 1)
        self.assertIn("does not answer", message)

    def test_each_display_has_an_instance_of_its_own(self):
        self.start_program()
        first = accessibility.application("Quillow", self.program.pid)
        display = session.start_server(self.start, os.environ["SCREEN_SIZE"])
        there = {**os.environ, "DISPLAY": display}
        papers = [self.document(name, "elsewhere") for name in ("one.rtf", "two.rtf")]
        other = self.start(os.environ["QUILLOW"], papers[0], env=there)
        search = ["xdotool", "search", "--onlyvisible", "--name", WINDOW_TITLE]
        screen.until(lambda: other.poll() is not None or subprocess.run(search, env=there, capture_output=True).stdout,
                     "window on the other display, or the end")
        self.assertIsNone(other.poll())
        # A later start finds the instance of its display.
        self.accessible = accessibility.application("Quillow", other.pid)
        self.wait_for_log(self.converted(papers[0]))
        self.assertEqual(self.start_again(papers[1], env=there), (0, ""))
        self.wait_for_log(*map(self.converted, papers))
        self.accessible = first
        self.assertEqual(self.converted_count(), 0)
        paper = self.document("three.rtf", "here")
        self.assertEqual(self.start_again(paper), (0, ""))
        self.wait_for_log(self.converted(paper))

    def test_without_a_private_folder_each_runs_alone(self):
        RUNTIME.chmod(0o755)
        self.addCleanup(RUNTIME.chmod, 0o700)
        self.start_program()
        other = self.start(os.environ["QUILLOW"])
        screen.until(lambda: len(screen.output_of("xdotool", "search", "--onlyvisible", "--name", WINDOW_TITLE).split()) == 2,
                     "second window")
        # No later start could bring their windows back, so the programs end with their windows.
        for window in screen.output_of("xdotool", "search", "--onlyvisible", "--name", WINDOW_TITLE).split():
            self.close_window(window.decode())
        self.assertEqual(self.program.wait(LIMIT_SECONDS), 0)
        self.assertEqual(other.wait(LIMIT_SECONDS), 0)


def saved_log():
    """The log in the data file, or None."""
    if not DATA_FILE.exists():
        return None
    archive = plistlib.loads(DATA_FILE.read_bytes())
    objects = archive["$objects"]
    root = objects[archive["$top"]["root"].data]
    entries = {objects[key.data]: objects[value.data] for key, value in zip(root["NS.keys"], root["NS.objects"])}
    return entries["logContent"]


class AlertAtLaunch(LifeTest):
    """A newer release wrote the data file: an alert appears before the window."""
    def setUp(self):
        super().setUp()
        DATA_FILE.parent.mkdir(parents=True)
        uid = plistlib.UID
        DATA_FILE.write_bytes(plistlib.dumps({
            "$archiver": "NSKeyedArchiver", "$version": 100000, "$top": {"root": uid(1)}, "$objects": [
                "$null", {"$class": uid(4), "NS.keys": [uid(2)], "NS.objects": [uid(3)]}, "appversion", 10502,
                {"$classname": "NSDictionary", "$classes": ["NSDictionary", "NSObject"]}]}, fmt=plistlib.FMT_BINARY))

    def start_under_alert(self, *arguments):
        self.program = self.start(os.environ["QUILLOW"], *arguments)
        self.accessible = accessibility.application("Quillow")
        return screen.until(lambda: accessibility.find(self.accessible, "alert", ""), "alert")

    def test_documents_wait_for_the_end_of_launch(self):
        first, second = self.document("first.rtf", "one"), self.document("second.rtf", "two")
        self.start_under_alert(first)
        self.assertEqual(self.start_again(second), (0, ""))
        screen.until(lambda: len(screen.output_of("xdotool", "search", "--onlyvisible", "--name", WINDOW_TITLE).split()) == 2,
                     "alert and window")
        # The handover is one event, and it would cause a second one, the conversion.
        for _ in range(2):
            self.wait_for_answer()
        self.assertEqual(list(self.texts.iterdir()), [])
        subprocess.run(["xdotool", "key", "Return"], check=True)
        self.wait_for_log(self.converted(first), self.converted(second))

    def test_a_signal_ends_it_in_order(self):
        self.start_under_alert(self.document("first.rtf", "one"))
        self.assertEqual(self.end_and_wait(), 0)
        self.assertEqual(list(self.texts.iterdir()), [])
        self.assertEqual(saved_log(), "")


class Closing(LifeTest):
    def test_a_closed_window_leaves_the_program_running(self):
        self.start_program()
        self.close_window_and_wait()
        # A later start would run on its own if the program had ended with its window.
        self.assertEqual(self.start_again(), (0, ""))
        self.window = screen.window(WINDOW_TITLE)
        self.close_window_and_wait()
        self.assertIsNone(self.program.poll())
        self.assertEqual(self.end_and_wait(), 0)

    def test_a_window_with_a_sheet_stays(self):
        self.start_program()
        accessibility.press(accessibility.control(self.accessible, "push button", "Clear Log"))
        accessibility.control(self.accessible, "push button", "OK")
        place = screen.place_of(self.window)
        self.close_window()
        # The window manager handles the move after the request to close.
        subprocess.run(["xdotool", "windowmove", self.window, str(place.x + 50), str(place.y + 50)])
        screen.until(lambda: screen.place_of(self.window) != place, "window moved")
        self.assertTrue(screen.find_window(WINDOW_TITLE))
        self.assertEqual(self.window_manager_message("ping", self.window, str(LIMIT_SECONDS * 1000)), "alive")
        self.wait_for_answer()
        self.assertTrue(screen.find_window(WINDOW_TITLE))
        accessibility.press(accessibility.control(self.accessible, "push button", "OK"))
        screen.until(lambda: not accessibility.find(self.accessible, "push button", "OK"), "sheet gone")
        self.close_window_and_wait()

    def test_every_signal_ends_it_in_order(self):
        paper = self.document("thesis.rtf", "x")
        for count, number in enumerate((signal.SIGTERM, signal.SIGINT, signal.SIGHUP), 1):
            self.start_program(paper)
            self.wait_for_log(*[self.converted(paper)] * count)
            log = self.log()
            self.close_window_and_wait()
            self.assertEqual(self.end_and_wait(number), 0)
            self.assertEqual(self.sockets(), [])
            self.assertEqual(saved_log(), log)

    def test_a_signal_ends_it_under_a_sheet(self):
        self.start_program()
        accessibility.press(accessibility.control(self.accessible, "push button", "Clear Log"))
        accessibility.control(self.accessible, "push button", "OK")
        self.assertEqual(self.end_and_wait(), 0)


    def test_a_window_system_that_goes_away_ends_it(self):
        paper = self.document("thesis.rtf", "x")
        self.start_program(paper, stderr=subprocess.DEVNULL)
        self.wait_for_log(self.converted(paper))
        log = self.log()
        subprocess.run(["xdotool", "windowkill", self.window], check=True)  # closes the program's connection
        self.assertEqual(self.program.wait(LIMIT_SECONDS), 1)
        self.assertEqual(saved_log(), log)
        # The next start is not blocked.
        self.start_program()


class LongConversion(LifeTest):
    SECONDS = 8  # about the duration of a conversion: several times what most tests need meanwhile

    def setUp(self):
        super().setUp()
        self.long = self.papers / "long.pdf"
        self.long_text = self.texts / "long.txt"

    def begin(self, *others, seconds=SECONDS):
        self.long.write_bytes(long_pdf(pages_that_take(seconds, self.papers)))
        self.start_program()
        # Find the spinner, which turns while the document is converted.
        screen.move_window(self.window, 10, 40)
        place = screen.settled_place(self.window)
        spinner = accessibility.control(self.accessible, "filler", "Not converting").get_extents(1)
        self.spinner = screen.Place(place.x + spinner.x, place.y + spinner.y, spinner.width, spinner.height)
        still = screen.settled_picture(self.spinner)
        self.assertEqual(self.start_again(self.long, *others), (0, ""))
        screen.until(lambda: screen.picture_of(self.spinner) != still, "spinner seen")

    def drop_area(self):
        """A part of the drop area that has texts and no pointer. Assistive tools get no answer meanwhile."""
        window = screen.place_of(self.window)
        return screen.Place(window.x + 40, window.y + 40, window.width - 80, 120)

    def assert_still_converting(self):
        self.assertFalse(self.long_text.exists(), "the document was too short for this test")

    def ping(self):
        return self.window_manager_message("ping", self.window, "4000")

    def test_the_window_stays_alive(self):
        self.begin(seconds=20)
        self.assertEqual(self.ping(), "alive")
        pictures = set()
        screen.until(lambda: pictures.add(screen.picture_of(self.spinner)) or len(pictures) > 2, "spinner turning")
        self.assert_still_converting()

        # The window is painted after another window has covered it.
        place = screen.place_of(self.window)
        corner = screen.Place(place.x + 20, place.y + 60, 60, 60)
        before = screen.picture_of(corner)
        self.start(os.environ["DRAG_SOURCE"], "--title", "cover", stdout=subprocess.DEVNULL)
        cover = screen.window("^cover$")
        screen.move_window(cover, place.x, place.y + 20)
        subprocess.run(["xdotool", "windowraise", cover])
        screen.until(lambda: screen.picture_of(corner) != before, "covered")
        screen.move_window(cover, 900, 500)
        screen.until(lambda: screen.picture_of(corner) == before, "uncovered and painted")
        self.assertEqual(self.ping(), "alive")
        self.assert_still_converting()
        screen.until(self.long_text.exists, "converted")
        self.assertEqual(self.ping(), "alive")

    def test_what_comes_meanwhile_takes_effect_afterwards_in_order(self):
        first, second = self.document("first.rtf", "one"), self.document("second.rtf", "two")
        self.begin()
        self.assertEqual(self.start_again(first), (0, ""))
        self.drag("link", self.uri(second), expect="link")
        self.wait_for_log(self.converted(self.long), self.converted(first), self.converted(second))

    def test_a_handover_is_answered_at_once(self):
        late = self.document("late.rtf", "late")
        self.begin()
        self.assertEqual(self.start_again(late), (0, ""))
        self.assert_still_converting()
        self.wait_for_log(self.converted(self.long), self.converted(late))

    def test_closing_waits_and_does_not_quit(self):
        self.begin()
        self.close_window()
        self.assert_still_converting()
        screen.until(lambda: not screen.find_window(WINDOW_TITLE), "window closed")
        self.assertTrue(self.long_text.exists())
        self.assertIsNone(self.program.poll())

    def test_a_signal_waits_for_the_document_and_no_longer(self):
        late = self.document("late.rtf", "late")
        self.begin(late, self.long)
        self.program.send_signal(signal.SIGTERM)
        self.assert_still_converting()
        self.assertEqual(self.program.wait(LIMIT_SECONDS), 0)
        self.assertTrue(self.long_text.exists())
        self.assertFalse((self.texts / "late.txt").exists())
        self.assertEqual([path.name for path in self.texts.iterdir()], ["long.txt"])
        self.assertEqual([line.split("} ", 1)[1] for line in saved_log().split("\n")[1:]], [self.converted(self.long)])

    def test_ctrl_q_waits_for_the_document_and_no_longer(self):
        late = self.document("late.rtf", "late")
        self.begin(late)
        subprocess.run(["xdotool", "windowactivate", "--sync", self.window])
        before = screen.picture_of(self.drop_area())
        screen.press_keys("ctrl+q")
        screen.until(lambda: screen.picture_of(self.drop_area()) != before, "the window says that it ends")
        self.assert_still_converting()
        self.assertEqual(self.program.wait(LIMIT_SECONDS), 0)
        self.assertEqual([path.name for path in self.texts.iterdir()], ["long.txt"])
        self.assertEqual([line.split("} ", 1)[1] for line in saved_log().split("\n")[1:]], [self.converted(self.long)])


if __name__ == "__main__":
    unittest.main(verbosity=2)
