"""One pipeline over many mesh files, on the cores of this machine or on a Dask cluster.

    python3 -m zel.batch weld scans/*.ply --out welded/ --relative 1e-6
    python3 -m zel.batch weld,orient,normals scans/*.ply --out ready/ --outward
    python3 -m zel.batch weld scans/*.ply --out welded/ --scheduler tcp://head:8786

All machines must see the files under the same names. The work is shared out by Dask's scheduler
(Debian's python3-distributed).
"""

from __future__ import annotations

import argparse
import csv
import hashlib
import json
import os
import sys
import time
from dataclasses import asdict, dataclass, field, fields
from pathlib import Path
from typing import Any, Callable, Iterable, Iterator, Sequence, TextIO, Union

from . import __version__, _zel
from ._errors import Error
from ._files import read
from ._mesh import Mesh

#: A step by name with its options, or any function from a mesh to a mesh (or to a mesh and a report).
Step = Union[tuple[str, dict[str, Any]], Callable[[Mesh], Any]]

MANIFEST = "zel-batch.json"

_STEPS: dict[str, Callable[..., Any]] = {
    "weld": lambda mesh, **options: mesh.weld(threads=1, **options),
    "orient": lambda mesh, **options: mesh.orient(threads=1, **options),
    "reverse": lambda mesh: mesh.reverse(),
    "normals": lambda mesh, **options: mesh.with_normals(**options),
    "triangulate": lambda mesh: mesh.triangulate(),
    "unfold": lambda mesh: mesh.unfold(),
    "convert": lambda mesh: mesh,
}


@dataclass
class Row:
    """What became of one file.

    Attributes:
        status: "done", "skipped" (finished by an earlier run), "failed" or "worker died".
        message: why it failed; empty otherwise.
    """

    input: str
    output: str
    status: str
    seconds: float = 0.0
    nodes: int = 0
    triangles: int = 0
    quads: int = 0
    message: str = ""
    sha256: str = field(default="", repr=False)


def _hash_of(path: str) -> str:
    digest = hashlib.sha256()
    with open(path, "rb") as file:
        while block := file.read(1 << 20):
            digest.update(block)
    return digest.hexdigest()


def _apply(mesh: Mesh, steps: Sequence[Step]) -> Mesh:
    for step in steps:
        result = step(mesh) if callable(step) else _STEPS[step[0]](mesh, **step[1])
        mesh = result[0] if isinstance(result, tuple) else result
        if not isinstance(mesh, Mesh):
            raise Error(2, f"a step gave {type(mesh).__name__}, not a mesh")
    return mesh


def _process(source: str, target: str, steps: Sequence[Step]) -> Row:
    """Runs the pipeline on one file. Any failure becomes a row."""
    start = time.monotonic()
    row = Row(source, target, "done")
    try:
        mesh = _apply(read(source, threads=1), steps)
        mesh.write(target, threads=1)
        row.nodes, row.triangles, row.quads = (
            len(mesh.points), len(mesh.triangles), len(mesh.quads))
        row.sha256 = _hash_of(target)
    except Exception as error:  # a file that fails must not stop the others
        row.status, row.message = "failed", str(error) or type(error).__name__
    row.seconds = round(time.monotonic() - start, 3)
    return row


def _targets(files: Iterable[str], out: str, extension: str) -> dict[str, str]:
    """Input by output. Raises Error (2) when two inputs would become one output."""
    targets: dict[str, str] = {}
    for source in files:
        path = Path(source)
        name = f"{path.stem}.{extension}" if extension else path.name
        if not _zel.format_of(name):
            raise Error(2, f"{name}: no format that is written; name one with --to")
        target = os.path.join(out, name)
        if target in targets:
            raise Error(2, f"{targets[target]} and {source} would both become {target}")
        if os.path.exists(target) and os.path.samefile(source, target):
            raise Error(2, f"{source} would be replaced by its own result")
        targets[target] = source
    return targets


