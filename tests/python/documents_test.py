#!/usr/bin/env python3
"""documents_test.py SOURCE BUILD: quillow.extract over all samples, in this process, in threads and in processes."""
import concurrent.futures
import dataclasses
import gc
import inspect
import mmap
import multiprocessing
import pathlib
import pickle
import resource
import subprocess
import sys
import tempfile
import threading
import unittest

import quillow

SOURCE, BUILD = map(pathlib.Path, sys.argv[1:3])
CONVERT = BUILD / "bin/quillow-convert"
SAMPLES = sorted(path for path in (SOURCE / "samples").iterdir() if path.suffix in (".rtf", ".rtfd", ".html", ".htm", ".pdf"))
PDF = SOURCE / "tests/data/pdf/middlePageWithoutText.in"


def texts_of_samples(_=None):
    return [quillow.extract(path).text for path in SAMPLES]


def texts_of_the_command_line(*options):
    return [subprocess.run([CONVERT, *options, path], capture_output=True, check=True).stdout.decode() for path in SAMPLES]


class Documents(unittest.TestCase):
    def test_every_sample_has_the_text_of_the_command_line(self):
        self.assertEqual(len(SAMPLES), 17)
        self.assertEqual(texts_of_samples(), texts_of_the_command_line())

    def test_every_option_is_that_of_the_command_line(self):
        for options, words in (
                ({"page_marks": True, "links": True}, ["--page-marks=ff", "--links"]),
                ({"cells": "line", "list_markers": False}, ["--cells=line", "--no-list-markers"]),
                ({"hidden_text": True, "headers_footers": True}, ["--hidden-text", "--headers-footers"]),
                ({"reflow": True, "pages": "2-"}, ["--reflow", "--pages=2-"])):
            read = [quillow.extract(path, **options).text or "" for path in SAMPLES]
            # A PDF without a second page has no text, and the command line says so by its exit code.
            told = [subprocess.run([CONVERT, "-q", *words, path], capture_output=True).stdout.decode() for path in SAMPLES]
            self.assertEqual(read, told, options)

    def test_eight_threads(self):
        expected = texts_of_samples()
        with concurrent.futures.ThreadPoolExecutor(8) as threads:
            for texts in threads.map(texts_of_samples, range(8)):
                self.assertEqual(texts, expected)

    def test_four_processes(self):
        expected = texts_of_samples()
        for way in ("fork", "spawn"):
            with concurrent.futures.ProcessPoolExecutor(4, multiprocessing.get_context(way)) as processes:
                for texts in processes.map(texts_of_samples, range(4)):
                    self.assertEqual(texts, expected)

    def test_other_threads_run_while_a_document_is_read(self):
        document = b"{\\rtf1 " + b"word " * 4_000_000 + b"}"
        steps, is_read = 0, threading.Event()
        reader = threading.Thread(target=lambda: (quillow.extract(document), is_read.set()))
        interval = sys.getswitchinterval()
        sys.setswitchinterval(1000)  # nobody gives way unless it waits or releases the interpreter
        try:
            reader.start()
            while not is_read.wait(0.0005):
                steps += 1
        finally:
            sys.setswitchinterval(interval)
        reader.join()
        self.assertGreater(steps, 2)

    def test_bytes_of_any_kind(self):
        data = b"{\\rtf1 one}"
        for document in (data, bytearray(data), memoryview(data), memoryview(b"xx" + data)[2:]):
            self.assertEqual(quillow.extract(document).text, "one\n")
        with tempfile.TemporaryFile() as file:
            file.write(data)
            file.flush()
            with mmap.mmap(file.fileno(), 0, access=mmap.ACCESS_READ) as mapped:
                self.assertEqual(quillow.extract(mapped).text, "one\n")
        with self.assertRaises((BufferError, TypeError)):
            quillow.extract(memoryview(data)[::2])

    def test_a_path_says_the_kind_and_kind_overrules_it(self):
        with tempfile.TemporaryDirectory() as folder:
            page = pathlib.Path(folder, "PAGE.HTM")
            page.write_bytes(b"just text")
            self.assertEqual(quillow.extract(page).text, "just text\n")
            unnamed = pathlib.Path(folder, "unnamed")
            unnamed.write_bytes(b"{\\rtf1 two}")
            self.assertEqual(quillow.extract(str(unnamed)).text, "two\n")
            self.assertEqual(quillow.extract(unnamed, "pdf").reason, "wrong-type")
            self.assertEqual(quillow.extract(unnamed, kind="rtf").text, "two\n")

    def test_a_bundle(self):
        with tempfile.TemporaryDirectory() as folder:
            bundle = pathlib.Path(folder, "a.rtfd")
            bundle.mkdir()
            self.assertEqual(quillow.extract(bundle).detail, "the bundle holds no RTF text")
            (bundle / "b.rtf").write_bytes(b"{\\rtf1 b}")
            self.assertEqual(quillow.extract(bundle).text, "b\n")
            (bundle / "c.rtf").write_bytes(b"{\\rtf1 c}")
            self.assertEqual(quillow.extract(bundle).reason, "damaged")
            (bundle / "txt.RTF").write_bytes(b"{\\rtf1 other case}")
            self.assertEqual(quillow.extract(bundle).text, "other case\n")
            (bundle / "TXT.rtf").write_bytes(b"{\\rtf1 exact}")
            self.assertEqual(quillow.extract(bundle).text, "exact\n")

    def test_a_document_is_read_once_and_extracted_later(self):
        page = SOURCE / "samples/kettle-manual.html"
        data, kind = quillow.read(page)
        self.assertEqual((data, kind), (page.read_bytes(), "html"))
        self.assertEqual(quillow.extract(data, kind), quillow.extract(page))
        self.assertEqual(quillow.read("/nowhere/a.pdf").reason, "unreadable")

    def test_what_is_wrong_with_a_document_is_a_reason(self):
        self.assertEqual(quillow.extract("/nowhere/a.pdf"), quillow.Extraction(None, "unreadable", "No such file or directory"))
        self.assertEqual(quillow.extract("/").reason, "unreadable")
        self.assertEqual(quillow.extract(b"").reason, "damaged")
        self.assertEqual(quillow.extract(b"", "html"), quillow.Extraction("", "ok-empty"))
        self.assertEqual(quillow.extract(b"\x89PNG").reason, "wrong-type")

    def test_what_is_wrong_with_the_arguments_raises(self):
        for error, options in ((ValueError, {"kind": "docx"}), (TypeError, {"colour": True}), (TypeError, {"links": 1}),
                               (ValueError, {"cells": "comma"}), (ValueError, {"pages": "0"}), (TypeError, {"pages": 3}),
                               (ValueError, {"threads": 0}), (ValueError, {"threads": 2**80}), (TypeError, {"threads": "2"})):
            with self.assertRaises(error, msg=options):
                quillow.extract(b"{\\rtf1 one}", **options)
        for document in (None, 1, object()):
            with self.assertRaises(TypeError):
                quillow.extract(document)

    def test_an_extraction_has_pages_and_losses_and_can_be_sent_elsewhere(self):
        extraction = quillow.extract(PDF, "pdf", threads=4)
        self.assertEqual((extraction.reason, extraction.pages, extraction.loss.pages_without_text), ("ok", 3, 1))
        self.assertGreater(extraction.loss.characters_decoded, 5)
        self.assertEqual(pickle.loads(pickle.dumps(extraction)), extraction)
        with self.assertRaises(dataclasses.FrozenInstanceError):
            extraction.text = ""

    def test_memory_does_not_grow(self):
        data = b"{\\rtf1 " + b"word " * 200_000 + b"}"
        def megabytes():
            gc.collect()
            return resource.getrusage(resource.RUSAGE_SELF).ru_maxrss / 1024
        for _ in range(5):
            quillow.extract(data)
        before = megabytes()
        for _ in range(100):  # 200 MB of documents and texts
            quillow.extract(data)
            with self.assertRaises(ValueError):
                quillow.extract(data, pages="x")
        self.assertLess(megabytes() - before, 50)

    def test_everything_public_has_a_docstring(self):
        self.assertTrue(quillow.__doc__)
        for name in ("Extraction", "Loss", "Pool", "extract", "read"):
            self.assertTrue(inspect.getdoc(getattr(quillow, name)), name)
        for name, function in inspect.getmembers(quillow.Pool, inspect.isfunction):
            self.assertTrue(name.startswith("_") or function.__doc__, name)

    def test_the_version_is_that_of_the_command_line(self):
        self.assertIn(quillow.__version__, subprocess.run([CONVERT, "--version"], capture_output=True, text=True).stdout)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
