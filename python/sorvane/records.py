"""What the functions of sorvane return and raise."""

from typing import NamedTuple, Optional


class Error(Exception):
    """A file that can't be used, or a picture that can't be drawn.

    file is its path or None; line and column, counted from 1, tell where it is at fault, or are None.
    """

    def __init__(self, text: str, file: Optional[str] = None, line: Optional[int] = None,
                 column: Optional[int] = None) -> None:
        super().__init__(text, file, line, column)
        self.file = file
        self.line = line
        self.column = column

    def __str__(self) -> str:
        return str(self.args[0])


class ClosestApproach(NamedTuple):
    """Where target and threat come closest: time in seconds, range in the trajectory's unit of length."""

    time: float
    range: float


class Finding(NamedTuple):
    """A fault that sorvane.check has found. Lines and columns count from 1; that of a whole file is at 1, 1."""

    file: str
    line: int
    column: int
    severity: str  # "error" or "warning"
    text: str

    def __str__(self) -> str:
        return f"{self.file}:{self.line}:{self.column}: {self.severity}: {self.text}"


class Measure(NamedTuple):
    """What can be measured of an engagement."""

    name: str
    of: str  # "moment", "flare moment", "engagement" or "flare"
    unit: str  # "m/s", "°"; "" without one
    column: str  # its name in tables, with the unit
    definition: str
    formula: str
    needs: str  # "signature" where it is worked out from the target's files, which takes about a second; else ""
