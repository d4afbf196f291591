"""The one exception of the package."""

from __future__ import annotations


class Error(Exception):
    """Work that could not be done.

    Attributes:
        code: 2 bad argument, 3 cannot be read or malformed, 4 cannot be written, 5 out of memory or
            over a limit, 6 no graphics, 7 cancelled. 2 to 6 are also the exit codes of the program.
        message: file, what could not be done and why, on one line.
        file: the file concerned; empty when there is none.
        reason: why, alone.
    """

    def __init__(self, code: int, message: str, file: str = "", reason: str = "") -> None:
        super().__init__(code, message, file, reason)
        self.code = code
        self.message = message
        self.file = file
        self.reason = reason

    def __str__(self) -> str:
        return self.message
