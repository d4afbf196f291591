"""How progress callbacks look."""

from __future__ import annotations

from typing import Any, Callable, Optional

#: Called with the fraction of the work that is done, rising in [0, 1]. Returning False cancels.
Progress = Optional[Callable[[float], Any]]
