"""The mesh as a value."""

from __future__ import annotations

import os
from typing import Any, Sequence, Union

import numpy as np
from numpy.typing import ArrayLike, NDArray

from . import _zel
from ._errors import Error
from ._progress import Progress
from ._reports import (
    BoundaryChain,
    Defects,
    Difference,
    FittedCircle,
    FittedLine,
    FittedPlane,
    Measures,
    OrientReport,
    Remark,
    UnfoldReport,
    WeldReport,
)

FloatArray = NDArray[np.float32]
IntArray = NDArray[np.int32]


def tolerance_of(absolute: float | None, relative: float | None) -> tuple[float, bool]:
    """The two keyword arguments of every tolerance as one: (value, whether relative)."""
    if absolute is not None and relative is not None:
        raise Error(2, "give an absolute or a relative tolerance, not both")
    if absolute is not None:
        return float(absolute), False
    return (1e-6 if relative is None else float(relative)), True


def _rows(values: ArrayLike | None, shape: tuple[int, ...], name: str, dtype: Any) -> NDArray[Any]:
    """An array of rows of the given shape, in the type that the library stores."""
    if values is None:
        return np.empty((0, *shape), dtype)
    array = np.asarray(values)
    if array.size == 0:
        return np.empty((0, *shape), dtype)
    if array.shape[1:] != shape:
        wanted = ", ".join(["n", *map(str, shape)])
        raise Error(2, f"{name} must have shape ({wanted}), not {array.shape}")
    if np.issubdtype(dtype, np.integer):
        if not np.issubdtype(array.dtype, np.integer):
            raise Error(2, f"{name} must be whole numbers, not {array.dtype}")
        limits = np.iinfo(dtype)
        if array.min() < limits.min or array.max() > limits.max:
            raise Error(2, f"{name} lie outside {limits.min} to {limits.max}")
    elif not np.issubdtype(array.dtype, np.number) or np.iscomplexobj(array):
        raise Error(2, f"{name} must be numbers, not {array.dtype}")
    return np.ascontiguousarray(array, dtype)


def _coords(uv: ArrayLike | None, faces: NDArray[Any], nodes: int, name: str) -> NDArray[Any]:
    """Texture coordinates per corner, from coordinates per corner or per node."""
    if uv is None:
        return np.empty((0, faces.shape[1], 2), np.float32)
    array = np.asarray(uv)
    if array.ndim == 2 and array.shape == (nodes, 2) and faces.size:
        if faces.min() < 0 or faces.max() >= nodes:
            raise Error(2, f"{name}: a face names a node that does not exist")
        array = array[faces]
    return _rows(array, (faces.shape[1], 2), name, np.float32)


