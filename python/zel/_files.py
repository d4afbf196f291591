"""Reading meshes."""

from __future__ import annotations

import json
import os
import shutil
import subprocess
import tempfile
from pathlib import Path
from typing import BinaryIO, Union

from . import _zel
from ._errors import Error
from ._mesh import Mesh, tolerance_of
from ._progress import Progress

PathLike = Union[str, "os.PathLike[str]"]


def formats() -> dict[str, str]:
    """Names of the formats that the module reads and writes itself, each with one line on it."""
    return _zel.formats()


def read(
    source: PathLike | bytes | BinaryIO,
    format: str = "",
    *,
    absolute: float | None = None,
    relative: float | None = None,
    threads: int = 0,
    progress: Progress = None,
) -> Mesh:
    """Reads a mesh.

    Args:
        source: a path, the bytes of a file, or an open binary file.
        format: a name of formats(); left out, what the name tells, else what the content tells.
        absolute, relative: weld while reading, as Mesh.weld() does; at most one of the two.
        threads: at most so many; 0: one per core. The result does not depend on it.
        progress: called with the fraction done; False cancels.

    Files of other formats are converted by the program `zel` where it is installed.

    Raises:
        Error: code 3 when the file cannot be read or is malformed, 5 when memory or a limit is
            exhausted, 7 when cancelled.

    >>> import zel
    >>> mesh = zel.read(b"v 0 0 0\\nv 1 0 0\\nv 0 1 0\\nf 1 2 3\\n", "obj")
    >>> mesh.points.shape
    (3, 3)
    """
    weld = None
    if absolute is not None or relative is not None:
        weld = tolerance_of(absolute, relative)
    if isinstance(source, bytes):
        return Mesh._of(_zel.read_bytes(source, format, weld, threads, progress, "bytes"))
    if not isinstance(source, (str, os.PathLike)):
        name = str(getattr(source, "name", "stream"))
        return Mesh._of(_zel.read_bytes(source.read(), format, weld, threads, progress, name))
    path = os.fspath(source)
    extension = Path(path).suffix.lstrip(".").lower()
    foreign = format.lower() or extension
    if foreign and not _zel.format_of("x." + foreign):
        if format or (extension and os.path.exists(path) and _is_foreign(extension)):
            return _read_foreign(path, format, weld, threads, progress)
    return Mesh._of(_zel.read_file(path, format, weld, threads, progress))


def _program() -> str | None:
    beside = Path(__file__).with_name("bin") / "zel"
    return str(beside) if beside.exists() else shutil.which("zel")


def _is_foreign(extension: str) -> bool:
    """Whether the program knows the extension; without the program every other one is foreign."""
    program = _program()
    if program is None:
        return False
    listing = subprocess.run(
        [program, "formats", "--json"], capture_output=True, text=True, check=False)
    return any(format["name"] == extension for format in json.loads(listing.stdout or "[]"))


def _read_foreign(
    path: str,
    format: str,
    weld: tuple[float, bool] | None,
    threads: int,
    progress: Progress,
) -> Mesh:
    program = _program()
    if program is None:
        raise Error(
            3,
            f"{path}: cannot read: this format needs the program zel; "
            "or convert the file to PLY, OBJ, STL or .zel elsewhere",
            path,
            "the program zel was not found",
        )
    with tempfile.TemporaryDirectory(prefix="zel-") as folder:
        target = os.path.join(folder, "mesh.zel")
        command = [program, "convert", path, target]
        if format:
            command += ["--from", format]
        done = subprocess.run(command, capture_output=True, text=True, check=False)
        if done.returncode != 0:
            message = (done.stderr.strip().splitlines() or ["zel convert failed"])[-1]
            raise Error(done.returncode if 2 <= done.returncode <= 6 else 3,
                        message.removeprefix("zel: "), path, message)
        return Mesh._of(_zel.read_file(target, "zel", weld, threads, progress))
