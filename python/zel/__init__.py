"""Meshes of nodes, triangles and quads as values over NumPy arrays.

>>> import zel
>>> mesh = zel.Mesh([[0, 0, 0], [1, 0, 0], [1, 1, 0], [0, 1, 0]], [[0, 1, 2], [0, 2, 3]])
>>> mesh.measure().area
1.0
>>> welded, report = mesh.weld(relative=1e-6)
>>> report.nodes_merged
0
"""

from ._errors import Error
from ._files import formats, read
from ._mesh import Mesh, fit_circle, fit_line, fit_plane
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
from ._zel import version as __version__

__all__ = [
    "BoundaryChain",
    "Defects",
    "Difference",
    "Error",
    "FittedCircle",
    "FittedLine",
    "FittedPlane",
    "Measures",
    "Mesh",
    "OrientReport",
    "Remark",
    "UnfoldReport",
    "WeldReport",
    "fit_circle",
    "fit_line",
    "fit_plane",
    "formats",
    "read",
    "__version__",
]