class Mesh:
    """A surface mesh of nodes, triangles and quads. It never changes: operations return a new one.

    Args:
        points: shape (n, 3). Stored as 32-bit floats.
        triangles: shape (t, 3), numbers of nodes from 0, in winding order.
        quads: shape (q, 4), likewise.
        uv: texture coordinates of the triangles, shape (t, 3, 2) per corner or (n, 2) per node.
        quad_uv: of the quads, shape (q, 4, 2) or (n, 2).
        normals: shape (n, 3), a direction per node.
        colors: shape (n, 3) or (n, 4), 0 to 255 per node.

    Raises:
        Error: code 2 when the shapes do not fit or a face names a node that does not exist.

    >>> import zel
    >>> zel.Mesh([[0, 0, 0], [1, 0, 0], [0, 1, 0]], [[0, 1, 2]])
    <zel.Mesh: 3 nodes, 1 triangle, 0 quads>
    """

    __slots__ = ("_handle",)
    _handle: _zel.Handle

    def __init__(
        self,
        points: ArrayLike,
        triangles: ArrayLike | None = None,
        quads: ArrayLike | None = None,
        uv: ArrayLike | None = None,
        *,
        quad_uv: ArrayLike | None = None,
        normals: ArrayLike | None = None,
        colors: ArrayLike | None = None,
    ) -> None:
        nodes = _rows(points, (3,), "points", np.float32)
        faces = _rows(triangles, (3,), "triangles", np.int32)
        fours = _rows(quads, (4,), "quads", np.int32)
        rgba = np.empty((0, 4), np.uint8)
        if colors is not None:
            given = np.asarray(colors)
            if given.shape[0:1] != nodes.shape[0:1]:
                raise Error(2, "there must be one color per node")
            if given.ndim == 2 and given.shape[1] == 3:
                given = np.column_stack([given, np.full(len(given), 255, given.dtype)])
            rgba = _rows(given, (4,), "colors", np.uint8)
        self._handle = _zel.from_arrays(
            nodes,
            faces,
            fours,
            _rows(normals, (3,), "normals", np.float32),
            _coords(uv, faces, len(nodes), "uv"),
            _coords(quad_uv, fours, len(nodes), "quad_uv"),
            rgba,
        )

    @classmethod
    def _of(cls, handle: _zel.Handle) -> Mesh:
        mesh = cls.__new__(cls)
        mesh._handle = handle
        return mesh

    @classmethod
    def from_object(cls, other: Any) -> Mesh:
        """Takes over what another package calls a mesh.

        An object with `points` and `cells` (as meshio has it: blocks of type "triangle" and "quad",
        others are refused), or one with `vertices` and `faces` (rows of 3 or of 4).

        Raises:
            Error: code 2 when the object is no such mesh or has cells of another kind.
        """
        if isinstance(other, Mesh):
            return other
        if hasattr(other, "points") and hasattr(other, "cells"):
            blocks: dict[str, list[NDArray[Any]]] = {"triangle": [], "quad": []}
            for block in other.cells:
                if block.type in ("vertex", "line"):
                    continue
                if block.type not in blocks:
                    raise Error(2, f"cells of type {block.type!r} are no faces")
                blocks[block.type].append(np.asarray(block.data))
            points = np.asarray(other.points)
            if points.ndim == 2 and points.shape[1] == 2:
                points = np.column_stack([points, np.zeros(len(points), points.dtype)])
            joined = {kind: np.concatenate(rows) if rows else None for kind, rows in blocks.items()}
            return cls(points, joined["triangle"], joined["quad"])
        if hasattr(other, "vertices") and hasattr(other, "faces"):
            faces = np.asarray(other.faces)
            if faces.ndim == 2 and faces.shape[1] == 4:
                return cls(other.vertices, None, faces)
            return cls(other.vertices, faces)
        raise Error(2, f"{type(other).__name__} is no mesh: it has neither points and cells "
                       "nor vertices and faces")

    # --- arrays ------------------------------------------------------------------------------------

    @property
    def points(self) -> FloatArray:
        """Shape (n, 3): read-only, no copy, valid as long as you hold it. So are all arrays here."""
        return self._handle.points()

    @property
    def normals(self) -> FloatArray:
        """Normals of the nodes, shape (n, 3); zero where there is none."""
        return self._handle.normals()

    @property
    def triangles(self) -> IntArray:
        """Shape (t, 3): the nodes of each triangle."""
        return self._handle.triangles()

    @property
    def quads(self) -> IntArray:
        """Shape (q, 4): the nodes of each quad."""
        return self._handle.quads()

    @property
    def triangle_normals(self) -> FloatArray:
        """Normals of the triangles, shape (t, 3); zero where there is none."""
        return self._handle.triangle_normals()

    @property
    def quad_normals(self) -> FloatArray:
        """Normals of the quads, shape (q, 3); zero where there is none."""
        return self._handle.quad_normals()

    @property
    def uv(self) -> FloatArray | None:
        """Texture coordinates of the triangles' corners, shape (t, 3, 2); None without any.

        Where only some corners have one it is a copy with NaN for the others.
        """
        return self._handle.uv()

    @property
    def quad_uv(self) -> FloatArray | None:
        """Texture coordinates of the quads' corners, shape (q, 4, 2); None without any."""
        return self._handle.quad_uv()

    @property
    def colors(self) -> NDArray[np.uint8] | None:
        """Red, green, blue and opacity of the nodes, shape (n, 4); None without any. A copy."""
        return self._handle.colors()

    @property
    def bounds(self) -> FloatArray:
        """Lowest and highest coordinates, shape (2, 3); zero without a node."""
        low, high = _zel.bounds(self._handle)
        return np.array([low, high], np.float32)

    @property
    def remarks(self) -> list[Remark]:
        """What the reader of the file had to leave out or change."""
        return [Remark(*row) for row in self._handle.remarks()]

    # --- operations --------------------------------------------------------------------------------

    def weld(
        self,
        *,
        absolute: float | None = None,
        relative: float | None = None,
        keep_repeated: bool = False,
        keep_collapsed: bool = False,
        threads: int = 0,
        progress: Progress = None,
    ) -> tuple[Mesh, WeldReport]:
        """Merges nodes that lie within a tolerance of each other, and drops what became of faces
        that repeat another or collapsed.

        Args:
            absolute: a distance in the unit of the points.
            relative: a fraction of the diagonal of the bounds; 1e-6 when neither is given.
            keep_repeated, keep_collapsed: keep such faces.
        """
        handle, fields = _zel.weld(
            self._handle, tolerance_of(absolute, relative), keep_repeated, keep_collapsed,
            threads, progress,
        )
        return Mesh._of(handle), WeldReport(**fields)

    def check(self, *, threads: int = 0, progress: Progress = None) -> Defects:
        """What is wrong with the mesh, with the faces, edges and nodes concerned."""
        return Defects(**_zel.check(self._handle, threads, progress))

    def boundary(self, *, threads: int = 0, progress: Progress = None) -> list[BoundaryChain]:
        """All runs of edges that belong to one face only."""
        chains = _zel.boundary(self._handle, threads, progress)
        return [BoundaryChain(nodes, closed) for nodes, closed in chains]

    def orient(
        self, *, outward: bool = False, threads: int = 0, progress: Progress = None
    ) -> tuple[Mesh, OrientReport]:
        """Gives neighbouring faces the same winding.

        Args:
            outward: also turn closed components so that their faces look outward.
        """
        handle, fields = _zel.orient(self._handle, outward, threads, progress)
        return Mesh._of(handle), OrientReport(**fields)

    def reverse(self) -> Mesh:
        """Turns every face round."""
        return Mesh._of(_zel.reverse(self._handle))

    def with_normals(self, weight: str = "area") -> Mesh:
        """Gives faces and nodes normals.

        Args:
            weight: how the faces round a node count: "area", "angle", or "flat" (the node takes
                that of its last face).
        """
        return Mesh._of(_zel.with_normals(self._handle, weight))

    def triangulate(self) -> Mesh:
        """Splits each quad along its better diagonal."""
        return Mesh._of(_zel.triangulate(self._handle))

    def unfold(self, *, progress: Progress = None) -> tuple[Mesh, UnfoldReport]:
        """Lays the triangles out in the plane, component by component; the layout is the `uv` of
        the result, in the unit of the points."""
        handle, fields = _zel.unfold(self._handle, progress)
        return Mesh._of(handle), UnfoldReport(**fields)

    def compare(self, other: Mesh, *, absolute: float | None = None) -> Difference:
        """How two meshes differ.

        Args:
            absolute: how far apart points of the same number may lie; left out, everything is
                compared to the last bit.
        """
        return Difference(*_zel.compare(self._handle, other._handle, absolute))

    def measure(self, *, threads: int = 0, progress: Progress = None) -> Measures:
        """Bounds, area, volume, edges and components."""
        return Measures(**_zel.measure(self._handle, threads, progress))

    def transform(self, matrix: ArrayLike) -> Mesh:
        """Moves the points and turns the normals.

        Args:
            matrix: shape (4, 4), as in mathematics: the last column is the translation.
        """
        array = np.asarray(matrix, np.float32)
        if array.shape != (4, 4):
            raise Error(2, f"the matrix must have shape (4, 4), not {array.shape}")
        return Mesh._of(_zel.transform(self._handle, np.ascontiguousarray(array.T).ravel()))

    def fit_plane(self, nodes: Sequence[int] | None = None) -> FittedPlane:
        """The plane through the nodes of these numbers; all, when left out."""
        return fit_plane(self._chosen(nodes))

    def fit_line(self, nodes: Sequence[int] | None = None) -> FittedLine:
        """The line through the nodes of these numbers; all, when left out."""
        return fit_line(self._chosen(nodes))

    def fit_circle(self, nodes: Sequence[int] | None = None) -> FittedCircle:
        """The circle through the nodes of these numbers; all, when left out."""
        return fit_circle(self._chosen(nodes))

    def _chosen(self, nodes: Sequence[int] | None) -> NDArray[Any]:
        if nodes is None:
            return self.points
        numbers = np.asarray(nodes, np.int64)
        if numbers.size and (numbers.min() < 0 or numbers.max() >= len(self.points)):
            raise Error(2, f"node numbers run from 0 to {len(self.points) - 1}")
        return self.points[numbers]

    # --- out -----------------------------------------------------------------------------------------

    def write(
        self,
        file: Union[str, os.PathLike[str]],
        format: str = "",
        *,
        ascii: bool = False,
        threads: int = 0,
        progress: Progress = None,
    ) -> list[Remark]:
        """Writes a file, whole or not at all.

        Args:
            file: its extension names the format unless `format` does.
            ascii: the text form of STL and PLY.

        Returns:
            What the format cannot hold.
        """
        rows = _zel.write_file(self._handle, os.fspath(file), format, ascii, threads, progress)
        return [Remark(*row) for row in rows]

    def to_bytes(self, format: str, *, ascii: bool = False) -> bytes:
        """The bytes that write() puts into a file."""
        content, _ = _zel.to_bytes(self._handle, format, ascii, 0, None)
        return content

    def render(
        self, width: int = 640, height: int = 480, *, transparent: bool = False
    ) -> NDArray[np.uint8]:
        """Draws the mesh. Needs no display.

        Returns:
            Shape (height, width, 4): red, green, blue and opacity, top row first.

        Raises:
            Error: code 6 when there is no OpenGL, or the module was built without pictures.
        """
        if not hasattr(_zel, "render"):
            raise Error(6, "this module was built without pictures")
        return _zel.render(self._handle, width, height, transparent)

    def __repr__(self) -> str:
        def some(count: int, word: str) -> str:
            return f"{count:,} {word}{'' if count == 1 else 's'}"

        return (f"<zel.Mesh: {some(len(self.points), 'node')}, "
                f"{some(len(self.triangles), 'triangle')}, {some(len(self.quads), 'quad')}>")

    def _repr_png_(self) -> bytes | None:
        if not hasattr(_zel, "render_png") or len(self.points) == 0:
            return None
        try:
            return _zel.render_png(self._handle, 480, 360, False)
        except Error:
            return None

    def __eq__(self, other: object) -> bool:
        if not isinstance(other, Mesh):
            return NotImplemented
        return self._handle is other._handle or not self.compare(other)

    def __hash__(self) -> int:
        # Points suffice: equal meshes have equal ones.
        return hash((self.points.tobytes(), len(self.triangles), len(self.quads)))

    def __reduce__(self) -> tuple[Any, ...]:
        return _unpickle, (self.to_bytes("zel"), self.colors)


