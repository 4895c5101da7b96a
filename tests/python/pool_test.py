#!/usr/bin/env python3
"""pool_test.py SOURCE BUILD: quillow.Pool over all samples and over documents that attack their worker."""
import concurrent.futures
import itertools
import multiprocessing
import os
import pathlib
import sys
import threading
import time
import unittest

import quillow

SOURCE, BUILD = map(pathlib.Path, sys.argv[1:3])
ATTACK_WORKER = BUILD / "bin/attack_worker"
SAMPLES = sorted(path for path in (SOURCE / "samples").iterdir() if path.suffix in (".rtf", ".rtfd", ".html", ".htm", ".pdf"))


def read_in_a_process(_):
    with quillow.Pool(workers=2) as pool:
        return list(pool.map(SAMPLES))


def read_and_end(pool, queue):
    queue.put([pool.extract(path) for path in SAMPLES[:3]])


class Pool(unittest.TestCase):
    def test_every_sample_is_what_it_is_without_isolation(self):
        with quillow.Pool(workers=3) as pool:
            self.assertEqual(list(pool.map(SAMPLES)), [quillow.extract(path) for path in SAMPLES])

    def test_eight_threads_share_a_pool(self):
        expected = [quillow.extract(path) for path in SAMPLES]
        with quillow.Pool(workers=2) as pool, concurrent.futures.ThreadPoolExecutor(8) as threads:
            for read in threads.map(lambda _: [pool.extract(path) for path in SAMPLES], range(8)):
                self.assertEqual(read, expected)
            self.assertLessEqual(len(pool._engine.processes()), 2)

    def test_four_processes_with_pools_of_their_own(self):
        expected = [quillow.extract(path) for path in SAMPLES]
        with concurrent.futures.ProcessPoolExecutor(4, multiprocessing.get_context("fork")) as processes:
            for read in processes.map(read_in_a_process, range(4)):
                self.assertEqual(read, expected)

    def test_a_crash_a_time_out_and_a_bomb_are_results_of_their_documents(self):
        with quillow.Pool(workers=2, max_memory=256, worker_program=ATTACK_WORKER) as pool:
            documents = [b"attack:crash", b"{\\rtf1 one}", b"attack:exit", b"{\\rtf1 two}"]
            reasons = [extraction.reason for extraction in pool.map(documents, "rtf")]
            self.assertEqual(reasons, ["crashed", "ok", "crashed", "ok"])
            self.assertEqual(pool.extract(b"{\\rtf1 next}").text, "next\n")
        # A harmless document may need a moment on a busy machine, so the short time is that of another pool.
        with quillow.Pool(workers=1, timeout=0.5, worker_program=ATTACK_WORKER) as pool:
            self.assertEqual(pool.extract(b"attack:loop", "rtf").reason, "timeout")

    def test_the_memory_of_a_document_is_limited(self):
        page = b"<p>" + b"<b>x" * 4_000_000
        with quillow.Pool(workers=1, max_memory=64) as pool:
            self.assertEqual(pool.extract(page, "html").reason, "out-of-memory")
            self.assertEqual(pool.extract(b"{\\rtf1 next}").text, "next\n")

    def test_map_reads_only_a_few_documents_ahead(self):
        taken = itertools.count()
        endless = (b"{\\rtf1 %d}" % number for number in taken)
        with quillow.Pool(workers=2) as pool:
            answers = pool.map(endless)
            self.assertEqual([next(answers).text for _ in range(20)], [f"{i}\n" for i in range(20)])
            answers.close()
        self.assertLess(next(taken), 40)

    def test_the_child_of_a_fork_has_workers_of_its_own(self):
        with quillow.Pool(workers=1) as pool:
            expected = [pool.extract(path) for path in SAMPLES[:3]]
            workers = pool._engine.processes()
            fork = multiprocessing.get_context("fork")
            queue = fork.SimpleQueue()
            child = fork.Process(target=read_and_end, args=(pool, queue))
            child.start()
            self.assertEqual(queue.get(), expected)
            child.join()
            self.assertEqual(child.exitcode, 0)
            self.assertEqual(pool._engine.processes(), workers)
            self.assertEqual(pool.extract(SAMPLES[0]), expected[0])
            self.assertEqual(pool._engine.processes(), workers)

    def test_a_pool_that_ends_leaves_no_process(self):
        pool = quillow.Pool(workers=2)
        list(pool.map(SAMPLES))
        workers = pool._engine.processes()
        self.assertTrue(workers)
        pool.close()
        for worker in workers:
            with self.assertRaises(ProcessLookupError):
                os.kill(worker, 0)
        with self.assertRaises(ValueError):
            pool.extract(SAMPLES[0])
        pool.close()

    def test_a_document_that_is_read_while_the_pool_closes_is_finished(self):
        document = b"{\\rtf1 " + b"word " * 2_000_000 + b"}"
        pool = quillow.Pool(workers=1)
        read = []
        reader = threading.Thread(target=lambda: read.append(pool.extract(document)))
        reader.start()
        while not pool._places._value == 0:
            pass
        pool.close()
        reader.join()
        self.assertTrue(not read or read[0].reason == "ok")  # none if close() came before it had a worker

    def test_a_pool_may_close_while_it_finds_out_how_it_isolates(self):
        def ask(pool):
            try:
                return pool.isolation()
            except ValueError:
                return "closed before"

        for step in range(40):
            pool = quillow.Pool(workers=1)
            with concurrent.futures.ThreadPoolExecutor(1) as thread:
                answer = thread.submit(ask, pool)
                time.sleep(step % 8 / 2000)  # so that some close in the middle
                pool.close()
                self.assertRegex(answer.result(), "processes|closed")

    def test_arguments_without_sense_raise(self):
        for arguments in ({"workers": 0}, {"timeout": -1}, {"timeout": float("nan")}, {"max_memory": 1}):
            with self.assertRaises(ValueError, msg=arguments):
                quillow.Pool(**arguments)
        with quillow.Pool(workers=1) as pool, self.assertRaises(TypeError):
            pool.extract(b"{\\rtf1 one}", colour=True)

    def test_a_worker_that_cannot_be_started_is_a_result(self):
        with quillow.Pool(workers=1, worker_program="/nowhere/worker") as pool:
            extraction = pool.extract(b"{\\rtf1 one}")
            self.assertEqual(extraction.reason, "unreadable")
            self.assertIn("No such file", extraction.detail)

    def test_the_isolation_is_told(self):
        with quillow.Pool(workers=1) as pool:
            self.assertIn("processes", pool.isolation())


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
