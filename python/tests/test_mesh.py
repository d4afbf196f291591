"""Meshes as values: arrays in and out, operations, reports."""

import gc
import pickle
import threading

import numpy as np
import pytest

import zel

CUBE_POINTS = np.array([[x, y, z] for x in (0, 1) for y in (0, 1) for z in (0, 1)], float)
CUBE_QUADS = np.array(
    [[0, 1, 3, 2], [4, 6, 7, 5], [0, 4, 5, 1], [2, 3, 7, 6], [0, 2, 6, 4], [1, 5, 7, 3]]
)


def cube() -> zel.Mesh:
    return zel.Mesh(CUBE_POINTS, quads=CUBE_QUADS)


def soup_of(mesh: zel.Mesh) -> zel.Mesh:
    mesh = mesh.triangulate()
    points = np.array(mesh.points)[mesh.triangles].reshape(-1, 3)
    return zel.Mesh(points, np.arange(len(points)).reshape(-1, 3))


def test_arrays_come_back_as_they_went_in():
    rng = np.random.default_rng(1)
    points = rng.normal(size=(50, 3)).astype(np.float32)
    triangles = rng.integers(0, 50, (40, 3))
    uv = rng.normal(size=(40, 3, 2)).astype(np.float32)
    normals = rng.normal(size=(50, 3)).astype(np.float32)
    colors = rng.integers(0, 256, (50, 4)).astype(np.uint8)
    mesh = zel.Mesh(points, triangles, uv=uv, normals=normals, colors=colors)
    for got, want in ((mesh.points, points), (mesh.triangles, triangles), (mesh.uv, uv),
                      (mesh.normals, normals), (mesh.colors, colors)):
        np.testing.assert_array_equal(got, want)
    per_node = rng.normal(size=(50, 2)).astype(np.float32)
    np.testing.assert_array_equal(
        zel.Mesh(points, triangles, uv=per_node).uv, per_node[triangles])


def test_views_are_read_only_and_outlive_their_mesh():
    mesh = cube()
    points = mesh.points
    with pytest.raises(ValueError):
        points[0, 0] = 5
    assert not points.flags.owndata
    expected = np.array(points)
    moved = mesh.transform(np.diag([2, 2, 2, 1]))
    del mesh
    gc.collect()
    _ = [cube() for _ in range(50)]
    np.testing.assert_array_equal(points, expected)
    np.testing.assert_array_equal(moved.points, 2 * expected)


@pytest.mark.parametrize("arguments", [
    dict(points=[[0, 0]]),
    dict(points=CUBE_POINTS, triangles=[[0, 1, 8]]),
    dict(points=CUBE_POINTS, triangles=[[0, 1, -1]]),
    dict(points=CUBE_POINTS, triangles=[[0, 1, 2.5]]),
    dict(points=CUBE_POINTS, triangles=[[0, 1, 2**31]]),
    dict(points=CUBE_POINTS, triangles=[[0, 1, 2]], uv=np.zeros((2, 3, 2))),
    dict(points=CUBE_POINTS, triangles=[[0, 1, 9]], uv=np.zeros((8, 2))),
    dict(points=CUBE_POINTS, normals=np.zeros((7, 3))),
    dict(points=CUBE_POINTS, colors=np.zeros((7, 4), np.uint8)),
    dict(points=CUBE_POINTS, colors=np.full((8, 4), 256)),
    dict(points=[["a", "b", "c"]]),
])
def test_arrays_that_do_not_fit_are_refused(arguments):
    with pytest.raises(zel.Error) as caught:
        zel.Mesh(**arguments)
    assert caught.value.code == 2


def test_weld_check_and_measure_a_cube():
    soup = soup_of(cube())
    assert soup.check().open_edges == 36
    welded, report = soup.weld()
    assert (report.nodes_merged, len(welded.points), len(welded.triangles)) == (28, 8, 12)
    np.testing.assert_array_equal(
        np.asarray(welded.points)[report.node_map], soup.points)
    defects = welded.check()
    assert not defects and defects.components == 1
    measures = welded.measure()
    assert measures.area == pytest.approx(6) and measures.signed_volume == pytest.approx(1)
    assert measures.is_closed and measures.is_oriented
    np.testing.assert_array_equal(welded.bounds, [[0, 0, 0], [1, 1, 1]])
    inside_out = welded.reverse()
    assert inside_out.check().inside_out_components == 1
    turned, told = inside_out.orient(outward=True)
    assert told.components_turned == 1 and turned.measure().signed_volume == pytest.approx(1)