def _unpickle(document: bytes, colors: NDArray[np.uint8] | None) -> Mesh:
    handle = _zel.read_bytes(document, "zel", None, 0, None, "pickle")
    return Mesh._of(handle if colors is None else _zel.with_colors(handle, colors))


def fit_plane(points: ArrayLike) -> FittedPlane:
    """The plane of least squared distances. `points` has shape (n, 3).

    Raises:
        Error: code 2 when the points lie on a line or in one place.

    >>> import zel
    >>> zel.fit_plane([[0, 0, 1], [1, 0, 1], [0, 1, 1]]).d
    -1.0
    """
    return FittedPlane(*_zel.fit_plane(_rows(points, (3,), "points", np.float32)))


def fit_line(points: ArrayLike) -> FittedLine:
    """The line of least squared distances. `points` has shape (n, 3).

    Raises:
        Error: code 2 when the points lie in one place.
    """
    return FittedLine(*_zel.fit_line(_rows(points, (3,), "points", np.float32)))


def fit_circle(points: ArrayLike) -> FittedCircle:
    """The circle in the plane of least squared distances. `points` has shape (n, 3).

    Raises:
        Error: code 2 when the points lie on a line or in one place.
    """
    return FittedCircle(*_zel.fit_circle(_rows(points, (3,), "points", np.float32)))
