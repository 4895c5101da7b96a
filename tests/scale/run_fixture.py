"""What the tests of schedulers share: a manifest of many documents, and the check that each has one result and one text."""
import collections
import json
import os
import pathlib
import socket
import subprocess
import tempfile
import time
import unittest

import corpus


def free_port():
    with socket.socket() as probe:
        probe.bind(("127.0.0.1", 0))
        return probe.getsockname()[1]


class Run(unittest.TestCase):
    """Set `source`, `build` and `documents` before the tests run."""

    source = build = None
    documents = 20_000

    def setUp(self):
        self.scratch = tempfile.TemporaryDirectory()
        self.addCleanup(self.scratch.cleanup)
        self.folder = pathlib.Path(self.scratch.name)
        self.folder.chmod(0o755)  # daemons may have users of their own
        self.expected = corpus.write_files(self.folder / "documents", range(self.documents))
        self.manifest = self.folder / "manifest"
        self.manifest.write_text("".join(f"{path}\n" for path in self.expected))
        self.output = self.folder / "output"
        self.output.mkdir()
        self.environment = {**os.environ, "QUILLOW_CONVERT": str(self.build / "bin/quillow-convert")}
        self.log = open(self.folder / "daemons.log", "w")
        self.addCleanup(self.log.close)

    def start(self, *command, **settings):
        """Starts a daemon in a process group of its own, which is killed at the end."""
        process = subprocess.Popen([str(word) for word in command], stdin=subprocess.DEVNULL, stdout=self.log, stderr=self.log,
                                   start_new_session=True, **settings)
        self.addCleanup(self.kill, process)
        return process

    @staticmethod
    def kill(process):
        if process.poll() is None:
            os.killpg(process.pid, 9)
        process.wait()

    def begin(self, *command):
        return subprocess.Popen([str(word) for word in command], env=self.environment, stdout=subprocess.PIPE,
                                stderr=subprocess.STDOUT, text=True)

    def wait_for_results(self, share, client):
        """Until so many of the documents have a result. Returns how many have."""
        while True:
            done = sum(path.read_bytes().count(b"\n") for path in (self.output / "results").glob("*.jsonl"))
            if done >= share * self.documents:
                return done
            self.assertIsNone(client.poll(), "the run ended early")
            time.sleep(0.01)

    def expect_one_result_for_each(self):
        merged = [json.loads(line) for line in (self.output / "results.jsonl").read_text().splitlines()]
        self.assertEqual({result["path"]: result["status"] for result in merged}, self.expected)
        self.assertEqual(len(merged), self.documents)
        # The files of the shards have no document twice either.
        found = collections.Counter(json.loads(line)["path"] for path in (self.output / "results").glob("*.jsonl")
                                    for line in path.read_text().splitlines())
        self.assertEqual(set(found.values()), {1})
        texts = {str(path) for path in (self.output / "texts").iterdir()}
        self.assertEqual(texts, {result["output"] for result in merged if result["output"]})
