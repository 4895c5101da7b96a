#!/usr/bin/python3
"""dask_test.py SOURCE BUILD [DOCUMENTS]: examples/dask/convert.py on a scheduler and three workers that are killed meanwhile."""
import collections
import io
import json
import os
import pathlib
import signal
import socket
import subprocess
import sys
import tarfile
import tempfile
import threading
import time
import unittest

import corpus

SOURCE, BUILD = map(pathlib.Path, sys.argv[1:3])
DOCUMENTS = int(sys.argv[3]) if len(sys.argv) > 3 else 20_000
ARCHIVE = 500  # documents in an archive; half of all documents are in archives
EXAMPLE = SOURCE / "examples/dask/convert.py"
ENVIRONMENT = {**os.environ, "PYTHONPATH": str(BUILD / "python"), "PYTHONDONTWRITEBYTECODE": "1"}


def free_port():
    with socket.socket() as probe:
        probe.bind(("127.0.0.1", 0))
        return probe.getsockname()[1]


class Cluster:
    """A scheduler and workers as processes. Workers that end because their scheduler did are started again, as a
    cluster's supervisor does it; one that the test kills stays dead until then."""

    def __init__(self, folder, workers):
        self.folder = folder
        self.address = f"tcp://127.0.0.1:{free_port()}"
        self.log = open(folder / "cluster.log", "w")
        self.workers = {number: None for number in range(workers)}
        self.killed = set()
        self.is_ending = False
        self.start_scheduler()
        self.supervisor = threading.Thread(target=self.supervise)
        self.supervisor.start()

    def start(self, what, *arguments):
        return subprocess.Popen(["/usr/bin/python3", "-m", f"distributed.cli.dask_{what}", *arguments], env=ENVIRONMENT,
                                cwd=self.folder, stdout=self.log, stderr=self.log, start_new_session=True)

    def start_scheduler(self):
        self.scheduler = self.start("scheduler", "--host", "127.0.0.1", "--port", self.address.rsplit(":")[-1], "--no-dashboard")

    def supervise(self):
        while not self.is_ending:
            for number, worker in self.workers.items():
                if number not in self.killed and (worker is None or worker.poll() is not None):
                    self.workers[number] = self.start("worker", self.address, "--nthreads", "1", "--no-nanny", "--no-dashboard",
                                                      "--name", f"worker-{number}", "--death-timeout", "20")
            time.sleep(0.2)

    def kill_worker(self, number):
        self.killed.add(number)
        os.killpg(self.workers[number].pid, signal.SIGKILL)

    def restart_scheduler(self):
        os.killpg(self.scheduler.pid, signal.SIGKILL)
        self.scheduler.wait()
        time.sleep(1)
        self.start_scheduler()
        self.killed.clear()

    def end(self):
        self.is_ending = True
        self.supervisor.join()
        for process in [self.scheduler, *self.workers.values()]:
            if process and process.poll() is None:
                os.killpg(process.pid, signal.SIGKILL)
            if process:
                process.wait()
        self.log.close()


class Dask(unittest.TestCase):
    def setUp(self):
        self.scratch = tempfile.TemporaryDirectory()
        self.addCleanup(self.scratch.cleanup)
        self.folder = pathlib.Path(self.scratch.name)
        self.results = self.folder / "results"
        self.expected = corpus.write_files(self.folder / "documents", range(DOCUMENTS // 2))
        # A manifest for one half of the files, the folder for the other.
        self.inputs = []
        folders = sorted((self.folder / "documents").iterdir())
        manifest = self.folder / "manifest"
        manifest.write_text("".join(f"{path}\n" for path in self.expected if pathlib.Path(path).parent in folders[::2]))
        self.inputs = [manifest, *folders[1::2]]
        for first in range(DOCUMENTS // 2, DOCUMENTS, ARCHIVE):
            path = self.folder / f"archive-{first}.tar"
            with tarfile.open(path, "w") as tar:
                for number in range(first, min(first + ARCHIVE, DOCUMENTS)):
                    extension, data, status = corpus.document(number)
                    member = tarfile.TarInfo(f"d{number}.{extension}")
                    member.size = len(data)
                    tar.addfile(member, io.BytesIO(data))
                    self.expected[f"{path}/{member.name}"] = status
            self.inputs.append(path)

    def convert(self, *options):
        return subprocess.Popen(["/usr/bin/python3", EXAMPLE, "-o", self.results, "--shard-size", "250", *options, *self.inputs],
                                env=ENVIRONMENT, stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True)

    def shards(self):
        return sorted(self.results.glob("shard-*.jsonl"))

    def wait_for(self, shards, client):
        while len(self.shards()) < shards:
            self.assertIsNone(client.poll(), "the run ended early")
            time.sleep(0.01)

    def expect_one_result_for_each(self):
        found = collections.Counter()
        for shard in self.shards():
            for line in shard.read_text().splitlines():
                result = json.loads(line)
                found[result["path"]] += 1
                self.assertEqual(result["status"], self.expected.get(result["path"]), result["path"])
        self.assertEqual(set(found), set(self.expected))
        self.assertEqual(set(found.values()), {1})

    def test_every_document_has_one_result_whatever_is_killed(self):
        cluster = Cluster(self.folder, 3)
        self.addCleanup(cluster.end)
        whole = DOCUMENTS // 500 + DOCUMENTS // 2 // 250
        start = time.monotonic()
        client = self.convert("--scheduler", cluster.address)
        self.wait_for(whole // 5, client)
        cluster.kill_worker(1)
        print("worker killed at", len(self.shards()), "shards of about", whole)
        self.wait_for(2 * whole // 5, client)
        cluster.restart_scheduler()
        print("scheduler killed at", len(self.shards()))
        self.wait_for(3 * whole // 5, client)
        client.kill()
        print(client.communicate()[1], "client killed at", len(self.shards()))
        client = self.convert("--scheduler", cluster.address)
        output, errors = client.communicate()
        print(output, errors, f"{time.monotonic() - start:.1f} s")
        self.assertEqual(client.returncode, 0, errors)
        self.assertIn(f"{DOCUMENTS} documents:", output)
        self.expect_one_result_for_each()
        # Nothing is left to do, and a client needs no cluster to see it.
        again = self.convert("--scheduler", "tcp://127.0.0.1:1").communicate()[0]
        self.assertEqual(again, output)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
