#!/usr/bin/python3
"""convert.py -o FOLDER INPUT...: converts many documents on the workers of a Dask cluster.

An INPUT is a folder, a manifest (a file with the path of a document on each line) or a tar archive. The documents are cut
into shards; a shard is one archive or some hundred paths. Each shard becomes one file of JSON lines in FOLDER, with the
members of quillow-convert's results and the text. It appears under its name when it is whole, so nothing is done twice
or by halves, whatever ends when. The same command goes on with a run that was stopped.

Every worker needs the module quillow, the inputs and FOLDER under the same paths.
"""
import argparse
import base64
import collections
import concurrent.futures
import hashlib
import json
import os
import pathlib
import sys
import tarfile
import tempfile
import time

import distributed

EXTENSIONS = {".rtf": "rtf", ".rtfd": "rtfd", ".html": "html", ".htm": "html", ".pdf": "pdf"}
LARGEST = 1 << 30  # bytes of a document


# The plan: which documents are in which shard. It is made once, and kept beside the results.

def documents_below(folder):
    """Bundles count as one document and are not entered."""
    for place, folders, names in os.walk(folder):
        bundles = {name for name in folders if name.lower().endswith(".rtfd")}
        folders[:] = sorted(set(folders) - bundles)
        for name in sorted([*names, *bundles]):
            if os.path.splitext(name)[1].lower() in EXTENSIONS:
                yield os.path.join(place, name)


def shards_of(inputs, size):
    paths = []
    for given in inputs:
        if os.path.isdir(given):
            paths += documents_below(given)
        elif tarfile.is_tarfile(given):
            yield {"archive": given}
        else:
            with open(given, encoding="utf-8", errors="surrogateescape") as manifest:
                paths += [line.rstrip("\n") for line in manifest if line.rstrip("\n")]
    paths = list(dict.fromkeys(paths))  # a document that is named twice has one result
    for start in range(0, len(paths), size):
        yield {"paths": paths[start:start + size]}


def write_whole(path, lines):
    """Makes the file from the lines. It appears at once, and only if all lines are on the disk."""
    handle, temporary = tempfile.mkstemp(dir=path.parent, prefix=f".{path.name}.")
    try:
        with open(handle, "w", encoding="utf-8", errors="surrogateescape") as file:
            for line in lines:
                file.write(json.dumps(line, ensure_ascii=False, separators=(",", ":")) + "\n")
            file.flush()
            os.fsync(file.fileno())
        os.replace(temporary, path)
    except BaseException:
        os.unlink(temporary)
        raise


def lines_of(path):
    with open(path, encoding="utf-8", errors="surrogateescape") as file:
        return [json.loads(line) for line in file]


def plan_of(folder, inputs, size):
    """The shards by the files of their results. An earlier run's plan holds, whatever the folders have in them now."""
    path = folder / "plan.jsonl"
    wanted = {"inputs": inputs, "shard_size": size}
    if not path.exists():
        write_whole(path, [wanted, *shards_of(inputs, size)])
    given, *shards = lines_of(path)
    if given != wanted:
        sys.exit(f"{path} is the plan of another run: {given}")
    return {folder / f"shard-{number:06}.jsonl": shard for number, shard in enumerate(shards)}


# On a worker.

def members_of(archive):
    """The path of each document in an archive, and its bytes and kind or what became of it. A bundle is its RTF file."""
    import quillow
    with tarfile.open(archive) as tar:
        for member in tar:
            path = pathlib.PurePosixPath(member.name)
            bundle = next((p for p in path.parents if p.suffix.lower() == ".rtfd"), None)
            if not member.isfile() or (bundle and path != bundle / "TXT.rtf"):
                continue
            path = bundle or path
            if kind := EXTENSIONS.get(path.suffix.lower()):
                is_too_large = member.size > LARGEST
                yield f"{archive}/{path}", (quillow.Extraction(None, "too-large", "over 1024 MiB") if is_too_large
                                            else (tar.extractfile(member).read(), kind))


def names_of(path):
    """A name that is not UTF-8 is also there in Base64, as in the results of quillow-convert."""
    name = os.fsencode(path)
    shown = name.decode(errors="replace")
    return {"path": shown} if shown.encode() == name else {"path": shown, "path_b64": base64.b64encode(name).decode()}


def sha256_of(data):
    return None if data is None else hashlib.sha256(data).hexdigest()


def result_of(path, document, pool):
    """The line of one document. Its bytes and kind, or what became of it, come with it, or its file is read."""
    import quillow
    start = time.perf_counter()
    document = document or quillow.read(path)
    is_read = not isinstance(document, quillow.Extraction)
    extraction = pool.extract(*document) if is_read else document
    text = None if extraction.text is None else extraction.text.encode()
    return {
        "schema": 1, **names_of(path), "output": None, "status": extraction.reason, "detail": extraction.detail,
        "pages": extraction.pages, "characters": len(extraction.text or ""), "text_bytes": len(text or b""),
        "loss": vars(extraction.loss), "document_sha256": sha256_of(document[0]) if is_read else None,
        "text_sha256": sha256_of(text), "milliseconds": round((time.perf_counter() - start) * 1000, 3),
        "engine": quillow.__version__, "text": extraction.text}


