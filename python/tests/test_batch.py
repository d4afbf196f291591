"""One pipeline over many files: here, and on a real scheduler whose workers die."""

import csv
import io
import json
import os
import signal
import subprocess
import sys
import time
from pathlib import Path

import numpy as np
import pytest

import zel
from zel import batch


def soup(seed: int) -> zel.Mesh:
    rng = np.random.default_rng(seed)
    corners = rng.integers(0, 6, (60, 3)).astype(float) + seed
    return zel.Mesh(corners, np.arange(60).reshape(-1, 3))


@pytest.fixture
def scans(tmp_path):
    folder = tmp_path / "scans"
    folder.mkdir()
    for number in range(6):
        soup(number).write(folder / f"{number}.ply")
    return sorted(folder.glob("*.ply"))


WELD = [("weld", {"relative": 1e-6})]


def test_results_rows_and_second_runs(scans, tmp_path):
    scans[2].write_bytes(b"ply\nformat ascii 1.0\nelement vertex 9\nend_header\n")
    out = tmp_path / "welded"
    rows = batch.run(scans, out, WELD, workers=1)
    assert [row.status for row in rows] == ["done"] * 2 + ["failed"] + ["done"] * 3
    assert rows[2].message and not (out / "2.ply").exists()
    assert zel.read(out / "1.ply") == soup(1).weld()[0]

    assert [row.status for row in batch.run(scans, out, WELD, workers=1)] == (
        ["skipped"] * 2 + ["failed"] + ["skipped"] * 3)
    soup(9).write(scans[0])
    (out / "1.ply").write_bytes(b"spoilt")
    assert [row.status for row in batch.run(scans, out, WELD, workers=1)] == (
        ["done"] * 2 + ["failed"] + ["skipped"] * 3)
    assert {row.status for row in batch.run(scans, out, [("weld", {"absolute": 0.1})], workers=1)
            } == {"done", "failed"}, "other options are other work"
    assert {row.status for row in batch.run(scans, out, WELD, workers=1, force=True)
            } == {"done", "failed"}


def test_functions_are_steps(scans, tmp_path):
    rows = batch.run(scans, tmp_path / "out", lambda mesh: mesh.reverse(), to="zel", workers=1)
    assert {row.status for row in rows} == {"done"}
    assert zel.read(tmp_path / "out" / "3.zel").triangles[0].tolist() != [0, 1, 2]


def test_what_cannot_be_started_is_refused(scans, tmp_path):
    twin = tmp_path / "0.ply"
    twin.write_bytes(scans[0].read_bytes())
    for files, out, steps, to in (
            ([scans[0], twin], tmp_path / "out", WELD, ""),
            (scans, scans[0].parent, WELD, ""),
            (scans, tmp_path / "out", [("melt", {})], ""),
            (scans, tmp_path / "out", WELD, "nothing")):
        with pytest.raises(zel.Error) as caught:
            batch.run(files, out, steps, to=to, workers=1)
        assert caught.value.code == 2
    assert not (tmp_path / "out").exists()


@pytest.mark.parametrize("as_json", [False, True])
def test_command_line(scans, tmp_path, capsys, as_json):
    words = ["weld,orient", *map(str, scans), "--out", str(tmp_path / "out"), "--outward",
             "--workers", "1"]
    assert batch.main(words + (["--json"] if as_json else [])) == 0
    text = capsys.readouterr().out
    rows = json.loads(text) if as_json else list(csv.DictReader(io.StringIO(text)))
    assert len(rows) == 6 and {row["status"] for row in rows} == {"done"}
    assert batch.main(["normals", str(scans[0]), "--out", "x", "--relative", "1"]) == 2


# --- on a cluster ------------------------------------------------------------------------------------


def killer(mesh: zel.Mesh) -> zel.Mesh:
    """Dies with the worker on one certain mesh."""
    if len(mesh.points) == 3:
        os.kill(os.getpid(), signal.SIGKILL)
    time.sleep(0.01)
    return mesh.weld()[0]


@pytest.fixture
def cluster(tmp_path):
    pytest.importorskip("distributed")
    file = tmp_path / "scheduler.json"
    environment = dict(os.environ, PYTHONPATH=os.pathsep.join(
        [str(Path(__file__).parent), str(Path(zel.__file__).parent.parent),
         os.environ.get("PYTHONPATH", "")]),
        DASK_DISTRIBUTED__SCHEDULER__WORKER_SATURATION="1.0")
    quiet = dict(stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, env=environment,
                 cwd=tmp_path)
    python = [sys.executable, "-m"]
    processes = [subprocess.Popen(
        python + ["distributed.cli.dask_scheduler", "--host", "127.0.0.1", "--port", "0",
                  "--no-dashboard", "--scheduler-file", str(file)], **quiet)]
    for _ in range(300):
        if file.exists() and file.read_text().strip().endswith("}"):
            break
        time.sleep(0.1)
    address = json.loads(file.read_text())["address"]
    for _ in range(2):
        processes.append(subprocess.Popen(
            python + ["distributed.cli.dask_worker", address, "--nthreads", "1",
                      "--no-dashboard"], start_new_session=True, **quiet))
    yield address, processes
    for process in processes[1:]:
        os.killpg(process.pid, signal.SIGKILL)
    processes[0].kill()
    for process in processes:
        process.wait()


def test_a_cluster_gives_what_one_process_gives(tmp_path, cluster):
    address, processes = cluster
    scans = tmp_path / "many"
    scans.mkdir()
    for number in range(200):
        soup(number).write(scans / f"{number:03}.ply")
    zel.Mesh([[0, 0, 0], [1, 0, 0], [0, 1, 0]], [[0, 1, 2]]).write(scans / "deadly.ply")
    files = sorted(scans.glob("*.ply"))

    def half_way(row, finished, total):
        if finished == 100:
            os.killpg(processes[1].pid, signal.SIGKILL)

    from test_batch import killer as step  # by a name that the workers know
    rows = batch.run(files, tmp_path / "out", step, scheduler=address, seen=half_way)
    statuses = {Path(row.input).name: row.status for row in rows}
    assert statuses.pop("deadly.ply") == "worker died"
    assert set(statuses.values()) == {"done"} and len(statuses) == 200
    for number in range(200):
        assert zel.read(tmp_path / "out" / f"{number:03}.ply") == soup(number).weld()[0]