class _Manifest:
    """Which outputs are finished, and of what they were made; kept in the output folder."""

    def __init__(self, folder: str, steps: Sequence[Step]) -> None:
        self._path = os.path.join(folder, MANIFEST)
        self._rows: dict[str, dict[str, Any]] = {}
        try:
            with open(self._path, encoding="utf-8") as file:
                self._rows = json.load(file)
        except FileNotFoundError:
            pass
        except ValueError as error:
            raise Error(3, f"{self._path}: cannot read: {error}", self._path) from error
        # A function has no text that would tell two versions of it apart: such runs never skip.
        self._options = None if any(map(callable, steps)) else json.dumps(steps, sort_keys=True)

    def _source_stamp(self, source: str) -> list[Any]:
        status = os.stat(source)
        return [os.path.abspath(source), status.st_size, status.st_mtime_ns]

    def is_finished(self, source: str, target: str) -> bool:
        row = self._rows.get(os.path.basename(target))
        try:
            return (row is not None and self._options is not None
                    and row["options"] == self._options and row["version"] == __version__
                    and row["input"] == self._source_stamp(source)
                    and row["sha256"] == _hash_of(target))
        except (OSError, KeyError):
            return False

    def record(self, row: Row) -> None:
        self._rows.pop(os.path.basename(row.output), None)
        if row.status == "done":
            try:
                stamp = self._source_stamp(row.input)
            except OSError:
                return
            self._rows[os.path.basename(row.output)] = {
                "input": stamp, "options": self._options, "version": __version__,
                "sha256": row.sha256}

    def save(self) -> None:
        beside = f"{self._path}.{os.getpid()}.new"
        with open(beside, "w", encoding="utf-8") as file:
            json.dump(self._rows, file, indent=1, sort_keys=True)
            file.flush()
            os.fsync(file.fileno())
        os.replace(beside, self._path)


def _serially(tasks: dict[str, str], steps: Sequence[Step]) -> Iterator[Row]:
    for target, source in tasks.items():
        yield _process(source, target, steps)


def _by_dask(tasks: dict[str, str], steps: Sequence[Step], scheduler: str, workers: int
             ) -> Iterator[Row]:
    """Rows in the order in which they are finished."""
    try:
        import dask
        from distributed import Client, KilledWorker, LocalCluster, as_completed
    except ImportError as error:
        raise Error(2, "this needs Dask: install python3-distributed") from error

    def submit(client: Any, target: str) -> Any:
        return client.submit(_process, tasks[target], target, steps, pure=False, key=f"zel {target}")

    # One file at a time for each worker, so that one which dies takes no others along.
    settings = {"distributed.scheduler.worker-saturation": 1.0,
                "distributed.admin.tick.limit": "1h"}
    with dask.config.set(settings):
        cluster = None
        if not scheduler:
            cluster = LocalCluster(n_workers=workers, threads_per_worker=1, processes=True,
                                   dashboard_address=None)
        try:
            with Client(cluster if cluster is not None else scheduler) as client:
                futures = {submit(client, target): target for target in tasks}
                suspects = []
                for future in as_completed(list(futures)):
                    target = futures.pop(future)
                    try:
                        yield future.result()
                    except KilledWorker:
                        suspects.append(target)
                    except Exception as error:
                        yield Row(tasks[target], target, "failed", message=str(error))
                    future.release()
                # Whoever was beside a file that kills its worker may be innocent: each once more,
                # alone.
                for target in suspects:
                    try:
                        yield submit(client, target).result()
                    except KilledWorker:
                        yield Row(tasks[target], target, "worker died",
                                  message="every worker that took it died")
        finally:
            if cluster is not None:
                cluster.close()


def run(
    files: Iterable[str | os.PathLike[str]],
    out: str | os.PathLike[str],
    steps: Sequence[Step] | Callable[[Mesh], Any],
    *,
    to: str = "",
    scheduler: str = "",
    workers: int = 0,
    force: bool = False,
    seen: Callable[[Row, int, int], None] | None = None,
) -> list[Row]:
    """Runs a pipeline over files.

    Args:
        files: the inputs.
        out: folder of the outputs, made when missing; each is named as its input.
        steps: a chain of (name, options) or functions, or one function.
        to: format of the outputs; left out, that of each input.
        scheduler: address of a Dask scheduler. Left out: processes on this machine.
        workers: how many processes on this machine; 0: one per core, 1: this process alone.
        force: do again what an earlier run has finished.
        seen: called with each row, how many are finished and how many there are.

    Returns:
        One row per input, in their order. Results appear whole or not at all; what a run with the
        same options and version has finished is skipped, unless the input has changed.

    Raises:
        Error: code 2 when two inputs would become one output, or a step has no such name.
    """
    chain: Sequence[Step] = [steps] if callable(steps) else list(steps)
    for step in chain:
        if not callable(step) and step[0] not in _STEPS:
            raise Error(2, f"no step is called {step[0]!r}; there are {', '.join(_STEPS)}")
    folder = os.path.abspath(os.fspath(out))
    targets = _targets([os.path.abspath(os.fspath(f)) for f in files], folder, to)
    os.makedirs(folder, exist_ok=True)
    manifest = _Manifest(folder, chain)
    rows: dict[str, Row] = {}

    def finish(row: Row) -> None:
        rows[row.output] = row
        if row.status != "skipped":
            manifest.record(row)
        if seen is not None:
            seen(row, len(rows), len(targets))

    left = {}
    for target, source in targets.items():
        if not force and manifest.is_finished(source, target):
            finish(Row(source, target, "skipped"))
        else:
            left[target] = source
    count = workers or os.cpu_count() or 1
    try:
        if left:
            alone = not scheduler and count == 1
            for row in (_serially(left, chain) if alone
                        else _by_dask(left, chain, scheduler, count)):
                finish(row)
    finally:
        manifest.save()
    return [rows[target] for target in targets]