def convert(shard, path, jobs, limits):
    """Makes the file of a shard's results. A task that runs twice, because a worker was thought dead, does no harm."""
    import quillow
    path = pathlib.Path(path)
    if path.exists():
        return
    documents = members_of(shard["archive"]) if "archive" in shard else ((given, None) for given in shard["paths"])
    with quillow.Pool(jobs, **limits) as pool, concurrent.futures.ThreadPoolExecutor(jobs) as threads:
        write_whole(path, in_order(threads, jobs, lambda document: result_of(*document, pool), documents))


def in_order(threads, jobs, function, values):
    """As map, but takes only a few values ahead."""
    waiting = collections.deque()
    for value in values:
        waiting.append(threads.submit(function, value))
        if len(waiting) > 2 * jobs:
            yield waiting.popleft().result()
    while waiting:
        yield waiting.popleft().result()


# At the client.

def run_missing(client, plan, jobs, limits):
    """Runs the shards without results, some at a time: the scheduler's memory does not grow with the plan."""
    missing = iter([(path, shard) for path, shard in plan.items() if not path.exists()])
    running = distributed.as_completed()

    def start_one():
        for path, shard in missing:
            # "convert" is not a pure function for the scheduler: it must not remember an earlier run's outcome.
            running.add(client.submit(convert, shard, str(path), jobs, limits, pure=False))
            return

    for _ in range(4 * max(1, sum(client.nthreads().values()))):
        start_one()
    for future in running:
        future.result()
        start_one()


def run(scheduler, plan, jobs, limits, patience):
    """Until every shard has its results. A lost worker is the scheduler's business, a lost scheduler ours."""
    last_step = time.monotonic()
    while missing := sum(not path.exists() for path in plan):
        try:
            with distributed.Client(scheduler, timeout=5) as client:
                client.wait_for_workers(1, timeout=5)
                run_missing(client, plan, jobs, limits)
        except (OSError, distributed.TimeoutError, distributed.CancelledError, concurrent.futures.CancelledError,
                distributed.scheduler.KilledWorker) as error:
            print(f"{missing} shards are missing: {type(error).__name__} {error}; trying again", file=sys.stderr)
            time.sleep(1)
        if sum(not path.exists() for path in plan) < missing:
            last_step = time.monotonic()
        elif time.monotonic() - last_step > patience:
            sys.exit(f"{missing} shards are missing, and nothing has happened for {patience} seconds")


def count(plan):
    """How often each status occurs. The results say what is done, not the scheduler."""
    statuses = collections.Counter()
    for path, shard in plan.items():
        results = lines_of(path)
        if "paths" in shard and [name["path"] for name in map(names_of, shard["paths"])] != [r["path"] for r in results]:
            sys.exit(f"{path} does not have one result for each document of its shard")
        statuses.update(result["status"] for result in results)
    return statuses


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n")[0])
    parser.add_argument("inputs", nargs="+", metavar="INPUT", help="a folder, a manifest or a tar archive")
    parser.add_argument("-o", "--output", required=True, metavar="FOLDER", type=pathlib.Path, help="for the results")
    parser.add_argument("--scheduler", metavar="ADDRESS", help="such as tcp://10.0.0.1:8786; without it, a cluster in this machine")
    parser.add_argument("--shard-size", type=int, default=500, metavar="N", help="documents of a shard (default %(default)s)")
    parser.add_argument("--jobs", type=int, default=1, metavar="N", help="documents that a task reads at a time (default %(default)s)")
    parser.add_argument("--timeout", type=float, default=60, metavar="S", help="for one document (default %(default)s)")
    parser.add_argument("--max-memory", type=int, default=2048, metavar="MB", help="for one document (default %(default)s)")
    parser.add_argument("--patience", type=float, default=600, metavar="S", help="give up when nothing happens for so long (default %(default)s)")
    arguments = parser.parse_args()
    arguments.output.mkdir(parents=True, exist_ok=True)
    inputs = [os.path.abspath(given) for given in arguments.inputs]
    plan = plan_of(arguments.output.absolute(), inputs, arguments.shard_size)
    limits = {"timeout": arguments.timeout, "max_memory": arguments.max_memory}
    run(arguments.scheduler, plan, arguments.jobs, limits, arguments.patience)
    statuses = count(plan)
    print(f"{sum(statuses.values())} documents:", ", ".join(f"{n} {status}" for status, n in sorted(statuses.items())))


if __name__ == "__main__":
    main()
