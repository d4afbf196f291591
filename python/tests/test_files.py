"""Reading and writing, other packages' meshes, pictures."""

import io
import shutil
import types

import numpy as np
import pytest

import zel
from test_mesh import CUBE_POINTS, CUBE_QUADS, cube

OBJ = b"v 0 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 3\n"


@pytest.mark.parametrize("extension", ["zel", "obj", "ply"])
def test_files_keep_a_mesh_to_the_last_bit(tmp_path, extension):
    rng = np.random.default_rng(4)
    mesh = zel.Mesh(CUBE_POINTS + rng.normal(size=(8, 3)), quads=CUBE_QUADS)
    file = tmp_path / f"cube.{extension}"
    mesh.write(file)
    again = zel.read(file)
    np.testing.assert_array_equal(again.points, mesh.points)
    np.testing.assert_array_equal(again.quads, mesh.quads)
    assert mesh.to_bytes(extension) == file.read_bytes()


def test_what_a_format_cannot_hold_is_remarked(tmp_path):
    remarks = cube().write(tmp_path / "cube.stl")
    assert any(remark.kind in ("left out", "changed", "note") for remark in remarks)
    soup = zel.read(tmp_path / "cube.stl")
    assert len(soup.points) == 36
    welded = zel.read(tmp_path / "cube.stl", relative=1e-6)
    assert len(welded.points) == 8 and welded == soup.weld(relative=1e-6)[0]


def test_bytes_and_streams_are_sources_too():
    for source in (OBJ, io.BytesIO(OBJ)):
        assert len(zel.read(source, "obj").triangles) == 1


@pytest.mark.parametrize("content, format, code", [
    (b"v 0 0 zero\n", "obj", 3),
    (b"ply\nformat ascii 1.0\nelement vertex 1\nend_header\n", "ply", 3),
    (OBJ, "no such format", 2),
])
def test_errors_carry_code_and_message(content, format, code):
    with pytest.raises(zel.Error) as caught:
        zel.read(content, format)
    assert caught.value.code == code and str(caught.value)


def test_missing_files_and_unknown_names(tmp_path):
    with pytest.raises(zel.Error) as caught:
        zel.read(tmp_path / "none.ply")
    assert caught.value.code == 3 and "none.ply" in caught.value.file
    with pytest.raises(zel.Error) as caught:
        cube().write(tmp_path / "cube.unknown")
    assert not (tmp_path / "cube.unknown").exists()


def test_foreign_formats_go_through_the_program(tmp_path):
    file = tmp_path / "face.off"
    file.write_text("OFF\n3 1 0\n0 0 0\n1 0 0\n0 1 0\n3 0 1 2\n")
    if shutil.which("zel") is None:
        with pytest.raises(zel.Error) as caught:
            zel.read(file, "off")
        assert "zel" in str(caught.value)
    else:
        assert len(zel.read(file).triangles) == 1


def test_meshio_and_trimesh_meshes():
    meshio = pytest.importorskip("meshio")
    theirs = meshio.Mesh(CUBE_POINTS, [("quad", CUBE_QUADS), ("triangle", [[0, 1, 2]]),
                                       ("line", [[0, 1]])])
    mine = zel.Mesh.from_object(theirs)
    assert (len(mine.points), len(mine.triangles), len(mine.quads)) == (8, 1, 6)
    solid = meshio.Mesh(CUBE_POINTS, [("tetra", [[0, 1, 2, 4]])])
    with pytest.raises(zel.Error):
        zel.Mesh.from_object(solid)
    like_trimesh = types.SimpleNamespace(vertices=CUBE_POINTS, faces=[[0, 1, 2]])
    assert len(zel.Mesh.from_object(like_trimesh).triangles) == 1
    with pytest.raises(zel.Error):
        zel.Mesh.from_object(object())


def test_meshio_reads_what_zel_writes(tmp_path):
    meshio = pytest.importorskip("meshio")
    for extension in ("ply", "stl", "obj"):
        file = tmp_path / f"cube.{extension}"
        cube().triangulate().write(file)
        theirs = meshio.read(file)
        mine = zel.read(file)
        assert sum(len(block.data) for block in theirs.cells if block.type == "triangle") == 12
        np.testing.assert_allclose(np.unique(theirs.points, axis=0),
                                   np.unique(mine.points, axis=0))
        assert zel.Mesh.from_object(theirs).measure().area == pytest.approx(6)


def test_pictures():
    if not hasattr(zel._zel, "render"):
        pytest.skip("built without pictures")
    picture = cube().render(160, 120)
    assert picture.shape == (120, 160, 4) and picture.dtype == np.uint8
    assert len(np.unique(picture.reshape(-1, 4), axis=0)) > 3
    assert cube()._repr_png_().startswith(b"\x89PNG")
