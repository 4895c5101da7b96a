"""Documents read in processes that are locked in."""
import collections
import concurrent.futures
import os
import threading
import weakref

from . import _engine
from ._documents import Extraction, extraction_of, read_if_path

_pools = weakref.WeakSet()


def _renew_after_fork():
    for pool in list(_pools):
        pool._renew()


os.register_at_fork(after_in_child=_renew_after_fork)


class Pool:
    """Reads documents in processes that can open no file, no network and no other program.

        with quillow.Pool(workers=4) as pool:
            for path, extraction in zip(paths, pool.map(paths)):
                ...

    workers: documents that are read at a time; by default one for each processor that this process may use.
    timeout: seconds for one document; 0: no limit. The reason is then "timeout".
    max_memory: MiB for one document; 0: no limit. The reason is then "out-of-memory".

    A document that ends its process is "crashed"; the next one is read by a new process. A pool may be used from several
    threads, and in the child of a fork, which gets processes of its own.
    """

    def __init__(self, workers=None, *, timeout=60.0, max_memory=2048, worker_program=None):
        self.workers = len(os.sched_getaffinity(0)) if workers is None else workers
        if self.workers < 1:
            raise ValueError("workers must be at least 1")
        self._arguments = (None if worker_program is None else os.fsdecode(worker_program), timeout, max_memory)
        self._is_closed = False
        self._start()
        _pools.add(self)

    def _start(self):
        self._engine = _engine.Workers(*self._arguments)
        self._places = threading.BoundedSemaphore(self.workers)

    def _renew(self):
        self._engine.forget()
        if not self._is_closed:
            self._start()

    def extract(self, data_or_path, kind=None, **options):
        """Reads one document and returns its Extraction. Takes what quillow.extract takes. Waits while all workers are busy."""
        document = read_if_path(data_or_path, kind)
        if isinstance(document, Extraction):
            return document
        with self._places:
            return extraction_of(self._engine.extract(*document, options))

    def map(self, documents, kind=None, **options):
        """The Extractions of many documents, in their order. `documents` may be endless: few are read ahead."""
        waiting = collections.deque()
        with concurrent.futures.ThreadPoolExecutor(self.workers) as threads:
            try:
                for document in documents:
                    waiting.append(threads.submit(self.extract, document, kind, **options))
                    if len(waiting) >= 4 * self.workers:
                        yield waiting.popleft().result()
                while waiting:
                    yield waiting.popleft().result()
            finally:
                for future in waiting:
                    future.cancel()

    def isolation(self):
        """What protects the system from the documents on this machine: one line."""
        return self._engine.isolation()

    def close(self):
        """Ends the processes as soon as they have finished the documents that they read."""
        self._is_closed = True
        self._engine.close()

    def __enter__(self):
        return self

    def __exit__(self, kind, error, trace):
        self.close()