def test_defects_name_what_is_concerned():
    points = np.vstack([CUBE_POINTS, [[9, 9, 9]]])
    mesh = zel.Mesh(points, [[0, 1, 2], [0, 2, 1]], CUBE_QUADS[:1])
    defects = mesh.check()
    assert defects and defects.duplicate_faces == 1
    np.testing.assert_array_equal(defects.lists["duplicate_faces"], [[3, 1]])
    assert set(defects.lists["unused_nodes"]) == {4, 5, 6, 7, 8}
    assert len(defects.lists["open_edges"]) == defects.open_edges


def test_open_box_has_one_boundary():
    box = zel.Mesh(CUBE_POINTS, quads=CUBE_QUADS[:5])
    (chain,) = box.boundary()
    assert chain.is_closed and set(chain.nodes) == {1, 3, 5, 7}


def test_unfold_normals_and_comparison():
    flat, report = cube().triangulate().unfold()
    assert flat.uv.shape == (12, 3, 2) and report.unfolded_faces == 12
    shaded = cube().with_normals("angle")
    np.testing.assert_allclose(np.linalg.norm(shaded.normals, axis=1), 1, atol=1e-6)
    assert cube() == cube() and hash(cube()) == hash(cube())
    moved = cube().transform([[1, 0, 0, 0.5], [0, 1, 0, 0], [0, 0, 1, 0], [0, 0, 0, 1]])
    difference = cube().compare(moved)
    assert difference and difference.largest_move == pytest.approx(0.5)
    assert not cube().compare(moved, absolute=0.6)
    with pytest.raises(zel.Error):
        cube().with_normals("heavy")


def test_fits():
    angles = np.linspace(0, 5, 20)
    ring = np.column_stack([3 * np.cos(angles) + 1, 3 * np.sin(angles) + 2, np.full(20, 4.0)])
    circle = zel.fit_circle(ring)
    assert circle.radius == pytest.approx(3, rel=1e-5)
    np.testing.assert_allclose(circle.centre, [1, 2, 4], atol=1e-5)
    assert abs(zel.Mesh(ring).fit_plane().normal[2]) == pytest.approx(1)
    np.testing.assert_allclose(
        np.abs(zel.fit_line([[0, 0, 0], [2, 0, 0]]).direction), [1, 0, 0], atol=1e-6)
    with pytest.raises(zel.Error):
        zel.fit_plane([[0, 0, 0], [1, 1, 1], [2, 2, 2]])
    with pytest.raises(zel.Error):
        cube().fit_plane([0, 1, 8])


def test_pickle_keeps_everything():
    mesh = zel.Mesh(CUBE_POINTS, quads=CUBE_QUADS, quad_uv=np.ones((6, 4, 2)),
                    colors=np.arange(32).reshape(8, 4)).with_normals()
    copy = pickle.loads(pickle.dumps(mesh))
    assert copy == mesh
    np.testing.assert_array_equal(copy.colors, mesh.colors)
    np.testing.assert_array_equal(copy.quad_uv, mesh.quad_uv)
    np.testing.assert_array_equal(copy.quad_normals, mesh.quad_normals)


def test_reports_print_as_tables():
    _, report = soup_of(cube()).weld()
    assert "nodes merged" in str(report) and "28" in str(report)
    assert report._repr_html_().startswith("<table>")
    assert repr(cube()) == "<zel.Mesh: 8 nodes, 0 triangles, 6 quads>"


def test_progress_rises_cancels_and_passes_exceptions_on():
    points = np.random.default_rng(2).random((30000, 3))
    soup = zel.Mesh(points, np.arange(30000).reshape(-1, 3))
    seen = []
    soup.weld(progress=seen.append)
    assert seen == sorted(seen) and 0 <= seen[0] and seen[-1] <= 1
    with pytest.raises(zel.Error) as caught:
        soup.weld(progress=lambda fraction: False)
    assert caught.value.code == 7

    def fail(fraction):
        raise KeyError(fraction)

    with pytest.raises(KeyError):
        soup.weld(progress=fail)


def test_other_threads_run_meanwhile():
    points = np.random.default_rng(3).random((300000, 3))
    soup = zel.Mesh(points, np.arange(300000).reshape(-1, 3))
    ticks = []
    stop = threading.Event()

    def tick():
        while not stop.wait(0.001):
            ticks.append(1)

    clock = threading.Thread(target=tick)
    clock.start()
    before = len(ticks)
    soup.weld(threads=1)
    during = len(ticks) - before
    stop.set()
    clock.join()
    assert during > 2