def write_table(rows: Sequence[Row], file: TextIO, as_json: bool) -> None:
    """Writes rows as CSV with a heading, or as a JSON array of objects."""
    if as_json:
        json.dump([asdict(row) for row in rows], file, indent=1)
        file.write("\n")
        return
    table = csv.writer(file)
    table.writerow([f.name for f in fields(Row)])
    table.writerows(asdict(row).values() for row in rows)


def _arguments() -> argparse.ArgumentParser:
    parser = argparse.ArgumentParser(
        prog="python3 -m zel.batch", description="One pipeline over many mesh files.",
        epilog="Exit codes: 0 all done, 1 some files failed, 2 wrong usage.")
    parser.add_argument("steps", help="steps joined by commas: " + ", ".join(_STEPS))
    parser.add_argument("files", nargs="+", help="mesh files")
    parser.add_argument("--out", required=True, help="folder of the results")
    parser.add_argument("--to", default="", help="format of the results")
    parser.add_argument("--relative", type=float, help="weld: fraction of each mesh's size")
    parser.add_argument("--absolute", type=float, help="weld: distance in the unit of the files")
    parser.add_argument("--outward", action="store_true", help="orient: closed parts look outward")
    parser.add_argument("--weight", choices=["area", "angle", "flat"], help="normals: how faces count")
    parser.add_argument("--scheduler", default="", help="address of a Dask scheduler")
    parser.add_argument("--workers", type=int, default=0, help="processes here; 0: one per core")
    parser.add_argument("--force", action="store_true", help="do finished files again")
    parser.add_argument("--table", help="file of the table; standard output when left out")
    parser.add_argument("--json", action="store_true", help="the table as JSON, not CSV")
    return parser


def _steps_of(arguments: argparse.Namespace) -> list[Step]:
    options: dict[str, dict[str, Any]] = {
        "weld": {"relative": arguments.relative, "absolute": arguments.absolute},
        "orient": {"outward": arguments.outward or None},
        "normals": {"weight": arguments.weight},
    }
    names = arguments.steps.split(",")
    for owner, given in options.items():
        for name, value in given.items():
            if value is not None and owner not in names:
                raise Error(2, f"--{name}: the pipeline has no step {owner}")
    return [(name, {k: v for k, v in options.get(name, {}).items() if v is not None})
            for name in names]


def _show(row: Row, finished: int, total: int) -> None:
    if sys.stderr.isatty():
        bar = "#" * (30 * finished // total)
        end = "\n" if finished == total else ""
        print(f"\r[{bar:<30}] {finished}/{total}", end=end, file=sys.stderr, flush=True)
    if row.status not in ("done", "skipped"):
        print(f"{row.input}: {row.status}: {row.message}", file=sys.stderr)


def main(words: Sequence[str] | None = None) -> int:
    """The command line. Returns the exit code."""
    arguments = _arguments().parse_args(words)
    try:
        rows = run(arguments.files, arguments.out, _steps_of(arguments), to=arguments.to,
                   scheduler=arguments.scheduler, workers=arguments.workers,
                   force=arguments.force, seen=_show)
    except Error as error:
        print(f"zel.batch: {error}", file=sys.stderr)
        return error.code
    if arguments.table:
        with open(arguments.table, "w", encoding="utf-8", newline="") as file:
            write_table(rows, file, arguments.json)
    else:
        write_table(rows, sys.stdout, arguments.json)
    return int(any(row.status in ("failed", "worker died") for row in rows))


if __name__ == "__main__":
    sys.exit(main())
