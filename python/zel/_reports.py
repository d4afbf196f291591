"""What the operations report: plain values that print as a table, in notebooks too."""

from __future__ import annotations

import html
from dataclasses import dataclass, field, fields
from typing import Any

import numpy as np
from numpy.typing import NDArray

IntArray = NDArray[np.int32]
FloatArray = NDArray[np.float32]


def _text(value: Any) -> str:
    if isinstance(value, np.ndarray):
        return f"array of shape {value.shape}"
    if isinstance(value, float):
        return f"{value:.6g}"
    if isinstance(value, list):
        return f"list of {len(value)}"
    return str(value)


class Report:
    """Base of all reports."""

    def _rows(self) -> list[tuple[str, str]]:
        return [
            (f.name.replace("_", " "), _text(getattr(self, f.name)))
            for f in fields(self)
        ]

    def __str__(self) -> str:
        rows = self._rows()
        width = max((len(name) for name, _ in rows), default=0)
        lines = [f"  {name.ljust(width)}  {value}" for name, value in rows]
        return "\n".join([type(self).__name__, *lines])

    def _repr_html_(self) -> str:
        cells = "".join(
            f"<tr><th style='text-align:left'>{html.escape(name)}</th>"
            f"<td style='text-align:left'>{html.escape(value)}</td></tr>"
            for name, value in self._rows()
        )
        return f"<table><caption>{type(self).__name__}</caption>{cells}</table>"


@dataclass(frozen=True)
class Remark:
    """What a file and a mesh do not share.

    Attributes:
        kind: "left out", "changed", "damaged" or "note".
        text: one sentence.
        count: how many things it concerns; 0 when they are not counted.
    """

    kind: str
    text: str
    count: int

    def __str__(self) -> str:
        return self.text


@dataclass(frozen=True, repr=False)
class WeldReport(Report):
    """What a weld did.

    Attributes:
        tolerance_used: the distance, in the unit of the mesh.
        nodes_merged: nodes that went into another.
        faces_collapsed: faces of which fewer than three different corners were left.
        faces_repeated: further faces with the corners of an earlier one.
        quads_narrowed: quads that lost one corner and became triangles.
        largest_move: greatest distance from a merged node to the one it went into.
        node_map: per old node its new number, shape (n,).
    """

    tolerance_used: float
    nodes_merged: int
    faces_collapsed: int
    faces_repeated: int
    quads_narrowed: int
    largest_move: float
    node_map: IntArray


@dataclass(frozen=True, repr=False)
class Defects(Report):
    """What is wrong with a mesh: counts, and in `lists` what is concerned.

    All counts but `components` zero: a closed, consistently wound surface without blemish.
    `lists` maps the name of a class to an array: edges as node pairs, shape (n, 2); nodes as
    numbers, shape (n,); faces as (corners, number), shape (n, 2), where corners is 3 for a
    triangle and 4 for a quad.
    """

    open_edges: int
    crowded_edges: int
    mixed_edges: int
    bow_tie_nodes: int
    duplicate_faces: int
    degenerate_faces: int
    dangling_faces: int
    unused_nodes: int
    non_finite_nodes: int
    inside_out_components: int
    components: int
    lists: dict[str, IntArray] = field(default_factory=dict)

    def __bool__(self) -> bool:
        """Whether any defect was found."""
        return any(value for name, value in self.__dict__.items()
                   if name not in ("components", "lists"))

    def _rows(self) -> list[tuple[str, str]]:
        return super()._rows()[:-1]


@dataclass(frozen=True, repr=False)
class OrientReport(Report):
    """What orient() found and did.

    Attributes:
        components: sets of faces joined by edges of exactly two faces.
        faces_reversed: faces that were turned round.
        twisted_seams: edges at which no winding agrees.
        components_turned: components that looked inward and were turned as a whole.
    """

    components: int
    faces_reversed: int
    twisted_seams: int
    components_turned: int


@dataclass(frozen=True)
class BoundaryChain:
    """A run of boundary edges.

    Attributes:
        nodes: numbers of the nodes, in the direction in which the faces beside them run.
        is_closed: whether the last node is joined to the first.
    """

    nodes: IntArray
    is_closed: bool


@dataclass(frozen=True, repr=False)
class Measures(Report):
    """The size of a mesh; lengths in the unit of the points.

    Attributes:
        low, high: corners of the bounds, shape (3,); zero without a node.
        area: of all faces.
        signed_volume: inside a closed mesh, positive when its faces look outward.
        centroid: of the surface, shape (3,).
        edges: each counted once.
        shortest_edge, mean_edge, longest_edge: 0 when there is no edge.
        boundary_loops: closed runs of boundary edges.
        components: sets of faces joined by shared edges.
        is_closed: whether each edge has exactly two faces.
        is_oriented: whether no two neighbours are wound against each other.
    """

    low: FloatArray
    high: FloatArray
    area: float
    signed_volume: float
    centroid: NDArray[np.float64]
    edges: int
    shortest_edge: float
    mean_edge: float
    longest_edge: float
    boundary_loops: int
    components: int
    is_closed: bool
    is_oriented: bool

    def _rows(self) -> list[tuple[str, str]]:
        def vector(v: NDArray[Any]) -> str:
            return "(" + ", ".join(f"{x:.6g}" for x in v) + ")"

        rows = dict(super()._rows())
        for name in ("low", "high", "centroid"):
            rows[name] = vector(getattr(self, name))
        return list(rows.items())


@dataclass(frozen=True, repr=False)
class UnfoldReport(Report):
    """How well an unfolding turned out.

    Attributes:
        components: pieces that were unfolded apart from each other.
        unfolded_faces: triangles that got coordinates.
        unreached_faces: triangles without area or with a missing node.
        flipped_faces: triangles that came out clockwise.
        overlapping_faces: triangles that cover a part of another of their component.
        mean_length_error, worst_length_error: of the edges, relative to their length in space.
    """

    components: int
    unfolded_faces: int
    unreached_faces: int
    flipped_faces: int
    overlapping_faces: int
    mean_length_error: float
    worst_length_error: float


@dataclass(frozen=True, repr=False)
class Difference(Report):
    """How two meshes differ.

    Attributes:
        findings: one sentence per kind of difference; empty when there is none.
        largest_move: largest distance between two points of the same number.
    """

    findings: list[str]
    largest_move: float

    def __bool__(self) -> bool:
        """Whether the meshes differ."""
        return bool(self.findings)

    def _rows(self) -> list[tuple[str, str]]:
        return [("findings", "; ".join(self.findings) or "none"),
                ("largest move", f"{self.largest_move:.6g}")]


@dataclass(frozen=True, repr=False)
class FittedPlane(Report):
    """A plane normal . x + d = 0. `normal` has shape (3,) and unit length; `shape_error` says how
    far the points leave it."""

    normal: NDArray[np.float64]
    d: float
    shape_error: float


@dataclass(frozen=True, repr=False)
class FittedLine(Report):
    """A line through `point`, shape (3,), along the unit vector `direction`, shape (3,)."""

    point: NDArray[np.float64]
    direction: NDArray[np.float64]
    shape_error: float
    average_distance: float


@dataclass(frozen=True, repr=False)
class FittedCircle(Report):
    """A circle round `centre`, shape (3,), in the plane with the unit `normal`, shape (3,)."""

    centre: NDArray[np.float64]
    normal: NDArray[np.float64]
    radius: float
    shape_error: float
