#!/usr/bin/env python3
"""worker_protocol_test.py QUILLOW_CONVERT ATTACK_WORKER: speaks the protocol of docs/worker-protocol.md with the real program."""
import json
import pathlib
import shutil
import struct
import subprocess
import sys
import tempfile
import unittest

PROGRAM, ATTACK_WORKER = sys.argv[1:3]


class Quillow:
    """A client, as docs/worker-protocol.md shows it."""

    def __init__(self, *arguments, program=PROGRAM):
        self.process = subprocess.Popen([program, "--worker", *arguments], stdin=subprocess.PIPE, stdout=subprocess.PIPE,
                                        stderr=subprocess.PIPE)

    def convert(self, document, *options):
        words = "\0".join(options).encode()
        self.process.stdin.write(struct.pack(">IQ", len(words), len(document)) + words + document)
        self.process.stdin.flush()
        return self.answer()

    def answer(self):
        result_size, text_size = struct.unpack(">IQ", self.process.stdout.read(12))
        result = json.loads(self.process.stdout.read(result_size))
        text = self.process.stdout.read(text_size).decode()
        return result, text if result["has_text"] else None

    def close(self):
        """The exit code and the messages."""
        self.process.stdin.close()
        message = self.process.stderr.read().decode()
        self.process.stdout.close()
        self.process.stderr.close()
        return self.process.wait(), message


class Protocol(unittest.TestCase):
    def test_documents_of_every_kind_one_after_another(self):
        quillow = Quillow()
        self.assertEqual(quillow.convert(b"{\\rtf1 one}")[1], "one\n")
        result, text = quillow.convert("<p>zwei: ü".encode(), "--type=html")
        self.assertEqual((result["reason"], text), ("ok", "zwei: ü\n"))
        self.assertEqual(quillow.close(), (0, ""))

    def test_options_are_those_of_the_request_and_of_the_program(self):
        page = b"<ul><li><a href=http://example.org/>text</a></ul>"
        quillow = Quillow("--no-list-markers")
        self.assertEqual(quillow.convert(page, "--type", "html", "--links")[1], "text <http://example.org/>\n")
        self.assertEqual(quillow.convert(page, "--type", "html")[1], "text\n")
        quillow.close()

    def test_a_text_that_is_empty_differs_from_none(self):
        quillow = Quillow()
        self.assertEqual(quillow.convert(b"", "--type=html")[1], "")
        result, text = quillow.convert(b"%PDF-1.4 nothing", "--type=pdf")
        self.assertEqual((result["reason"], text), ("damaged", None))
        quillow.close()

    def test_a_mistake_in_the_options_is_an_answer(self):
        quillow = Quillow()
        for options in (["--colour"], ["-o", "file"], ["file"], ["--jobs=2"], ["--help"]):
            result, text = quillow.convert(b"{\\rtf1 one}", *options)
            self.assertEqual((result["reason"], text), ("unreadable", None), options)
        self.assertEqual(quillow.convert(b"{\\rtf1 two}")[1], "two\n")
        quillow.close()

    def test_content_of_no_known_kind_is_the_wrong_type(self):
        quillow = Quillow()
        self.assertEqual(quillow.convert(b"\x89PNG")[0]["reason"], "wrong-type")
        quillow.close()

    def test_a_large_document(self):
        quillow = Quillow()
        self.assertEqual(quillow.convert(b"{\\rtf1 " + b"x" * 5_000_000 + b"}")[1], "x" * 5_000_000 + "\n")
        quillow.close()

    def test_a_hostile_document_does_not_end_it(self):
        with tempfile.TemporaryDirectory() as folder:
            program = shutil.copy(PROGRAM, folder)
            shutil.copy(ATTACK_WORKER, pathlib.Path(folder) / "quillow-worker")
            quillow = Quillow("--timeout", "1", program=program)
            for attack, reason in ((b"crash", "crashed"), (b"loop", "timeout"), (b"garbage", "crashed")):
                self.assertEqual(quillow.convert(b"attack:" + attack, "--type=rtf")[0]["reason"], reason)
            self.assertEqual(quillow.convert(b"{\\rtf1 next}")[1], "next\n")
            self.assertEqual(quillow.close(), (0, ""))

    def test_an_input_that_ends_in_a_request_is_told(self):
        for request in (b"x", struct.pack(">IQ", 5, 0) + b"--", struct.pack(">IQ", 0, 100) + b"{\\rtf1", struct.pack(">IQ", 0, 2**63)):
            quillow = Quillow()
            quillow.process.stdin.write(request)
            self.assertEqual(quillow.close(), (1, "quillow-convert: the input ends in the middle of a request\n"))

    def test_options_without_end_are_not_read(self):
        quillow = Quillow()
        quillow.process.stdin.write(struct.pack(">IQ", 2**32 - 1, 0))
        self.assertEqual(quillow.close(), (1, "quillow-convert: the options of a request are too long\n"))

    def test_files_are_a_usage_error(self):
        done = subprocess.run([PROGRAM, "--worker", "a.rtf"], stdin=subprocess.DEVNULL, capture_output=True)
        self.assertEqual(done.returncode, 2)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
